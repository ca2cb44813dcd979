// wsp_enc_hdr: output checks, page records, shifts, line cutting, version
// limits, the remembered code, application headers and extension pages.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "encode/encode.h"
#include "wsp_test_support.h"

using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

std::string th(const std::string &s) { return hex(reinterpret_cast<const uint8_t *>(s.data()), s.size()); }
// Text bytes with their NUL.
std::string tz(const std::string &s) { return th(s + '\0'); }
// An application header: name, NUL, value, NUL.
std::string app(const std::string &name, const std::string &value) { return tz(name) + " " + tz(value); }

constexpr int kTextLengthOfText = -1;

struct PageInput {
    uint8_t page;
    std::string text;
    uint8_t name_count = 0;
    const wsp_code_entry *names = nullptr;
    int length = kTextLengthOfText; // text.length; default: the text's own length
};

// Owns writable, exactly sized copies of the page texts and the records.
class PageList {
  public:
    explicit PageList(const std::vector<PageInput> &inputs) {
        for (const PageInput &input : inputs) {
            texts_.emplace_back(new char[input.text.size() + 1]);
            std::memcpy(texts_.back().get(), input.text.c_str(), input.text.size() + 1);
            wsp_hdr_page rec{};
            rec.page = input.page;
            rec.name_count = input.name_count;
            rec.names = input.names;
            rec.text.data = reinterpret_cast<unsigned char *>(texts_.back().get());
            rec.text.size = static_cast<uint16_t>(input.text.size() + 1);
            rec.text.length =
                static_cast<uint16_t>(input.length == kTextLengthOfText ? input.text.size() : input.length);
            records_.push_back(rec);
        }
        list_.count = static_cast<uint16_t>(records_.size());
        list_.pages = records_.empty() ? nullptr : records_.data();
    }
    wsp_hdr_page_list *get() { return &list_; }
    wsp_hdr_page &record(size_t i) { return records_[i]; }
    const char *text(size_t i) const { return texts_[i].get(); }

  private:
    std::vector<std::unique_ptr<char[]>> texts_;
    std::vector<wsp_hdr_page> records_;
    wsp_hdr_page_list list_{};
};

struct Result {
    int status;
    std::string out;    // bytes written (empty when the data was freed)
    uint16_t holder;    // holder length after the call
    bool freed;         // output data released
    uint16_t length;    // output buffer length after the call
};

Result run(PageList &pages, const char *version, uint16_t size = 400, uint16_t offset = 0) {
    OutBuffer out(size, offset);
    wsp_hdrbuf holder{};
    holder.length = 0xBEEF;
    holder.buffer = out.get();
    int status = wsp_enc_hdr(pages.get(), &holder, version);
    return {status, out.written_hex(), holder.length, out->data == nullptr, out->length};
}

Result run(const std::vector<PageInput> &inputs, const char *version, uint16_t size = 400) {
    PageList pages(inputs);
    return run(pages, version, size);
}

// One page-1 record.
Result page1(const std::string &text, const char *version, uint16_t size = 400) {
    return run({{1, text}}, version, size);
}

void expect_failure(const Result &r) {
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.freed);
    EXPECT_EQ(r.holder, 0xBEEF);
}

} // namespace

// ---- output checks --------------------------------------------------------------------

TEST(EncHdrOutput, NullHolderIsRefusedHarmlessly) {
    PageList pages({{1, "age: 1"}});
    EXPECT_EQ(wsp_enc_hdr(pages.get(), nullptr, "1.4"), WSP_ERR_FAIL);
    EXPECT_STREQ(pages.text(0), "age: 1"); // nothing was touched
}

TEST(EncHdrOutput, NullBufferIsRefused) {
    PageList pages({{1, "age: 1"}});
    wsp_hdrbuf holder{};
    holder.length = 7;
    EXPECT_EQ(wsp_enc_hdr(pages.get(), &holder, "1.4"), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, 7);
}

TEST(EncHdrOutput, ExternalBufferIsRefusedAndNotFreed) {
    PageList pages({{1, "age: 1"}});
    unsigned char block[8] = {};
    wsp_buffer buf{};
    buf.data = block;
    buf.size = sizeof block;
    buf.flags = WSP_BUFFER_EXTERNAL;
    wsp_hdrbuf holder{};
    holder.length = 9;
    holder.buffer = &buf;
    EXPECT_EQ(wsp_enc_hdr(pages.get(), &holder, "1.4"), WSP_ERR_FAIL);
    EXPECT_EQ(buf.data, block);
    EXPECT_EQ(buf.length, 0);
    EXPECT_EQ(holder.length, 9);
}

TEST(EncHdrOutput, MissingDataIsRefused) {
    PageList pages({{1, "age: 1"}});
    wsp_buffer buf{};
    buf.size = 10;
    wsp_hdrbuf holder{};
    holder.length = 9;
    holder.buffer = &buf;
    EXPECT_EQ(wsp_enc_hdr(pages.get(), &holder, "1.4"), WSP_ERR_FAIL);
    EXPECT_EQ(holder.length, 9);
}

TEST(EncHdrOutput, ZeroSizeIsRefusedAndNotFreed) {
    PageList pages({{1, "age: 1"}});
    Result r = run(pages, "1.4", 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_FALSE(r.freed);
    EXPECT_EQ(r.holder, 0xBEEF);
}

TEST(EncHdrOutput, NullPageListIsRefusedWithoutFreeing) {
    OutBuffer out(10);
    wsp_hdrbuf holder{};
    holder.length = 5;
    holder.buffer = out.get();
    EXPECT_EQ(wsp_enc_hdr(nullptr, &holder, "1.4"), WSP_ERR_FAIL);
    EXPECT_NE(out->data, nullptr);
    EXPECT_EQ(holder.length, 5);
    wsp_hdr_page_list no_records{2, nullptr};
    EXPECT_EQ(wsp_enc_hdr(&no_records, &holder, "1.4"), WSP_ERR_FAIL);
    EXPECT_NE(out->data, nullptr);
}

TEST(EncHdrOutput, EmptyListSucceedsWithLengthZero) {
    Result r = run(std::vector<PageInput>{}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.holder, 0);
    EXPECT_EQ(r.length, 0);
    EXPECT_FALSE(r.freed);
}

TEST(EncHdrOutput, HolderLengthCountsOnlyThisCall) {
    PageList pages({{1, "age: 30"}});
    OutBuffer out(20, 4);
    out->length = 3;
    wsp_hdrbuf holder{};
    holder.buffer = out.get();
    EXPECT_EQ(wsp_enc_hdr(pages.get(), &holder, "1.4"), WSP_OK);
    EXPECT_EQ(holder.length, 2);
    EXPECT_EQ(out->length, 5);
    EXPECT_EQ(hex(out->data + 4 + 3, 2), "85 9E");
}

// ---- page records and shifts -------------------------------------------------------------

TEST(EncHdrPages, FirstPageOneRecordHasNoShift) {
    Result r = page1("age: 30", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "85 9E");
    EXPECT_EQ(r.holder, 2);
}

TEST(EncHdrPages, LaterPageOneRecordsOpenWithShortCutShift) {
    Result r = run({{1, "age: 30"}, {1, "age: 1"}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "85 9E 01 85 81");
}

TEST(EncHdrPages, EmptyPageOneRecordWritesNoShift) {
    Result r = run({{1, "age: 30"}, {1, ""}, {1, "age: 1"}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "85 9E 01 85 81");
}

TEST(EncHdrPages, EmptyFirstRecordStillCountsAsTheFirstPosition) {
    Result r = run({{1, ""}, {1, "age: 1"}}, "1.4");
    EXPECT_EQ(r.out, "01 85 81");
}

TEST(EncHdrPages, PageOneWithNamesFails) {
    static const wsp_code_entry names[] = {{"x", 1}};
    expect_failure(run({{1, "age: 1", 1, names}}, "1.4"));
}

TEST(EncHdrPages, ExtensionPageAboveShortCutRangeWritesShiftDelimiter) {
    static const wsp_code_entry names[] = {{"x", 1}};
    Result r = run({{0x20, "", 1, names}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 20");
    EXPECT_EQ(run({{0x7F, "", 1, names}}, "1.4").out, "7F 7F");
}

TEST(EncHdrPages, ExtensionPageInShortCutRangeWritesOneOctet) {
    static const wsp_code_entry names[] = {{"x", 1}};
    EXPECT_EQ(run({{0x15, "", 1, names}}, "1.4").out, "15");
    EXPECT_EQ(run({{0x10, "", 1, names}}, "1.4").out, "10");
    EXPECT_EQ(run({{0x1F, "", 1, names}}, "1.4").out, "1F");
}

TEST(EncHdrPages, PageOneAfterAnExtensionPage) {
    static const wsp_code_entry names[] = {{"x", 1}};
    Result r = run({{0x20, "x: a", 1, names}, {1, "age: 1"}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 20 81 20 61 00 01 85 81");
}

TEST(EncHdrPages, InvalidPageNumbersFailAndFree) {
    static const wsp_code_entry names[] = {{"x", 1}};
    for (uint8_t page : {uint8_t{0}, uint8_t{2}, uint8_t{0x0F}, uint8_t{0x80}, uint8_t{0xFF}}) {
        Result r = run({{1, "age: 1"}, {page, "x: a", 1, names}}, "1.4");
        expect_failure(r);
    }
}

TEST(EncHdrPages, ExtensionPageWithoutNamesFailsAndFrees) {
    expect_failure(run({{0x20, "", 0, nullptr}}, "1.4"));
}

TEST(EncHdrPages, ShiftOctetsAreTestedForRoomBeforeWriting) {
    static const wsp_code_entry names[] = {{"x", 1}};
    // The exactly sized output block lets ASan see any byte past size.
    expect_failure(run({{0x20, "", 1, names}}, "1.4", 1));
    Result exact = run({{0x20, "", 1, names}}, "1.4", 2);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "7F 20");
    expect_failure(run({{0x20, "", 1, names}, {0x15, "", 1, names}}, "1.4", 2));
    EXPECT_EQ(run({{0x20, "", 1, names}, {0x15, "", 1, names}}, "1.4", 3).out, "7F 20 15");
}

TEST(EncHdrPages, PageOneShiftIsTestedForRoom) {
    static const wsp_code_entry names[] = {{"x", 1}};
    expect_failure(run({{0x15, "", 1, names}, {1, "x-a:1"}}, "1.4", 1));
    Result exact = run({{0x15, "", 1, names}, {1, "x-a:1"}}, "1.4", 8);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.out, "15 01 " + app("x-a", "1"));
}

TEST(EncHdrPages, TextWithoutDataIsSkipped) {
    static const wsp_code_entry names[] = {{"x", 1}};
    PageList pages({{1, "age: 1"}, {0x20, "x: a", 1, names}});
    pages.record(0).text.data = nullptr;
    pages.record(1).text.data = nullptr;
    Result r = run(pages, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 20");
}

TEST(EncHdrPages, TextStartsAtItsOffset) {
    PageList pages({{1, "xxxage: 30"}});
    pages.record(0).text.offset = 3;
    pages.record(0).text.length = 7;
    Result r = run(pages, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "85 9E");
}

// ---- line cutting --------------------------------------------------------------------------

TEST(EncHdrLines, CarriageReturnIsCutOff) {
    Result r = page1("age: 10\r\nx-a:1", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "85 8A " + app("x-a", "1"));
}

TEST(EncHdrLines, LineWithoutColonIsANameWithEmptyValue) {
    Result r = page1("x-foo", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("x-foo", ""));
}

TEST(EncHdrLines, ValueKeepsItsLeadingBlankAndCase) {
    EXPECT_EQ(page1("X-Foo: Bar", "1.4").out, app("x-foo", " Bar"));
}

TEST(EncHdrLines, ValueIsEverythingAfterTheFirstColon) {
    EXPECT_EQ(page1("x-url: http://a:80/", "1.4").out, app("x-url", " http://a:80/"));
}

TEST(EncHdrLines, ColonInsideQuotesDoesNotCut) {
    EXPECT_EQ(page1("x-\"a:b\"", "1.4").status, WSP_ERR_FAIL); // quotes are no token characters
}

TEST(EncHdrLines, LineOfColonsIsAnEmptyName) {
    Result r = page1(":::", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "00 00");
}

TEST(EncHdrLines, BlankLinesAreSwallowed) {
    Result r = page1("\n\nx-a:1\n\n\nx-b:2\n", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("x-a", "1") + " " + app("x-b", "2"));
}

TEST(EncHdrLines, CarriageReturnOnlyLineIsSkipped) {
    Result r = page1("x-a:1\r\n\r\nx-b:2", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("x-a", "1") + " " + app("x-b", "2"));
}

TEST(EncHdrLines, LengthEndsTheRecordAfterALine) {
    // The first line's step (6) reaches the length: the second is not read.
    Result r = run({{1, "x-a:1\nx-b:2", 0, nullptr, 6}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("x-a", "1"));
    Result shorter = run({{1, "x-a:1\nx-b:2", 0, nullptr, 2}}, "1.4");
    EXPECT_EQ(shorter.out, app("x-a", "1"));
    Result more = run({{1, "x-a:1\nx-b:2", 0, nullptr, 7}}, "1.4");
    EXPECT_EQ(more.out, app("x-a", "1") + " " + app("x-b", "2"));
}

TEST(EncHdrLines, StepCountsTheCarriageReturn) {
    Result r = run({{1, "x-a:1\r\nx-b:2", 0, nullptr, 7}}, "1.4");
    EXPECT_EQ(r.out, app("x-a", "1"));
    Result more = run({{1, "x-a:1\r\nx-b:2", 0, nullptr, 8}}, "1.4");
    EXPECT_EQ(more.out, app("x-a", "1") + " " + app("x-b", "2"));
}

TEST(EncHdrLines, SkippedLineDoesNotEndTheRecord) {
    // The CR-only line's step reaches the length, yet the next line is read.
    Result r = run({{1, "\r\nx-a:1\nx-b:2", 0, nullptr, 2}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("x-a", "1"));
}

TEST(EncHdrLines, BlankLinesDoNotCountSoTheNulEndsTheText) {
    // The 4 newlines of the blank lines are not counted: after x-a the count
    // is 6, below the length of 7, so x-c is still read.
    Result r = run({{1, "\n\n\n\nx-a:1\nx-c:3", 0, nullptr, 7}}, "1.4");
    EXPECT_EQ(r.out, app("x-a", "1") + " " + app("x-c", "3"));
}

TEST(EncHdrLines, TextIsCutAndLowerCasedInPlace) {
    PageList pages({{1, "X-Foo: Bar\nAge: 1"}});
    Result r = run(pages, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    const char *t = pages.text(0);
    EXPECT_STREQ(t, "x-foo");
    EXPECT_STREQ(t + 6, " Bar");
    EXPECT_STREQ(t + 11, "age");
}

// ---- names and versions ------------------------------------------------------------------------

TEST(EncHdrNames, NamesAreMatchedWithoutRegardToCase) {
    EXPECT_EQ(page1("ACCEPT-CHARSET: utf-8", "1.4").out, "BB EA");
    EXPECT_EQ(page1("Accept-Charset: utf-8", "1.2").out, "81 EA");
}

TEST(EncHdrNames, DuplicatedNamesTakeTheHighestAdmittedCode) {
    EXPECT_EQ(page1("cache-control: no-cache", "1.4").out, "C7 80");
    EXPECT_EQ(page1("cache-control: no-cache", "1.3").out, "BD 80");
    EXPECT_EQ(page1("cache-control: no-cache", "1.2").out, "88 80");
    EXPECT_EQ(page1("cache-control: no-cache", "1.1").out, "88 80");
    EXPECT_EQ(page1("accept-encoding: gzip", "1.3").out, "BC 80");
    EXPECT_EQ(page1("accept-encoding: gzip", "1.2").out, "82 80");
}

TEST(EncHdrNames, ContentDispositionFollowsTheVersion) {
    EXPECT_EQ(page1("content-disposition: attachment", "1.3").out, "AE 01 81");
    EXPECT_EQ(page1("content-disposition: attachment", "1.4").out, "C5 01 81");
}

TEST(EncHdrNames, NamesAboveTheLimitAreApplicationHeaders) {
    Result r = page1("te: trailers", "1.1");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("te", " trailers"));
    EXPECT_EQ(page1("te: trailers", "1.2").out, app("te", " trailers"));
    EXPECT_EQ(page1("te: trailers", "1.3").out, "B9 81");
}

TEST(EncHdrNames, VersionLimitsAreInclusive) {
    // 0x2E is the last code of 1.1, 0x2F the first past it.
    EXPECT_EQ(page1("x-wap-application-id: x-wap-application:wml.ua", "1.1").out,
              app("x-wap-application-id", " x-wap-application:wml.ua"));
    EXPECT_EQ(page1("x-wap-application-id: x-wap-application:wml.ua", "1.2").out, "AF 82");
    EXPECT_EQ(page1("encoding-version: 1.3", "1.2").out, app("encoding-version", " 1.3"));
    EXPECT_EQ(page1("encoding-version: 1.3", "1.3").out, "C3 93");
    EXPECT_EQ(page1("x-wap-security: close-subordinate", "1.3").out,
              app("x-wap-security", " close-subordinate"));
    EXPECT_EQ(page1("x-wap-security: close-subordinate", "1.4").out, "C6 80");
}

TEST(EncHdrNames, UnknownVersionRecognisesOnlyAccept) {
    Result r = page1("age: 30\nte: trailers", "2.0");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("age", " 30") + " " + app("te", " trailers"));
}

TEST(EncHdrNames, UnknownVersionHandsIndexFourToTheAcceptEncoder) {
    // The Accept encoder refuses version index 4, which fails the call.
    expect_failure(page1("accept: */*", "2.0"));
    expect_failure(page1("accept: */*", nullptr));
}

TEST(EncHdrNames, VersionIsComparedExactly) {
    EXPECT_EQ(page1("age: 30", "1.4 ").out, app("age", " 30"));
    EXPECT_EQ(page1("age: 30", "").out, app("age", " 30"));
}

TEST(EncHdrNames, VersionIsLookedUpAgainForEveryLine) {
    // The version text may lie in memory the call itself writes: here in the
    // output block, where the second Age overwrites its first character, so
    // the third line sees an unknown version and the Accept encoder refuses
    // it.
    PageList pages({{1, "age: 1\nage: 2\naccept: */*"}});
    OutBuffer out(16);
    std::memcpy(out->data + 3, "1.4", 4);
    wsp_hdrbuf holder{};
    holder.length = 0xBEEF;
    holder.buffer = out.get();
    EXPECT_EQ(wsp_enc_hdr(pages.get(), &holder, reinterpret_cast<const char *>(out->data + 3)), WSP_ERR_FAIL);
    EXPECT_EQ(out->data, nullptr);
    EXPECT_EQ(holder.length, 0xBEEF);
    // The same lines with the version text elsewhere.
    EXPECT_EQ(page1("age: 1\nage: 2\naccept: */*", "1.4").out, "85 81 85 82 80 80");
}

TEST(EncHdrNames, AcceptGoesToTheAcceptEncoder) {
    Result r = page1("Accept: */*", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "80 80");
    EXPECT_EQ(page1("accept: text/html, application/vnd.wap.sic", "1.1").out,
              "80 82 80 " + tz("application/vnd.wap.sic"));
}

TEST(EncHdrNames, AcceptWithEmptyValueWritesNothing) {
    Result r = page1("accept:", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.holder, 0);
}

TEST(EncHdrNames, ListEncodersThroughTheTable) {
    EXPECT_EQ(page1("accept-language: en, fr;q=0.5", "1.1").out, "83 99 83 02 A2 33");
    EXPECT_EQ(page1("accept-encoding: gzip, *;q=0.5", "1.4").out, "BC 80 BC 02 83 33");
}

TEST(EncHdrNames, EncodingVersionUsesItsEncoder) {
    EXPECT_EQ(page1("encoding-version: 1.0", "1.4").out, "C3 9F");
}

// ---- refused headers --------------------------------------------------------------------------

TEST(EncHdrRefused, ContentTypeFailsAndFrees) {
    expect_failure(page1("Content-Type: text/plain", "1.4"));
    expect_failure(page1("x-a: 1\ncontent-type: text/plain", "1.1"));
}

TEST(EncHdrRefused, RecognisedHeadersWithoutEncoderFail) {
    expect_failure(page1("profile: http://x/", "1.2"));
    expect_failure(page1("profile_diff: x", "1.2"));
    expect_failure(page1("profile-warning: 100", "1.2"));
    expect_failure(page1("profile-warning: 100", "1.4"));
    expect_failure(page1("set-cookie: a=b", "1.4"));
}

TEST(EncHdrRefused, TheSameNamesAreApplicationHeadersBelowTheirVersion) {
    EXPECT_EQ(page1("profile: x", "1.1").out, app("profile", " x"));
    EXPECT_EQ(page1("set-cookie: a", "1.2").out, app("set-cookie", " a"));
}

TEST(EncHdrRefused, ValueEncoderFailureFailsTheCall) {
    expect_failure(page1("allow: get", "1.4"));
    expect_failure(page1("age: 1\nallow: GET, get", "1.4"));
}

TEST(EncHdrRefused, ApplicationHeaderNameMustBeTokenText) {
    expect_failure(page1("x foo: 1", "1.4"));
    expect_failure(page1("x/foo: 1", "1.4"));
}

TEST(EncHdrRefused, ApplicationHeaderValueMustBeText) {
    expect_failure(page1("x-foo: a\x01" "b", "1.4"));
}

TEST(EncHdrRefused, ApplicationHeaderValueStartingHighIsQuoted) {
    EXPECT_EQ(page1("x-foo:\xE9t\xE9", "1.4").out, tz("x-foo") + " 7F E9 74 E9 00");
}

TEST(EncHdrRefused, FullOutputFails) {
    // x-a NUL 1 NUL is 6 bytes.
    expect_failure(page1("x-a:1", "1.4", 5));
    Result exact = page1("x-a:1", "1.4", 6);
    EXPECT_EQ(exact.status, WSP_OK);
    EXPECT_EQ(exact.holder, 6);
}

TEST(EncHdrRefused, EarlierRecordsAreLostWithTheBuffer) {
    Result r = run({{1, "age: 1"}, {1, "content-type: text/plain"}}, "1.4");
    expect_failure(r);
}

// ---- Cookie ----------------------------------------------------------------------------------

TEST(EncHdrCookie, VersionFirstGoesToTheCookieEncoder) {
    Result r = page1("Cookie: $Version=1; a=b", "1.3");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "C2 06 9F 04 61 00 62 00");
    EXPECT_EQ(page1("Cookie: $Version=1; a=b", "1.4").out, "C2 06 9F 04 61 00 62 00");
}

TEST(EncHdrCookie, WithoutVersionIsAnApplicationHeader) {
    EXPECT_EQ(page1("Cookie: a=b", "1.4").out, app("cookie", " a=b"));
}

TEST(EncHdrCookie, PortMakesAnApplicationHeader) {
    EXPECT_EQ(page1("Cookie: $Version=1; $Port=80", "1.4").out, app("cookie", " $Version=1; $Port=80"));
}

TEST(EncHdrCookie, VersionFoundAgainFromTheNinthCharacterMakesAnApplicationHeader) {
    EXPECT_EQ(page1("Cookie: $Version=1; a=b; $version=2", "1.4").out,
              app("cookie", " $Version=1; a=b; $version=2"));
}

TEST(EncHdrCookie, VersionNotFirstStillReachesTheEncoder) {
    // "$version" at position 2 passes the test; the Cookie encoder then
    // refuses a first attribute other than $version.
    expect_failure(page1("cookie: a$version=1", "1.4"));
}

TEST(EncHdrCookie, BeforeOnePointThreeEveryCookieIsAnApplicationHeader) {
    EXPECT_EQ(page1("Cookie: $Version=1; a=b", "1.2").out, app("cookie", " $Version=1; a=b"));
    EXPECT_EQ(page1("Cookie: $Version=1; a=b", "1.1").out, app("cookie", " $Version=1; a=b"));
}

TEST(EncHdrCookie, ValueOfOneHundredNinetyEightBytesFails) {
    std::string value(197, 'a'); // with its leading blank: 198
    expect_failure(page1("cookie: " + value, "1.4"));
    std::string shorter(196, 'a');
    Result r = page1("cookie: " + shorter, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("cookie", " " + shorter));
}

TEST(EncHdrCookie, RememberedCodeTestsTheLinesThatFollow) {
    std::string value(197, 'a');
    // An unrecognised line after a Cookie line undergoes the Cookie test.
    expect_failure(page1("cookie: $Version=1; a=b\nx-foo: " + value, "1.4"));
    // ... and keeps undergoing it: unrecognised lines leave the code alone.
    expect_failure(page1("cookie: $Version=1; a=b\nx-a: 1\nx-foo: " + value, "1.4"));
    // Otherwise the line is an application header as usual.
    Result r = page1("cookie: $Version=1; a=b\nx-foo: $Version=1", "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "C2 06 9F 04 61 00 62 00 " + app("x-foo", " $Version=1"));
}

TEST(EncHdrCookie, RecognisedLineReplacesTheRememberedCode) {
    std::string value(197, 'a');
    Result r = page1("cookie: $Version=1; a=b\nage: 1\nx-foo: " + value, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "C2 06 9F 04 61 00 62 00 85 81 " + app("x-foo", " " + value));
}

TEST(EncHdrCookie, RememberedCodeStartsAfreshForEachRecord) {
    std::string value(197, 'a');
    Result r = run({{1, "cookie: a=b"}, {1, "x-foo: " + value}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, app("cookie", " a=b") + " 01 " + app("x-foo", " " + value));
}

// ---- extension pages ------------------------------------------------------------------------

namespace {
const wsp_code_entry kPageNames[] = {{"X-Alpha", 0x05}, {"beta", 0x7F}, {"gamma", 0x80}};
}

TEST(EncHdrExtension, KnownNamesAreShortIntegers) {
    Result r = run({{0x30, "X-Alpha: One\nbeta:2", 3, kPageNames}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 30 85 " + tz(" One") + " FF " + tz("2"));
}

TEST(EncHdrExtension, NamesAreCaseSensitiveAndNotLowerCased) {
    PageList pages({{0x30, "x-alpha: 1\nBeta: 2", 3, kPageNames}});
    Result r = run(pages, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 30 " + app("x-alpha", " 1") + " " + app("Beta", " 2"));
    EXPECT_STREQ(pages.text(0) + 11, "Beta");
}

TEST(EncHdrExtension, NamesAreNotLimitedByTheVersion) {
    EXPECT_EQ(run({{0x30, "X-Alpha: 1", 3, kPageNames}}, "nonsense").out, "7F 30 85 " + tz(" 1"));
}

TEST(EncHdrExtension, OnlyTheFirstNameCountRowsAreSearched) {
    EXPECT_EQ(run({{0x30, "beta: 1", 1, kPageNames}}, "1.4").out, "7F 30 " + app("beta", " 1"));
}

TEST(EncHdrExtension, CodeOfOneHundredTwentyEightOrMoreFails) {
    expect_failure(run({{0x30, "gamma: 1", 3, kPageNames}}, "1.4"));
}

TEST(EncHdrExtension, NullRowNameFails) {
    static const wsp_code_entry names[] = {{"a", 1}, {nullptr, 2}, {"b", 3}};
    expect_failure(run({{0x30, "b: 1", 3, names}}, "1.4"));
    expect_failure(run({{0x30, "zz: 1", 3, names}}, "1.4"));
    // A match before the null row ends the search.
    EXPECT_EQ(run({{0x30, "a: 1", 3, names}}, "1.4").out, "7F 30 81 " + tz(" 1"));
}

TEST(EncHdrExtension, NullNameTableFails) {
    expect_failure(run({{0x30, "a: 1", 2, nullptr}}, "1.4"));
}

TEST(EncHdrExtension, MoreThanOneHundredTwentyEightNamesSkipsEveryLine) {
    static wsp_code_entry names[129];
    for (auto &row : names) row = {"a", 1};
    Result r = run({{0x30, "a: 1\nb: 2", 129, names}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 30");
    Result limit = run({{0x30, "a: 1", 128, names}}, "1.4");
    EXPECT_EQ(limit.out, "7F 30 81 " + tz(" 1"));
}

TEST(EncHdrExtension, ContentTypeAndCookieRulesDoNotApply) {
    static const wsp_code_entry names[] = {{"x", 1}};
    Result r = run({{0x30, "content-type: a\ncookie: $version=1", 1, names}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.out, "7F 30 " + app("content-type", " a") + " " + app("cookie", " $version=1"));
}

TEST(EncHdrExtension, ValueMustBeText) {
    expect_failure(run({{0x30, "X-Alpha: \x02", 3, kPageNames}}, "1.4"));
}

TEST(EncHdrExtension, LineCuttingAsOnPageOne) {
    Result r = run({{0x12, "X-Alpha:1\r\n\r\nbeta\nX-Alpha:3", 3, kPageNames, 10}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    // 10 bytes: the first line (step 11) ends the record.
    EXPECT_EQ(r.out, "12 85 " + tz("1"));
}

// ---- several records -----------------------------------------------------------------------

TEST(EncHdrRecords, MixedRecordsInOrder) {
    static const wsp_code_entry names[] = {{"x", 0x01}};
    Result r = run({{1, "Accept: */*\nx-a: b"}, {0x10, "x: 1", 1, names}, {1, "age: 5"}}, "1.4");
    EXPECT_EQ(r.status, WSP_OK);
    std::string expected = "80 80 " + app("x-a", " b") + " 10 81 " + tz(" 1") + " 01 85 85";
    EXPECT_EQ(r.out, expected);
    EXPECT_EQ(r.holder, 2 + 7 + 1 + 1 + 3 + 1 + 2);
}
