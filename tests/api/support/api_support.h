// Helpers of the client-view tests, which reach the library through the
// public header and the exported functions alone.  Results come back as
// statuses, exact octets and texts, so that a test states them in one line.
//  - api_core: header blocks through wsp_enc_hdr and wsp_dec_hdr, content
//    types through wsp_decode_content and wsp_encode_content, and received
//    push PDUs in calloc'ed blocks (a transaction id passed over through the
//    offset);
//  - api_decode: header blocks in buffers of exactly their size (a release
//    shows as data == NULL), the decode-and-compare step through wsp_dec_hdr
//    and the byte-run builders of encoded values;
//  - api_encode: wsp_enc_hdr over page records built from writable text
//    copies, and wsp_encode_content, each summarised in one string.
#ifndef WSP_API_SUPPORT_H
#define WSP_API_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

namespace api_core {

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

struct Encoded {
    int status;
    Bytes bytes;
    uint16_t holder_length;
    bool data_released;
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

// A multimedia-message notification body (message type, transaction id,
// version, class, size, expiry, location).
inline const Bytes kMmsNotification = cat({bytes({0x8C, 0x82, 0x98}), wsp_test::cstr("T1"),
                                           bytes({0x8D, 0x90, 0x8A, 0x80, 0x8E, 0x02, 0x1F, 0x40, 0x88, 0x05, 0x81,
                                                  0x03, 0x03, 0xF4, 0x80, 0x83}),
                                           wsp_test::cstr("http://mms.example.net/T1")});

} // namespace api_core

namespace api_decode {

using wsp_test::Bytes;
using wsp_test::bytes;
using wsp_test::cat;
using wsp_test::OutBuffer;
using wsp_test::text_bytes;

inline Bytes rep(char c, size_t n) { return Bytes(n, static_cast<uint8_t>(c)); }

// A Value-length for n octets (n below 16384): one octet up to 30, else 31
// and a uintvar.
inline Bytes value_length(size_t n) {
    if (n <= 30) return bytes({static_cast<int>(n)});
    Bytes b = bytes({0x1F});
    if (n >= 128) b.push_back(static_cast<uint8_t>(0x80 | (n >> 7)));
    b.push_back(static_cast<uint8_t>(n & 0x7F));
    return b;
}

// Content-Length 5, used after a dropped header to show that decoding went
// on right behind the dropped value.
inline const Bytes kTail = bytes({0x8D, 0x85});
inline const std::string kTailLine = "content-length:5\n";

inline std::string printable(const std::string &s) {
    std::string o;
    for (unsigned char c : s) {
        if (c >= 32 && c < 127 && c != '\\') {
            o += static_cast<char>(c);
        } else {
            char t[8];
            std::snprintf(t, sizeof t, "\\x%02X", c);
            o += t;
        }
    }
    return o;
}

// A header block in a calloc'ed block of exactly its size, owned by the
// library's rules (flags clear), so that a release shows as data == NULL.
struct Block {
    wsp_buffer buf{};
    wsp_hdrbuf hdr{};
    explicit Block(const Bytes &b) {
        buf.data = static_cast<unsigned char *>(std::calloc(b.empty() ? 1 : b.size(), 1));
        if (!b.empty()) std::memcpy(buf.data, b.data(), b.size());
        buf.size = buf.length = static_cast<uint16_t>(b.size());
        hdr.length = static_cast<uint16_t>(b.size());
        hdr.buffer = &buf;
    }
    ~Block() { std::free(buf.data); }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;
};

struct Decoded {
    int16_t status = 0;
    std::string text;    // NUL-terminated text from the first octet, within size
    std::string counted; // the `length` octets from the first octet, within size
    uint16_t length = 0;
    bool released = false;
};

inline Decoded decode(const Bytes &block, int version = 4, uint16_t out_size = 1024,
               const wsp_dec_page_list *pages = nullptr, const std::string &before = "") {
    Block b(block);
    OutBuffer out(out_size);
    std::memcpy(out->data, before.data(), std::min<size_t>(before.size(), out_size));
    out->length = static_cast<uint16_t>(before.size());
    Decoded d;
    d.status = static_cast<int16_t>(wsp_dec_hdr(&b.hdr, out.get(), pages, version));
    d.text = out.text();
    d.length = out->length;
    d.counted = std::string(reinterpret_cast<const char *>(out->data), std::min(out->length, out->size));
    d.released = b.buf.data == nullptr;
    return d;
}

inline ::testing::AssertionResult Lines(const Bytes &block, const std::string &expected, int version = 4,
                                 const wsp_dec_page_list *pages = nullptr) {
    Decoded d = decode(block, version, 1024, pages);
    if (d.status != WSP_OK) return ::testing::AssertionFailure() << "status " << d.status;
    if (d.released) return ::testing::AssertionFailure() << "block released";
    if (d.text != expected)
        return ::testing::AssertionFailure() << "text \"" << printable(d.text) << "\", expected \""
                                             << printable(expected) << "\"";
    if (d.length != expected.size())
        return ::testing::AssertionFailure() << "length " << d.length << ", expected " << expected.size();
    return ::testing::AssertionSuccess();
}

// The header is dropped and decoding goes on right behind its value.
inline ::testing::AssertionResult Dropped(const Bytes &header, int version = 4) {
    return Lines(cat({header, kTail}), kTailLine, version);
}

} // namespace api_decode

namespace api_encode {

using wsp_test::hex;
using wsp_test::OutBuffer;

// Hex of text bytes, and of text bytes with their NUL.
inline std::string th(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }
inline std::string tz(const std::string &s) { return th(s + '\0'); }
// An application header: Token-text name, Text-string value.
inline std::string app(const std::string &name, const std::string &value) { return tz(name) + " " + tz(value); }

// What a failed wsp_enc_hdr call that released the output looks like.
inline const std::string kFail = "-214 freed";

// The holder's length before a call; a failed call must leave it so.
constexpr uint16_t kHolderMark = 0xBEEF;

struct Page {
    uint8_t page;
    std::string text;
    uint8_t name_count = 0;
    const wsp_code_entry *names = nullptr;
    int length = -1; // text.length; -1: the text's own length
};

// Writable copies of the page texts and the records that describe them.
class Pages {
  public:
    explicit Pages(const std::vector<Page> &input) {
        for (const Page &p : input) {
            texts_.emplace_back(new char[p.text.size() + 1]);
            std::memcpy(texts_.back().get(), p.text.c_str(), p.text.size() + 1);
            wsp_hdr_page rec{};
            rec.page = p.page;
            rec.name_count = p.name_count;
            rec.names = p.names;
            rec.text.data = reinterpret_cast<unsigned char *>(texts_.back().get());
            rec.text.size = static_cast<uint16_t>(p.text.size() + 1);
            rec.text.length = static_cast<uint16_t>(p.length < 0 ? p.text.size() : static_cast<size_t>(p.length));
            rec.text.flags = WSP_BUFFER_EXTERNAL;
            records_.push_back(rec);
        }
        list_.count = static_cast<uint16_t>(records_.size());
        list_.pages = records_.empty() ? nullptr : records_.data();
    }
    wsp_hdr_page_list *get() { return &list_; }
    const char *text(size_t i) const { return texts_[i].get(); }

  private:
    std::vector<std::unique_ptr<char[]>> texts_;
    std::vector<wsp_hdr_page> records_;
    wsp_hdr_page_list list_{};
};

// wsp_enc_hdr into a fresh output block of `size` octets.  "OK <appended
// bytes>" on success (with " holder=N" when the holder's length is not the
// number of appended bytes); on failure the status, then "freed" or "kept"
// for the output data, and " holder=N" if the holder's length was touched.
inline std::string run(Pages &pages, const char *version, uint16_t size = 1024) {
    OutBuffer out(size);
    wsp_hdrbuf holder{};
    holder.length = kHolderMark;
    holder.buffer = out.get();
    int16_t status = static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, version));
    std::string s;
    if (status == WSP_OK) {
        s = "OK";
        std::string bytes = out.written_hex();
        if (!bytes.empty()) s += " " + bytes;
        if (holder.length != out->length) s += " holder=" + std::to_string(holder.length);
    } else {
        s = std::to_string(status) + (out->data == nullptr ? " freed" : " kept");
        if (holder.length != kHolderMark) s += " holder=" + std::to_string(holder.length);
    }
    return s;
}

// One page-1 record holding `text`.
inline std::string enc(const std::string &text, const char *version = "1.4", uint16_t size = 1024) {
    Pages pages({{1, text}});
    return run(pages, version, size);
}

// wsp_encode_content into a fresh buffer: "OK <bytes>" or
// "<status> len=<length>[ <bytes>]".
inline std::string content(const char *text, const char *version, uint16_t size = 256) {
    OutBuffer out(size);
    int16_t status = static_cast<int16_t>(wsp_encode_content(text, out.get(), version));
    if (status == WSP_OK) return "OK " + out.written_hex();
    std::string s = std::to_string(status) + " len=" + std::to_string(out->length);
    if (out->length != 0) s += " " + out.written_hex();
    return s;
}

} // namespace api_encode

#endif
