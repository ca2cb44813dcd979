// Content-Disposition value decoding: well-known and token dispositions,
// parameters, refusals, writers, bounds and truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kDisposition = 0x2E;
constexpr uint32_t kDispositionV4 = 0x45;

DecodeResult disp(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_disposition, kDisposition, in, out_size, remaining);
}

void expect_refused(const Bytes &in) {
    DecodeResult r = disp(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

TEST(DecodeDisposition, WellKnownDispositions) {
    const char *names[] = {"form-data", "attachment", "inline"};
    for (int d = 0; d < 3; ++d) {
        DecodeResult r = disp(bytes({0x01, 0x80 | d}));
        EXPECT_EQ(r.status, WSP_OK);
        EXPECT_EQ(r.text, std::string("content-disposition:") + names[d] + "\n");
        EXPECT_EQ(r.moved, 2);
    }
}

TEST(DecodeDisposition, NewerCodeSameName) {
    DecodeResult r = decode(wsp_dec_disposition, kDispositionV4, bytes({0x01, 0x82}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:inline\n");
}

TEST(DecodeDisposition, CodeAboveTwoRefused) {
    expect_refused(bytes({0x01, 0x83}));
    expect_refused(bytes({0x01, 0xFF}));
}

TEST(DecodeDisposition, TokenDisposition) {
    DecodeResult r = disp(short_length(cstr("x-form")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:x-form\n");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeDisposition, TypedParameter) {
    // 0x86: "filename".
    DecodeResult r = disp(short_length(cat({bytes({0x81, 0x86}), cstr("a.txt")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:attachment;filename=a.txt\n");
    EXPECT_EQ(r.moved, 9);
}

TEST(DecodeDisposition, SeveralParametersAfterAToken) {
    DecodeResult r = disp(short_length(cat({cstr("t"), bytes({0x85}), cstr("n"), cstr("x"), bytes({0x85}),
                                              cstr("y"), bytes({0x00})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:t;name=n;x=5;y\n");
    EXPECT_EQ(r.moved, 12);
}

TEST(DecodeDisposition, ParameterFailureRefused) {
    expect_refused(bytes({0x03, 0x81, 0x84, 0x00})); // parameter code 0x04
    expect_refused(bytes({0x02, 0x81, 0x01}));       // parameter of class 0
    expect_refused(short_length(cat({bytes({0x81}), cstr("a/b")})));
}

TEST(DecodeDisposition, ParameterRunPastTheInputRefused) {
    // The length equals remaining, so its last octet is missing.
    expect_refused(cat({bytes({0x05, 0x81}), cstr("x"), bytes({0x85})}));
}

TEST(DecodeDisposition, ZeroLengthWritesNothing) {
    DecodeResult r = disp(bytes({0x00, 0x81}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeDisposition, FirstOctetMustStartALength) {
    expect_refused(bytes({0x81}));
    expect_refused(cstr("inline"));
    expect_refused(cstr("\"inline"));
    expect_refused(bytes({0x7F, 'a', 0}));
    DecodeResult r = disp(bytes({0x01, 0x81}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeDisposition, ShortLengthAboveRemainingRefused) { expect_refused(bytes({0x04, 0x81, 0x85})); }

TEST(DecodeDisposition, OtherClassInsideRefused) {
    expect_refused(short_length(cstr("\"q")));
    expect_refused(short_length(bytes({0x7F, 'q', 0})));
    expect_refused(bytes({0x02, 0x01, 0x00}));
    expect_refused(bytes({0x02, 0x1F, 0x00}));
}

TEST(DecodeDisposition, TokenBoundedByTheLength) {
    expect_refused(cat({bytes({0x02}), cstr("abc")}));
    expect_refused(bytes({0x03, 'a', 'b', 'c'}));
}

TEST(DecodeDisposition, LengthQuoteForm) {
    DecodeResult r = disp(bytes({0x1F, 0x01, 0x82}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:inline\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeDisposition, LengthQuoteWrapsAtSixteenBits) {
    // 0x10001 is kept as the 16-bit length 1.
    DecodeResult r = disp(bytes({0x1F, 0x84, 0x80, 0x01, 0x81}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:attachment\n");
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeDisposition, EachHeaderGetsItsOwnLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_disposition, kDisposition, bytes({0x01, 0x81}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_disposition, kDisposition, bytes({0x01, 0x82}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:attachment\ncontent-disposition:inline\n");
}

TEST(DecodeDisposition, OutputFullRefusedWithCursorUnchanged) {
    // "content-disposition:inline\n" is 27 octets.
    DecodeResult r = disp(bytes({0x01, 0x82}), 26);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    DecodeResult fits = disp(bytes({0x01, 0x82}), 27);
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.moved, 2);
    EXPECT_EQ(fits.text, "content-disposition:inline\n");
}

TEST(DecodeDisposition, TokenOf197CharactersWritten) {
    std::string token(197, 't');
    DecodeResult r = disp(quoted_length(cstr(token)));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-disposition:" + token + "\n");
}

TEST(DecodeDisposition, TokenFillingTheScratchRefused) {
    expect_refused(quoted_length(cstr(std::string(198, 't'))));
}

TEST(DecodeDisposition, ParameterPastTheTextLimitRefused) {
    expect_refused(quoted_length(cat({cstr(std::string(190, 't')), cstr("abcdef"), bytes({0x85})})));
}

TEST(DecodeDisposition, TruncatedAtEveryLength) {
    const Bytes forms[] = {
        short_length(cat({bytes({0x81, 0x86}), cstr("a.txt")})),
        short_length(cat({cstr("t"), cstr("x"), bytes({0x85})})),
        bytes({0x1F, 0x01, 0x82}),
    };
    for (const Bytes &full : forms) {
        ASSERT_EQ(disp(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) expect_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
    }
}

TEST(DecodeDisposition, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_disposition, 0x48, bytes({0x01, 0x81})).status, WSP_ERR_FAIL);
}

} // namespace
