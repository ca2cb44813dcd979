// The header block encoder through the exported functions: wsp_enc_hdr's
// output checks, page records and shifts, line cutting, version limits,
// application headers, the Content-Type refusal and the Cookie test, and
// realistic request header sets under each encoding version.  Content
// types, the Accept lists and the per-header values have files of their
// own.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api_support.h"
#include "tarnwspencdec.h"

using namespace api_encode;
using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

const wsp_code_entry kShoeNames[] = {{"X-Shoe-Size", 0x05}, {"x-color", 0x10}};

// ===================================================================
// wsp_enc_hdr: output checks
// ===================================================================

TEST(ApiEncodeBlock, EmptyPageListSucceedsWithLengthZero) {
    Pages pages({});
    EXPECT_EQ(run(pages, "1.4"), "OK");
}

TEST(ApiEncodeBlock, EmptyPageListSetsHolderLengthToZero) {
    Pages pages({});
    OutBuffer out(16);
    out->length = 3; // bytes already in the block
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(holder.length, 0);
    EXPECT_EQ(out->length, 3);
}

TEST(ApiEncodeBlock, NullHolderIsRefused) {
    Pages pages({{1, "age: 1"}});
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), nullptr, "1.4")), WSP_ERR_FAIL);
}

TEST(ApiEncodeBlock, HolderWithoutBufferIsRefused) {
    Pages pages({{1, "age: 1"}});
    wsp_hdrbuf holder{kHolderMark, nullptr};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, kHolderMark);
}

TEST(ApiEncodeBlock, CallerOwnedOutputIsRefusedAndKept) {
    Pages pages({{1, "age: 1"}});
    OutBuffer out(16);
    out->flags = WSP_BUFFER_EXTERNAL;
    unsigned char *data = out->data;
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_ERR_FAIL);
    EXPECT_EQ(out->data, data);
    EXPECT_EQ(out->length, 0);
    EXPECT_EQ(holder.length, kHolderMark);
    out->flags = 0; // let the fixture free it
}

TEST(ApiEncodeBlock, OutputWithoutDataIsRefused) {
    Pages pages({{1, "age: 1"}});
    OutBuffer out(16);
    unsigned char *data = out->data;
    out->data = nullptr;
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, kHolderMark);
    out->data = data;
}

TEST(ApiEncodeBlock, OutputOfSizeZeroIsRefusedAndKept) {
    Pages pages({{1, "age: 1"}});
    EXPECT_EQ(run(pages, "1.4", 0), "-214 kept");
}

TEST(ApiEncodeBlock, HolderLengthCountsOnlyTheBytesOfThisCall) {
    Pages pages({{1, "age: 10"}});
    OutBuffer out(16);
    out->length = 3;
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(holder.length, 2);
    EXPECT_EQ(out->length, 5);
    EXPECT_EQ(hex(out->data + 3, 2), "85 8A");
}

TEST(ApiEncodeBlock, BytesGoAfterTheBufferOffset) {
    Pages pages({{1, "age: 10"}});
    OutBuffer out(16, 4);
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(hex(out->data, 6), "00 00 00 00 85 8A");
    EXPECT_EQ(holder.length, 2);
}

TEST(ApiEncodeBlock, ExactlyFullOutputSucceedsOneShortFails) {
    // x, NUL, y, NUL: four octets.
    EXPECT_EQ(enc("x:y", "1.4", 4), "OK 78 00 79 00");
    EXPECT_EQ(enc("x:y", "1.4", 3), "-214 freed");
}

TEST(ApiEncodeBlock, ShortIntegerNeverFillsTheLastByte) {
    // Age 10 is the code octet and the Short-integer 0x8A: the Short-integer
    // writer refuses to fill the buffer to its last byte.
    EXPECT_EQ(enc("age: 10", "1.4", 3), "OK 85 8A");
    EXPECT_EQ(enc("age: 10", "1.4", 2), "-214 freed");
}

// ===================================================================
// wsp_enc_hdr: page records and shifts
// ===================================================================

TEST(ApiEncodeBlock, SecondPageOneRecordStartsWithShortCutShift) {
    Pages pages({{1, "age: 1"}, {1, "age: 2"}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 01 85 82");
}

TEST(ApiEncodeBlock, PageOneRecordOfLengthZeroWritesNothing) {
    Pages pages({{1, "age: 1"}, {1, "age: 2", 0, nullptr, 0}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ApiEncodeBlock, PageOneRecordWithoutDataWritesOnlyItsShift) {
    Pages pages({{1, "age: 1"}, {1, "age: 2"}});
    pages.get()->pages[1].text.data = nullptr;
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 01");
}

TEST(ApiEncodeBlock, PageTextStartsAtItsOffset) {
    Pages pages({{1, "xxxage: 7"}});
    wsp_buffer &text = pages.get()->pages[0].text;
    text.offset = 3;
    text.length = 6;
    EXPECT_EQ(run(pages, "1.4"), "OK 85 87");
}

TEST(ApiEncodeBlock, EmptyPageOneRecordWritesNoShift) {
    Pages pages({{1, "age: 1"}, {1, ""}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ApiEncodeBlock, ExtensionPageAbove1FWithEmptyTextWritesShiftSequence) {
    Pages pages({{0x20, "", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 20");
}

TEST(ApiEncodeBlock, ExtensionPageUpTo1FWritesShortCutShift) {
    Pages p15({{0x15, "", 2, kShoeNames}});
    EXPECT_EQ(run(p15, "1.4"), "OK 15");
    Pages p10({{0x10, "", 2, kShoeNames}});
    EXPECT_EQ(run(p10, "1.4"), "OK 10");
    Pages p1f({{0x1F, "", 2, kShoeNames}});
    EXPECT_EQ(run(p1f, "1.4"), "OK 1F");
    Pages p7f({{0x7F, "", 2, kShoeNames}});
    EXPECT_EQ(run(p7f, "1.4"), "OK 7F 7F");
}

TEST(ApiEncodeBlock, ExtensionPageLinesUseTheirOwnTableCaseSensitively) {
    Pages pages({{0x30, "X-Shoe-Size: 42\nX-Color: red\nx-color:blue", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 85 " + tz(" 42") + " " + app("X-Color", " red") + " 90 " + tz("blue"));
}

TEST(ApiEncodeBlock, ExtensionPageNamesAreNotLimitedByTheVersion) {
    Pages pages({{0x30, "x-color: red", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "2.0"), "OK 7F 30 90 " + tz(" red"));
}

TEST(ApiEncodeBlock, PagesMixInOrder) {
    Pages pages({{1, "age: 1"}, {0x30, "x-color: red", 2, kShoeNames}, {1, "age: 2"}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 7F 30 90 " + tz(" red") + " 01 85 82");
}

TEST(ApiEncodeBlock, ExtensionPageWith129NamesWritesOnlyItsShift) {
    std::vector<wsp_code_entry> names(129, wsp_code_entry{"x-color", 0x10});
    Pages pages({{0x30, "x-color: red\nx-other: 1", 129, names.data()}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30");
}

TEST(ApiEncodeBlock, ExtensionPageWith128NamesEncodesItsLines) {
    std::vector<wsp_code_entry> names(128, wsp_code_entry{"x-color", 0x10});
    Pages pages({{0x30, "x-color: red", 128, names.data()}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 90 " + tz(" red"));
}

TEST(ApiEncodeBlock, ExtensionNullNameBeforeTheMatchFails) {
    const wsp_code_entry names[] = {{nullptr, 0x01}, {"x-color", 0x10}};
    Pages pages({{0x30, "x-color: red", 2, names}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, ExtensionCodeOf128OrMoreFails) {
    const wsp_code_entry names[] = {{"x-big", 0x80}};
    Pages pages({{0x30, "x-big: 1", 1, names}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, ExtensionCodeUsesOnlyItsLowEightBits) {
    const wsp_code_entry names[] = {{"x-wide", 0x1203}};
    Pages pages({{0x30, "x-wide:1", 1, names}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 83 31 00");
}

TEST(ApiEncodeBlock, PageNumbersOutsideOneAndExtensionRangeFail) {
    for (uint8_t page : {0x00, 0x02, 0x0F, 0x80, 0xFF}) {
        Pages pages({{page, "x: y", 2, kShoeNames}});
        EXPECT_EQ(run(pages, "1.4"), "-214 freed") << int(page);
    }
}

TEST(ApiEncodeBlock, ExtensionPageWithoutNamesFails) {
    Pages pages({{0x30, "x-color: red", 0, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, PageOneWithNamesFails) {
    Pages pages({{1, "age: 1", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, FailureInALaterRecordFreesEverything) {
    Pages pages({{1, "age: 1"}, {0x05, "", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, ShiftThatDoesNotFitFails) {
    // "x:y" fills four octets; the 0x01 of the second record has no room.
    Pages one({{1, "x:y"}, {1, "x:z"}});
    EXPECT_EQ(run(one, "1.4", 4), "-214 freed");
    Pages two({{0x20, "", 2, kShoeNames}});
    EXPECT_EQ(run(two, "1.4", 1), "-214 freed");
    Pages fits({{0x20, "", 2, kShoeNames}});
    EXPECT_EQ(run(fits, "1.4", 2), "OK 7F 20");
}

// ===================================================================
// wsp_enc_hdr: lines, names and values
// ===================================================================

TEST(ApiEncodeBlock, CarriageReturnBeforeNewlineIsCutOff) {
    EXPECT_EQ(enc("age: 10\r\nx-a:1"), "OK 85 8A 78 2D 61 00 31 00");
}

TEST(ApiEncodeBlock, TextLengthEndsTheRecord) {
    Pages pages({{1, "age: 1\nage: 2", 0, nullptr, 7}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ApiEncodeBlock, BlankLinesAreSwallowed) {
    EXPECT_EQ(enc("age: 1\n\n\nage: 2\n"), "OK 85 81 85 82");
}

TEST(ApiEncodeBlock, BlankLinesDoNotCountTowardsTheTextLength) {
    // 7 + 7 octets are counted for the two lines although the length (10)
    // ends inside the blank lines: the second line is still encoded, the
    // third is not.
    Pages pages({{1, "age: 1\n\n\n\nage: 2\nage: 3", 0, nullptr, 10}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 85 82");
}

TEST(ApiEncodeBlock, LineOfOnlyCarriageReturnIsSkipped) {
    EXPECT_EQ(enc("\r\nage: 3"), "OK 85 83");
}

TEST(ApiEncodeBlock, LineWithoutColonHasAnEmptyValue) {
    EXPECT_EQ(enc("x-foo"), "OK " + app("x-foo", ""));
    // TE with an empty value is the bare code octet.
    EXPECT_EQ(enc("te"), "OK B9");
}

TEST(ApiEncodeBlock, LeadingColonIsSkippedByTheTokenizer) {
    // The name cut skips a leading delimiter: ":x-a" is the name x-a with
    // an empty value, and a lone ":" an empty name and an empty value.
    EXPECT_EQ(enc(":x-a"), "OK " + app("x-a", ""));
    EXPECT_EQ(enc(":"), "OK 00 00");
}

TEST(ApiEncodeBlock, ApplicationHeaderKeepsValueCaseAndLeadingBlanks) {
    EXPECT_EQ(enc("X-Foo:   Bar"), "OK " + app("x-foo", "   Bar"));
}

TEST(ApiEncodeBlock, ApplicationHeaderValueIsCutAtTheFirstColonOnly) {
    EXPECT_EQ(enc("X-Time: 10:20"), "OK " + app("x-time", " 10:20"));
}

TEST(ApiEncodeBlock, ApplicationValueWithHighFirstOctetGetsQuote) {
    EXPECT_EQ(enc("x-a:\xE9t\xE9"), "OK 78 2D 61 00 7F E9 74 E9 00");
}

TEST(ApiEncodeBlock, QuotedHighFirstOctetNeverWritesPastTheOutput) {
    // Name (4 octets), then 7F, E9 and the NUL: seven octets in all.
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 7), "OK 78 2D 61 00 7F E9 00");
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 6), "-214 freed");
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 5), "-214 freed");
}

TEST(ApiEncodeBlock, BlankBeforeTheColonStaysInTheName) {
    // "age " is no header name, and a blank is no token character.
    EXPECT_EQ(enc("Age : 1"), "-214 freed");
}

TEST(ApiEncodeBlock, ApplicationNameWithSeparatorFails) {
    EXPECT_EQ(enc("x(a): b"), "-214 freed");
    EXPECT_EQ(enc("x/a: b"), "-214 freed");
}

TEST(ApiEncodeBlock, ApplicationValueWithControlCharacterFails) {
    EXPECT_EQ(enc("x-a: a\x01"
                  "b"),
              "-214 freed");
}

TEST(ApiEncodeBlock, PageOneNamesAreLowerCasedInPlace) {
    Pages pages({{1, "ACCEPT-CHARSET: utf-8"}});
    EXPECT_EQ(run(pages, "1.4"), "OK BB EA");
    EXPECT_STREQ(pages.text(0), "accept-charset");
}

TEST(ApiEncodeBlock, UnknownNameIsApplicationHeaderWithLowerCasedName) {
    EXPECT_EQ(enc("X-Wap-Profile: \"http://example.com/p.xml\""),
              "OK " + app("x-wap-profile", " \"http://example.com/p.xml\""));
}

// ===================================================================
// wsp_enc_hdr: version limits
// ===================================================================

TEST(ApiEncodeBlock, TeUnder11IsAnApplicationHeader) {
    EXPECT_EQ(enc("te: trailers", "1.1"), "OK 74 65 00 20 74 72 61 69 6C 65 72 73 00");
    EXPECT_EQ(enc("te: trailers", "1.2"), "OK 74 65 00 20 74 72 61 69 6C 65 72 73 00");
    EXPECT_EQ(enc("te: trailers", "1.3"), "OK B9 81");
}

TEST(ApiEncodeBlock, CacheControlTakesTheHighestCodeTheVersionAllows) {
    EXPECT_EQ(enc("cache-control: no-cache", "1.4"), "OK C7 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.3"), "OK BD 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.2"), "OK 88 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.1"), "OK 88 80");
}

TEST(ApiEncodeBlock, ContentDispositionCodeFollowsVersion) {
    EXPECT_EQ(enc("content-disposition: inline", "1.3"), "OK AE 01 82");
    EXPECT_EQ(enc("content-disposition: inline", "1.4"), "OK C5 01 82");
}

TEST(ApiEncodeBlock, AcceptCharsetAndEncodingTakeNewerCodesFrom13) {
    EXPECT_EQ(enc("accept-charset: utf-8", "1.2"), "OK 81 EA");
    EXPECT_EQ(enc("accept-charset: utf-8", "1.3"), "OK BB EA");
    EXPECT_EQ(enc("accept-encoding: gzip", "1.2"), "OK 82 80");
    EXPECT_EQ(enc("accept-encoding: gzip", "1.3"), "OK BC 80");
}

TEST(ApiEncodeBlock, HighestCodeOfEachVersion) {
    // 0x2E is the last code of 1.1, 0x2F the first beyond it.
    EXPECT_EQ(enc("x-wap-application-id: x-wap-application:mms.ua", "1.1"),
              "OK " + app("x-wap-application-id", " x-wap-application:mms.ua"));
    EXPECT_EQ(enc("x-wap-application-id: x-wap-application:mms.ua", "1.2"), "OK AF 84");
    // 0x38 (Expect) is past 1.2; 0x43 (Encoding-Version) is the last of 1.3.
    EXPECT_EQ(enc("expect: 100-continue", "1.2"), "OK " + app("expect", " 100-continue"));
    EXPECT_EQ(enc("expect: 100-continue", "1.3"), "OK B8 80");
    EXPECT_EQ(enc("encoding-version: 1.0", "1.2"), "OK " + app("encoding-version", " 1.0"));
    EXPECT_EQ(enc("encoding-version: 1.0", "1.3"), "OK C3 9F");
    // 0x46 (X-Wap-Security) needs 1.4.
    EXPECT_EQ(enc("x-wap-security: close-subordinate", "1.3"), "OK " + app("x-wap-security", " close-subordinate"));
    EXPECT_EQ(enc("x-wap-security: close-subordinate", "1.4"), "OK C6 80");
}

TEST(ApiEncodeBlock, ProfileDiffIsOnlyKnownWithItsUnderscore) {
    EXPECT_EQ(enc("Profile-Diff: x", "1.4"), "OK " + app("profile-diff", " x"));
}

TEST(ApiEncodeBlock, UnknownVersionMakesNamesApplicationHeaders) {
    EXPECT_EQ(enc("age: 10\nCache-Control: no-cache", "1.5"), "OK " + app("age", " 10") + " " +
                                                                   app("cache-control", " no-cache"));
    EXPECT_EQ(enc("age: 10", ""), "OK " + app("age", " 10"));
}

TEST(ApiEncodeBlock, UnknownVersionSendsContentTypeAsApplicationHeader) {
    // Content-Type is refused only when it is recognised, and with the
    // limit at 0 it is not.
    EXPECT_EQ(enc("Content-Type: text/plain", "1.5"), "OK " + app("content-type", " text/plain"));
}

TEST(ApiEncodeBlock, UnknownVersionStillRecognisesAcceptWhichThenFails) {
    // Accept (code 0) is within the limit 0; its encoder sees version index 4.
    EXPECT_EQ(enc("accept: */*", "1.5"), "-214 freed");
}

TEST(ApiEncodeBlock, VersionTextIsComparedExactly) {
    EXPECT_EQ(enc("age: 1", "1.4 "), "OK " + app("age", " 1"));
    EXPECT_EQ(enc("age: 1", "1.40"), "OK " + app("age", " 1"));
}

// ===================================================================
// wsp_enc_hdr: Content-Type, Accept and Cookie
// ===================================================================

TEST(ApiEncodeBlock, ContentTypeLineFailsAndFreesTheOutput) {
    EXPECT_EQ(enc("Content-Type: text/plain"), "-214 freed");
    EXPECT_EQ(enc("age: 1\ncontent-type: text/plain", "1.1"), "-214 freed");
}

TEST(ApiEncodeBlock, AcceptIsHandedToTheAcceptEncoder) {
    EXPECT_EQ(enc("Accept: */*"), "OK 80 80");
    EXPECT_EQ(enc("Accept: */*", "1.1"), "OK 80 80");
}

TEST(ApiEncodeBlock, CookieWithLeadingVersionGoesToTheCookieEncoder) {
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.3"), "OK C2 06 9F 04 61 00 62 00");
    EXPECT_EQ(enc("Cookie: $Version=1; Sid=AbC", "1.4"), "OK C2 0A 9F 08 53 69 64 00 41 62 43 00");
}

TEST(ApiEncodeBlock, CookieWithoutVersionIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: a=b", "1.3"), "OK " + app("cookie", " a=b"));
}

TEST(ApiEncodeBlock, CookieWithPortIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: $Version=1; $Port=80", "1.4"), "OK " + app("cookie", " $Version=1; $Port=80"));
}

TEST(ApiEncodeBlock, CookieBefore13IsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.1"), "OK " + app("cookie", " $Version=1; a=b"));
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.2"), "OK " + app("cookie", " $Version=1; a=b"));
}

TEST(ApiEncodeBlock, CookieWithVersionFromTheNinthCharacterIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: abc=def; $Version=1", "1.4"), "OK " + app("cookie", " abc=def; $Version=1"));
}

TEST(ApiEncodeBlock, CookieWhoseFirstAttributeIsNotVersionFails) {
    // "$version" occurs before the ninth character but does not open the
    // value: the Cookie encoder refuses it.
    EXPECT_EQ(enc("Cookie: x;$Version=1", "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, CookieValueOf198OctetsFails) {
    std::string v197 = " " + std::string(196, 'a');
    EXPECT_EQ(enc("cookie:" + v197, "1.4"), "OK " + app("cookie", v197));
    EXPECT_EQ(enc("cookie:" + v197 + "a", "1.4"), "-214 freed");
}

TEST(ApiEncodeBlock, CookieCodeIsRememberedForFollowingUnknownLines) {
    std::string v197 = " " + std::string(196, 'a');
    EXPECT_EQ(enc("Cookie: $Version=1; a=b\nx-long:" + v197, "1.4"),
              "OK C2 06 9F 04 61 00 62 00 " + app("x-long", v197));
    EXPECT_EQ(enc("Cookie: $Version=1; a=b\nx-long:" + v197 + "a", "1.4"), "-214 freed");
    // Without the Cookie line the long value is an ordinary application header.
    std::string v198 = v197 + "a";
    EXPECT_EQ(enc("x-long:" + v198, "1.4"), "OK " + app("x-long", v198));
}

TEST(ApiEncodeBlock, RememberedCodeStartsAgainForEachRecord) {
    std::string v198 = " " + std::string(197, 'a');
    Pages pages({{1, "Cookie: $Version=1; a=b"}, {1, "x-long:" + v198}});
    EXPECT_EQ(run(pages, "1.4"), "OK C2 06 9F 04 61 00 62 00 01 " + app("x-long", v198));
}

// ===================================================================
// Realistic request header sets
// ===================================================================

TEST(ApiEncodeRequests, WmlBrowserUnder11) {
    EXPECT_EQ(enc("Accept: text/vnd.wap.wml, application/vnd.wap.wmlc, image/vnd.wap.wbmp, image/gif\r\n"
                  "Accept-Charset: utf-8, iso-8859-1\r\n"
                  "Accept-Language: en\r\n"
                  "User-Agent: Nokia7110/1.0 (04.94)\r\n"
                  "Cache-Control: no-cache\r\n"
                  "Connection: close\r\n",
                  "1.1"),
              "OK 80 88 80 94 80 A1 80 9D 81 EA 81 84 83 99 A9 " + tz("Nokia7110/1.0 (04.94)") + " 88 80 89 80");
}

TEST(ApiEncodeRequests, BrowserUnder12) {
    EXPECT_EQ(enc("Accept: application/vnd.wap.wmlc, application/vnd.wap.sic, image/png;q=0.8\n"
                  "Accept-Encoding: gzip, deflate\n"
                  "Accept-Language: en, fr;q=0.5\n"
                  "Cache-Control: max-age=0\n"
                  "Referer: http://wap.example.com/index.wml\n"
                  "X-Wap-Profile: \"http://example.com/uaprof.xml\"\n",
                  "1.2"),
              "OK 80 94 80 AE 80 03 A0 80 51 82 80 82 82 83 99 83 02 A2 33 88 02 82 80 A4 " +
                  tz("http://wap.example.com/index.wml") + " " +
                  app("x-wap-profile", " \"http://example.com/uaprof.xml\""));
}

TEST(ApiEncodeRequests, BrowserUnder13) {
    EXPECT_EQ(enc("Accept: application/vnd.wap.xhtml+xml, application/xhtml+xml, text/vnd.wap.wml\n"
                  "Accept-Charset: utf-8, *;q=0.1\n"
                  "Accept-Encoding: gzip\n"
                  "Encoding-Version: 1.3\n"
                  "Cache-Control: no-cache\n"
                  "TE: trailers, chunked\n"
                  "Cookie: $Version=1; session=4F2A\n",
                  "1.3"),
              "OK 80 " + tz("application/vnd.wap.xhtml+xml") + " 80 " + tz("application/xhtml+xml") +
                  " 80 88 BB EA BB 02 80 0B BC 80 C3 93 BD 80 B9 81 B9 01 82 C2 0F 9F 0D " + tz("session") + " " +
                  tz("4F2A"));
}

TEST(ApiEncodeRequests, MmsClientUnder14) {
    EXPECT_EQ(enc("Accept: application/vnd.wap.mms-message, application/xhtml+xml;q=0.9, */*;q=0.1\n"
                  "Accept-Charset: utf-8\n"
                  "Accept-Language: en;q=1.0, de;q=0.5\n"
                  "Cache-Control: no-cache, max-age=60\n"
                  "User-Agent: SonyEricssonK750i/R1AA Browser/SEMC-Browser/4.2\n"
                  "If-Modified-Since: Sun, 06 Nov 1994 08:49:37 GMT\n",
                  "1.4"),
              "OK 80 BE 80 03 BB 80 5B 80 03 80 80 0B BB EA 83 02 99 00 83 02 96 33 C7 80 C7 02 82 BC A9 " +
                  tz("SonyEricssonK750i/R1AA Browser/SEMC-Browser/4.2") + " 97 04 2E BC 98 A1");
}

TEST(ApiEncodeRequests, PushInitiatorHeadersUnder14) {
    EXPECT_EQ(enc("X-Wap-Application-Id: x-wap-application:wml.ua\r\n"
                  "X-Wap-Content-URI: http://push.example.com/msg/1\r\n"
                  "X-Wap-Initiator-URI: http://ppg.example.com/\r\n"
                  "Push-Flag: 2\r\n"
                  "Content-Length: 312\r\n"
                  "Date: Sun, 02 Jan 2005 03:04:05 GMT\r\n"
                  "Content-Disposition: attachment; filename=msg.wmlc\r\n"
                  "Content-ID: <Part1@Example.com>\r\n"
                  "X-Wap-Security: close-subordinate\r\n",
                  "1.4"),
              "OK AF 82 B0 " + tz("http://push.example.com/msg/1") + " B1 " + tz("http://ppg.example.com/") +
                  " B4 82 8D 02 01 38 92 04 41 D7 64 A5 C5 0B 81 98 " + tz("msg.wmlc") + " C0 22 " +
                  tz("<part1@example.com>") + " C6 80");
}

TEST(ApiEncodeRequests, ConditionalGetUnder14) {
    EXPECT_EQ(enc("Accept-Encoding: gzip, deflate\n"
                  "If-None-Match: \"686897696a7c876b7e\"\n"
                  "If-Modified-Since: Fri, 31 Dec 1999 23:59:59 GMT\n"
                  "Range: bytes=500-999\n"
                  "Connection: Keep-Alive\n"
                  "Pragma: no-cache\n",
                  "1.4"),
              "OK BC 80 BC 82 99 " + tz("\"686897696a7c876b7e\"") + " 97 04 38 6D 43 7F A3 05 80 83 74 87 67 89 " +
                  tz("keep-alive") + " 9F 80");
}

} // namespace
