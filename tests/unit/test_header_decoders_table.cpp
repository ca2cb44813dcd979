// The decoder table: one entry per well-known header code, the eight empty
// ones, and the decoder behind every other code.
#include <gtest/gtest.h>

#include <cstring>

#include "core/tables.h"
#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

TEST(HeaderDecodersTable, EmptyEntriesAreExactlyTheEightSkippedHeaders) {
    const uint32_t empty[] = {0x11, 0x35, 0x36, 0x38, 0x39, 0x3B, 0x3C, 0x42};
    size_t nulls = 0;
    for (uint32_t code = 0; code < 72; ++code) {
        bool expected_empty = false;
        for (uint32_t e : empty) expected_empty = expected_empty || e == code;
        EXPECT_EQ(wsp_header_decoders[code] == nullptr, expected_empty) << code;
        if (wsp_header_decoders[code] == nullptr) ++nulls;
    }
    EXPECT_EQ(nulls, 8u);
    EXPECT_EQ(sizeof wsp_header_decoders / sizeof wsp_header_decoders[0], 72u);
}

TEST(HeaderDecodersTable, EveryEntryHoldsItsDecoder) {
    const wsp_header_decoder expected[72] = {
        wsp_dec_accept,          wsp_dec_accept,           wsp_dec_listed_value,    wsp_dec_accept,
        wsp_dec_listed_value,    wsp_dec_integer_value,    wsp_dec_allow,           wsp_dec_credentials,
        wsp_dec_cache_control,   wsp_dec_listed_value,     wsp_dec_text_value,      wsp_dec_listed_value,
        wsp_dec_listed_value,    wsp_dec_integer_value,    wsp_dec_text_value,      wsp_dec_content_md5,
        wsp_dec_content_range,   nullptr,                  wsp_dec_date_value,      wsp_dec_text_value,
        wsp_dec_date_value,      wsp_dec_text_value,       wsp_dec_text_value,      wsp_dec_date_value,
        wsp_dec_text_value,      wsp_dec_text_value,       wsp_dec_if_range,        wsp_dec_date_value,
        wsp_dec_text_value,      wsp_dec_date_value,       wsp_dec_integer_value,   wsp_dec_pragma,
        wsp_dec_challenge,       wsp_dec_credentials,      wsp_dec_listed_value,    wsp_dec_range,
        wsp_dec_text_value,      wsp_dec_retry_after,      wsp_dec_text_value,      wsp_dec_listed_value,
        wsp_dec_text_value,      wsp_dec_text_value,       wsp_dec_vary,            wsp_dec_text_value,
        wsp_dec_warning,         wsp_dec_challenge,        wsp_dec_disposition,     wsp_dec_app_id,
        wsp_dec_text_value,      wsp_dec_text_value,       wsp_dec_accept_app,      wsp_dec_bearer,
        wsp_dec_push_flag,       nullptr,                  nullptr,                 wsp_dec_profile_warning,
        nullptr,                 nullptr,                  wsp_dec_trailer,         nullptr,
        nullptr,                 wsp_dec_cache_control,    wsp_dec_content_range,   wsp_dec_date_value,
        wsp_dec_content_id,      wsp_dec_set_cookie,       nullptr,                 wsp_dec_encoding_version,
        wsp_dec_profile_warning, wsp_dec_disposition,      wsp_dec_security,        wsp_dec_cache_control,
    };
    for (uint32_t code = 0; code < 72; ++code) EXPECT_EQ(wsp_header_decoders[code], expected[code]) << code;
}

TEST(HeaderDecodersTable, TextEntriesWriteUnderTheCodesName) {
    for (uint32_t code = 0; code < 72; ++code) {
        if (wsp_header_decoders[code] != wsp_dec_text_value) continue;
        OutBuffer out(256);
        DecodeRun r = decode_value(wsp_header_decoders[code], code, cstr("v"), out);
        EXPECT_EQ(r.status, WSP_OK) << code;
        EXPECT_EQ(r.moved, 2u) << code;
        EXPECT_EQ(out.text(), std::string(wsp_header_names.name(code)) + ":v\n") << code;
    }
}

TEST(HeaderDecodersTable, DateEntriesWriteUnderTheCodesName) {
    for (uint32_t code = 0; code < 72; ++code) {
        if (wsp_header_decoders[code] != wsp_dec_date_value) continue;
        OutBuffer out(256);
        DecodeRun r = decode_value(wsp_header_decoders[code], code, bytes({0x01, 0x00}), out);
        EXPECT_EQ(r.status, WSP_OK) << code;
        EXPECT_EQ(out.text(), std::string(wsp_header_names.name(code)) + ":Thu, 01 Jan 1970 00:00:00 GMT\n") << code;
    }
}

TEST(HeaderDecodersTable, IntegerEntriesWriteUnderTheCodesName) {
    const uint32_t codes[] = {0x05, 0x0D, 0x1E};
    for (uint32_t code : codes) {
        OutBuffer out(256);
        EXPECT_EQ(decode_value(wsp_header_decoders[code], code, bytes({0x8A}), out).status, WSP_OK);
        EXPECT_EQ(out.text(), std::string(wsp_header_names.name(code)) + ":10\n");
    }
}

TEST(HeaderDecodersTable, ListedEntriesDecodeTheirFirstRow) {
    struct Case {
        uint32_t code;
        const char *line;
    };
    const Case cases[] = {{0x02, "accept-encoding:gzip\n"},   {0x04, "accept-ranges:none\n"},
                          {0x09, "connection:close\n"},       {0x0B, "content-encoding:gzip\n"},
                          {0x0C, "content-language:unknown-language\n"},
                          {0x22, "public:GET\n"},             {0x27, "transfer-encoding:chunked\n"}};
    for (const Case &c : cases) {
        OutBuffer out(256);
        // 0xC0 for Public (GET is 0x40), 0x80 for the others.
        Bytes v = bytes({c.code == 0x22 ? 0xC0 : 0x80});
        EXPECT_EQ(decode_value(wsp_header_decoders[c.code], c.code, v, out).status, WSP_OK) << c.code;
        EXPECT_EQ(out.text(), c.line);
    }
}

TEST(HeaderDecodersTable, SingleValueEntriesThroughTheTable) {
    struct Case {
        uint32_t code;
        Bytes value;
        const char *line;
    };
    const Case cases[] = {
        {0x00, bytes({0x83}), "accept:text/plain\n"},
        {0x01, bytes({0xEA}), "accept-charset:utf-8\n"},
        {0x03, bytes({0x99}), "accept-language:english\n"},
        {0x06, bytes({0xC0}), "allow:GET\n"},
        {0x1A, cstr("e"), "if-range:e\n"},
        {0x1F, bytes({0x80}), "pragma:no-cache\n"},
        {0x25, bytes({0x02, 0x81, 0x85}), "retry-after:5\n"},
        {0x2A, bytes({0x80}), "vary:accept\n"},
        {0x2F, bytes({0x82}), "x-wap-application-id:x-wap-application:wml.ua\n"},
        {0x32, bytes({0x80}), "accept-application:*\n"},
        {0x33, bytes({0x81}), "bearer-indication:1\n"},
        {0x34, bytes({0x81}), "push-flag:1\n"},
        {0x3A, bytes({0x85}), "trailer:age\n"},
        {0x40, bytes({0x22, 'i', 0x00}), "content-id:i\n"},
        {0x46, bytes({0x80}), "x-wap-security:close-subordinate\n"},
    };
    for (const Case &c : cases) {
        OutBuffer out(256);
        EXPECT_EQ(decode_value(wsp_header_decoders[c.code], c.code, c.value, out).status, WSP_OK) << c.code;
        EXPECT_EQ(out.text(), c.line) << c.code;
    }
}
