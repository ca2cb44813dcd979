// Header value encoders: Pragma, the text lists (If-Match, If-None-Match,
// Upgrade, Via), Authorization / Proxy-Authorization and
// Content-Disposition.
#include <gtest/gtest.h>

#include <string>

#include "encode/encode.h"
#include "unit_support.h"

using namespace wsp_test;

namespace {

using Encoded = EncodeResult;

Encoded run(wsp_header_encoder encoder, uint8_t code, const std::string &value, uint16_t size = 64,
            uint8_t version = 3) {
    return encode_value(encoder, code, value, size, version);
}

} // namespace

// ---- Pragma ----

TEST(Pragma, NoCacheIsItsNumber) {
    Encoded e = run(wsp_encode_pragma, 0x1F, " No-Cache ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "9F 80");
}

TEST(Pragma, OtherPragmaIsOneParameterInAValueLength) {
    Encoded e = run(wsp_encode_pragma, 0x1F, "no-cache, Foo=Bar");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "9F 80 " + hex(cat({bytes({0x9F, 0x08}), cstr("foo"), cstr("bar")})));
}

TEST(Pragma, ParameterWithoutValueGetsNoValueOctet) {
    Encoded e = run(wsp_encode_pragma, 0x1F, " foo");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x9F, 0x05}), cstr("foo"), bytes({0x00})})));
}

TEST(Pragma, ScratchIsSizedOnTheValueText) {
    // The scratch holds the whole value text plus one: "foo" leaves no room
    // for the No-value octet, while " foo" (as the block encoder hands it
    // over, blank included) does.
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "foo").status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, " foo").status, WSP_OK);
}

TEST(Pragma, WellKnownParameterIsTyped) {
    Encoded e = run(wsp_encode_pragma, 0x1F, "level=1.2");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "9F 02 82 92");
}

TEST(Pragma, ParameterCodesFollowTheVersion) {
    // "padding" (0x08) exists from the first version on; "max_age" (0x0E)
    // only from "1.3": before that it is an unknown name.
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "max_age=5", 64, 3).hex, "9F 02 8E 85");
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "max_age=5", 64, 0).hex,
              hex(cat({bytes({0x9F, 0x09}), cstr("max_age"), bytes({0x85})})));
}

TEST(Pragma, UnknownVersionFails) {
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "foo=bar", 64, 4).status, WSP_ERR_FAIL);
    // "no-cache" does not go through the parameter encoder.
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "no-cache", 64, 4).hex, "9F 80");
}

TEST(Pragma, RefusedParameterFails) {
    Encoded e = run(wsp_encode_pragma, 0x1F, "start=x");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "9F");
}

TEST(Pragma, EmptyValueWritesNothingAndSucceeds) {
    Encoded e = run(wsp_encode_pragma, 0x1F, "  ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.length, 0);
}

TEST(Pragma, OutputBounds) {
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "no-cache", 2).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "no-cache", 3).status, WSP_OK);
    Encoded full = run(wsp_encode_pragma, 0x1F, "foo=bar", 10);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.length, 10);
    EXPECT_EQ(run(wsp_encode_pragma, 0x1F, "foo=bar", 9).status, WSP_ERR_FAIL);
}

TEST(Pragma, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_pragma(0x1F, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- text lists ----

TEST(TextList, IfMatchWritesEachTagAsText) {
    Encoded e = run(wsp_encode_text_list, 0x18, " \"abc\", \"def\" ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x98}), cstr("\"abc\""), bytes({0x98}), cstr("\"def\"")})));
}

TEST(TextList, IfMatchStopsAfterALeadingStar) {
    Encoded e = run(wsp_encode_text_list, 0x18, "*, \"x\"");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "98 2A 00");
}

TEST(TextList, IfNoneMatchLeadingStarMustStandAlone) {
    Encoded e = run(wsp_encode_text_list, 0x19, "*, \"x\"");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "99 2A 00");
    Encoded alone = run(wsp_encode_text_list, 0x19, "*");
    EXPECT_EQ(alone.status, WSP_OK);
    EXPECT_EQ(alone.hex, "99 2A 00");
}

TEST(TextList, StarAfterAnotherTagIsAnOrdinaryElement) {
    Encoded e = run(wsp_encode_text_list, 0x19, "\"x\", *");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x99}), cstr("\"x\""), bytes({0x99, 0x2A, 0x00})})));
}

TEST(TextList, UpgradeKeepsCase) {
    Encoded e = run(wsp_encode_text_list, 0x28, "HTTP/2.0, SHTTP/1.3");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xA8}), cstr("HTTP/2.0"), bytes({0xA8}), cstr("SHTTP/1.3")})));
}

TEST(TextList, ViaHasNoStarRule) {
    Encoded e = run(wsp_encode_text_list, 0x2B, "*, 1.1 proxy");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAB, 0x2A, 0x00, 0xAB}), cstr("1.1 proxy")})));
}

TEST(TextList, QuotedCommaStaysInsideItsElement) {
    Encoded e = run(wsp_encode_text_list, 0x2B, "\"a,b\", c");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAB}), cstr("\"a,b\""), bytes({0xAB}), cstr("c")})));
}

TEST(TextList, EmptyValueFails) {
    Encoded e = run(wsp_encode_text_list, 0x28, "");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(TextList, ControlCharacterFails) {
    EXPECT_EQ(run(wsp_encode_text_list, 0x2B, "a\x02").status, WSP_ERR_FAIL);
}

TEST(TextList, OutputBounds) {
    Encoded full = run(wsp_encode_text_list, 0x2B, "ab", 4);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "AB 61 62 00");
    EXPECT_EQ(run(wsp_encode_text_list, 0x2B, "ab", 3).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_text_list, 0x2B, "a, b", 5).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_text_list, 0x2B, "a, b", 6).status, WSP_OK);
}

TEST(TextList, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_text_list(0x2B, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- credentials ----

TEST(Credentials, BasicUserAndPasswordAsTheyStand) {
    Encoded e = run(wsp_encode_credentials, 0x07, " Basic QWxh:ZGRp ");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x87, 0x0B, 0x80}), cstr("QWxh"), cstr("ZGRp")})));
}

TEST(Credentials, ProxyAuthorizationUsesItsOwnCode) {
    Encoded e = run(wsp_encode_credentials, 0x21, "BASIC a:b");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "A1 05 80 61 00 62 00");
}

TEST(Credentials, EmptyUserIdWhenCredentialsBeginWithAColon) {
    Encoded e = run(wsp_encode_credentials, 0x07, "basic :secret");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x87, 0x09, 0x80, 0x00}), cstr("secret")})));
}

TEST(Credentials, PasswordKeepsLaterColons) {
    Encoded e = run(wsp_encode_credentials, 0x07, "basic a:b:c");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x87, 0x07, 0x80}), cstr("a"), cstr("b:c")})));
}

TEST(Credentials, BasicWithoutColonFails) {
    Encoded e = run(wsp_encode_credentials, 0x07, "Basic nocolon");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "87");
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "Basic").status, WSP_ERR_FAIL);
}

TEST(Credentials, UserIdWithHighFirstOctetIsQuoted) {
    Encoded e = run(wsp_encode_credentials, 0x07, "basic \xE9:x");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "87 06 80 7F E9 00 78 00");
}

TEST(Credentials, OtherSchemeWithParameters) {
    Encoded e = run(wsp_encode_credentials, 0x07, "Digest Username=\"Mufasa\", Realm=X");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0x87, 0x1F, 0x20}), cstr("digest"), cstr("username"),
                              bytes({0x22}), cstr("mufasa"), cstr("realm"), cstr("x")})));
}

TEST(Credentials, OtherSchemeWithoutParameters) {
    Encoded e = run(wsp_encode_credentials, 0x07, "Foo");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "87 04 66 6F 6F 00");
}

TEST(Credentials, OtherSchemeWithTypedParameter) {
    Encoded e = run(wsp_encode_credentials, 0x07, "foo q=0.5");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "87 06 66 6F 6F 00 80 33");
}

TEST(Credentials, RefusedParameterFails) {
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "foo start=x").status, WSP_ERR_FAIL);
}

TEST(Credentials, UnknownVersionFailsOnlyWhenAParameterIsSent) {
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "foo a=b", 64, 4).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "foo", 64, 4).status, WSP_OK);
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "basic a:b", 64, 4).status, WSP_OK);
}

TEST(Credentials, EmptyValueFailsWithoutWriting) {
    Encoded e = run(wsp_encode_credentials, 0x07, "   ");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(Credentials, OutputBounds) {
    Encoded full = run(wsp_encode_credentials, 0x07, "basic a:b", 7);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "87 05 80 61 00 62 00");
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "basic a:b", 6).status, WSP_ERR_FAIL);
    EXPECT_EQ(run(wsp_encode_credentials, 0x07, "basic a:b", 1).status, WSP_ERR_FAIL);
}

TEST(Credentials, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_credentials(0x07, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}

// ---- Content-Disposition ----

TEST(Disposition, WellKnownDispositions) {
    EXPECT_EQ(run(wsp_encode_disposition, 0x2E, "form-data").hex, "AE 01 80");
    EXPECT_EQ(run(wsp_encode_disposition, 0x2E, "Attachment").hex, "AE 01 81");
    EXPECT_EQ(run(wsp_encode_disposition, 0x2E, "inline").hex, "AE 01 82");
    EXPECT_EQ(run(wsp_encode_disposition, 0x45, "inline").hex, "C5 01 82");
}

TEST(Disposition, UnknownDispositionIsAToken) {
    Encoded e = run(wsp_encode_disposition, 0x2E, "X-Custom");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAE, 0x09}), cstr("x-custom")})));
}

TEST(Disposition, FilenameParameterUnderNewestVersion) {
    Encoded e = run(wsp_encode_disposition, 0x45, "attachment; filename=\"a.txt\"");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xC5, 0x09, 0x81, 0x98, 0x22}), cstr("a.txt")})));
}

TEST(Disposition, FilenameParameterUnderOldestVersion) {
    Encoded e = run(wsp_encode_disposition, 0x2E, "attachment; filename=\"a.txt\"", 64, 0);
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAE, 0x0A, 0x81, 0x86}), cstr("\"a.txt\"")})));
}

TEST(Disposition, ValueAndParametersAreLowerCased) {
    Encoded e = run(wsp_encode_disposition, 0x2E, "FORM-DATA; NAME=Field1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAE, 0x09, 0x80, 0x97}), cstr("field1")})));
}

TEST(Disposition, SeveralParameters) {
    Encoded e = run(wsp_encode_disposition, 0x2E, "inline; foo; bar=1");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, hex(cat({bytes({0xAE, 0x0B, 0x82}), cstr("foo"), bytes({0x00}), cstr("bar"),
                              bytes({0x81})})));
}

TEST(Disposition, RefusedParameterFails) {
    Encoded e = run(wsp_encode_disposition, 0x2E, "attachment; start=x");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.hex, "AE");
}

TEST(Disposition, EmptyValueFailsWithoutWriting) {
    Encoded e = run(wsp_encode_disposition, 0x2E, " ");
    EXPECT_EQ(e.status, WSP_ERR_FAIL);
    EXPECT_EQ(e.length, 0);
}

TEST(Disposition, SemicolonOnlyIsAnEmptyDisposition) {
    Encoded e = run(wsp_encode_disposition, 0x2E, ";");
    EXPECT_EQ(e.status, WSP_OK);
    EXPECT_EQ(e.hex, "AE 01 00");
}

TEST(Disposition, OutputBounds) {
    Encoded full = run(wsp_encode_disposition, 0x2E, "inline", 3);
    EXPECT_EQ(full.status, WSP_OK);
    EXPECT_EQ(full.hex, "AE 01 82");
    EXPECT_EQ(run(wsp_encode_disposition, 0x2E, "inline", 2).status, WSP_ERR_FAIL);
}

TEST(Disposition, NullValueFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_encode_disposition(0x2E, nullptr, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}
