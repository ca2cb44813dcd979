// Cache-Control value decoding: bare directives, the length form with field
// names, numbers, quoted strings and tokens, merging of repeated headers,
// the refusals and their statuses, bounds and truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kCacheControl = 0x08;

DecodeResult cc(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_cache_control, kCacheControl, in, out_size, remaining);
}

void expect_refused(const Bytes &in, int status) {
    DecodeResult r = cc(in);
    EXPECT_EQ(r.status, status) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

// ---- bare directives ----------------------------------------------------

TEST(DecodeCacheControl, BareNoCache) {
    DecodeResult r = cc(bytes({0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-cache\n");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeCacheControl, BareDirectivesWithoutValueGiveTheirNames) {
    const struct {
        int octet;
        const char *name;
    } rows[] = {{0x80, "no-cache"},     {0x81, "no-store"}, {0x83, "max-stale"},
                {0x85, "only-if-cached"}, {0x86, "public"},   {0x87, "private"},
                {0x88, "no-transform"}, {0x89, "must-revalidate"}, {0x8A, "proxy-revalidate"}};
    for (const auto &row : rows) {
        DecodeResult r = cc(bytes({row.octet}));
        EXPECT_EQ(r.status, WSP_OK) << row.name;
        EXPECT_EQ(r.text, std::string("cache-control:") + row.name + "\n");
        EXPECT_EQ(r.moved, 1);
    }
}

TEST(DecodeCacheControl, BareMaxAgeAndMinFreshNeedAValue) {
    expect_refused(bytes({0x82}), WSP_ERR_ARG);
    expect_refused(bytes({0x84}), WSP_ERR_ARG);
}

TEST(DecodeCacheControl, BareSMaxAgeRefusedUnderEveryCacheControlCode) {
    for (uint32_t code : {0x08u, 0x3Du, 0x47u}) {
        DecodeResult r = decode(wsp_dec_cache_control, code, bytes({0x8B}));
        EXPECT_EQ(r.status, WSP_ERR_ARG) << code;
        EXPECT_EQ(r.moved, 0);
        EXPECT_EQ(r.text, "");
    }
}

TEST(DecodeCacheControl, BareSMaxAgeTiedToCode0x3E) {
    // Only a header code of 0x3E lets a bare s-maxage through; the line
    // then carries that code's name.
    DecodeResult r = decode(wsp_dec_cache_control, 0x3E, bytes({0x8B}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "content-range:s-maxage\n");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeCacheControl, BareCodeAboveElevenRefused) {
    expect_refused(bytes({0x8C}), WSP_ERR_FAIL);
    expect_refused(bytes({0xFF}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, NewerCodesShareTheName) {
    EXPECT_EQ(decode(wsp_dec_cache_control, 0x3D, bytes({0x81})).text, "cache-control:no-store\n");
    EXPECT_EQ(decode(wsp_dec_cache_control, 0x47, bytes({0x81})).text, "cache-control:no-store\n");
}

TEST(DecodeCacheControl, BareToken) {
    DecodeResult r = cc(cstr("x-ext"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:x-ext\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeCacheControl, BareTokenReaderStatusPassedOn) {
    expect_refused(cstr("a/b"), WSP_ERR_FAIL);          // a separator
    expect_refused(text_bytes("abc"), WSP_ERR_FAIL);    // no NUL before the end
    expect_refused(cstr(std::string(198, 'a')), WSP_ERR_TRUNCATED); // fills the scratch
}

TEST(DecodeCacheControl, BareTokenOf197Characters) {
    DecodeResult r = cc(cstr(std::string(197, 'a')));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:" + std::string(197, 'a') + "\n");
    EXPECT_EQ(r.moved, 198);
}

TEST(DecodeCacheControl, RemainingZeroRefused) {
    DecodeResult r = cc(bytes({0x80}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeCacheControl, QuoteAndQuotedStringFirstRefused) {
    expect_refused(bytes({0x7F, 'a', 0}), WSP_ERR_FAIL);
    expect_refused(bytes({'"', 'a', 0}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, RepeatedHeadersMergeIntoOneLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_cache_control, kCacheControl, bytes({0x80}), out).status, WSP_OK);
    EXPECT_EQ(decode_into(wsp_dec_cache_control, kCacheControl, bytes({0x02, 0x82, 0x85}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_cache_control, kCacheControl, cstr("x"), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-cache,max-age=5,x\n");
}

TEST(DecodeCacheControl, BareFormOutputFullPassesTruncatedAndMovesCursor) {
    // "cache-control:no-cache\n" needs 23 octets plus the terminator.
    DecodeResult r = cc(bytes({0x80}), 10);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(r.text, "");
}

// ---- the length form ------------------------------------------------------

TEST(DecodeCacheControl, ZeroLengthWritesNothing) {
    DecodeResult r = cc(bytes({0x00, 0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeCacheControl, MaxAgeShortInteger) {
    DecodeResult r = cc(bytes({0x02, 0x82, 0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=5\n");
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeCacheControl, MaxAgeLongInteger) {
    DecodeResult r = cc(bytes({0x03, 0x82, 0x01, 0xC8}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=200\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeCacheControl, MaxAgeFourOctetsUnsigned) {
    DecodeResult r = cc(bytes({0x06, 0x82, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=4294967295\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeCacheControl, MaxAgeLongerIntegerAsHex) {
    DecodeResult r = cc(bytes({0x07, 0x82, 0x05, 0x01, 0x0A, 0xFF, 0x00, 0x02}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=0X1AFF02\n");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeCacheControl, SMaxAgeInsideALengthIsFine) {
    DecodeResult r = cc(bytes({0x02, 0x8B, 0x9E}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:s-maxage=30\n");
}

TEST(DecodeCacheControl, OtherWellKnownDirectiveTakesANumber) {
    // Even a directive that never carries a value reads one here.
    DecodeResult r = cc(bytes({0x02, 0x81, 0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-store=0\n");
}

TEST(DecodeCacheControl, WellKnownDirectiveWithoutValueRefused) {
    expect_refused(bytes({0x01, 0x82}), WSP_ERR_FAIL);
    // The value octet lies past the length: the length is used up.
    expect_refused(bytes({0x01, 0x82, 0x85}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, WellKnownDirectiveValueMustBeANumber) {
    expect_refused(bytes({0x03, 0x82, 'a', 0}), WSP_ERR_FAIL);
    expect_refused(bytes({0x03, 0x82, '"', 0}), WSP_ERR_FAIL);
    expect_refused(bytes({0x03, 0x82, 0x1F, 0x01}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, DirectiveCodeAboveElevenRefused) { expect_refused(bytes({0x02, 0x8C, 0x85}), WSP_ERR_FAIL); }

TEST(DecodeCacheControl, DirectiveOfOtherClassRefused) {
    expect_refused(bytes({0x02, '"', 0}), WSP_ERR_FAIL);
    expect_refused(bytes({0x02, 0x01, 0x80}), WSP_ERR_FAIL);
    expect_refused(bytes({0x02, 0x7F, 0}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, NoCacheWithFieldNames) {
    DecodeResult r = cc(bytes({0x03, 0x80, 0x81, 0x90}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-cache= \"accept-charset,content-range\"\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeCacheControl, PrivateWithTokenAndCodeFieldNames) {
    DecodeResult r = cc(short_length(cat({bytes({0x87}), cstr("x-a"), bytes({0x92})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:private= \"x-a,date\"\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeCacheControl, NoCacheWithEmptyFieldListRefused) {
    // The field-name list's own refusal (-211) comes back as -214.
    expect_refused(bytes({0x01, 0x80}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, FieldListFailureGivesFail) {
    expect_refused(bytes({0x02, 0x80, 0x01}), WSP_ERR_FAIL);      // bad class
    expect_refused(bytes({0x03, 0x87, 'a', '/'}), WSP_ERR_FAIL);  // bad token
}

TEST(DecodeCacheControl, FieldListRunPastTheInputRefused) {
    // The length claims three octets; only two follow it.
    expect_refused(bytes({0x03, 0x80, 0x81}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, TokenDirectiveWithShortIntegerValue) {
    DecodeResult r = cc(short_length(cat({cstr("ext"), bytes({0x85})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:ext=5\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeCacheControl, TokenDirectiveWithLongIntegerSigned) {
    EXPECT_EQ(cc(short_length(cat({cstr("ext"), bytes({0x02, 0xFF, 0xFF})}))).text, "cache-control:ext=65535\n");
    // Written with "%d": all bits set prints as -1.
    DecodeResult r = cc(short_length(cat({cstr("ext"), bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:ext=-1\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeCacheControl, TokenDirectiveWithQuotedStringKeepsQuotes) {
    DecodeResult r = cc(short_length(cat({cstr("ext"), cstr("\"ab")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:ext=\"ab\"\n");
    EXPECT_EQ(r.moved, 9);
}

TEST(DecodeCacheControl, TokenDirectiveWithTokenValue) {
    DecodeResult r = cc(short_length(cat({cstr("ext"), cstr("ab")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:ext=ab\n");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeCacheControl, TokenDirectiveValueRefusals) {
    expect_refused(short_length(cat({cstr("ext"), bytes({0x7F, 'a', 0})})), WSP_ERR_FAIL); // Quote is no token
    expect_refused(short_length(cat({cstr("ext"), bytes({0x1F, 0x01})})), WSP_ERR_FAIL);   // Length-quote
    expect_refused(short_length(cat({cstr("ext"), bytes({0x05, 1, 2, 3, 4, 5})})), WSP_ERR_FAIL); // 5 octets
    expect_refused(short_length(cat({cstr("ext"), cstr("a/b")})), WSP_ERR_FAIL);
    expect_refused(short_length(cstr("ext")), WSP_ERR_FAIL); // no value at all
}

TEST(DecodeCacheControl, TokenDirectiveReaderStatusPassedOn) {
    expect_refused(bytes({0x03, 'a', '/', 0}), WSP_ERR_FAIL);
    expect_refused(quoted_length(cat({cstr(std::string(198, 'a')), bytes({0x85})})), WSP_ERR_TRUNCATED);
}

TEST(DecodeCacheControl, LengthQuoteForm) {
    DecodeResult r = cc(bytes({0x1F, 0x02, 0x82, 0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=5\n");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeCacheControl, LengthQuoteBadUintvarRefused) {
    expect_refused(bytes({0x1F, 0x80, 0x02, 0x82, 0x85}), WSP_ERR_FAIL);
    expect_refused(bytes({0x1F}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, LengthQuoteOfZeroIsNoEmptyValue) {
    // Only the Short-length 0 is passed over; a Length-quote of 0 leaves
    // nothing for the directive.
    expect_refused(bytes({0x1F, 0x00, 0x80}), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, LengthQuoteWrapsAtSixteenBits) {
    // 0x10002 is kept as the 16-bit length 2.
    DecodeResult r = cc(bytes({0x1F, 0x84, 0x80, 0x02, 0x82, 0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:max-age=5\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeCacheControl, ShortLengthAboveRemainingRefused) { expect_refused(bytes({0x04, 0x82, 0x85}), WSP_ERR_FAIL); }

TEST(DecodeCacheControl, LengthNotUsedExactlyRefused) {
    expect_refused(bytes({0x03, 0x82, 0x85, 0x00}), WSP_ERR_FAIL);
    // The length equals remaining: its last octet lies past the input.
    expect_refused(bytes({0x03, 0x82, 0x85}), WSP_ERR_FAIL);
    // The value runs over the length.
    expect_refused(bytes({0x02, 0x82, 0x01, 0xC8}), WSP_ERR_FAIL);
    expect_refused(short_length(cat({cstr("ext"), bytes({0x85, 0x00})})), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, TruncatedAtEveryLength) {
    const Bytes forms[] = {
        bytes({0x03, 0x82, 0x01, 0xC8}),
        short_length(cat({cstr("ext"), bytes({0x02, 0x01, 0x02})})),
        short_length(cat({cstr("ext"), cstr("\"ab")})),
        bytes({0x03, 0x80, 0x81, 0x90}),
        bytes({0x1F, 0x02, 0x82, 0x85}),
    };
    for (const Bytes &full : forms) {
        ASSERT_EQ(cc(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) {
            Bytes part(full.begin(), full.begin() + static_cast<long>(n));
            expect_refused(part, WSP_ERR_FAIL);
        }
    }
}

TEST(DecodeCacheControl, TextOf197CharactersWritten) {
    // 195-character directive, "=", one digit: 197 characters.
    std::string name(195, 'd');
    DecodeResult r = cc(quoted_length(cat({cstr(name), bytes({0x85})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:" + name + "=5\n");
}

TEST(DecodeCacheControl, TextOf198CharactersRefused) {
    expect_refused(quoted_length(cat({cstr(std::string(196, 'd')), bytes({0x85})})), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, DirectiveNameOf197CharactersRefusedBeforeValue) {
    expect_refused(quoted_length(cat({cstr(std::string(197, 'd')), bytes({0x85})})), WSP_ERR_FAIL);
}

TEST(DecodeCacheControl, TokenDirectiveWithEmptyLongInteger) {
    // An octet 0 after a token directive is a Long-integer of no octets.
    DecodeResult r = cc(short_length(cat({cstr("ext"), bytes({0x00})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:ext=0\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeCacheControl, LengthFormOutputFullPassesTruncatedAndMovesCursor) {
    DecodeResult r = cc(bytes({0x02, 0x82, 0x85, 0x81}), 12);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 3);
}

TEST(DecodeCacheControl, LengthFormMergesIntoExistingLine) {
    OutBuffer out(256);
    prefill(out, "date:x\ncache-control:no-store\n");
    DecodeResult r = decode_into(wsp_dec_cache_control, 0x47, bytes({0x02, 0x82, 0x85}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "date:x\ncache-control:no-store,max-age=5\n");
}

TEST(DecodeCacheControl, CodePastTheNameTableRefused) {
    DecodeResult r = decode(wsp_dec_cache_control, 0x48, bytes({0x80}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- through the block decoder ------------------------------------------------

TEST(DecodeCacheControl, BlockWritesNoCache) {
    DecodeResult r = decode_block(bytes({0x88, 0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-cache\n");
}

TEST(DecodeCacheControl, BlockDropsBareMaxAgeAndGoesOn) {
    DecodeResult r = decode_block(bytes({0x88, 0x82, 0x88, 0x81}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "cache-control:no-store\n");
}

} // namespace
