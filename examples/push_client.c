/*
 * push_client.c - a complete client of libtarnwspencdec: it receives an MMS
 * notification push PDU, decodes its content type and headers, takes its
 * body and releases everything, once along each of the two roads a PDU can
 * take:
 *
 *  - an own PDU (flags bit 0 clear): the library takes over the PDU's
 *    calloc'ed block; here the body is handed over with wsp_decode_body and
 *    freed by the client;
 *  - an external PDU (flags bit 0 set): the PDU stays the client's and the
 *    library copies headers and body into a block it installs in the spare
 *    record; here the body is read in place and released with the library's
 *    release functions.
 *
 * In both cases the header block and the body are ONE block: release it
 * once.  Build: cc push_client.c $(pkg-config --cflags --libs tarnwspencdec)
 */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <tarnwspencdec.h>

/* An MMS notification push: PDU type 0x06, HeadersLen 5, content type
 * application/vnd.wap.mms-message, X-Wap-Application-Id mms.ua, Push-Flag 0,
 * then the m-notification-ind as the body. */
static const unsigned char mms_push[] = {
    0x06, 0x05, 0xBE, 0xAF, 0x84, 0xB4, 0x80,
    /* body: message type, transaction id "T0001", version 1.2, from,
     * class personal, size 8000, expiry, content location */
    0x8C, 0x82, 0x98, 'T', '0', '0', '0', '1', 0x00, 0x8D, 0x92, 0x89, 0x01, 0x81, 0x8A, 0x80, 0x8E,
    0x02, 0x1F, 0x40, 0x88, 0x05, 0x81, 0x03, 0x09, 0x3A, 0x80, 0x83, 'h', 't', 't', 'p', ':', '/',
    '/', 'm', 'm', 's', 'c', '.', 'e', 'x', 'a', 'm', 'p', 'l', 'e', '.', 'c', 'o', 'm', '/', 'm',
    '/', '0', '0', '0', '1', 0x00};

static const char expected_headers[] = "x-wap-application-id:x-wap-application:mms.ua\n"
                                       "push-flag:0\n";
static const uint16_t body_octets = sizeof mms_push - 7;

static int ok(int status) { return (int16_t)status == WSP_OK; }

/* Decodes the header block of a push result into text. */
static int headers_to_text(wsp_push_result *res, char *text, uint16_t size) {
    wsp_buffer out;
    memset(&out, 0, sizeof out);
    text[0] = '\0';
    out.data = (unsigned char *)text;
    out.size = size;
    return wsp_dec_hdr(&res->headers, &out, NULL, 4);
}

/* Own PDU: a calloc'ed block that starts with a transaction id, passed over
 * through the offset.  The library takes the block over. */
static int own_pdu(void) {
    wsp_buffer pdu;
    wsp_push_result res;
    wsp_body_result body;
    char text[256];
    const unsigned char *data;

    memset(&pdu, 0, sizeof pdu);
    pdu.data = calloc(1 + sizeof mms_push, 1);
    if (pdu.data == NULL) return 1;
    pdu.data[0] = 0x2A; /* transaction id */
    memcpy(pdu.data + 1, mms_push, sizeof mms_push);
    pdu.size = (uint16_t)(1 + sizeof mms_push);
    pdu.offset = 1;
    pdu.length = (uint16_t)sizeof mms_push;

    if (!ok(wsp_push_decoding(&pdu, &res, NULL))) {
        free(pdu.data);
        return 1;
    }
    /* 1. Headers first: the hand-over below moves the bytes. */
    if (!ok(headers_to_text(&res, text, sizeof text))) {
        /* A failing wsp_dec_hdr may have released the block already. */
        wsp_dealloc_hdrbuf(&res.headers);
        return 1;
    }
    /* 2. Hand the block over: header block first, then the data. */
    wsp_decode_body(&res.body, &body);
    data = body.body.data + res.headers.length;
    printf("own PDU: %s, %u header octets, %u body octets\n%s", body.content_type,
           (unsigned)res.headers.length, (unsigned)(body.body.length - res.headers.length), text);
    if (strcmp(text, expected_headers) != 0 || body.body.length - res.headers.length != body_octets ||
        memcmp(data, mms_push + 7, body_octets) != 0) {
        free(body.body.data);
        return 1;
    }
    /* 3. The client owns the block now: free it once, and do not release
     *    res.headers as well (it names the same block). */
    free(body.body.data);
    return 0;
}

/* External PDU: the client's own memory, never freed by the library.  The
 * copy goes into a block installed in the spare record. */
static int external_pdu(void) {
    unsigned char received[sizeof mms_push];
    wsp_buffer pdu, spare_record;
    wsp_buffer *spare = &spare_record;
    wsp_push_result res;
    char text[256];
    const wsp_buffer *b;
    int failed;

    memcpy(received, mms_push, sizeof mms_push);
    memset(&pdu, 0, sizeof pdu);
    pdu.data = received;
    pdu.size = (uint16_t)sizeof received;
    pdu.length = (uint16_t)sizeof received;
    pdu.flags = WSP_BUFFER_EXTERNAL;
    memset(&spare_record, 0, sizeof spare_record); /* no block of its own */

    if (!ok(wsp_push_decoding(&pdu, &res, &spare))) return 1;
    failed = !ok(headers_to_text(&res, text, sizeof text));
    /* The body stays in place: the data follows the header block. */
    b = res.body.body;
    printf("external PDU: %s, %u header octets, %u body octets\n%s", res.body.content_type,
           (unsigned)res.headers.length, (unsigned)(b->length - res.headers.length), text);
    failed = failed || strcmp(text, expected_headers) != 0 || b->length - res.headers.length != body_octets ||
             memcmp(b->data + b->offset + res.headers.length, mms_push + 7, body_octets) != 0;
    /* Both holders name the spare record: the first call frees the block
     * and sets data to NULL, the second finds nothing to free. */
    wsp_dealloc_hdrbuf(&res.headers);
    wsp_dealloc_bodybuf(&res.body);
    return failed;
}

int main(void) {
    int failed = own_pdu();
    failed |= external_pdu();
    puts(failed ? "push_client: FAILED" : "push_client: ok");
    return failed;
}
