// Header lines encoded with wsp_enc_hdr and decoded again with wsp_dec_hdr
// give back the same header wherever both directions agree on its text.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "wsp_test_support.h"

using wsp_test::OutBuffer;

namespace {

int decoder_version(const char *version) { return version[2] - '0'; }

struct RoundTrip {
    int encode_status;
    int decode_status;
    std::string text;
};

// Encodes the records (page, text) with the version, then decodes the block
// with the same version and the given extension pages.
RoundTrip round_trip(const std::vector<std::pair<uint8_t, std::string>> &records, const char *version,
                     const wsp_code_entry *names = nullptr, uint8_t name_count = 0,
                     const wsp_dec_page_list *dec_pages = nullptr) {
    std::vector<std::vector<char>> texts;
    texts.reserve(records.size());
    std::vector<wsp_hdr_page> pages;
    for (const auto &record : records) {
        texts.emplace_back(record.second.begin(), record.second.end());
        texts.back().push_back('\0');
        wsp_hdr_page page{};
        page.page = record.first;
        if (record.first != 1) {
            page.names = names;
            page.name_count = name_count;
        }
        page.text.data = reinterpret_cast<unsigned char *>(texts.back().data());
        page.text.size = static_cast<uint16_t>(texts.back().size());
        page.text.length = static_cast<uint16_t>(record.second.size());
        pages.push_back(page);
    }
    wsp_hdr_page_list list{static_cast<uint16_t>(pages.size()), pages.data()};

    OutBuffer block(500);
    wsp_hdrbuf holder{0, block.get()};
    RoundTrip result{wsp_enc_hdr(&list, &holder, version), 0, {}};
    if (result.encode_status != WSP_OK) return result;

    // The decoder may release its input on failure: mark the block as ours.
    block->flags = WSP_BUFFER_EXTERNAL;
    OutBuffer text(1000);
    result.decode_status = wsp_dec_hdr(&holder, text.get(), dec_pages, decoder_version(version));
    block->flags = 0;
    result.text = text.text();
    return result;
}

RoundTrip page1(const std::string &text, const char *version) { return round_trip({{1, text}}, version); }

void expect_same(const std::string &line, const char *version, const std::string &decoded) {
    RoundTrip r = page1(line, version);
    EXPECT_EQ(r.encode_status, WSP_OK) << line;
    EXPECT_EQ(r.decode_status, WSP_OK) << line;
    EXPECT_EQ(r.text, decoded) << line;
}

} // namespace

TEST(HeaderBlockRoundTrip, IntegerHeader) { expect_same("Age: 30", "1.4", "age:30\n"); }

TEST(HeaderBlockRoundTrip, TextHeader) { expect_same("User-Agent: Foo/1.0", "1.4", "user-agent:Foo/1.0\n"); }

TEST(HeaderBlockRoundTrip, DateHeader) {
    expect_same("Date: Sun, 06 Nov 1994 08:49:37 GMT", "1.4", "date:Sun, 06 Nov 1994 08:49:37 GMT\n");
}

TEST(HeaderBlockRoundTrip, ApplicationHeaderKeepsItsValueAsWritten) {
    expect_same("X-Foo: Bar", "1.4", "x-foo: Bar\n");
}

TEST(HeaderBlockRoundTrip, HeaderAboveTheVersionLimitTravelsAsApplicationHeader) {
    expect_same("te: trailers", "1.1", "te: trailers\n");
}

TEST(HeaderBlockRoundTrip, AcceptList) {
    expect_same("Accept: text/html, text/plain", "1.4", "accept:text/html,text/plain\n");
}

TEST(HeaderBlockRoundTrip, AcceptWithParameters) {
    expect_same("accept: text/html;level=1;q=0.5", "1.4", "accept:text/html;level=1;q=0.50\n");
    expect_same("accept: */*;type=5", "1.1", "accept:*/*;type=5\n");
}

TEST(HeaderBlockRoundTrip, AcceptWithUnknownMedia) {
    expect_same("accept: x/y;q=0.5", "1.4", "accept:x/y;q=0.50\n");
}

TEST(HeaderBlockRoundTrip, AcceptCharsetOfTheFirstVersions) {
    expect_same("Accept-Charset: UTF-8;q=0.5, big5", "1.1", "accept-charset:utf-8;q=0.50,big5\n");
}

TEST(HeaderBlockRoundTrip, AcceptLanguageByName) {
    expect_same("accept-language: english;q=0.333", "1.2", "accept-language:english;q=0.333\n");
}

TEST(HeaderBlockRoundTrip, CacheControlDirectives) {
    expect_same("cache-control: no-cache, max-age=60", "1.4", "cache-control:no-cache,max-age=60\n");
    expect_same("cache-control: no-cache, max-age=60", "1.2", "cache-control:no-cache,max-age=60\n");
}

TEST(HeaderBlockRoundTrip, ContentDispositionWithParameter) {
    expect_same("content-disposition: attachment; filename=a.txt", "1.4",
                "content-disposition:attachment;filename=a.txt\n");
}

TEST(HeaderBlockRoundTrip, EncodingVersion) { expect_same("encoding-version: 1.3", "1.3", "encoding-version:1.3\n"); }

TEST(HeaderBlockRoundTrip, SeveralLinesAndRecords) {
    RoundTrip r = round_trip({{1, "Age: 30\r\nUser-Agent: Foo\r\n"}, {1, "Accept: */*"}}, "1.4");
    EXPECT_EQ(r.encode_status, WSP_OK);
    EXPECT_EQ(r.decode_status, WSP_OK);
    EXPECT_EQ(r.text, "age:30\nuser-agent:Foo\naccept:*/*\n");
}

TEST(HeaderBlockRoundTrip, ExtensionPageHeaders) {
    static const wsp_code_entry names[] = {{"X-Alpha", 0x05}, {nullptr, 0}};
    static const wsp_dec_page dec_page = {0x30, 1, names};
    static const wsp_dec_page_list dec_pages = {1, &dec_page};
    RoundTrip r = round_trip({{0x30, "X-Alpha: One"}, {1, "Age: 1"}}, "1.4", names, 1, &dec_pages);
    EXPECT_EQ(r.encode_status, WSP_OK);
    EXPECT_EQ(r.decode_status, WSP_OK);
    EXPECT_EQ(r.text, "X-Alpha: One\nage:1\n");
}
