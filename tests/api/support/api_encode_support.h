// Helpers of the header-encoding acceptance tests.  They drive the library
// through the public header only: wsp_enc_hdr with page records built from
// writable text copies, and wsp_encode_content.  Results are summarised in
// one string so that a test states status and exact octets in one line.
#ifndef CONFORMANCE_ENCODE_SUPPORT_H
#define CONFORMANCE_ENCODE_SUPPORT_H

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

namespace conformance_encode {

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

} // namespace conformance_encode

#endif
