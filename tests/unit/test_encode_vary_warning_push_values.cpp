// Value encoders of Vary, Warning, X-Wap-Application-Id,
// Accept-Application, Bearer-Indication and Push-Flag, called directly with
// writable text and an exactly sized output buffer.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

constexpr uint8_t kVary = 0x2A;
constexpr uint8_t kWarning = 0x2C;
constexpr uint8_t kAppId = 0x2F;
constexpr uint8_t kAcceptApp = 0x32;
constexpr uint8_t kBearer = 0x33;
constexpr uint8_t kPushFlag = 0x34;

using Result = EncodeResult;

Result encode(wsp_header_encoder fn, uint8_t code, const std::string &value, uint16_t size = 512,
              uint8_t version = 3) {
    return encode_value(fn, code, value, size, version);
}

// The bytes of a text and its terminating NUL.
// ---- Vary ----

TEST(EncodeVary, KnownNameIsItsCodeLowerCased) {
    Result r = encode(wsp_encode_vary, kVary, "  Accept-Language ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AA 83");
}

TEST(EncodeVary, StarIsTokenText) {
    Result r = encode(wsp_encode_vary, kVary, " * ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AA 2A 00");
}

TEST(EncodeVary, EachElementIsAHeaderOfItsOwn) {
    Result r = encode(wsp_encode_vary, kVary, "age, X-Foo ,cache-control");
    EXPECT_EQ(r.status, WSP_OK);
    // A name defined twice takes its lowest code: cache-control is 0x08.
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAA, 0x85, 0xAA}), cstr("x-foo"), bytes({0xAA, 0x88})})));
}

TEST(EncodeVary, LastNameOfTheTableIsFound) {
    Result r = encode(wsp_encode_vary, kVary, "x-wap-security");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AA C6");
}

TEST(EncodeVary, EmptyValueFails) {
    EXPECT_EQ(encode(wsp_encode_vary, kVary, "").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_vary, kVary, " \t ").status, WSP_ERR_FAIL);
}

TEST(EncodeVary, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_vary(kVary, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeVary, CommaOnlyGivesOneEmptyToken) {
    // The tokenizer yields one empty element for a text of delimiters.
    Result r = encode(wsp_encode_vary, kVary, ",");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AA 00");
}

TEST(EncodeVary, NameThatIsNoTokenFails) {
    EXPECT_EQ(encode(wsp_encode_vary, kVary, "age, a/b").status, WSP_ERR_FAIL);
}

TEST(EncodeVary, ShortIntegerMayNotFillTheOutput) {
    EXPECT_EQ(encode(wsp_encode_vary, kVary, "age", 3).status, WSP_OK);
    Result r = encode(wsp_encode_vary, kVary, "age", 2);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_vary, kVary, "age", 1).status, WSP_ERR_FAIL);
}

TEST(EncodeVary, TokenTextFillsTheOutputExactly) {
    Result r = encode(wsp_encode_vary, kVary, "x-a", 5);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AA 78 2D 61 00");
    EXPECT_EQ(encode(wsp_encode_vary, kVary, "x-a", 4).status, WSP_ERR_FAIL);
}

TEST(EncodeVary, WritesBehindOffsetAndLength) {
    OutBuffer out(8, 2);
    out->length = 1;
    TextCopy text("age");
    ASSERT_EQ(wsp_encode_vary(kVary, text.get(), out.get(), 3), WSP_OK);
    EXPECT_EQ(out->length, 3);
    EXPECT_EQ(out.written_hex(), "00 AA 85");
}

// ---- Warning ----

TEST(EncodeWarning, CodeAloneIsAShortInteger) {
    Result r = encode(wsp_encode_warning, kWarning, " 10 ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AC 8A");
}

TEST(EncodeWarning, CodeAgentAndTextInsideAValueLength) {
    Result r = encode(wsp_encode_warning, kWarning, "99 proxy \"Response is stale\"");
    EXPECT_EQ(r.status, WSP_OK);
    Bytes body = cat({bytes({0xE3}), cstr("proxy"), cstr("\"Response is stale\"")});
    ASSERT_EQ(body.size(), 27u);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAC, 27}), body})));
}

TEST(EncodeWarning, CommaInsideQuotedTextDoesNotSplit) {
    Result r = encode(wsp_encode_warning, kWarning, "10 a \"x, y\", 12");
    EXPECT_EQ(r.status, WSP_OK);
    Bytes first = cat({bytes({0x8A}), cstr("a"), cstr("\"x, y\"")});
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAC, static_cast<int>(first.size())}), first, bytes({0xAC, 0x8C})})));
}

TEST(EncodeWarning, RunsOfBlanksSeparateOneWord) {
    Result r = encode(wsp_encode_warning, kWarning, "10   host    text");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAC, 11, 0x8A}), cstr("host"), cstr("text")})));
}

TEST(EncodeWarning, AgentStartingHighGetsAQuote) {
    Result r = encode(wsp_encode_warning, kWarning, "10 \xE9t x");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AC 07 8A 7F E9 74 00 78 00");
}

TEST(EncodeWarning, LongValueUsesTheLengthQuote) {
    std::string text(40, 'w');
    Result r = encode(wsp_encode_warning, kWarning, "10 a " + text);
    EXPECT_EQ(r.status, WSP_OK);
    // 1 + 2 + 41 = 44 octets after the length.
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAC, 0x1F, 44, 0x8A}), cstr("a"), cstr(text.c_str())})));
}

TEST(EncodeWarning, CodeMustHaveTwoCharacters) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "110").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "1").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "110 a b").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, CodeIsReadLikeStrtoul) {
    // Two characters that are no number read as 0; a minus sign wraps and
    // is refused by the limit.
    Result r = encode(wsp_encode_warning, kWarning, "ab");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AC 80");
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "-1").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, AgentWithoutTextFails) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10 agent").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, WordAfterTheTextFails) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10 agent text more").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10 agent \"text\" \"Sun, 06 Nov 1994\"").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, EmptyValueWritesNothing) {
    Result r = encode(wsp_encode_warning, kWarning, "  ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "");
}

TEST(EncodeWarning, EmptyElementFails) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, ",").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_warning(kWarning, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeWarning, TextThatIsNoTextFails) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10 a b\x01").status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10", 2).status, WSP_ERR_FAIL);
    // AC 05 8A 61 00 62 00: seven octets fill the value block exactly.
    Result r = encode(wsp_encode_warning, kWarning, "10 a b", 7);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AC 05 8A 61 00 62 00");
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, "10 a b", 6).status, WSP_ERR_FAIL);
}

// ---- X-Wap-Application-Id ----

TEST(EncodeAppId, RegisteredIdIsItsCode) {
    Result r = encode(wsp_encode_app_id, kAppId, " X-WAP-Application:MMS.ua ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AF 84");
}

TEST(EncodeAppId, AnyApplicationRowIsZero) {
    Result r = encode(wsp_encode_app_id, kAppId, "x-wap-application:*");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AF 80");
}

TEST(EncodeAppId, CodeAbove127IsALongInteger) {
    Result r = encode(wsp_encode_app_id, kAppId, "x-vantrell:location.ua");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AF 02 80 05");
    r = encode(wsp_encode_app_id, kAppId, "x-oma-application:ulp.ua");
    EXPECT_EQ(r.hex, "AF 90");
}

TEST(EncodeAppId, UnknownIdIsTokenText) {
    Result r = encode(wsp_encode_app_id, kAppId, "MyApp");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAF}), cstr("myapp")})));
}

TEST(EncodeAppId, UnknownIdWithSeparatorFails) {
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-unknown:app").status, WSP_ERR_FAIL);
}

TEST(EncodeAppId, EmptyValueWritesNothingAtAll) {
    // Not even the code octet, and even into an output with no room.
    Result r = encode(wsp_encode_app_id, kAppId, "   ", 1);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "");
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "").status, WSP_OK);
}

TEST(EncodeAppId, SecondElementFails) {
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "a, b").status, WSP_ERR_FAIL);
}

TEST(EncodeAppId, TrailingCommaIsNoSecondElement) {
    Result r = encode(wsp_encode_app_id, kAppId, "a,");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AF 61 00");
}

TEST(EncodeAppId, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_app_id(kAppId, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeAppId, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-wap-application:wml.ua", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-wap-application:wml.ua", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-vantrell:location.ua", 4).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-vantrell:location.ua", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_app_id, kAppId, "x-wap-application:wml.ua", 1).status, WSP_ERR_FAIL);
}

// ---- Accept-Application ----

TEST(EncodeAcceptApp, EachElementIsAHeaderOfItsOwn) {
    Result r = encode(wsp_encode_accept_app, kAcceptApp, "x-wap-application:push.sia , X-WAP-Application:WTA.ua");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B2 81 B2 83");
}

TEST(EncodeAcceptApp, LongCodeAndTokenText) {
    Result r = encode(wsp_encode_accept_app, kAcceptApp, "x-microsoft:drm.meter, my-app");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xB2, 0x02, 0x90, 0x34, 0xB2}), cstr("my-app")})));
}

TEST(EncodeAcceptApp, StarIsAnyApplicationAndEndsTheList) {
    Result r = encode(wsp_encode_accept_app, kAcceptApp, "a, *, not/a/token");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B2 61 00 B2 80");
}

TEST(EncodeAcceptApp, EmptyValueWritesNothing) {
    Result r = encode(wsp_encode_accept_app, kAcceptApp, " ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "");
}

TEST(EncodeAcceptApp, UnknownIdWithSeparatorFails) {
    EXPECT_EQ(encode(wsp_encode_accept_app, kAcceptApp, "x-wap-application:wml.ua, bad/id").status, WSP_ERR_FAIL);
}

TEST(EncodeAcceptApp, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_accept_app(kAcceptApp, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeAcceptApp, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_accept_app, kAcceptApp, "*", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_accept_app, kAcceptApp, "*", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_accept_app, kAcceptApp, "*", 1).status, WSP_ERR_FAIL);
}

// ---- Bearer-Indication and Push-Flag ----

TEST(EncodeBearer, SmallNumberIsAShortInteger) {
    Result r = encode(wsp_encode_bearer_push_flag, kBearer, " 5 ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B3 85");
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "0").hex, "B3 80");
}

TEST(EncodeBearer, LargeNumberIsALongInteger) {
    Result r = encode(wsp_encode_bearer_push_flag, kBearer, "200");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B3 01 C8");
}

TEST(EncodeBearer, NumberIsReadLikeStrtoul) {
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "12x").hex, "B3 8C");
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "abc").hex, "B3 80");
    Result r = encode(wsp_encode_bearer_push_flag, kBearer, "-1");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B3 04 FF FF FF FF");
}

TEST(EncodeBearer, NoLimitOfSeven) {
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "8").hex, "B3 88");
}

TEST(EncodeBearer, EmptyValueFails) {
    Result r = encode(wsp_encode_bearer_push_flag, kBearer, "  ");
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(EncodeBearer, SecondElementFails) {
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "1, 2").status, WSP_ERR_FAIL);
}

TEST(EncodeBearer, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_bearer_push_flag(kBearer, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodePushFlag, UpToSevenIsAccepted) {
    Result r = encode(wsp_encode_bearer_push_flag, kPushFlag, "7");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "B4 87");
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "0").hex, "B4 80");
}

TEST(EncodePushFlag, EightFails) {
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "8").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "-1").status, WSP_ERR_FAIL);
}

TEST(EncodePushFlag, OutputBoundaries) {
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "1", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "1", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kPushFlag, "1", 1).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "200", 3).status, WSP_OK);
    EXPECT_EQ(encode(wsp_encode_bearer_push_flag, kBearer, "200", 2).status, WSP_ERR_FAIL);
}


TEST(EncodeWarning, ScratchSizeWrapsAt16Bits) {
    // 65535 characters: the value scratch (text length + 1) wraps to 0.
    std::string value = "10 a " + std::string(65535 - 5, 't');
    ASSERT_EQ(value.size(), 65535u);
    EXPECT_EQ(encode(wsp_encode_warning, kWarning, value, 0xFFFF).status, WSP_ERR_FAIL);
}

TEST(EncodeWarning, EveryPrefixOfAWarning) {
    const std::string full = "10 a b";
    const char *expected_hex[] = {"", "", "AC 8A", "AC 8A", "", "", "AC 05 8A 61 00 62 00"};
    for (size_t n = 0; n <= full.size(); ++n) {
        std::string prefix = full.substr(0, n);
        Result r = encode(wsp_encode_warning, kWarning, prefix);
        bool ok = n == 0 || n == 2 || n == 3 || n == full.size();
        EXPECT_EQ(r.status, ok ? WSP_OK : WSP_ERR_FAIL) << prefix;
        if (ok) EXPECT_EQ(r.hex, expected_hex[n]) << prefix;
    }
}

} // namespace
