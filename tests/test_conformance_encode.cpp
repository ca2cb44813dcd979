// Acceptance checks for header encoding through the exported functions
// only: wsp_enc_hdr (page records, shifts, line cutting, version limits,
// application headers, the Cookie test) and wsp_encode_content (content
// types and their parameters), plus the Accept, Accept-Charset,
// Accept-Language and Accept-Encoding list encoders reached through
// wsp_enc_hdr, and realistic browser request header sets under each
// encoding version.  Every expected octet is worked out by hand from the
// documented behaviour.  The per-header value encoders are covered in
// test_conformance_encode_values.cpp.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

// Hex of text bytes, and of text bytes with their NUL.
std::string th(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }
std::string tz(const std::string &s) { return th(s + '\0'); }
// An application header: Token-text name, Text-string value.
std::string app(const std::string &name, const std::string &value) { return tz(name) + " " + tz(value); }

constexpr uint16_t kHolderMark = 0xBEEF;

struct Page {
    uint8_t page;
    std::string text;
    uint8_t name_count = 0;
    const wsp_code_entry *names = nullptr;
    int length = -1; // text.length; -1: the text's own length
};

// Writable copies of the page texts and the records that describe them.
class Pages {
  public:
    explicit Pages(const std::vector<Page> &input) {
        for (const Page &p : input) {
            texts_.emplace_back(new char[p.text.size() + 1]);
            std::memcpy(texts_.back().get(), p.text.c_str(), p.text.size() + 1);
            wsp_hdr_page rec{};
            rec.page = p.page;
            rec.name_count = p.name_count;
            rec.names = p.names;
            rec.text.data = reinterpret_cast<unsigned char *>(texts_.back().get());
            rec.text.size = static_cast<uint16_t>(p.text.size() + 1);
            rec.text.length = static_cast<uint16_t>(p.length < 0 ? p.text.size() : static_cast<size_t>(p.length));
            rec.text.flags = WSP_BUFFER_EXTERNAL;
            records_.push_back(rec);
        }
        list_.count = static_cast<uint16_t>(records_.size());
        list_.pages = records_.empty() ? nullptr : records_.data();
    }
    wsp_hdr_page_list *get() { return &list_; }
    const char *text(size_t i) const { return texts_[i].get(); }

  private:
    std::vector<std::unique_ptr<char[]>> texts_;
    std::vector<wsp_hdr_page> records_;
    wsp_hdr_page_list list_{};
};

// "OK <appended bytes>" on success (with " holder=N" when the holder's
// length is not the number of appended bytes); on failure the status, then
// "freed" or "kept" for the output data, and " holder=N" if the holder's
// length was touched.
std::string run(Pages &pages, const char *version, uint16_t size = 1024) {
    OutBuffer out(size);
    wsp_hdrbuf holder{};
    holder.length = kHolderMark;
    holder.buffer = out.get();
    int16_t status = static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, version));
    std::string s;
    if (status == WSP_OK) {
        s = "OK";
        std::string bytes = out.written_hex();
        if (!bytes.empty()) s += " " + bytes;
        if (holder.length != out->length) s += " holder=" + std::to_string(holder.length);
    } else {
        s = std::to_string(status) + (out->data == nullptr ? " freed" : " kept");
        if (holder.length != kHolderMark) s += " holder=" + std::to_string(holder.length);
    }
    return s;
}

// One page-1 record holding `text`.
std::string enc(const std::string &text, const char *version = "1.4", uint16_t size = 1024) {
    Pages pages({{1, text}});
    return run(pages, version, size);
}

// wsp_encode_content into a fresh buffer: "OK <bytes>" or
// "<status> len=<length>[ <bytes>]".
std::string content(const char *text, const char *version, uint16_t size = 256) {
    OutBuffer out(size);
    int16_t status = static_cast<int16_t>(wsp_encode_content(text, out.get(), version));
    if (status == WSP_OK) return "OK " + out.written_hex();
    std::string s = std::to_string(status) + " len=" + std::to_string(out->length);
    if (out->length != 0) s += " " + out.written_hex();
    return s;
}

const wsp_code_entry kShoeNames[] = {{"X-Shoe-Size", 0x05}, {"x-color", 0x10}};

// ===================================================================
// wsp_enc_hdr: output checks
// ===================================================================

TEST(ConformanceEncodeBlock, EmptyPageListSucceedsWithLengthZero) {
    Pages pages({});
    EXPECT_EQ(run(pages, "1.4"), "OK");
}

TEST(ConformanceEncodeBlock, EmptyPageListSetsHolderLengthToZero) {
    Pages pages({});
    OutBuffer out(16);
    out->length = 3; // bytes already in the block
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(holder.length, 0);
    EXPECT_EQ(out->length, 3);
}

TEST(ConformanceEncodeBlock, NullHolderIsRefused) {
    Pages pages({{1, "age: 1"}});
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), nullptr, "1.4")), WSP_ERR_FAIL);
}

TEST(ConformanceEncodeBlock, HolderWithoutBufferIsRefused) {
    Pages pages({{1, "age: 1"}});
    wsp_hdrbuf holder{kHolderMark, nullptr};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, kHolderMark);
}

TEST(ConformanceEncodeBlock, CallerOwnedOutputIsRefusedAndKept) {
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

TEST(ConformanceEncodeBlock, OutputWithoutDataIsRefused) {
    Pages pages({{1, "age: 1"}});
    OutBuffer out(16);
    unsigned char *data = out->data;
    out->data = nullptr;
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, kHolderMark);
    out->data = data;
}

TEST(ConformanceEncodeBlock, OutputOfSizeZeroIsRefusedAndKept) {
    Pages pages({{1, "age: 1"}});
    EXPECT_EQ(run(pages, "1.4", 0), "-214 kept");
}

TEST(ConformanceEncodeBlock, HolderLengthCountsOnlyTheBytesOfThisCall) {
    Pages pages({{1, "age: 10"}});
    OutBuffer out(16);
    out->length = 3;
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(holder.length, 2);
    EXPECT_EQ(out->length, 5);
    EXPECT_EQ(hex(out->data + 3, 2), "85 8A");
}

TEST(ConformanceEncodeBlock, BytesGoAfterTheBufferOffset) {
    Pages pages({{1, "age: 10"}});
    OutBuffer out(16, 4);
    wsp_hdrbuf holder{kHolderMark, out.get()};
    EXPECT_EQ(static_cast<int16_t>(wsp_enc_hdr(pages.get(), &holder, "1.4")), WSP_OK);
    EXPECT_EQ(hex(out->data, 6), "00 00 00 00 85 8A");
    EXPECT_EQ(holder.length, 2);
}

TEST(ConformanceEncodeBlock, ExactlyFullOutputSucceedsOneShortFails) {
    // x, NUL, y, NUL: four octets.
    EXPECT_EQ(enc("x:y", "1.4", 4), "OK 78 00 79 00");
    EXPECT_EQ(enc("x:y", "1.4", 3), "-214 freed");
}

TEST(ConformanceEncodeBlock, ShortIntegerNeverFillsTheLastByte) {
    // Age 10 is the code octet and the Short-integer 0x8A: the Short-integer
    // writer refuses to fill the buffer to its last byte.
    EXPECT_EQ(enc("age: 10", "1.4", 3), "OK 85 8A");
    EXPECT_EQ(enc("age: 10", "1.4", 2), "-214 freed");
}

// ===================================================================
// wsp_enc_hdr: page records and shifts
// ===================================================================

TEST(ConformanceEncodeBlock, SecondPageOneRecordStartsWithShortCutShift) {
    Pages pages({{1, "age: 1"}, {1, "age: 2"}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 01 85 82");
}

TEST(ConformanceEncodeBlock, PageOneRecordOfLengthZeroWritesNothing) {
    Pages pages({{1, "age: 1"}, {1, "age: 2", 0, nullptr, 0}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ConformanceEncodeBlock, PageOneRecordWithoutDataWritesOnlyItsShift) {
    Pages pages({{1, "age: 1"}, {1, "age: 2"}});
    pages.get()->pages[1].text.data = nullptr;
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 01");
}

TEST(ConformanceEncodeBlock, PageTextStartsAtItsOffset) {
    Pages pages({{1, "xxxage: 7"}});
    wsp_buffer &text = pages.get()->pages[0].text;
    text.offset = 3;
    text.length = 6;
    EXPECT_EQ(run(pages, "1.4"), "OK 85 87");
}

TEST(ConformanceEncodeBlock, EmptyPageOneRecordWritesNoShift) {
    Pages pages({{1, "age: 1"}, {1, ""}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ConformanceEncodeBlock, ExtensionPageAbove1FWithEmptyTextWritesShiftSequence) {
    Pages pages({{0x20, "", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 20");
}

TEST(ConformanceEncodeBlock, ExtensionPageUpTo1FWritesShortCutShift) {
    Pages p15({{0x15, "", 2, kShoeNames}});
    EXPECT_EQ(run(p15, "1.4"), "OK 15");
    Pages p10({{0x10, "", 2, kShoeNames}});
    EXPECT_EQ(run(p10, "1.4"), "OK 10");
    Pages p1f({{0x1F, "", 2, kShoeNames}});
    EXPECT_EQ(run(p1f, "1.4"), "OK 1F");
    Pages p7f({{0x7F, "", 2, kShoeNames}});
    EXPECT_EQ(run(p7f, "1.4"), "OK 7F 7F");
}

TEST(ConformanceEncodeBlock, ExtensionPageLinesUseTheirOwnTableCaseSensitively) {
    Pages pages({{0x30, "X-Shoe-Size: 42\nX-Color: red\nx-color:blue", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 85 " + tz(" 42") + " " + app("X-Color", " red") + " 90 " + tz("blue"));
}

TEST(ConformanceEncodeBlock, ExtensionPageNamesAreNotLimitedByTheVersion) {
    Pages pages({{0x30, "x-color: red", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "2.0"), "OK 7F 30 90 " + tz(" red"));
}

TEST(ConformanceEncodeBlock, PagesMixInOrder) {
    Pages pages({{1, "age: 1"}, {0x30, "x-color: red", 2, kShoeNames}, {1, "age: 2"}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 7F 30 90 " + tz(" red") + " 01 85 82");
}

TEST(ConformanceEncodeBlock, ExtensionPageWith129NamesWritesOnlyItsShift) {
    std::vector<wsp_code_entry> names(129, wsp_code_entry{"x-color", 0x10});
    Pages pages({{0x30, "x-color: red\nx-other: 1", 129, names.data()}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30");
}

TEST(ConformanceEncodeBlock, ExtensionPageWith128NamesEncodesItsLines) {
    std::vector<wsp_code_entry> names(128, wsp_code_entry{"x-color", 0x10});
    Pages pages({{0x30, "x-color: red", 128, names.data()}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 90 " + tz(" red"));
}

TEST(ConformanceEncodeBlock, ExtensionNullNameBeforeTheMatchFails) {
    const wsp_code_entry names[] = {{nullptr, 0x01}, {"x-color", 0x10}};
    Pages pages({{0x30, "x-color: red", 2, names}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, ExtensionCodeOf128OrMoreFails) {
    const wsp_code_entry names[] = {{"x-big", 0x80}};
    Pages pages({{0x30, "x-big: 1", 1, names}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, ExtensionCodeUsesOnlyItsLowEightBits) {
    const wsp_code_entry names[] = {{"x-wide", 0x1203}};
    Pages pages({{0x30, "x-wide:1", 1, names}});
    EXPECT_EQ(run(pages, "1.4"), "OK 7F 30 83 31 00");
}

TEST(ConformanceEncodeBlock, PageNumbersOutsideOneAndExtensionRangeFail) {
    for (uint8_t page : {0x00, 0x02, 0x0F, 0x80, 0xFF}) {
        Pages pages({{page, "x: y", 2, kShoeNames}});
        EXPECT_EQ(run(pages, "1.4"), "-214 freed") << int(page);
    }
}

TEST(ConformanceEncodeBlock, ExtensionPageWithoutNamesFails) {
    Pages pages({{0x30, "x-color: red", 0, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, PageOneWithNamesFails) {
    Pages pages({{1, "age: 1", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, FailureInALaterRecordFreesEverything) {
    Pages pages({{1, "age: 1"}, {0x05, "", 2, kShoeNames}});
    EXPECT_EQ(run(pages, "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, ShiftThatDoesNotFitFails) {
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

TEST(ConformanceEncodeBlock, CarriageReturnBeforeNewlineIsCutOff) {
    EXPECT_EQ(enc("age: 10\r\nx-a:1"), "OK 85 8A 78 2D 61 00 31 00");
}

TEST(ConformanceEncodeBlock, TextLengthEndsTheRecord) {
    Pages pages({{1, "age: 1\nage: 2", 0, nullptr, 7}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81");
}

TEST(ConformanceEncodeBlock, BlankLinesAreSwallowed) {
    EXPECT_EQ(enc("age: 1\n\n\nage: 2\n"), "OK 85 81 85 82");
}

TEST(ConformanceEncodeBlock, BlankLinesDoNotCountTowardsTheTextLength) {
    // 7 + 7 octets are counted for the two lines although the length (10)
    // ends inside the blank lines: the second line is still encoded, the
    // third is not.
    Pages pages({{1, "age: 1\n\n\n\nage: 2\nage: 3", 0, nullptr, 10}});
    EXPECT_EQ(run(pages, "1.4"), "OK 85 81 85 82");
}

TEST(ConformanceEncodeBlock, LineOfOnlyCarriageReturnIsSkipped) {
    EXPECT_EQ(enc("\r\nage: 3"), "OK 85 83");
}

TEST(ConformanceEncodeBlock, LineWithoutColonHasAnEmptyValue) {
    EXPECT_EQ(enc("x-foo"), "OK " + app("x-foo", ""));
    // TE with an empty value is the bare code octet.
    EXPECT_EQ(enc("te"), "OK B9");
}

TEST(ConformanceEncodeBlock, LeadingColonIsSkippedByTheTokenizer) {
    // The name cut skips a leading delimiter: ":x-a" is the name x-a with
    // an empty value, and a lone ":" an empty name and an empty value.
    EXPECT_EQ(enc(":x-a"), "OK " + app("x-a", ""));
    EXPECT_EQ(enc(":"), "OK 00 00");
}

TEST(ConformanceEncodeBlock, ApplicationHeaderKeepsValueCaseAndLeadingBlanks) {
    EXPECT_EQ(enc("X-Foo:   Bar"), "OK " + app("x-foo", "   Bar"));
}

TEST(ConformanceEncodeBlock, ApplicationHeaderValueIsCutAtTheFirstColonOnly) {
    EXPECT_EQ(enc("X-Time: 10:20"), "OK " + app("x-time", " 10:20"));
}

TEST(ConformanceEncodeBlock, ApplicationValueWithHighFirstOctetGetsQuote) {
    EXPECT_EQ(enc("x-a:\xE9t\xE9"), "OK 78 2D 61 00 7F E9 74 E9 00");
}

TEST(ConformanceEncodeBlock, QuotedHighFirstOctetNeverWritesPastTheOutput) {
    // Name (4 octets), then 7F, E9 and the NUL: seven octets in all.
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 7), "OK 78 2D 61 00 7F E9 00");
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 6), "-214 freed");
    EXPECT_EQ(enc("x-a:\xE9", "1.4", 5), "-214 freed");
}

TEST(ConformanceEncodeBlock, ApplicationNameWithSeparatorFails) {
    EXPECT_EQ(enc("x(a): b"), "-214 freed");
    EXPECT_EQ(enc("x/a: b"), "-214 freed");
}

TEST(ConformanceEncodeBlock, ApplicationValueWithControlCharacterFails) {
    EXPECT_EQ(enc("x-a: a\x01"
                  "b"),
              "-214 freed");
}

TEST(ConformanceEncodeBlock, PageOneNamesAreLowerCasedInPlace) {
    Pages pages({{1, "ACCEPT-CHARSET: utf-8"}});
    EXPECT_EQ(run(pages, "1.4"), "OK BB EA");
    EXPECT_STREQ(pages.text(0), "accept-charset");
}

TEST(ConformanceEncodeBlock, UnknownNameIsApplicationHeaderWithLowerCasedName) {
    EXPECT_EQ(enc("X-Wap-Profile: \"http://example.com/p.xml\""),
              "OK " + app("x-wap-profile", " \"http://example.com/p.xml\""));
}

// ===================================================================
// wsp_enc_hdr: version limits
// ===================================================================

TEST(ConformanceEncodeBlock, TeUnder11IsAnApplicationHeader) {
    EXPECT_EQ(enc("te: trailers", "1.1"), "OK 74 65 00 20 74 72 61 69 6C 65 72 73 00");
    EXPECT_EQ(enc("te: trailers", "1.2"), "OK 74 65 00 20 74 72 61 69 6C 65 72 73 00");
    EXPECT_EQ(enc("te: trailers", "1.3"), "OK B9 81");
}

TEST(ConformanceEncodeBlock, CacheControlTakesTheHighestCodeTheVersionAllows) {
    EXPECT_EQ(enc("cache-control: no-cache", "1.4"), "OK C7 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.3"), "OK BD 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.2"), "OK 88 80");
    EXPECT_EQ(enc("cache-control: no-cache", "1.1"), "OK 88 80");
}

TEST(ConformanceEncodeBlock, ContentDispositionCodeFollowsVersion) {
    EXPECT_EQ(enc("content-disposition: inline", "1.3"), "OK AE 01 82");
    EXPECT_EQ(enc("content-disposition: inline", "1.4"), "OK C5 01 82");
}

TEST(ConformanceEncodeBlock, AcceptCharsetAndEncodingTakeNewerCodesFrom13) {
    EXPECT_EQ(enc("accept-charset: utf-8", "1.2"), "OK 81 EA");
    EXPECT_EQ(enc("accept-charset: utf-8", "1.3"), "OK BB EA");
    EXPECT_EQ(enc("accept-encoding: gzip", "1.2"), "OK 82 80");
    EXPECT_EQ(enc("accept-encoding: gzip", "1.3"), "OK BC 80");
}

TEST(ConformanceEncodeBlock, HighestCodeOfEachVersion) {
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

TEST(ConformanceEncodeBlock, UnknownVersionMakesNamesApplicationHeaders) {
    EXPECT_EQ(enc("age: 10\nCache-Control: no-cache", "1.5"), "OK " + app("age", " 10") + " " +
                                                                   app("cache-control", " no-cache"));
    EXPECT_EQ(enc("age: 10", ""), "OK " + app("age", " 10"));
}

TEST(ConformanceEncodeBlock, UnknownVersionStillRecognisesAcceptWhichThenFails) {
    // Accept (code 0) is within the limit 0; its encoder sees version index 4.
    EXPECT_EQ(enc("accept: */*", "1.5"), "-214 freed");
}

TEST(ConformanceEncodeBlock, VersionTextIsComparedExactly) {
    EXPECT_EQ(enc("age: 1", "1.4 "), "OK " + app("age", " 1"));
    EXPECT_EQ(enc("age: 1", "1.40"), "OK " + app("age", " 1"));
}

// ===================================================================
// wsp_enc_hdr: Content-Type, Accept and Cookie
// ===================================================================

TEST(ConformanceEncodeBlock, ContentTypeLineFailsAndFreesTheOutput) {
    EXPECT_EQ(enc("Content-Type: text/plain"), "-214 freed");
    EXPECT_EQ(enc("age: 1\ncontent-type: text/plain", "1.1"), "-214 freed");
}

TEST(ConformanceEncodeBlock, AcceptIsHandedToTheAcceptEncoder) {
    EXPECT_EQ(enc("Accept: */*"), "OK 80 80");
    EXPECT_EQ(enc("Accept: */*", "1.1"), "OK 80 80");
}

TEST(ConformanceEncodeBlock, CookieWithLeadingVersionGoesToTheCookieEncoder) {
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.3"), "OK C2 06 9F 04 61 00 62 00");
    EXPECT_EQ(enc("Cookie: $Version=1; Sid=AbC", "1.4"), "OK C2 0A 9F 08 53 69 64 00 41 62 43 00");
}

TEST(ConformanceEncodeBlock, CookieWithoutVersionIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: a=b", "1.3"), "OK " + app("cookie", " a=b"));
}

TEST(ConformanceEncodeBlock, CookieWithPortIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: $Version=1; $Port=80", "1.4"), "OK " + app("cookie", " $Version=1; $Port=80"));
}

TEST(ConformanceEncodeBlock, CookieBefore13IsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.1"), "OK " + app("cookie", " $Version=1; a=b"));
    EXPECT_EQ(enc("Cookie: $Version=1; a=b", "1.2"), "OK " + app("cookie", " $Version=1; a=b"));
}

TEST(ConformanceEncodeBlock, CookieWithVersionFromTheNinthCharacterIsApplicationHeader) {
    EXPECT_EQ(enc("Cookie: abc=def; $Version=1", "1.4"), "OK " + app("cookie", " abc=def; $Version=1"));
}

TEST(ConformanceEncodeBlock, CookieWhoseFirstAttributeIsNotVersionFails) {
    // "$version" occurs before the ninth character but does not open the
    // value: the Cookie encoder refuses it.
    EXPECT_EQ(enc("Cookie: x;$Version=1", "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, CookieValueOf198OctetsFails) {
    std::string v197 = " " + std::string(196, 'a');
    EXPECT_EQ(enc("cookie:" + v197, "1.4"), "OK " + app("cookie", v197));
    EXPECT_EQ(enc("cookie:" + v197 + "a", "1.4"), "-214 freed");
}

TEST(ConformanceEncodeBlock, CookieCodeIsRememberedForFollowingUnknownLines) {
    std::string v197 = " " + std::string(196, 'a');
    EXPECT_EQ(enc("Cookie: $Version=1; a=b\nx-long:" + v197, "1.4"),
              "OK C2 06 9F 04 61 00 62 00 " + app("x-long", v197));
    EXPECT_EQ(enc("Cookie: $Version=1; a=b\nx-long:" + v197 + "a", "1.4"), "-214 freed");
    // Without the Cookie line the long value is an ordinary application header.
    std::string v198 = v197 + "a";
    EXPECT_EQ(enc("x-long:" + v198, "1.4"), "OK " + app("x-long", v198));
}

TEST(ConformanceEncodeBlock, RememberedCodeStartsAgainForEachRecord) {
    std::string v198 = " " + std::string(197, 'a');
    Pages pages({{1, "Cookie: $Version=1; a=b"}, {1, "x-long:" + v198}});
    EXPECT_EQ(run(pages, "1.4"), "OK C2 06 9F 04 61 00 62 00 01 " + app("x-long", v198));
}

// ===================================================================
// wsp_encode_content: media types
// ===================================================================

TEST(ConformanceEncodeContent, KnownMediaIsAShortInteger) {
    EXPECT_EQ(content("text/plain", "1.1"), "OK 83");
    EXPECT_EQ(content("*/*", "1.1"), "OK 80");
    EXPECT_EQ(content("application/x-agps", "1.4"), "OK FF");
    EXPECT_EQ(content("application/vnd.syncml.dm+wbxml", "1.4"), "OK C2");
}

TEST(ConformanceEncodeContent, MediaIsMatchedCaseInsensitively) {
    EXPECT_EQ(content("APPLICATION/VND.WAP.MMS-MESSAGE", "1.4"), "OK BE");
    EXPECT_EQ(content("  Text/Html  ", "1.1"), "OK 82");
}

TEST(ConformanceEncodeContent, CharsetParameterExample) {
    EXPECT_EQ(content("Text/Plain; charset=UTF-8", "1.3"), "OK 03 83 81 EA");
}

TEST(ConformanceEncodeContent, VersionLimitsTheKnownMediaTypes) {
    EXPECT_EQ(content("application/vnd.wap.sia", "1.1"), "OK " + tz("application/vnd.wap.sia"));
    EXPECT_EQ(content("application/vnd.wap.sia", "1.2"), "OK B4");
    EXPECT_EQ(content("text/vnd.wap.si", "1.1"), "OK AD");
    EXPECT_EQ(content("application/vnd.wap.sic", "1.1"), "OK " + tz("application/vnd.wap.sic"));
    EXPECT_EQ(content("application/vnd.wap.sic", "1.2"), "OK AE");
    EXPECT_EQ(content("text/vnd.wap.connectivity-xml", "1.2"), "OK " + tz("text/vnd.wap.connectivity-xml"));
    EXPECT_EQ(content("text/vnd.wap.connectivity-xml", "1.3"), "OK B5");
    EXPECT_EQ(content("application/pkcs7-mime", "1.3"), "OK " + tz("application/pkcs7-mime"));
    EXPECT_EQ(content("application/pkcs7-mime", "1.4"), "OK B7");
    EXPECT_EQ(content("application/vnd.wap.mms-message", "1.3"), "OK " + tz("application/vnd.wap.mms-message"));
    EXPECT_EQ(content("application/vnd.wap.mms-message", "1.4"), "OK BE");
}

TEST(ConformanceEncodeContent, HashedCertificateKeepsItsOwnSpelling) {
    EXPECT_EQ(content("application/vnd.wap.hashed-certifiate", "1.4"), "OK B8");
    EXPECT_EQ(content("application/vnd.wap.hashed-certificate", "1.4"),
              "OK " + tz("application/vnd.wap.hashed-certificate"));
}

TEST(ConformanceEncodeContent, CodeAbove127WithoutParametersKeepsItsScratchFault) {
    // Length octet 3, then positions 3 and 4 of the Long-integer scratch and
    // the (zeroed) octet past it, not the code.
    EXPECT_EQ(content("application/vnd.omaloc-supl-init", "1.4"), "OK 03 00 00 00");
    EXPECT_EQ(content("application/vnd.uplanet.cacheop-wbxml", "1.4"), "OK 03 00 00 00");
    EXPECT_EQ(content("application/vnd.nokia.syncset+wbxml", "1.4"), "OK 03 00 00 00");
}

TEST(ConformanceEncodeContent, CodeAbove127WithParametersIsALongInteger) {
    EXPECT_EQ(content("application/vnd.uplanet.cacheop-wbxml; charset=utf-8", "1.4"), "OK 05 02 02 01 81 EA");
}

TEST(ConformanceEncodeContent, NullOrEmptyTextWritesNoValueOctet) {
    EXPECT_EQ(content(nullptr, "1.4"), "OK 00");
    EXPECT_EQ(content("", "1.1"), "OK 00");
    EXPECT_EQ(content(nullptr, "1.4", 1), "OK 00");
    EXPECT_EQ(content(nullptr, "1.4", 0), "-214 len=0");
}

TEST(ConformanceEncodeContent, UnknownVersionIsRefused) {
    EXPECT_EQ(content("text/plain", "1.5"), "-217 len=0");
    EXPECT_EQ(content(nullptr, "1.5"), "-217 len=0");
    EXPECT_EQ(content("text/plain", "1.4 "), "-217 len=0");
}

TEST(ConformanceEncodeContent, UnknownMediaIsExtensionMediaWithoutQuote) {
    EXPECT_EQ(content("application/x-foo", "1.4"), "OK " + tz("application/x-foo"));
    EXPECT_EQ(content("\xE9/x", "1.4"), "OK E9 2F 78 00");
}

TEST(ConformanceEncodeContent, UnknownMediaWithParameters) {
    EXPECT_EQ(content("application/x-unknown; charset=utf-8", "1.4"),
              "OK 18 " + tz("application/x-unknown") + " 81 EA");
}

TEST(ConformanceEncodeContent, TextIsNotModified) {
    char text[] = "Text/Plain; Charset=UTF-8";
    EXPECT_EQ(content(text, "1.4"), "OK 03 83 81 EA");
    EXPECT_STREQ(text, "Text/Plain; Charset=UTF-8");
    // A literal in read-only memory works as well.
    EXPECT_EQ(content("TEXT/HTML; q=0.5", "1.4"), "OK 03 82 80 33");
}

TEST(ConformanceEncodeContent, ShortIntegerMediaNeverFillsTheLastByte) {
    EXPECT_EQ(content("text/plain", "1.4", 2), "OK 83");
    EXPECT_EQ(content("text/plain", "1.4", 1), "-214 len=1 83");
}

TEST(ConformanceEncodeContent, GeneralFormLengthOctetStaysWhenTheBodyDoesNotFit) {
    EXPECT_EQ(content("text/html; type=5", "1.4", 4), "OK 03 82 83 85");
    EXPECT_EQ(content("text/html; type=5", "1.4", 3), "-214 len=1 03");
}

TEST(ConformanceEncodeContent, GeneralFormAbove30UsesLengthQuote) {
    std::string value(30, 'a');
    std::string text = "text/plain; name=" + value;
    EXPECT_EQ(content(text.c_str(), "1.1"), "OK 1F 21 83 85 " + tz(value));
}

TEST(ConformanceEncodeContent, ParameterisedValueMustFitIn150Octets) {
    // Media, parameter code, 147 characters and the NUL: exactly 150.
    std::string v147(147, 'n');
    std::string fits = "text/plain; name=" + v147;
    EXPECT_EQ(content(fits.c_str(), "1.1"), "OK 1F 81 16 83 85 " + tz(v147));
    std::string over = "text/plain; name=" + v147 + "n";
    EXPECT_EQ(content(over.c_str(), "1.1"), "-214 len=0");
}

// ===================================================================
// wsp_encode_content: parameters
// ===================================================================

TEST(ConformanceEncodeContent, MultipartRelatedTypeAndStart) {
    EXPECT_EQ(content("multipart/related; type=application/xml; start=<part1>", "1.4"),
              "OK 1C " + tz("multipart/related") + " 89 A7 99 22 70 61 72 74 31 00");
}

TEST(ConformanceEncodeContent, TypeOutsideMultipartRelatedIsCode3) {
    EXPECT_EQ(content("text/html; type=5", "1.4"), "OK 03 82 83 85");
}

TEST(ConformanceEncodeContent, StartOutsideMultipartRelatedIsRefused) {
    EXPECT_EQ(content("text/html; start=x", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; start=x", "1.2"), "-214 len=0");
    EXPECT_EQ(content("text/html; start-info=x", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; start_info=x", "1.4"), "-214 len=0");
}

TEST(ConformanceEncodeContent, StartBeyondTheVersionIsUntyped) {
    EXPECT_EQ(content("text/html; start=x", "1.1"), "OK 09 82 " + tz("start") + " " + tz("x"));
}

TEST(ConformanceEncodeContent, StartInfoOfMultipartRelated) {
    // 1.2: "start_info" is code 0x0B, a Text-string.
    EXPECT_EQ(content("multipart/related; start_info=<a>", "1.2"), "OK 17 " + tz("multipart/related") + " 8B " + tz("<a>"));
    // 1.4: "start-info" is code 0x1A; angle brackets become quotation marks.
    EXPECT_EQ(content("multipart/related; start-info=<a>", "1.4"),
              "OK 16 " + tz("multipart/related") + " 9A 22 61 00");
}

TEST(ConformanceEncodeContent, QValues) {
    const char *cases[][2] = {
        {"0.5", "03 82 80 33"},    {"0.50", "03 82 80 33"},   {"1", "03 82 80 00"},       {"1.0", "03 82 80 00"},
        {"0.005", "03 82 80 06"},  {"0.05", "03 82 80 06"},   {"0.25", "03 82 80 1A"},    {"0.1", "03 82 80 0B"},
        {"0.100", "03 82 80 0B"},  {"0.01", "03 82 80 02"},   {"0.001", "03 82 80 02"},   {"0", "03 82 80 01"},
        {"0.125", "04 82 80 81 61"}, {"0.333", "04 82 80 83 31"}, {"0.999", "04 82 80 88 4B"},
    };
    for (auto &c : cases) {
        std::string text = std::string("text/html; q=") + c[0];
        EXPECT_EQ(content(text.c_str(), "1.4"), std::string("OK ") + c[1]) << c[0];
    }
}

TEST(ConformanceEncodeContent, MalformedQValuesAreRefused) {
    EXPECT_EQ(content("text/html; q=2.0", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; q=1.5", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/html; q=3", "1.1"), "-214 len=0");
}

TEST(ConformanceEncodeContent, CharsetByNameInAnyCase) {
    EXPECT_EQ(content("text/plain; charset=ISO-8859-1", "1.4"), "OK 03 83 81 84");
    EXPECT_EQ(content("text/plain; CHARSET=iso-8859-1", "1.1"), "OK 03 83 81 84");
    EXPECT_EQ(content("text/plain; charset=utf-16", "1.4"), "OK 05 83 81 02 03 F7");
}

TEST(ConformanceEncodeContent, UnknownCharsetFallsBackToUntypedParameter) {
    EXPECT_EQ(content("text/plain; charset=foo", "1.4"), "OK 0D 83 " + tz("charset") + " " + tz("foo"));
    EXPECT_EQ(content("text/plain; charset=windows-1252", "1.4"),
              "OK 16 83 " + tz("charset") + " " + tz("windows-1252"));
}

TEST(ConformanceEncodeContent, ParameterWithoutValue) {
    EXPECT_EQ(content("text/plain; charset", "1.4"), "OK 03 83 81 00");
    EXPECT_EQ(content("text/plain; foo", "1.4"), "OK 06 83 " + tz("foo") + " 00");
}

TEST(ConformanceEncodeContent, UntypedParameterValues) {
    EXPECT_EQ(content("text/plain; foo=bar", "1.4"), "OK 09 83 " + tz("foo") + " " + tz("bar"));
    EXPECT_EQ(content("text/plain; foo=12", "1.4"), "OK 06 83 " + tz("foo") + " 8C");
    EXPECT_EQ(content("text/plain; foo=300", "1.4"), "OK 08 83 " + tz("foo") + " 02 01 2C");
    EXPECT_EQ(content("text/plain; foo=1.5", "1.4"), "OK 09 83 " + tz("foo") + " " + tz("1.5"));
    EXPECT_EQ(content("text/plain; foo=\"a b\"", "1.4"), "OK 0A 83 " + tz("foo") + " 22 61 20 62 00");
}

TEST(ConformanceEncodeContent, UnclosedQuotedValueLosesItsNul) {
    // Without its closing quotation mark the Quoted-string's NUL is not
    // counted, so only the quotation mark and the characters are copied.
    EXPECT_EQ(content("text/plain; name=\"abc", "1.4"), "OK 06 83 97 22 61 62 63");
    // Up to 1.2 "name" is a Text-string and keeps the quotation mark.
    EXPECT_EQ(content("text/plain; name=\"abc", "1.1"), "OK 07 83 85 22 61 62 63 00");
}

TEST(ConformanceEncodeContent, UntypedTokenValueWithSeparatorFails) {
    EXPECT_EQ(content("text/plain; foo=a/b", "1.4"), "-214 len=0");
}

TEST(ConformanceEncodeContent, LevelIsAVersionValue) {
    EXPECT_EQ(content("text/html; level=1.2", "1.1"), "OK 03 82 82 92");
    EXPECT_EQ(content("text/html; level=1", "1.1"), "OK 03 82 82 9F");
    EXPECT_EQ(content("text/html; level=1.10", "1.1"), "OK 07 82 82 " + tz("1.10"));
}

TEST(ConformanceEncodeContent, NameIsTextStringUntil12AndTokenOrQuotedFrom14) {
    EXPECT_EQ(content("text/plain; name=a b", "1.1"), "OK 06 83 85 61 20 62 00");
    EXPECT_EQ(content("text/plain; name=\"a b\"", "1.4"), "OK 07 83 97 22 61 20 62 00");
    EXPECT_EQ(content("image/jpeg; name=pic.jpg", "1.4"), "OK 0A 9E 97 " + tz("pic.jpg"));
    EXPECT_EQ(content("image/jpeg; filename=pic.jpg", "1.4"), "OK 0A 9E 98 " + tz("pic.jpg"));
    EXPECT_EQ(content("image/jpeg; filename=pic.jpg", "1.2"), "OK 0A 9E 86 " + tz("pic.jpg"));
}

TEST(ConformanceEncodeContent, CommentDomainPathByVersion) {
    EXPECT_EQ(content("text/plain; comment=hello", "1.2"), "OK 0F 83 " + tz("comment") + " " + tz("hello"));
    EXPECT_EQ(content("text/plain; comment=hello", "1.3"), "OK 08 83 8C " + tz("hello"));
    EXPECT_EQ(content("text/plain; comment=hello", "1.4"), "OK 08 83 9B " + tz("hello"));
    EXPECT_EQ(content("text/plain; domain=example.com", "1.4"), "OK 0E 83 9C " + tz("example.com"));
    EXPECT_EQ(content("text/plain; path=/a", "1.3"), "OK 05 83 8F " + tz("/a"));
}

TEST(ConformanceEncodeContent, IntegerParameters) {
    EXPECT_EQ(content("text/plain; size=1024", "1.4"), "OK 05 83 96 02 04 00");
    EXPECT_EQ(content("text/plain; max_age=0x20", "1.3"), "OK 03 83 8E A0");
    EXPECT_EQ(content("text/plain; max_age=0x20", "1.2"), "OK 0E 83 " + tz("max_age") + " " + tz("0x20"));
}

TEST(ConformanceEncodeContent, DifferencesNamesAHeader) {
    EXPECT_EQ(content("text/plain; differences=Content-Length", "1.1"), "OK 03 83 87 8D");
    EXPECT_EQ(content("text/plain; differences=cache-control", "1.4"), "OK 03 83 87 88");
    EXPECT_EQ(content("text/plain; differences=x-foo", "1.1"), "OK 08 83 87 " + tz("x-foo"));
}

TEST(ConformanceEncodeContent, PaddingIsTheLowEightBitsAsShortInteger) {
    EXPECT_EQ(content("text/plain; padding=5", "1.1"), "OK 03 83 88 85");
    EXPECT_EQ(content("text/plain; padding=0x10", "1.1"), "OK 03 83 88 90");
    EXPECT_EQ(content("text/plain; padding=300", "1.1"), "OK 03 83 88 AC");
    // 200 has bit 7 set: the typed form fails and the parameter goes out
    // untyped, the number as a Long-integer.
    EXPECT_EQ(content("text/plain; padding=200", "1.1"), "OK 0B 83 " + tz("padding") + " 01 C8");
}

TEST(ConformanceEncodeContent, SecureIsAnEmptyValue) {
    EXPECT_EQ(content("text/plain; secure", "1.3"), "OK 03 83 90 00");
    EXPECT_EQ(content("text/plain; secure=x", "1.3"), "OK 03 83 90 00");
    EXPECT_EQ(content("text/plain; secure", "1.2"), "OK 09 83 " + tz("secure") + " 00");
}

TEST(ConformanceEncodeContent, SecAndMacOnlyForConnectivityWbxml) {
    std::string mac = "8C3F1A2B4D5E6F708192A3B4C5D6E7F801234567";
    std::string text = "application/vnd.wap.connectivity-wbxml; SEC=0; MAC=" + mac;
    EXPECT_EQ(content(text.c_str(), "1.4"), "OK 1F 2D B6 91 80 92 " + tz(mac));
    EXPECT_EQ(content("application/vnd.wap.connectivity-wbxml; sec=1; mac=A1B2", "1.4"),
              "OK 09 B6 91 81 92 " + tz("A1B2"));
    EXPECT_EQ(content("text/plain; sec=1", "1.4"), "-214 len=0");
    EXPECT_EQ(content("text/plain; mac=abc", "1.4"), "-214 len=0");
}

TEST(ConformanceEncodeContent, SecAndMacBefore14AreUntyped) {
    EXPECT_EQ(content("application/vnd.wap.connectivity-wbxml; sec=0; mac=abc", "1.3"),
              "OK 0E B6 " + tz("sec") + " 80 " + tz("mac") + " " + tz("abc"));
}

TEST(ConformanceEncodeContent, DateParameters) {
    EXPECT_EQ(content("text/plain; creation-date=sun, 06 nov 1994 08:49:37 gmt", "1.4"),
              "OK 07 83 93 04 2E BC 98 A1");
    EXPECT_EQ(content("text/plain; modification-date=fri, 31 dec 1999 23:59:59 gmt", "1.4"),
              "OK 07 83 94 04 38 6D 43 7F");
    EXPECT_EQ(content("text/plain; read-date=thu, 01 jan 1970 00:00:00 gmt", "1.4"), "OK 04 83 95 01 00");
    // Before 1.4 the name is unknown and the date is no Token-text.
    EXPECT_EQ(content("text/plain; read-date=thu, 01 jan 1970 00:00:00 gmt", "1.3"), "-214 len=0");
}

// ===================================================================
// Accept (header code 0x00)
// ===================================================================

TEST(ConformanceEncodeAccept, BrowserListWithQValues) {
    EXPECT_EQ(enc("Accept: text/html, application/xhtml+xml;q=0.9, */*;q=0.8"),
              "OK 80 82 80 03 BB 80 5B 80 03 80 80 51");
}

TEST(ConformanceEncodeAccept, MediaBeyondTheVersionIsText) {
    EXPECT_EQ(enc("Accept: application/xhtml+xml;q=0.9", "1.1"), "OK 80 18 " + tz("application/xhtml+xml") + " 80 5B");
    EXPECT_EQ(enc("Accept: application/vnd.wap.sic", "1.1"), "OK 80 " + tz("application/vnd.wap.sic"));
    EXPECT_EQ(enc("Accept: application/vnd.wap.sic", "1.2"), "OK 80 AE");
}

TEST(ConformanceEncodeAccept, ValueIsLowerCasedBeforeTheExactSearch) {
    EXPECT_EQ(enc("Accept: TEXT/HTML, Image/GIF"), "OK 80 82 80 9D");
}

TEST(ConformanceEncodeAccept, UnknownMediaWithoutParametersIsPlainText) {
    EXPECT_EQ(enc("Accept: x-foo/bar"), "OK 80 " + tz("x-foo/bar"));
    EXPECT_EQ(enc("Accept: \xE9/x"), "OK 80 E9 2F 78 00");
}

TEST(ConformanceEncodeAccept, UnknownMediaWithParametersIsTextString) {
    EXPECT_EQ(enc("Accept: x/y;q=0.5"), "OK 80 06 78 2F 79 00 80 33");
    EXPECT_EQ(enc("Accept: \xE9/x;q=0.5"), "OK 80 07 7F E9 2F 78 00 80 33");
}

TEST(ConformanceEncodeAccept, CodeAbove127IsCopiedFromTheScratchStart) {
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal"), "OK 80 03 02 02 02");
    EXPECT_EQ(enc("Accept: application/vnd.omaloc-supl-init"), "OK 80 03 02 03 12");
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal;q=0.5"), "OK 80 05 02 02 02 80 33");
    EXPECT_EQ(enc("Accept: application/vnd.uplanet.signal", "1.3"), "OK 80 " + tz("application/vnd.uplanet.signal"));
}

TEST(ConformanceEncodeAccept, EmptyValueWritesNothing) {
    EXPECT_EQ(enc("Accept:"), "OK");
    EXPECT_EQ(enc("Accept:   "), "OK");
}

TEST(ConformanceEncodeAccept, TypeParameterWithoutMediaRestrictionIsCode3) {
    EXPECT_EQ(enc("Accept: text/html;type=5"), "OK 80 03 82 83 85");
}

TEST(ConformanceEncodeAccept, StartParameterIsRefused) {
    EXPECT_EQ(enc("Accept: multipart/related;start=x"), "-214 freed");
}

TEST(ConformanceEncodeAccept, FullOutputAfterTheHeaderCodeFails) {
    EXPECT_EQ(enc("Accept: */*", "1.4", 3), "OK 80 80");
    EXPECT_EQ(enc("Accept: */*", "1.4", 2), "-214 freed");
    EXPECT_EQ(enc("Accept: */*", "1.4", 1), "-214 freed");
}

// ===================================================================
// Accept-Charset, Accept-Language, Accept-Encoding (list encoder)
// ===================================================================

TEST(ConformanceEncodeQList, AcceptEncodingExample) {
    EXPECT_EQ(enc("accept-encoding: gzip, *;q=0.5", "1.3"), "OK BC 80 BC 02 83 33");
}

TEST(ConformanceEncodeQList, AcceptEncodingItems) {
    EXPECT_EQ(enc("accept-encoding: *", "1.4"), "OK BC 83");
    EXPECT_EQ(enc("accept-encoding: deflate, br", "1.4"), "OK BC 82 BC " + tz("br"));
    EXPECT_EQ(enc("accept-encoding: identity;q=0", "1.4"), "OK BC 0A " + tz("identity") + " 01");
    EXPECT_EQ(enc("accept-encoding: gzip;q", "1.4"), "OK BC 02 80 00");
}

TEST(ConformanceEncodeQList, AcceptCharsetList) {
    EXPECT_EQ(enc("Accept-Charset: utf-8, iso-8859-1;q=0.5", "1.2"), "OK 81 EA 81 02 84 33");
    EXPECT_EQ(enc("Accept-Charset: ISO-8859-1", "1.1"), "OK 81 84");
}

TEST(ConformanceEncodeQList, StarIsAnyCharsetOnlyForTheNewerCode) {
    EXPECT_EQ(enc("accept-charset: *", "1.3"), "OK BB 80");
    EXPECT_EQ(enc("accept-charset: *", "1.2"), "OK 81 2A 00");
}

TEST(ConformanceEncodeQList, CharsetAbove127) {
    EXPECT_EQ(enc("accept-charset: utf-16", "1.2"), "OK 81 03 02 03 F7");
    EXPECT_EQ(enc("accept-charset: utf-16;q=0.5", "1.2"), "OK 81 04 02 03 F7 33");
}

TEST(ConformanceEncodeQList, EmptyValues) {
    EXPECT_EQ(enc("accept-charset:", "1.2"), "-214 freed");
    EXPECT_EQ(enc("accept-charset:", "1.3"), "OK");
    EXPECT_EQ(enc("accept-encoding:  ", "1.3"), "OK");
    EXPECT_EQ(enc("accept-language:", "1.4"), "-214 freed");
}

TEST(ConformanceEncodeQList, OnlyTheQParameterIsAllowed) {
    EXPECT_EQ(enc("accept-charset: utf-8;level=1", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-encoding: gzip;charset=x", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-encoding: gzip;foo=1", "1.4"), "-214 freed");
}

TEST(ConformanceEncodeQList, SecondParameterOnlyForTheNewerCodes) {
    EXPECT_EQ(enc("accept-charset: utf-8;q=0.5;q=0.3", "1.2"), "-214 freed");
    EXPECT_EQ(enc("accept-language: en;q=0.5;q=0.3", "1.4"), "-214 freed");
    EXPECT_EQ(enc("accept-charset: utf-8;q=0.5;q=0.3", "1.3"), "OK BB 03 EA 33 1F");
    EXPECT_EQ(enc("accept-encoding: gzip;q=0.5;q=0.3", "1.4"), "OK BC 03 80 33 1F");
}

TEST(ConformanceEncodeQList, MalformedQValueFails) {
    EXPECT_EQ(enc("accept-encoding: gzip;q=2", "1.4"), "-214 freed");
}

TEST(ConformanceEncodeQList, AcceptLanguageByCodeOrName) {
    EXPECT_EQ(enc("Accept-Language: en", "1.1"), "OK 83 99");
    EXPECT_EQ(enc("Accept-Language: English", "1.1"), "OK 83 99");
    EXPECT_EQ(enc("Accept-Language: en;q=0.8", "1.1"), "OK 83 02 99 51");
    EXPECT_EQ(enc("Accept-Language: po", "1.1"), "OK 83 D8");
    EXPECT_EQ(enc("Accept-Language: pl", "1.1"), "OK 83 " + tz("pl"));
    EXPECT_EQ(enc("Accept-Language: de-DE", "1.1"), "OK 83 " + tz("de-de"));
    EXPECT_EQ(enc("Accept-Language: Scots Gealic", "1.1"), "OK 83 A5");
}

TEST(ConformanceEncodeQList, AcceptLanguageAbove127) {
    EXPECT_EQ(enc("Accept-Language: la", "1.4"), "OK 83 02 01 8B");
    EXPECT_EQ(enc("Accept-Language: latin", "1.4"), "OK 83 02 01 8B");
    EXPECT_EQ(enc("Accept-Language: la;q=0.5", "1.4"), "OK 83 03 01 8B 33");
}

// ===================================================================
// Realistic request header sets
// ===================================================================

TEST(ConformanceEncodeRequests, WmlBrowserUnder11) {
    EXPECT_EQ(enc("Accept: text/vnd.wap.wml, application/vnd.wap.wmlc, image/vnd.wap.wbmp, image/gif\r\n"
                  "Accept-Charset: utf-8, iso-8859-1\r\n"
                  "Accept-Language: en\r\n"
                  "User-Agent: Nokia7110/1.0 (04.94)\r\n"
                  "Cache-Control: no-cache\r\n"
                  "Connection: close\r\n",
                  "1.1"),
              "OK 80 88 80 94 80 A1 80 9D 81 EA 81 84 83 99 A9 " + tz("Nokia7110/1.0 (04.94)") + " 88 80 89 80");
}

TEST(ConformanceEncodeRequests, BrowserUnder12) {
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

TEST(ConformanceEncodeRequests, BrowserUnder13) {
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

TEST(ConformanceEncodeRequests, MmsClientUnder14) {
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

} // namespace
