// Value encoders of Proxy-Authenticate and WWW-Authenticate: scheme, realm
// and parameters inside a Value-length; the WWW-Authenticate rewrite that
// separates several challenges, and its "basic" short form.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

constexpr uint8_t kProxyAuthenticate = 0x20;
constexpr uint8_t kWwwAuthenticate = 0x2D;

using Result = EncodeResult;

Result encode(uint8_t code, const std::string &value, uint16_t size = 512, uint8_t version = 3) {
    return encode_value(wsp_encode_challenge, code, value, size, version);
}

// A header: code octet, short Value-length, body.
std::string header(uint8_t code, const Bytes &body) {
    return hex(cat({bytes({code | 0x80, static_cast<int>(body.size())}), body}));
}

// ---- Proxy-Authenticate ----

TEST(EncodeProxyAuthenticate, SchemeAndRealm) {
    Result r = encode(kProxyAuthenticate, "  Basic realm=\"WallyWorld\" ");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Basic"), cstr("WallyWorld")})));
}

TEST(EncodeProxyAuthenticate, LowerCaseBasicKeepsItsTokenText) {
    Result r = encode(kProxyAuthenticate, "basic realm=\"x\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("basic"), cstr("x")})));
}

TEST(EncodeProxyAuthenticate, RealmNameIgnoresCaseAndBlanks) {
    Result r = encode(kProxyAuthenticate, "Digest   REALM =  \"Some Place\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Digest"), cstr("Some Place")})));
}

TEST(EncodeProxyAuthenticate, CommaInsideTheRealmStays) {
    Result r = encode(kProxyAuthenticate, "Basic realm=\"a,b\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Basic"), cstr("a,b")})));
}

TEST(EncodeProxyAuthenticate, EmptyRealm) {
    Result r = encode(kProxyAuthenticate, "Basic realm=\"\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Basic"), bytes({0})})));
}

TEST(EncodeProxyAuthenticate, RealmStartingHighGetsAQuote) {
    Result r = encode(kProxyAuthenticate, "Basic realm=\"\xE9t\xE9\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Basic"), bytes({0x7F, 0xE9, 0x74, 0xE9, 0x00})})));
}

TEST(EncodeProxyAuthenticate, FurtherParametersAreLowerCasedUntypedParameters) {
    Result r = encode(kProxyAuthenticate, "Digest realm=\"R\", Nonce=ABC, n=12, stale");
    EXPECT_EQ(r.status, WSP_OK);
    Bytes body = cat({cstr("Digest"), cstr("R"), cstr("nonce"), cstr("abc"), cstr("n"), bytes({0x8C}), cstr("stale"), bytes({0})});
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, body));
}

TEST(EncodeProxyAuthenticate, QuotedParameterValue) {
    Result r = encode(kProxyAuthenticate, "Digest realm=\"R\", opaque=\"Xy\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kProxyAuthenticate, cat({cstr("Digest"), cstr("R"), cstr("opaque"), bytes({0x22}), cstr("xy")})));
}

TEST(EncodeProxyAuthenticate, ParameterCodesFollowTheVersion) {
    // "domain" is 0x1C under 1.4, 0x0D (a Text-string) under 1.3, and has
    // no code under 1.1.
    Result r14 = encode(kProxyAuthenticate, "Digest realm=\"R\", domain=\"/x\"", 512, 3);
    EXPECT_EQ(r14.status, WSP_OK);
    EXPECT_EQ(r14.hex, header(kProxyAuthenticate, cat({cstr("Digest"), cstr("R"), bytes({0x9C, 0x22}), cstr("/x")})));
    Result r13 = encode(kProxyAuthenticate, "Digest realm=\"R\", domain=\"/x\"", 512, 2);
    EXPECT_EQ(r13.status, WSP_OK);
    EXPECT_EQ(r13.hex, header(kProxyAuthenticate, cat({cstr("Digest"), cstr("R"), bytes({0x8D}), cstr("\"/x\"")})));
    Result r11 = encode(kProxyAuthenticate, "Digest realm=\"R\", domain=\"/x\"", 512, 0);
    EXPECT_EQ(r11.status, WSP_OK);
    EXPECT_EQ(r11.hex, header(kProxyAuthenticate, cat({cstr("Digest"), cstr("R"), cstr("domain"), bytes({0x22}), cstr("/x")})));
}

TEST(EncodeProxyAuthenticate, UnknownVersionFailsOnlyWithParameters) {
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\"", 512, 4).status, WSP_OK);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\", a=b", 512, 4).status, WSP_ERR_FAIL);
}

TEST(EncodeProxyAuthenticate, MissingPiecesFail) {
    EXPECT_EQ(encode(kProxyAuthenticate, "").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic foo=\"x\"").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=").status, WSP_ERR_FAIL);
}

TEST(EncodeProxyAuthenticate, RealmMustBeQuotedAtBothEnds) {
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=x").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=x\"").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"").status, WSP_ERR_FAIL);
}

TEST(EncodeProxyAuthenticate, SchemeThatIsNoTokenFails) {
    EXPECT_EQ(encode(kProxyAuthenticate, "Ba/sic realm=\"x\"").status, WSP_ERR_FAIL);
}

TEST(EncodeProxyAuthenticate, BrokenParameterFails) {
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\", a b=c").status, WSP_ERR_FAIL);
}

TEST(EncodeProxyAuthenticate, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_challenge(kProxyAuthenticate, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

TEST(EncodeProxyAuthenticate, LongChallengeUsesTheLengthQuote) {
    std::string realm(40, 'r');
    Result r = encode(kProxyAuthenticate, "Basic realm=\"" + realm + "\"");
    EXPECT_EQ(r.status, WSP_OK);
    // 6 + 41 = 47 octets after the length.
    EXPECT_EQ(r.hex, hex(cat({bytes({0xA0, 0x1F, 47}), cstr("Basic"), cstr(realm.c_str())})));
}

TEST(EncodeProxyAuthenticate, OutputBoundaries) {
    // A0 08 "Basic" 00 "x" 00: ten octets.
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\"", 10).status, WSP_OK);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\"", 9).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kProxyAuthenticate, "Basic realm=\"x\"", 1).status, WSP_ERR_FAIL);
}

// ---- WWW-Authenticate ----

TEST(EncodeWwwAuthenticate, BareLowerCaseBasicIsShortForm) {
    Result r = encode(kWwwAuthenticate, "basic realm=\"x\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AD 03 80 78 00");
}

TEST(EncodeWwwAuthenticate, SchemeIsComparedAsWritten) {
    Result r = encode(kWwwAuthenticate, "Basic realm=\"WallyWorld\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kWwwAuthenticate, cat({cstr("Basic"), cstr("WallyWorld")})));
}

TEST(EncodeWwwAuthenticate, BasicWithParametersKeepsTokenText) {
    Result r = encode(kWwwAuthenticate, "basic realm=\"x\", foo=bar");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, header(kWwwAuthenticate, cat({cstr("basic"), cstr("x"), cstr("foo"), cstr("bar")})));
}

TEST(EncodeWwwAuthenticate, CommaInsideQuotesKeepsTheShortForm) {
    Result r = encode(kWwwAuthenticate, "basic realm=\"a,b\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AD 05 80 61 2C 62 00");
}

TEST(EncodeWwwAuthenticate, TwoChallengesAreTwoHeaders) {
    Result r = encode(kWwwAuthenticate, "basic realm=\"a\", Digest realm=\"b\", foo=bar");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AD 03 80 61 00 " + header(kWwwAuthenticate, cat({cstr("Digest"), cstr("b"), cstr("foo"), cstr("bar")})));
}

TEST(EncodeWwwAuthenticate, ThreeChallenges) {
    Result r = encode(kWwwAuthenticate, "A realm=\"1\", p=q, B realm=\"2\",basic realm=\"3\"");
    EXPECT_EQ(r.status, WSP_OK);
    std::string first = header(kWwwAuthenticate, cat({cstr("A"), cstr("1"), cstr("p"), cstr("q")}));
    std::string second = header(kWwwAuthenticate, cat({cstr("B"), cstr("2")}));
    EXPECT_EQ(r.hex, first + " " + second + " AD 03 80 33 00");
}

TEST(EncodeWwwAuthenticate, LaterRealmWithoutCommaBeforeItFails) {
    // The backward search for a comma stops at the start of the value.
    EXPECT_EQ(encode(kWwwAuthenticate, "x realm=\"a\" y realm=\"b\"").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kWwwAuthenticate, "realm=\"a\"realm=\"b\"").status, WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, SemicolonBetweenChallengesIsNoComma) {
    EXPECT_EQ(encode(kWwwAuthenticate, "basic realm=\"a\"; basic realm=\"b\"").status, WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, RealmInsideQuotesIsNotSearched) {
    Result r = encode(kWwwAuthenticate, "basic realm=\"realm\"");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, hex(cat({bytes({0xAD, 7, 0x80}), cstr("realm")})));
}

TEST(EncodeWwwAuthenticate, RealmSearchIsCaseSensitive) {
    // "Realm" is not found by the rewrite, so the second challenge stays a
    // parameter of the first, which the parameter encoder refuses.
    EXPECT_EQ(encode(kWwwAuthenticate, "basic realm=\"a\", Digest Realm=\"b\"").status, WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, EmptyValueIsAnArgumentError) {
    EXPECT_EQ(encode(kWwwAuthenticate, "").status, WSP_ERR_ARG);
    Result r = encode(kWwwAuthenticate, " \t ");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.hex, "");
}

TEST(EncodeWwwAuthenticate, ChallengeWithoutSchemeFails) {
    EXPECT_EQ(encode(kWwwAuthenticate, ";").status, WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, ChallengeWithoutRealmFails) {
    EXPECT_EQ(encode(kWwwAuthenticate, "basic").status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kWwwAuthenticate, "basic realm=x").status, WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_challenge(kWwwAuthenticate, nullptr, out.get(), 3), WSP_ERR_FAIL);
}

TEST(EncodeWwwAuthenticate, OutputBoundaries) {
    // AD 03 80 78 00 twice: ten octets.
    std::string two = "basic realm=\"x\", basic realm=\"x\"";
    Result r = encode(kWwwAuthenticate, two, 10);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.hex, "AD 03 80 78 00 AD 03 80 78 00");
    EXPECT_EQ(encode(kWwwAuthenticate, two, 9).status, WSP_ERR_FAIL);
    EXPECT_EQ(encode(kWwwAuthenticate, two, 5).status, WSP_ERR_FAIL);
}


TEST(EncodeWwwAuthenticate, EveryPrefixOfAChallenge) {
    const std::string full = "basic realm=\"x\"";
    for (size_t n = 0; n < full.size(); ++n) {
        std::string prefix = full.substr(0, n);
        // Nothing at all (or blanks only) is an argument error; every other
        // incomplete challenge fails.
        int expected = n == 0 ? WSP_ERR_ARG : WSP_ERR_FAIL;
        EXPECT_EQ(encode(kWwwAuthenticate, prefix).status, expected) << prefix;
    }
    EXPECT_EQ(encode(kWwwAuthenticate, full).hex, "AD 03 80 78 00");
}

TEST(EncodeProxyAuthenticate, ScratchSizeWrapsAt16Bits) {
    std::string value = "Basic realm=\"" + std::string(65535 - 14, 'r') + "\"";
    ASSERT_EQ(value.size(), 65535u);
    EXPECT_EQ(encode(kProxyAuthenticate, value, 0xFFFF).status, WSP_ERR_FAIL);
}

} // namespace
