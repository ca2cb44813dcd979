// Every internal buffer-style writer seen through an output whose offset is
// not zero (the sweep is described in wsp_test_support.h).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "decode/decode.h"
#include "encode/encode.h"
#include "encode/encoder_support.h"
#include "pdu/pdu.h"
#include "primitives.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// A writer of a value text: each run gets its own writable copy.
Writer text_writer(int (*fn)(const char *, wsp_buffer *), const std::string &text) {
    return [fn, text](wsp_buffer *out) { return fn(text.c_str(), out); };
}

// A well-known header value encoder reached through the dispatch table.
Writer table_writer(uint8_t code, const std::string &value) {
    return [code, value](wsp_buffer *out) {
        TextCopy copy(value);
        return wsp_header_encoders[code](code, copy.get(), out, 3);
    };
}

} // namespace

// ---- primitive writers ----------------------------------------------------------

TEST(OffsetWriters, TokenText) { expect_offset_safe(text_writer(wsp_tokentext_encode_buff, "x-abc")); }

TEST(OffsetWriters, TextString) { expect_offset_safe(text_writer(wsp_append_text_string, "abc def")); }

TEST(OffsetWriters, TextStringWithQuote) { expect_offset_safe(text_writer(wsp_append_text_string, "\xE9t\xE9")); }

TEST(OffsetWriters, PlainText) { expect_offset_safe(text_writer(wsp_append_plain_text, "\xE9t\xE9 x")); }

TEST(OffsetWriters, QuotedString) { expect_offset_safe(text_writer(wsp_append_quoted_string, "\"abc\"")); }

TEST(OffsetWriters, UnclosedQuotedString) { expect_offset_safe(text_writer(wsp_append_quoted_string, "\"abc")); }

TEST(OffsetWriters, ShortInteger) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_append_short_int(5, out); });
}

TEST(OffsetWriters, LongInteger) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_append_long_int(0x123456, out); });
}

TEST(OffsetWriters, IntegerValue) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_append_integer(200, out); });
}

TEST(OffsetWriters, IntegerTextDecimal) { expect_offset_safe(text_writer(wsp_append_integer_text, "200")); }

TEST(OffsetWriters, IntegerTextLongHexadecimal) {
    expect_offset_safe(text_writer(wsp_append_integer_text, "0x1FFFFFFFFF"));
}

TEST(OffsetWriters, VersionNumeric) { expect_offset_safe(text_writer(wsp_append_version, "1.2")); }

TEST(OffsetWriters, VersionAsText) { expect_offset_safe(text_writer(wsp_append_version, "9.1")); }

TEST(OffsetWriters, RawOctets) {
    expect_offset_safe([](wsp_buffer *out) {
        const uint8_t octets[] = {1, 2, 3};
        return wsp_append_bytes(octets, 3, out);
    });
}

TEST(OffsetWriters, ShortValueBlock) {
    expect_offset_safe([](wsp_buffer *out) {
        uint8_t octets[] = {9, 1, 2, 3};
        wsp_buffer src{octets, 0, 4, 1, 3, 0, 0};
        return wsp_append_value_block(out, &src);
    });
}

TEST(OffsetWriters, LongValueBlock) {
    expect_offset_safe([](wsp_buffer *out) {
        uint8_t octets[40];
        for (uint8_t i = 0; i < 40; ++i) octets[i] = i;
        wsp_buffer src{octets, 0, 40, 0, 40, 0, 0};
        return wsp_append_value_block(out, &src);
    });
}

// ---- encoder building blocks ------------------------------------------------------

TEST(OffsetWriters, Uintvar) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_append_uintvar(0x4000, out); });
}

TEST(OffsetWriters, UntypedValue) { expect_offset_safe(text_writer(wsp_append_untyped_value, "\"quoted\"")); }

TEST(OffsetWriters, CodeOctet) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_write_code_octet(0x05, out); });
}

TEST(OffsetWriters, MediaCode) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_write_media_code(0x201, out); });
}

TEST(OffsetWriters, GeneralForm) {
    expect_offset_safe([](wsp_buffer *out) {
        uint8_t octets[] = {0x83, 0x81, 0xEA};
        wsp_buffer scratch{octets, 0, 3, 0, 3, 0, 0};
        return wsp_write_general_form(out, &scratch);
    });
}

TEST(OffsetWriters, Parameter) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("charset=utf-8");
        return wsp_encode_param(text.get(), out, 3, nullptr);
    });
}

TEST(OffsetWriters, ParameterValue) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("0.5");
        uint8_t fallback = 1;
        return wsp_encode_param_value(text.get(), 0x00, out, &fallback);
    });
}

TEST(OffsetWriters, ParameterList) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("charset=utf-8; level=1");
        return wsp_append_param_list(text.get(), ";", false, out, 3);
    });
}

TEST(OffsetWriters, Accept) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("text/html; q=0.5, application/xml");
        return wsp_encode_accept(0x00, text.get(), out, 3);
    });
}

TEST(OffsetWriters, AcceptQList) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("utf-8;q=0.5, us-ascii");
        return wsp_encode_accept_qlist(0x01, text.get(), out);
    });
}

TEST(OffsetWriters, ProfileLines) {
    expect_offset_safe([](wsp_buffer *out) {
        TextCopy text("http://p.example/a\nhttp://p.example/b");
        return wsp_uaphdr_lines(0x35, text.get(), out);
    });
}

TEST(OffsetWriters, PlainHeaderLine) {
    expect_offset_safe([](wsp_buffer *out) { return wsp_append_header_line(out, "age", "30"); });
}

// ---- every entry of the header encoder table -------------------------------------

namespace {

struct Sample {
    uint8_t code;
    const char *value;
};

// One value per well-known header code that has an encoder, chosen so that
// it takes the encoder's main road.
const Sample kSamples[] = {
    {0x01, "utf-8;q=0.5, us-ascii"},
    {0x02, "gzip, deflate"},
    {0x03, "en;q=0.7, fr"},
    {0x04, "bytes"},
    {0x05, "3600"},
    {0x06, "GET, POST"},
    {0x07, "Basic QWxh:ZGRp"},
    {0x08, "max-age=3600, no-cache"},
    {0x09, "close"},
    {0x0A, "http://a.example/"},
    {0x0B, "gzip"},
    {0x0C, "en"},
    {0x0D, "1234"},
    {0x0E, "http://a.example/x"},
    {0x0F, "0x120x120x120x120x120x120x120x120x120x120x120x120x120x120x120x12"},
    {0x10, "bytes 0-499/1234"},
    {0x12, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x13, "\"xyzzy\""},
    {0x14, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x15, "a@b.example"},
    {0x16, "host.example"},
    {0x17, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x18, "\"xyzzy\", \"r2d2\""},
    {0x19, "\"xyzzy\""},
    {0x1A, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x1B, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x1C, "http://a.example/"},
    {0x1D, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x1E, "10"},
    {0x1F, "no-cache"},
    {0x20, "Basic realm=\"wally\""},
    {0x21, "Basic a:b"},
    {0x22, "GET, HEAD"},
    {0x23, "bytes=0-499"},
    {0x24, "http://r.example/"},
    {0x25, "120"},
    {0x26, "srv/1.0"},
    {0x27, "chunked"},
    {0x28, "HTTP/2.0"},
    {0x29, "ua/1.0"},
    {0x2A, "accept-language"},
    {0x2B, "1.0 fred"},
    {0x2C, "99 proxy \"Response is stale\""},
    {0x2D, "Basic realm=\"wally\""},
    {0x2E, "attachment; filename=\"a.txt\""},
    {0x2F, "x-wap-application:push.sia"},
    {0x30, "http://c.example/"},
    {0x31, "http://i.example/"},
    {0x32, "x-wap-application:push.sia"},
    {0x33, "1"},
    {0x34, "1"},
    {0x38, "100-continue"},
    {0x39, "trailers"},
    {0x3A, "x-a"},
    {0x3B, "utf-8"},
    {0x3C, "gzip;q=0.5"},
    {0x3D, "no-cache"},
    {0x3E, "bytes 500-999/*"},
    {0x3F, "Sun, 06 Nov 1994 08:49:37 GMT"},
    {0x40, "<Abc.1>"},
    {0x42, "$Version=1; a=b; $Path=/"},
    {0x43, "1.3"},
    {0x45, "inline"},
    {0x46, "close-subordinate"},
    {0x47, "max-age=10"},
};

} // namespace

TEST(OffsetHeaderEncoders, SamplesCoverEveryEntry) {
    bool covered[72] = {};
    for (const Sample &s : kSamples) covered[s.code] = true;
    for (uint8_t code = 0; code < 72; ++code) {
        EXPECT_EQ(covered[code], wsp_header_encoders[code] != nullptr) << "code " << int(code);
    }
}

TEST(OffsetHeaderEncoders, EveryEntryOnlyMovesItsBytes) {
    for (const Sample &s : kSamples) {
        SCOPED_TRACE(testing::Message() << "code 0x" << std::hex << int(s.code) << " value " << s.value);
        expect_offset_safe(table_writer(s.code, s.value));
    }
}

// ---- the one octet that may be dropped ---------------------------------------------

TEST(OffsetWriters, UnclosedQuotedStringFillingSizeDropsOnlyItsNul) {
    // Four octets counted for the four characters; the NUL would land at
    // data + offset + size and is the one octet not stored.
    OutBuffer b(4, 3);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_quoted_string("\"abc", b.get()), WSP_OK);
    EXPECT_EQ(b->length, 4);
    EXPECT_EQ(b.region_hex(), "EE EE EE 22 61 62 63");
}

TEST(OffsetWriters, PlainHeaderLineFillingSizeDropsOnlyItsNul) {
    OutBuffer b(6, 2);
    b.fill(0xEE);
    EXPECT_EQ(wsp_append_header_line(b.get(), "age", "3"), WSP_OK);
    EXPECT_EQ(b->length, 6);
    EXPECT_EQ(b.region_hex(), "EE EE 61 67 65 3A 33 0A");
}
