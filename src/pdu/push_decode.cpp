// Push PDU decoding: the PDU prefix (type octet, HeadersLen uintvar), the
// content type, and the header block and body, either re-pointed inside the
// caller's own PDU buffer or copied into the caller's spare buffer.
#include <cstdlib>
#include <cstring>

#include "decode/decode.h"
#include "pdu.h"
#include "primitives.h"

namespace {

bool is_external(const wsp_buffer *b) { return (b->flags & WSP_BUFFER_EXTERNAL) != 0; }

// Decodes the content type at *cursor into the 152-byte text of a body
// holder through a stack work area.
int decode_content_type(const uint8_t **cursor, uint16_t avail, char *content_type) {
    char text[WSP_CONTENT_TYPE_SIZE] = {};
    int status = wsp_decode_content(cursor, text, avail);
    if (status != kWspOk) return status;
    std::memcpy(content_type, text, sizeof text);
    content_type[WSP_CONTENT_TYPE_SIZE - 1] = '\0';
    return kWspOk;
}

} // namespace

extern "C" {

WSP_API int wsp_decode_hdr(wsp_buffer *target, const uint8_t **cursor, uint16_t count) {
    if (target == nullptr || cursor == nullptr || *cursor == nullptr) return kWspErrFail;
    // A zero count still gets a block of its own, so that success always
    // leaves a non-NULL data pointer the caller may free.
    auto *copy = static_cast<unsigned char *>(std::calloc(count ? count : 1, 1));
    if (copy == nullptr) {
        target->data = nullptr;
        return kWspErrFail;
    }
    std::memcpy(copy, *cursor, count);
    target->data = copy;
    target->size = count;
    target->length = count;
    target->offset = 0;
    *cursor += count;
    return kWspOk;
}

WSP_API int wsp_decode_hdentity(const uint8_t **cursor, wsp_buffer *pdu, wsp_push_result *result,
                                wsp_bodybuf *body, uint16_t headers_length, uint16_t remaining) {
    if (cursor == nullptr || *cursor == nullptr || pdu == nullptr || result == nullptr || body == nullptr)
        return kWspErrFail;

    const uint8_t *start = *cursor;
    const uint8_t *p = start;
    int status = decode_content_type(&p, remaining, body->content_type);
    if (status != kWspOk) return status;

    // The content type's octet count is kept in 8 bits, deliberately.
    const uint16_t used = static_cast<uint16_t>(p - start);
    const uint16_t c = static_cast<uint8_t>(used);
    if (c > headers_length) return kWspErrFail;

    const uint16_t h = static_cast<uint16_t>(headers_length - c);
    result->headers.length = h;
    const uint16_t d = static_cast<uint16_t>(remaining - static_cast<uint16_t>(h + c));
    const uint16_t s = static_cast<uint16_t>(h + d);

    if (is_external(pdu)) {
        wsp_buffer *spare = body->body;
        if (spare == nullptr) return kWspErrFail;
        auto *block = static_cast<unsigned char *>(std::calloc(s ? s : 1, 1));
        if (block == nullptr) return kWspErrFail;
        spare->data = block;
        spare->offset = 0;
        spare->size = s;
        spare->length = s;
        // h + d octets follow the content type.  When the 8-bit count above
        // has wrapped they would reach past the octets the caller declared;
        // only the declared octets are copied, the rest of the block stays 0.
        uint16_t available = used <= remaining ? static_cast<uint16_t>(remaining - used) : 0;
        std::memcpy(block, p, s <= available ? s : available);
        result->headers.buffer = h != 0 ? spare : nullptr;
    } else {
        // The PDU is re-pointed in place and cannot grow: when the 8-bit
        // count above has wrapped (a content type of 256 octets or more),
        // h + d would run past the PDU's last octet, so the run and the
        // header block are cut back to the octets that follow the content
        // type.  Nothing after a call then reaches past the caller's PDU
        // (pinned by ApiPush.WithDataTheContentTypeOctetsAreCountedInEightBits).
        const uint16_t available = used <= remaining ? static_cast<uint16_t>(remaining - used) : 0;
        const uint16_t run = s <= available ? s : available;
        if (result->headers.length > run) result->headers.length = run;
        result->headers.buffer = h != 0 ? pdu : nullptr;
        pdu->length = run;
        body->body = pdu;
        const uint8_t *base = pdu->data + pdu->offset;
        pdu->offset = static_cast<uint16_t>(pdu->offset + (p - base));
    }
    return kWspOk;
}

WSP_API int wsp_push_decoding(wsp_buffer *pdu, wsp_push_result *result, wsp_buffer **spare) {
    if (pdu == nullptr || result == nullptr) return kWspErrFail;
    result->headers.length = 0;
    result->headers.buffer = nullptr;
    result->body.body = nullptr;
    // A PDU needs its type octet and at least the first HeadersLen octet.
    // (An empty PDU would make the available count wrap to 65535.)
    if (pdu->data == nullptr || pdu->length == 0) return kWspErrFail;

    const uint8_t *base = pdu->data + pdu->offset;
    const uint8_t *cursor = base + 1; // the PDU type octet is not examined
    uint32_t headers_len = 0;
    if (wsp_dec_varint(&cursor, &headers_len, static_cast<uint16_t>(pdu->length - 1)) != kWspOk)
        return kWspErrFail;
    const uint16_t prefix = static_cast<uint16_t>(cursor - base);

    if (headers_len == 0) {
        // Nothing usable: an own PDU is released at once.
        if (pdu->data != nullptr && !is_external(pdu)) {
            std::free(pdu->data);
            pdu->data = nullptr;
        }
        return kWspOk;
    }

    // Compared without wrapping: a HeadersLen near 2^32 claims more than any
    // PDU holds (a 32-bit sum would wrap to a small number and send such a
    // PDU down the Data path with a header length past its end).
    const uint64_t claimed = static_cast<uint64_t>(prefix) + headers_len;
    if (pdu->length <= claimed) {
        // No Data: the headers must end exactly at the PDU's end.
        if (pdu->length != claimed) return kWspErrFail;
        const uint8_t *p = cursor;
        int status = decode_content_type(&p, static_cast<uint16_t>(headers_len), result->body.content_type);
        if (status != kWspOk) return status;
        const uint16_t ct_octets = static_cast<uint16_t>(p - cursor);
        const uint16_t h = static_cast<uint16_t>(headers_len - ct_octets);
        if (is_external(pdu)) {
            if (spare == nullptr || *spare == nullptr) return kWspErrFail;
            (*spare)->flags = 0;
            status = wsp_decode_hdr(*spare, &p, h);
            if (status != kWspOk) return status;
            result->headers.buffer = *spare;
        } else {
            pdu->offset = static_cast<uint16_t>(pdu->offset + prefix + ct_octets);
            pdu->length = h;
            result->headers.buffer = pdu;
        }
        result->headers.length = h;
        return kWspOk;
    }

    // Data present: headers and body share one buffer.
    if (is_external(pdu)) {
        if (spare == nullptr || *spare == nullptr) return kWspErrFail;
        (*spare)->flags = 0;
        (*spare)->offset = 0;
        (*spare)->length = 0;
        result->body.body = *spare;
    }
    int status = wsp_decode_hdentity(&cursor, pdu, result, &result->body, static_cast<uint16_t>(headers_len),
                                     static_cast<uint16_t>(pdu->length - prefix));
    return status == kWspOk ? kWspOk : kWspErrFail;
}

} // extern "C"
