/* Decodes "age:30" through the installed library. */
#include <stdio.h>
#include <string.h>

#include <tarnwspencdec.h>

int main(void) {
    unsigned char block_data[] = {0x85, 0x9E};
    wsp_buffer block_buf = {block_data, 0, sizeof block_data, 0, 0, WSP_BUFFER_EXTERNAL, 0};
    wsp_hdrbuf block = {sizeof block_data, &block_buf};
    char text[32] = "";
    wsp_buffer out = {(unsigned char *)text, 0, sizeof text, 0, 0, 0, 0};
    if ((int16_t)wsp_dec_hdr(&block, &out, NULL, 4) != WSP_OK || strcmp(text, "age:30\n") != 0) {
        fprintf(stderr, "unexpected: %s\n", text);
        return 1;
    }
    printf("installed library %d.%d.%d ok: %s", TARNWSPENCDEC_VERSION_MAJOR, TARNWSPENCDEC_VERSION_MINOR,
           TARNWSPENCDEC_VERSION_PATCH, text);
    return 0;
}
