// The header encoder dispatch table: which value encoder each well-known
// header code reaches, and which codes have none.
#include <gtest/gtest.h>

#include "core/date.h"
#include "encode/encode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

struct Expected {
    uint8_t code;
    wsp_header_encoder encoder;
};

// Every code of the table, in order.
const Expected kExpected[72] = {
    {0x00, nullptr},
    {0x01, wsp_encode_qlist_entry},
    {0x02, wsp_encode_accept_encoding},
    {0x03, wsp_encode_qlist_entry},
    {0x04, wsp_encode_token_list},
    {0x05, wsp_encode_number_or_text},
    {0x06, wsp_encode_allow},
    {0x07, wsp_encode_credentials},
    {0x08, wsp_encode_cache_control},
    {0x09, wsp_encode_token_list},
    {0x0A, wsp_encode_number_or_text},
    {0x0B, wsp_encode_token_list},
    {0x0C, wsp_encode_token_list},
    {0x0D, wsp_encode_number_or_text},
    {0x0E, wsp_encode_number_or_text},
    {0x0F, wsp_encode_content_md5},
    {0x10, wsp_encode_content_range},
    {0x11, nullptr},
    {0x12, wsp_encode_date_header},
    {0x13, wsp_encode_number_or_text},
    {0x14, wsp_encode_date_header},
    {0x15, wsp_encode_number_or_text},
    {0x16, wsp_encode_number_or_text},
    {0x17, wsp_encode_date_header},
    {0x18, wsp_encode_text_list},
    {0x19, wsp_encode_text_list},
    {0x1A, wsp_encode_if_range},
    {0x1B, wsp_encode_date_header},
    {0x1C, wsp_encode_number_or_text},
    {0x1D, wsp_encode_date_header},
    {0x1E, wsp_encode_number_or_text},
    {0x1F, wsp_encode_pragma},
    {0x20, wsp_encode_challenge},
    {0x21, wsp_encode_credentials},
    {0x22, wsp_encode_token_list},
    {0x23, wsp_encode_range},
    {0x24, wsp_encode_number_or_text},
    {0x25, wsp_encode_retry_after},
    {0x26, wsp_encode_number_or_text},
    {0x27, wsp_encode_token_list},
    {0x28, wsp_encode_text_list},
    {0x29, wsp_encode_number_or_text},
    {0x2A, wsp_encode_vary},
    {0x2B, wsp_encode_text_list},
    {0x2C, wsp_encode_warning},
    {0x2D, wsp_encode_challenge},
    {0x2E, wsp_encode_disposition},
    {0x2F, wsp_encode_app_id},
    {0x30, wsp_encode_number_or_text},
    {0x31, wsp_encode_number_or_text},
    {0x32, wsp_encode_accept_app},
    {0x33, wsp_encode_bearer_push_flag},
    {0x34, wsp_encode_bearer_push_flag},
    {0x35, nullptr},
    {0x36, nullptr},
    {0x37, nullptr},
    {0x38, wsp_encode_expect},
    {0x39, wsp_encode_te},
    {0x3A, wsp_encode_trailer},
    {0x3B, wsp_encode_qlist_entry},
    {0x3C, wsp_encode_qlist_entry},
    {0x3D, wsp_encode_cache_control},
    {0x3E, wsp_encode_content_range},
    {0x3F, wsp_encode_date_header},
    {0x40, wsp_encode_content_id},
    {0x41, nullptr},
    {0x42, wsp_encode_cookie},
    {0x43, wsp_encode_encoding_version},
    {0x44, nullptr},
    {0x45, wsp_encode_disposition},
    {0x46, wsp_encode_security},
    {0x47, wsp_encode_cache_control},
};

// Runs the table entry of `code` on a copy of `value` into a buffer of
// `size` bytes; returns the status and the written bytes as hex.
std::pair<int, std::string> run(uint8_t code, const char *value, uint16_t size, uint8_t version) {
    TextCopy text(value);
    OutBuffer out(size);
    int status = wsp_header_encoders[code](code, text.get(), out.get(), version);
    return {status, out.written_hex()};
}

} // namespace

TEST(HeaderEncodersTable, EveryCodeReachesItsFamily) {
    for (const Expected &e : kExpected) {
        EXPECT_EQ(wsp_header_encoders[e.code], e.encoder) << "code 0x" << std::hex << int(e.code);
    }
}

TEST(HeaderEncodersTable, EmptyEntriesAreExactlyTheSevenUnencodedHeaders) {
    int empty = 0;
    for (int code = 0; code < 72; ++code) {
        if (wsp_header_encoders[code] == nullptr) ++empty;
    }
    EXPECT_EQ(empty, 7);
    EXPECT_EQ(wsp_header_encoders[0x00], nullptr); // accept
    EXPECT_EQ(wsp_header_encoders[0x11], nullptr); // content-type
    EXPECT_EQ(wsp_header_encoders[0x35], nullptr); // profile
    EXPECT_EQ(wsp_header_encoders[0x36], nullptr); // profile_diff
    EXPECT_EQ(wsp_header_encoders[0x37], nullptr); // profile-warning
    EXPECT_EQ(wsp_header_encoders[0x41], nullptr); // set-cookie
    EXPECT_EQ(wsp_header_encoders[0x44], nullptr); // profile-warning
}

TEST(HeaderEncodersTable, NewerAcceptEncodingUsesTheQListEncoderNotTheTokenEncoder) {
    EXPECT_EQ(wsp_header_encoders[0x3C], wsp_encode_qlist_entry);
    EXPECT_EQ(wsp_header_encoders[0x02], wsp_encode_accept_encoding);
    EXPECT_NE(wsp_header_encoders[0x02], wsp_header_encoders[0x3C]);
}

TEST(HeaderEncodersTable, SharedNamesShareTheirEncoder) {
    EXPECT_EQ(wsp_header_encoders[0x08], wsp_header_encoders[0x3D]);
    EXPECT_EQ(wsp_header_encoders[0x08], wsp_header_encoders[0x47]);
    EXPECT_EQ(wsp_header_encoders[0x10], wsp_header_encoders[0x3E]);
    EXPECT_EQ(wsp_header_encoders[0x2E], wsp_header_encoders[0x45]);
    EXPECT_EQ(wsp_header_encoders[0x01], wsp_header_encoders[0x3B]);
}

TEST(HeaderEncodersTable, AgeEntryWritesTheIntegerForm) {
    auto [status, bytes] = run(0x05, " 30", 8, 3);
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(bytes, "85 9E");
}

TEST(HeaderEncodersTable, ServerEntryWritesTheTextForm) {
    auto [status, bytes] = run(0x26, " ab", 8, 3);
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(bytes, "A6 61 62 00");
}

TEST(HeaderEncodersTable, CacheControlEntriesWriteTheirOwnCode) {
    auto a = run(0x08, "no-cache", 8, 0);
    auto b = run(0x47, "no-cache", 8, 3);
    EXPECT_EQ(a.first, WSP_OK);
    EXPECT_EQ(a.second, "88 80");
    EXPECT_EQ(b.first, WSP_OK);
    EXPECT_EQ(b.second, "C7 80");
}

TEST(HeaderEncodersTable, ContentDispositionEntriesWriteTheirOwnCode) {
    auto a = run(0x2E, "inline", 8, 0);
    auto b = run(0x45, "inline", 8, 3);
    EXPECT_EQ(a.first, WSP_OK);
    EXPECT_EQ(a.second, "AE 01 82");
    EXPECT_EQ(b.first, WSP_OK);
    EXPECT_EQ(b.second, "C5 01 82");
}

TEST(HeaderEncodersTable, DateEntryWritesADateValue) {
    auto [status, bytes] = run(0x12, "Sun, 06 Nov 1994 08:49:37 GMT", 16, 3);
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(bytes, "92 04 2E BC 98 A1");
}

TEST(HeaderEncodersTable, SecurityEntryWritesCloseSubordinate) {
    auto [status, bytes] = run(0x46, "close-subordinate", 8, 3);
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(bytes, "C6 80");
}
