/* The public header compiled as C99, and every export called through the
 * shared object.  Exits non-zero and names the first check that failed. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "tarnwspencdec.h"

static int failures = 0;

#define CHECK(cond)                                                   \
    do {                                                              \
        if (!(cond)) {                                                \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__,    \
                    __LINE__, #cond);                                 \
            ++failures;                                               \
        }                                                             \
    } while (0)

static int ok(int status) { return (int16_t)status == WSP_OK; }

static void switches(void) {
    CHECK(device_is_sar_enabled() == 1);
    CHECK(device_is_optionTPI_support_enabled() == 1);
    CHECK(device_Is_SIA_Available() == 0);
    CHECK(device_fallback_to_byterange() == 1);
}

static void primitives(void) {
    uint8_t area[8];
    uint8_t *w = area;
    uint8_t count = 0;
    const uint8_t *r;
    uint32_t value = 0;
    uint8_t small = 0;
    char text[] = "a,b";
    char *pos = text;
    char *tok;
    unsigned char out_data[8];
    wsp_buffer out;

    CHECK(ok(wsp_enc_varint(0x80, &w, &count)));
    CHECK(count == 2 && area[0] == 0x81 && area[1] == 0x00 && w == area + 2);

    r = area;
    CHECK(ok(wsp_dec_varint(&r, &value, 2)));
    CHECK(value == 0x80 && r == area + 2);

    r = area;
    CHECK(wsp_dec_varintLen(&r, 3, &value, 2) == WSP_VARINTLEN_FAIL);
    CHECK(r == area);
    CHECK(ok(wsp_dec_varintLen(&r, 2, &value, 2)) && value == 0x80);

    w = area;
    CHECK(ok(wsp_short_int_encodeto(&w, 5)) && area[0] == 0x85);
    r = area;
    CHECK(ok(wsp_shortint_direct_decode(&r, &small)) && small == 5);

    memset(&out, 0, sizeof out);
    out.data = out_data;
    out.size = sizeof out_data;
    CHECK(ok(wsp_tokentext_encode_buff("abc", &out)));
    CHECK(out.length == 4 && memcmp(out_data, "abc", 4) == 0);

    tok = wsp_strtoken(&pos, ",");
    CHECK(tok != NULL && strcmp(tok, "a") == 0);
    tok = wsp_strtoken(&pos, ",");
    CHECK(tok != NULL && strcmp(tok, "b") == 0);
    CHECK(wsp_strtoken(&pos, ",") == NULL);
}

static void content_types(void) {
    const uint8_t encoded[] = {0x03, 0x83, 0x81, 0xEA};
    const uint8_t *r = encoded;
    char text[WSP_CONTENT_TYPE_SIZE];
    unsigned char out_data[16];
    wsp_buffer out;

    CHECK(ok(wsp_decode_content(&r, text, sizeof encoded)));
    CHECK(strcmp(text, "text/plain;charset=utf-8") == 0);
    CHECK(r == encoded + 4);

    memset(&out, 0, sizeof out);
    out.data = out_data;
    out.size = sizeof out_data;
    CHECK(ok(wsp_encode_content("Text/Plain; charset=UTF-8", &out, "1.3")));
    CHECK(out.length == 4 && memcmp(out_data, encoded, 4) == 0);
    CHECK((int16_t)wsp_encode_content("text/plain", &out, "1.5") == WSP_ERR_VERSION);
}

static void header_blocks(void) {
    /* x-foo: bar, then Age 30, then x-foo: baz (merged) */
    static const char lines[] = "x-foo: bar\nage: 30\nx-foo:baz";
    char *text = malloc(sizeof lines);
    unsigned char *block_data = calloc(64, 1);
    wsp_buffer block_buf;
    wsp_hdrbuf block;
    wsp_hdr_page page;
    wsp_hdr_page_list list;
    char out_text[128];
    wsp_buffer out;

    memcpy(text, lines, sizeof lines);
    memset(&page, 0, sizeof page);
    page.page = 1;
    page.text.data = (unsigned char *)text;
    page.text.size = sizeof lines;
    page.text.length = sizeof lines - 1;
    list.count = 1;
    list.pages = &page;

    memset(&block_buf, 0, sizeof block_buf);
    block_buf.data = block_data;
    block_buf.size = 64;
    block.length = 0;
    block.buffer = &block_buf;

    CHECK(ok(wsp_enc_hdr(&list, &block, "1.4")));
    CHECK(block.length == block_buf.length);

    memset(out_text, 0, sizeof out_text);
    memset(&out, 0, sizeof out);
    out.data = (unsigned char *)out_text;
    out.size = sizeof out_text;
    CHECK(ok(wsp_dec_hdr(&block, &out, NULL, 4)));
    CHECK(strcmp(out_text, "x-foo: bar,baz\nage:30\n") == 0);

    wsp_dealloc_hdrbuf(&block);
    CHECK(block_buf.data == NULL);
    wsp_dealloc_hdrbuf(&block); /* harmless twice */
    free(text);
}

static void push_and_body(void) {
    /* push PDU: type 0x06, HeadersLen 2, content type 0x83, header 0xAF 0x84
     * would be 3; use content type + one header: 0x83, 0xB4 0x80 (push-flag 0) */
    static const uint8_t pdu_bytes[] = {0x06, 0x03, 0x83, 0xB4, 0x80, 'h', 'i'};
    wsp_buffer pdu;
    wsp_buffer spare;
    wsp_buffer *spare_ptr = &spare;
    wsp_push_result result;
    wsp_body_result body;
    const uint8_t *r;
    wsp_buffer target;
    uint8_t *copy_src = malloc(sizeof pdu_bytes);

    memcpy(copy_src, pdu_bytes, sizeof pdu_bytes);
    memset(&pdu, 0, sizeof pdu);
    pdu.data = copy_src;
    pdu.size = sizeof pdu_bytes;
    pdu.length = sizeof pdu_bytes;
    memset(&spare, 0, sizeof spare);
    memset(&result, 0, sizeof result);

    CHECK(ok(wsp_push_decoding(&pdu, &result, &spare_ptr)));
    CHECK(spare_ptr == &spare);
    CHECK(strcmp(result.body.content_type, "text/plain") == 0);
    CHECK(result.headers.length == 2);
    CHECK(result.body.body == &pdu);

    CHECK(ok(wsp_decode_body(&result.body, &body)));
    CHECK(result.body.body == NULL);
    CHECK(body.body.length == 4 && memcmp(body.body.data, "\xB4\x80hi", 4) == 0);
    CHECK(strcmp(body.content_type, "text/plain") == 0);
    wsp_dealloc_bodybuf(&result.body); /* nothing left to free */
    free(body.body.data);

    r = pdu_bytes;
    memset(&target, 0, sizeof target);
    CHECK(ok(wsp_decode_hdr(&target, &r, 3)));
    CHECK(target.size == 3 && target.length == 3 && memcmp(target.data, pdu_bytes, 3) == 0);
    CHECK(r == pdu_bytes + 3);
    free(target.data);

    {
        /* hdentity directly on an external PDU: headers and body copied */
        wsp_buffer ext;
        wsp_buffer spare2;
        wsp_push_result res2;
        const uint8_t *cur = pdu_bytes + 2;
        memset(&ext, 0, sizeof ext);
        ext.data = (unsigned char *)pdu_bytes;
        ext.size = sizeof pdu_bytes;
        ext.length = sizeof pdu_bytes;
        ext.flags = WSP_BUFFER_EXTERNAL;
        memset(&spare2, 0, sizeof spare2);
        memset(&res2, 0, sizeof res2);
        res2.body.body = &spare2;
        CHECK(ok(wsp_decode_hdentity(&cur, &ext, &res2, &res2.body, 3, 5)));
        CHECK(cur == pdu_bytes + 2);
        CHECK(res2.headers.length == 2 && spare2.length == 4);
        free(spare2.data);
    }
}

static void profile(void) {
    unsigned char *data = calloc(100, 1);
    wsp_buffer buf;
    wsp_hdrbuf holder;
    wsp_uaprof prof;
    static const char line[] = "http://x/p.rdf";

    memset(&buf, 0, sizeof buf);
    buf.data = data;
    buf.size = 100;
    holder.length = 0;
    holder.buffer = &buf;
    memset(&prof, 0, sizeof prof);
    prof.text = (const unsigned char *)line;
    prof.length = (uint16_t)strlen(line);

    wsp_uaphdr_encode(&holder, &prof);
    CHECK(holder.length == 16 && buf.length == 16);
    CHECK(data[0] == 0xB5 && memcmp(data + 1, line, sizeof line) == 0);
    wsp_dealloc_hdrbuf(&holder);
}

static void capab(void) {
    wsp_capab c;
    memset(&c, 0, sizeof c);
    c.first = calloc(1, sizeof *c.first);
    c.third = calloc(1, sizeof *c.third);
    c.third->data = malloc(4);
    wsp_dealloc_capab(&c);
    CHECK(c.first == NULL && c.second == NULL && c.third == NULL);
    wsp_dealloc_capab(NULL);
}

int main(void) {
    switches();
    primitives();
    content_types();
    header_blocks();
    push_and_body();
    profile();
    capab();
    if (failures != 0) {
        fprintf(stderr, "%d failed\n", failures);
        return 1;
    }
    printf("c_api_test: all checks passed\n");
    return 0;
}
