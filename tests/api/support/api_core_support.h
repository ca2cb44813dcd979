// Helpers shared by the acceptance tests of the foundations and the PDU
// operations.  They reach the library through the public header alone:
// header blocks through wsp_enc_hdr and wsp_dec_hdr, content types through
// wsp_decode_content and wsp_encode_content, and received push PDUs in
// calloc'ed blocks (with the transaction id passed over through the offset).
// Results are reported as statuses, exact octets and texts, so that a test
// can state them in one line.
#ifndef CONFORMANCE_CORE_SUPPORT_H
#define CONFORMANCE_CORE_SUPPORT_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

namespace conformance_core {

using wsp_test::Bytes;
using wsp_test::bytes;
using wsp_test::cat;
using wsp_test::hex;
using wsp_test::InBytes;
using wsp_test::OutBuffer;
using wsp_test::text_bytes;
using wsp_test::TextCopy;

inline int16_t low16(int status) { return static_cast<int16_t>(status & 0xFFFF); }

// ---------------------------------------------------------------------------
// Header blocks through wsp_enc_hdr and wsp_dec_hdr.

struct Encoded {
    int status;
    Bytes bytes;
    uint16_t holder_length;
    bool data_released;
};

// A page list of one page-1 record over a writable copy of `lines` (the
// encoder cuts the text in place).
class OnePageList {
  public:
    explicit OnePageList(const std::string &lines) : text_(lines) {
        std::memset(&page_, 0, sizeof page_);
        page_.page = 1;
        page_.text.data = reinterpret_cast<unsigned char *>(text_.get());
        page_.text.size = static_cast<uint16_t>(lines.size() + 1);
        page_.text.length = static_cast<uint16_t>(lines.size());
        list_.count = 1;
        list_.pages = &page_;
    }
    OnePageList(const OnePageList &) = delete;
    OnePageList &operator=(const OnePageList &) = delete;
    wsp_hdr_page_list *get() { return &list_; }

  private:
    TextCopy text_;
    wsp_hdr_page page_;
    wsp_hdr_page_list list_;
};

// One page-1 record holding `lines`, encoded under `version` into a fresh
// output block of `size` bytes.
inline Encoded encode_lines(const std::string &lines, const char *version, uint16_t size = 512) {
    OnePageList list(lines);
    OutBuffer out(size);
    wsp_hdrbuf holder;
    holder.length = 0;
    holder.buffer = out.get();
    Encoded e;
    e.status = wsp_enc_hdr(list.get(), &holder, version);
    e.data_released = out->data == nullptr;
    e.bytes = out.written();
    e.holder_length = holder.length;
    return e;
}

inline std::string encoded_hex(const std::string &lines, const char *version) {
    Encoded e = encode_lines(lines, version);
    if (low16(e.status) != WSP_OK) return "failed " + std::to_string(e.status);
    return hex(e.bytes);
}

struct Decoded {
    int status;
    std::string text;
    bool block_released;
};

// Decodes `block` (a calloc'ed copy, since failures release it) into an
// empty text buffer of `out_size` bytes.
inline Decoded decode_block(const Bytes &block, int version, uint16_t out_size = 2048) {
    wsp_buffer in;
    std::memset(&in, 0, sizeof in);
    in.data = static_cast<unsigned char *>(std::calloc(block.empty() ? 1 : block.size(), 1));
    if (!block.empty()) std::memcpy(in.data, block.data(), block.size());
    in.size = static_cast<uint16_t>(block.size());
    in.length = static_cast<uint16_t>(block.size());
    wsp_hdrbuf holder;
    holder.length = static_cast<uint16_t>(block.size());
    holder.buffer = &in;
    OutBuffer out(out_size);
    Decoded d;
    d.status = wsp_dec_hdr(&holder, out.get(), nullptr, version);
    d.block_released = in.data == nullptr;
    d.text = out.text();
    std::free(in.data);
    return d;
}

inline std::string decoded_text(const Bytes &block, int version = 4) {
    Decoded d = decode_block(block, version);
    if (low16(d.status) != WSP_OK) return "failed " + std::to_string(d.status);
    return d.text;
}

// ---------------------------------------------------------------------------
// Content types through wsp_decode_content and wsp_encode_content.

struct Content {
    int status;
    std::string text;
    long consumed;
};

inline Content decode_ct(const Bytes &value, uint16_t avail, const char *prefill = "") {
    InBytes in(value);
    const uint8_t *p = in.data();
    char out[WSP_CONTENT_TYPE_SIZE];
    std::memset(out, 0, sizeof out);
    std::strcpy(out, prefill);
    Content c;
    c.status = wsp_decode_content(&p, out, avail);
    c.text = out;
    c.consumed = static_cast<long>(p - in.data());
    return c;
}

inline Content decode_ct(const Bytes &value) { return decode_ct(value, static_cast<uint16_t>(value.size())); }

struct ContentOut {
    int status;
    Bytes bytes;
};

inline ContentOut encode_ct(const char *text, const char *version, uint16_t size = 256) {
    OutBuffer out(size);
    ContentOut c;
    c.status = wsp_encode_content(text, out.get(), version);
    c.bytes = out.written();
    return c;
}

inline std::string encoded_ct_hex(const char *text, const char *version) {
    ContentOut c = encode_ct(text, version);
    if (low16(c.status) != WSP_OK) return "failed " + std::to_string(c.status);
    return hex(c.bytes);
}

// ---------------------------------------------------------------------------
// Push PDUs.

// A received PDU in a calloc'ed block.  `lead` octets (the transaction id of
// a connectionless push) sit in front of the PDU and are passed over through
// the buffer's offset, as clients do.
struct PushPdu {
    wsp_buffer buf;
    unsigned char *original;
    PushPdu(const Bytes &pdu, const Bytes &lead = {}, bool external = false) {
        std::memset(&buf, 0, sizeof buf);
        size_t n = lead.size() + pdu.size();
        buf.data = static_cast<unsigned char *>(std::calloc(n ? n : 1, 1));
        if (!lead.empty()) std::memcpy(buf.data, lead.data(), lead.size());
        if (!pdu.empty()) std::memcpy(buf.data + lead.size(), pdu.data(), pdu.size());
        buf.size = static_cast<uint16_t>(n);
        buf.offset = static_cast<uint16_t>(lead.size());
        buf.length = static_cast<uint16_t>(pdu.size());
        buf.flags = external ? WSP_BUFFER_EXTERNAL : 0;
        original = buf.data;
    }
    ~PushPdu() { std::free(buf.data); }
    PushPdu(const PushPdu &) = delete;
    PushPdu &operator=(const PushPdu &) = delete;
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

// The caller's spare record, deliberately dirty so that the fields the
// library must clear can be checked.
struct SpareBuffer {
    wsp_buffer buf;
    wsp_buffer *ptr;
    SpareBuffer() {
        std::memset(&buf, 0, sizeof buf);
        buf.flags = WSP_BUFFER_EXTERNAL | 0x40;
        buf.offset = 7;
        buf.length = 9;
        buf.size = 3;
        ptr = &buf;
    }
    ~SpareBuffer() { std::free(buf.data); }
    SpareBuffer(const SpareBuffer &) = delete;
    SpareBuffer &operator=(const SpareBuffer &) = delete;
    Bytes valid() const { return Bytes(buf.data + buf.offset, buf.data + buf.offset + buf.length); }
};

inline wsp_push_result dirty_result() {
    wsp_push_result r;
    std::memset(&r, 0xA5, sizeof r);
    return r;
}

// Header text of a decoded push: the result's header holder through
// wsp_dec_hdr under encoding version 1.4.
inline std::string push_headers_text(wsp_push_result &res) {
    OutBuffer out(1024);
    int st = wsp_dec_hdr(&res.headers, out.get(), nullptr, 4);
    if (low16(st) != WSP_OK) return "failed " + std::to_string(st);
    return out.text();
}

inline Bytes text0(const char *s) { return cat({text_bytes(s), bytes({0x00})}); }

// A multimedia-message notification body (message type, transaction id,
// version, class, size, expiry, location).
inline const Bytes kMmsNotification = cat({bytes({0x8C, 0x82, 0x98}), text0("T1"),
                                           bytes({0x8D, 0x90, 0x8A, 0x80, 0x8E, 0x02, 0x1F, 0x40, 0x88, 0x05, 0x81,
                                                  0x03, 0x03, 0xF4, 0x80, 0x83}),
                                           text0("http://mms.example.net/T1")});

} // namespace conformance_core

#endif
