// The header block walk through the exported wsp_dec_hdr: argument checks,
// version limits, skipped codes, the three line writers as seen in the
// output, application headers, shifts and code pages.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"

using namespace wsp_test;
using namespace api_decode;

// ---------------------------------------------------------------------------
// Header block walk: arguments and set-up

TEST(ApiBlock, EmptyBlockIsSuccessWithNothingWritten) {
    Decoded d = decode({});
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 0);
    EXPECT_EQ(d.text, "");
    EXPECT_FALSE(d.released);
}

TEST(ApiBlock, NullBlockIsRefused) {
    OutBuffer out(64);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(nullptr, out.get(), nullptr, 4)), WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(ApiBlock, HolderWithoutBufferIsRefused) {
    wsp_hdrbuf hdr{};
    hdr.length = 2;
    OutBuffer out(64);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&hdr, out.get(), nullptr, 4)), WSP_ERR_ARG);
}

TEST(ApiBlock, BufferWithoutDataIsRefused) {
    wsp_buffer buf{};
    buf.size = buf.length = 2;
    wsp_hdrbuf hdr{2, &buf};
    OutBuffer out(64);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&hdr, out.get(), nullptr, 4)), WSP_ERR_ARG);
    EXPECT_EQ(buf.data, nullptr);
}

TEST(ApiBlock, NullOutputRefusedAndBlockReleased) {
    Block b(kTail);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&b.hdr, nullptr, nullptr, 4)), WSP_ERR_ARG);
    EXPECT_EQ(b.buf.data, nullptr);
}

TEST(ApiBlock, OutputWithoutDataRefusedAndBlockReleased) {
    Block b(kTail);
    wsp_buffer out{};
    out.size = 64;
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&b.hdr, &out, nullptr, 4)), WSP_ERR_ARG);
    EXPECT_EQ(b.buf.data, nullptr);
}

TEST(ApiBlock, OutputOfSizeZeroRefusedAndBlockReleased) {
    Decoded d = decode(kTail, 4, 0);
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
}

TEST(ApiBlock, FullOutputRefusedBeforeAnythingIsRead) {
    Decoded d = decode(kTail, 4, 8, nullptr, "abcdefgh");
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.length, 8);
    EXPECT_EQ(d.counted, "abcdefgh");
}

TEST(ApiBlock, LinesAreAddedAfterTextAlreadyInTheOutput) {
    Decoded d = decode(kTail, 4, 64, nullptr, "x-a:1\n");
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-a:1\ncontent-length:5\n");
    EXPECT_EQ(d.length, 23);
}

TEST(ApiBlock, BlockKeptOnSuccess) {
    Decoded d = decode(kTail);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_FALSE(d.released);
}

// ---------------------------------------------------------------------------
// Well-known headers: version limits, skipped codes

TEST(ApiBlock, ContentTypeInsideABlockIsNeverWritten) {
    EXPECT_TRUE(Lines(cat({bytes({0x91, 0x83}), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({bytes({0x91, 0x03, 0x83, 0x81, 0xEA}), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({bytes({0x91}), cstr("text/html"), kTail}), kTailLine));
}

TEST(ApiBlock, ApplicationIdSkippedUnderVersionOneDecodedUnderTwo) {
    Bytes b = cat({bytes({0xAF, 0x84}), kTail});
    EXPECT_TRUE(Lines(b, kTailLine, 1));
    EXPECT_TRUE(Lines(b, "x-wap-application-id:x-wap-application:mms.ua\n" + kTailLine, 2));
}

TEST(ApiBlock, VersionOneAdmitsContentDisposition) {
    EXPECT_TRUE(Lines(bytes({0xAE, 0x01, 0x82}), "content-disposition:inline\n", 1));
}

TEST(ApiBlock, VersionTwoStopsAtProfileWarning) {
    EXPECT_TRUE(Lines(bytes({0xB7, 0x90}), "profile-warning:100\n", 2));
    EXPECT_TRUE(Lines(cat({bytes({0xBA, 0x80}), kTail}), kTailLine, 2)); // trailer 0x3A
    EXPECT_TRUE(Lines(bytes({0xBA, 0x80}), "trailer:accept\n", 3));
}

TEST(ApiBlock, VersionThreeStopsAtEncodingVersion) {
    EXPECT_TRUE(Lines(bytes({0xC3, 0x93}), "encoding-version:1.3\n", 3));
    EXPECT_TRUE(Lines(cat({bytes({0xC4, 0x90}), kTail}), kTailLine, 3)); // profile-warning 0x44
    EXPECT_TRUE(Lines(bytes({0xC4, 0x90}), "profile-warning:100\n", 4));
    EXPECT_TRUE(Lines(bytes({0xC7, 0x80}), "cache-control:no-cache\n", 4));
}

TEST(ApiBlock, UnknownVersionNumberSkipsEveryWellKnownHeader) {
    Bytes b = cat({kTail, cstr("x-a"), cstr("b"), bytes({0x85, 0x81})});
    EXPECT_TRUE(Lines(b, "x-a:b\n", 0));
    EXPECT_TRUE(Lines(b, "x-a:b\n", 5));
}

TEST(ApiBlock, CodesAboveTheTableAreSkipped) {
    EXPECT_TRUE(Lines(cat({bytes({0xC8, 0x85}), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({bytes({0xFF, 0x02, 0x41, 0x42}), kTail}), kTailLine));
}

TEST(ApiBlock, EmptyDecoderEntriesAreSkipped) {
    // profile, profile_diff, expect, te, accept-charset 0x3B, accept-encoding 0x3C, cookie
    for (int code : {0x35, 0x36, 0x38, 0x39, 0x3B, 0x3C, 0x42}) {
        SCOPED_TRACE(code);
        EXPECT_TRUE(Lines(cat({bytes({0x80 | code, 0x03, 0x80, 0x81, 0x82}), kTail}), kTailLine));
        EXPECT_TRUE(Lines(cat({bytes({0x80 | code}), cstr("abc"), kTail}), kTailLine));
    }
}

TEST(ApiBlock, SkippingALongUintvarValue) {
    Bytes v = cat({bytes({0x91, 0x1F, 0x20}), rep('a', 32), kTail});
    EXPECT_TRUE(Lines(v, kTailLine));
}

TEST(ApiBlock, UnskippableValueOfASkippedCodeReleasesTheBlock) {
    Decoded d = decode(bytes({0x91, 0x1F, 0x80}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
    d = decode(bytes({0xB5, 'a', 'b', 'c'}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
}

TEST(ApiBlock, SkippingATextStopsAfter197Characters) {
    // A content-type header is stepped over with the 197-character rule...
    Decoded d = decode(cat({bytes({0x91}), cstr(std::string(250, 'a').c_str()), kTail}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
}

TEST(ApiBlock, MeasuringAFailedValueHasNoTextBound) {
    // ...while a value whose decoder failed is measured without one.
    EXPECT_TRUE(Lines(cat({bytes({0x85}), cstr(std::string(250, 'a').c_str()), kTail}), kTailLine));
}

TEST(ApiBlock, FailedDecoderDropsOnlyItsHeader) {
    // age does not take a Quoted-string
    EXPECT_TRUE(Lines(cat({bytes({0x85}), cstr("\"12"), kTail}), kTailLine));
}

TEST(ApiBlock, FailedDecoderWithUnmeasurableValueReleasesTheBlock) {
    Decoded d = decode(cat({kTail, bytes({0x85, 0x1F, 0x80})}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.text, kTailLine); // lines written before a failure stay
}

TEST(ApiBlock, DecoderReportingTruncationStopsAndReleases) {
    // accept-ranges uses the merging writer, whose -216 stops the block
    Decoded d = decode(cat({bytes({0x84, 0x81}), kTail}), 4, 19);
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.length, 0);
}

TEST(ApiBlock, MergingWriterFillsTheOutputToItsLastOctet) {
    // "accept-ranges:bytes\n" is 20 octets; the size test lets it in
    Decoded d = decode(bytes({0x84, 0x81}), 4, 20);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 20);
    EXPECT_EQ(d.counted, "accept-ranges:bytes\n");
}

TEST(ApiBlock, PlainWriterOverflowDropsTheHeaderAndGoesOn) {
    Decoded d = decode(bytes({0x8D, 0x85, 0x85, 0x81, 0x8D, 0x86}), 4, 20);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_FALSE(d.released);
    EXPECT_EQ(d.length, 17);
    EXPECT_EQ(d.text, kTailLine);
}

TEST(ApiBlock, PlainWriterFillsTheOutputToItsLastOctet) {
    Decoded d = decode(kTail, 4, 17);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 17);
    EXPECT_EQ(d.counted, kTailLine);
    d = decode(kTail, 4, 16);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 0);
}

TEST(ApiBlock, PlainWriterHeadersGetOneLineEach) {
    EXPECT_TRUE(Lines(bytes({0x8D, 0x85, 0x8D, 0x86}), "content-length:5\ncontent-length:6\n"));
}

TEST(ApiBlock, AcceptRangesNoneIsNeverCombined) {
    // The refused merge leaves the line as the split made it: ':' and '\n'
    // are NULs and the length is the old one.
    Decoded d = decode(bytes({0x84, 0x80, 0x84, 0x81}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_FALSE(d.released);
    EXPECT_EQ(d.length, 19);
    EXPECT_EQ(d.counted, std::string("accept-ranges\0none\0", 19));
}

TEST(ApiBlock, AcceptRangesNoneRefusedAfterAnotherUnit) {
    Decoded d = decode(bytes({0x84, 0x81, 0x84, 0x80}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 20);
    EXPECT_EQ(d.counted, std::string("accept-ranges\0bytes\0", 20));
}

TEST(ApiBlock, MergingWriterJoinsIntoAnEarlierLineAndKeepsTheRest) {
    Bytes b = cat({cstr("x-a"), cstr("1"), cstr("x-b"), cstr("2"), cstr("x-a"), cstr("3")});
    EXPECT_TRUE(Lines(b, "x-a:1,3\nx-b:2\n"));
}

TEST(ApiBlock, MergingIntoALineThatWasThereBeforeTheCall) {
    Decoded d = decode(cat({cstr("X-Foo"), cstr("b")}), 4, 64, nullptr, "x-foo:a\n");
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:a,b\n");
    EXPECT_EQ(d.length, 10);
}

TEST(ApiBlock, MergeThatDoesNotFitReturnsTruncatedAndKeepsTheBlock) {
    // 8 + 1 + 1 = 10 is not below a size of 10
    Decoded d = decode(cat({cstr("x-foo"), cstr("b")}), 4, 10, nullptr, "x-foo:a\n");
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(d.released);
    EXPECT_EQ(d.length, 8);
    EXPECT_EQ(d.counted, std::string("x-foo\0a\0", 8));
    d = decode(cat({cstr("x-foo"), cstr("b")}), 4, 11, nullptr, "x-foo:a\n");
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:a,b\n");
}

TEST(ApiBlock, BlockStartsAtTheBufferOffsetAndEndsAtTheHolderLength) {
    // A header block followed by body octets in the same buffer, as the
    // push decoder leaves it: only the holder's octets are headers.
    Bytes raw = bytes({0xEE, 0xEE, 0xEE, 0x8D, 0x85, 0x85, 0x81});
    wsp_buffer buf{};
    buf.data = static_cast<unsigned char *>(std::calloc(raw.size(), 1));
    std::memcpy(buf.data, raw.data(), raw.size());
    buf.size = static_cast<uint16_t>(raw.size());
    buf.offset = 3;
    buf.length = 4;
    wsp_hdrbuf hdr{2, &buf};
    OutBuffer out(64);
    EXPECT_EQ(static_cast<int16_t>(wsp_dec_hdr(&hdr, out.get(), nullptr, 4)), WSP_OK);
    EXPECT_EQ(out.text(), kTailLine);
    EXPECT_EQ(out->length, 17);
    std::free(buf.data);
}

TEST(ApiBlock, MergingKeepsALongRemainder) {
    std::string v(250, 'v');
    Bytes b = cat({cstr("x-a"), cstr("1"), bytes({0xA9}), cstr(v.c_str()), cstr("x-a"), cstr("2")});
    EXPECT_TRUE(Lines(b, "x-a:1,2\nuser-agent:" + v + "\n"));
}

TEST(ApiBlock, MergingComparesWholeNames) {
    EXPECT_TRUE(Lines(cat({cstr("x-ab"), cstr("1"), cstr("x-a"), cstr("2"), cstr("x-abc"), cstr("3")}), "x-ab:1\nx-a:2\nx-abc:3\n"));
}

TEST(ApiBlock, MergingWalksLinesQuoteAware) {
    // The quote opened in the etag line closes in the x-a line, so the walk
    // takes both as one line named etag and the second x-a gets its own.
    Bytes b = cat({bytes({0x93}), cstr("\"a"), cstr("x-a"), cstr("\"b"), cstr("x-a"), cstr("c")});
    EXPECT_TRUE(Lines(b, "etag:\"a\nx-a:\"b\nx-a:c\n"));
}

// ---------------------------------------------------------------------------
// Application headers

TEST(ApiApplication, TextValueLine) {
    EXPECT_TRUE(Lines(cat({cstr("X-Foo"), cstr("bar")}), "x-foo:bar\n"));
}

TEST(ApiApplication, RepeatedNamesShareOneLine) {
    EXPECT_TRUE(Lines(cat({cstr("X-Foo"), cstr("a"), cstr("X-Foo"), cstr("b")}), "x-foo:a,b\n"));
    EXPECT_TRUE(Lines(cat({cstr("X-Foo"), cstr("a"), cstr("x-foo"), cstr("b"), cstr("X-FOO"), cstr("c")}), "x-foo:a,b,c\n"));
}

TEST(ApiApplication, NameOf29CharactersIsWritten) {
    std::string name(29, 'n');
    EXPECT_TRUE(Lines(cat({cstr(name.c_str()), cstr("v")}), name + ":v\n"));
}

TEST(ApiApplication, NameOf30CharactersSkipsTheWholeHeader) {
    std::string name(30, 'n');
    EXPECT_TRUE(Lines(cat({cstr(name.c_str()), cstr("v"), kTail}), kTailLine));
    EXPECT_TRUE(Lines(cat({cstr(name.c_str()), bytes({0x02, 0x41, 0x42}), kTail}), kTailLine));
}

TEST(ApiApplication, ValueOf197CharactersIsWritten) {
    std::string v(197, 'v');
    EXPECT_TRUE(Lines(cat({cstr("x-a"), cstr(v.c_str())}), "x-a:" + v + "\n"));
}

TEST(ApiApplication, QuoteIsNotCountedAgainstThe197Characters) {
    std::string v(197, '\xE9');
    EXPECT_TRUE(Lines(cat({cstr("x-a"), bytes({0x7F}), cstr(v.c_str())}), "x-a:" + v + "\n"));
    EXPECT_TRUE(Lines(cat({cstr("x-a"), bytes({0x7F}), cstr((v + "\xE9").c_str()), kTail}), kTailLine));
}

TEST(ApiApplication, ValueOf198CharactersIsDroppedAndDecodingGoesOn) {
    std::string v(198, 'v');
    EXPECT_TRUE(Lines(cat({cstr("x-a"), cstr(v.c_str()), kTail}), kTailLine));
}

TEST(ApiApplication, QuotedAndQuoteValues) {
    // A Quote octet is dropped, a Quoted-string keeps its leading quote.
    EXPECT_TRUE(Lines(cat({cstr("x-a"), bytes({0x7F, 0xC3, 0xA9, 0x00})}), "x-a:\xC3\xA9\n"));
    EXPECT_TRUE(Lines(cat({cstr("x-a"), cstr("\"quoted")}), "x-a:\"quoted\n"));
    EXPECT_TRUE(Lines(cat({cstr("x-a"), bytes({0x00}), kTail}), "x-a:\n" + kTailLine));
}

TEST(ApiApplication, NameWithAForbiddenCharacterIsReadAgainAsTheValue) {
    // The name stops before '(' and the value is read from the name's first octet.
    EXPECT_TRUE(Lines(cat({cstr("x(y"), kTail}), "x:x(y\n" + kTailLine));
}

TEST(ApiApplication, NameRunningPastTheEndReleasesWithArg) {
    Decoded d = decode(cat({kTail, bytes({'a', 'b', 'c'})}));
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.text, kTailLine);
}

TEST(ApiApplication, UnreadableTextValueReleasesWithArg) {
    Decoded d = decode(cat({cstr("x-a"), bytes({'a', 0x01, 'b', 0x00})}));
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
}

TEST(ApiApplication, ShortIntegerValueIsWrittenAsItsOctet) {
    // The raw writer counts the NUL it puts into an empty output.
    Decoded d = decode(cat({cstr("X-Foo"), bytes({0x85})}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:\x85\n");
    EXPECT_EQ(d.length, 9);
}

TEST(ApiApplication, LengthFormValuesAreWrittenAsTheirOctets) {
    Decoded d = decode(cat({cstr("x-a"), bytes({0x02, 0x41, 0x42})}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-a:\x02" "AB\n");
    EXPECT_EQ(d.length, 1 + 3 + 3 + 2);
    d = decode(cat({cstr("x-a"), bytes({0x1F, 0x02, 0x41, 0x42})}));
    EXPECT_EQ(d.text, "x-a:\x1F\x02" "AB\n");
    EXPECT_EQ(d.length, 1 + 3 + 4 + 2);
}

TEST(ApiApplication, RawValuesMergeWithAComma) {
    // found: length grows by the value size + 2, one more than the text
    Decoded d = decode(cat({cstr("x-foo"), bytes({0x85}), cstr("x-foo"), bytes({0x86})}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:\x85,\x86\n");
    EXPECT_EQ(d.length, 9 + 3);
}

TEST(ApiApplication, RawWriterFindsItsNameAnywhereInTheText) {
    // "abc" first occurs inside the value of the x-foo line
    Decoded d = decode(cat({cstr("x-foo"), cstr("abc"), cstr("abc"), bytes({0x85})}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:abc,\x85\n");
    EXPECT_EQ(d.length, 10 + 3);
}

TEST(ApiApplication, RawMergeKeepsTheLinesAfterIt) {
    Decoded d = decode(cat({cstr("x-foo"), bytes({0x85}), cstr("x-bar"), cstr("b"), cstr("x-foo"), bytes({0x86})}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "x-foo:\x85,\x86\nx-bar:b\n");
    EXPECT_EQ(d.length, 16 + 3); // the merging writer counted 16, the raw merge adds 3
}

TEST(ApiApplication, UnmeasurableOtherValueReleases) {
    Decoded d = decode(cat({kTail, cstr("x-a"), bytes({0x1F, 0x80, 0x01})}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
    EXPECT_EQ(d.text, kTailLine);
}

TEST(ApiApplication, PlainLineAfterARawLineFollowsTheCountedNul) {
    Decoded d = decode(cat({cstr("x-foo"), bytes({0x85}), kTail}));
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.length, 9 + 17);
    EXPECT_EQ(d.counted, std::string("x-foo:\x85\n\0", 9) + kTailLine);
}

TEST(ApiApplication, WriterTruncationReturnsWithoutRelease) {
    Decoded d = decode(cat({cstr("x-foo"), cstr("bar")}), 4, 9);
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(d.released);
    d = decode(cat({cstr("x-foo"), cstr("bar")}), 4, 10);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.counted, "x-foo:bar\n");
}

TEST(ApiApplication, OtherWriterFailureIsReturnedAndReleases) {
    Decoded d = decode(cat({cstr("Accept-Ranges"), cstr("none"), cstr("accept-ranges"), cstr("bytes")}));
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
}

// ---------------------------------------------------------------------------
// Shifts and code pages

namespace {
const wsp_code_entry kPage2Rows[] = {{"X-Page-A", 5}, {"X-Page-B", 0x106}, {nullptr, 0}};
const wsp_code_entry kPage2OneRow[] = {{"X-Page-A", 5}, {nullptr, 0}};
const wsp_code_entry kPage2RowsEndNamed[] = {{"X-Page-A", 5}, {"end", 0}};
const wsp_code_entry kNullNameRows[] = {{nullptr, 5}, {nullptr, 0}};
} // namespace

TEST(ApiPages, ShiftWithoutPageListSkipsUntilPageOne) {
    Bytes b = cat({bytes({0x7F, 0x02, 0x85, 0x83}), cstr("x-n"), cstr("v"), bytes({0x8D, 0x02, 0x01, 0x00}),
                   bytes({0x01}), kTail});
    EXPECT_TRUE(Lines(b, kTailLine));
    Bytes c = cat({bytes({0x05, 0x86, 0x01, 0x41}), bytes({0x7F, 0x01}), kTail});
    EXPECT_TRUE(Lines(c, kTailLine));
}

TEST(ApiPages, SkipModeRunsToTheEndOfTheBlock) {
    EXPECT_TRUE(Lines(cat({kTail, bytes({0x1F, 0x8D, 0x85})}), kTailLine));
}

TEST(ApiPages, FailureInSkipModeReleasesWithArg) {
    std::string name(30, 'n');
    Decoded d = decode(cat({bytes({0x02}), cstr(name.c_str()), cstr("v"), bytes({0x01}), kTail}));
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
}

TEST(ApiPages, ShiftOctetsZeroAndQuoteAreRefused) {
    for (int o : {0x00, 0x22}) {
        Decoded d = decode(cat({kTail, bytes({o, 0x02}), kTail}));
        EXPECT_EQ(d.status, WSP_ERR_ARG);
        EXPECT_TRUE(d.released);
        EXPECT_EQ(d.text, kTailLine);
    }
}

TEST(ApiPages, ShiftBackToPageOneWithoutPageListIsHarmless) {
    EXPECT_TRUE(Lines(cat({bytes({0x01}), kTail, bytes({0x7F, 0x01}), bytes({0x85, 0x81})}),
                      kTailLine + "age:1\n"));
}

TEST(ApiPages, EmptyPageListAndUnknownPageAreRefused) {
    wsp_dec_page pages[] = {{3, 2, kPage2Rows}};
    wsp_dec_page_list empty{0, pages};
    Decoded d = decode(bytes({0x02, 0x85, 0x81}), 4, 64, &empty);
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
    wsp_dec_page_list list{1, pages};
    d = decode(bytes({0x02, 0x85, 0x81}), 4, 64, &list);
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
}

TEST(ApiPages, CodePageTextHeaderUsesTheListSpelling) {
    wsp_dec_page pages[] = {{3, 1, kNullNameRows}, {2, 2, kPage2Rows}};
    wsp_dec_page_list list{2, pages};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x85}), cstr("val"), bytes({0x86}), cstr("w")}),
                      "X-Page-A:val\nX-Page-B:w\n", 4, &list));
    EXPECT_TRUE(Lines(cat({bytes({0x7F, 0x02, 0x85}), cstr("a"), bytes({0x85}), cstr("b"), bytes({0x01}), kTail}),
                      "X-Page-A:a,b\n" + kTailLine, 4, &list));
}

TEST(ApiPages, CodePageTextClasses) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    EXPECT_TRUE(Lines(bytes({0x02, 0x85, 0x00}), "X-Page-A:\n", 4, &list));
    EXPECT_TRUE(Lines(bytes({0x02, 0x85, 0x22, 'q', 0x00}), "X-Page-A:\"q\n", 4, &list));
    EXPECT_TRUE(Lines(bytes({0x02, 0x85, 0x7F, 0xE9, 0x00}), "X-Page-A:\xE9\n", 4, &list));
}

TEST(ApiPages, CodePageOtherValuesAreWrittenAsTheirOctets) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    Decoded d = decode(bytes({0x02, 0x85, 0x81}), 4, 64, &list);
    EXPECT_EQ(d.status, WSP_OK);
    EXPECT_EQ(d.text, "X-Page-A:\x81\n");
    EXPECT_EQ(d.length, 1 + 8 + 1 + 2);
    d = decode(bytes({0x02, 0x85, 0x02, 0x41, 0x42, 0x86, 0x1F, 0x01, 0x43}), 4, 64, &list);
    EXPECT_EQ(d.text, "X-Page-A:\x02" "AB\nX-Page-B:\x1F\x01" "C\n");
}

TEST(ApiPages, CodePageCodesMissingFromThePage) {
    // End row without a name: the value alone is skipped.
    wsp_dec_page plain[] = {{2, 1, kPage2OneRow}};
    wsp_dec_page_list l1{1, plain};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x87, 0xAA, 0x01}), kTail}), kTailLine, 4, &l1));
    // End row with a name: one more octet goes before the value is skipped.
    wsp_dec_page named[] = {{2, 1, kPage2RowsEndNamed}};
    wsp_dec_page_list l2{1, named};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x87, 0xAA, 0x85, 0x01}), kTail}), kTailLine, 4, &l2));
}

TEST(ApiPages, RowWithoutNameAndOversizedPageAreSkipped) {
    wsp_dec_page nameless[] = {{2, 1, kNullNameRows}};
    wsp_dec_page_list l1{1, nameless};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x85, 0x81, 0x01}), kTail}), kTailLine, 4, &l1));
    wsp_dec_page big[] = {{2, 129, kPage2Rows}};
    wsp_dec_page_list l2{1, big};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x85}), cstr("v"), bytes({0x01}), kTail}), kTailLine, 4, &l2));
}

TEST(ApiPages, CodePageTextOver197CharactersReleasesWithArg) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    Decoded d = decode(cat({bytes({0x02, 0x85}), cstr(std::string(198, 'v').c_str())}), 4, 1024, &list);
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
    std::string v(197, 'v');
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x85}), cstr(v.c_str())}), "X-Page-A:" + v + "\n", 4, &list));
}

TEST(ApiPages, CodePageTextWithAForbiddenOctetReleasesWithArg) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    Decoded d = decode(bytes({0x02, 0x85, 'a', 0x01, 'b', 0x00}), 4, 64, &list);
    EXPECT_EQ(d.status, WSP_ERR_ARG);
    EXPECT_TRUE(d.released);
}

TEST(ApiPages, CodePageWriterFailureIsReturnedAndReleases) {
    const wsp_code_entry rows[] = {{"accept-ranges", 4}, {nullptr, 0}};
    wsp_dec_page pages[] = {{2, 1, rows}};
    wsp_dec_page_list list{1, pages};
    Decoded d = decode(cat({bytes({0x02, 0x84}), cstr("none"), bytes({0x84}), cstr("bytes")}), 4, 64, &list);
    EXPECT_EQ(d.status, WSP_ERR_FAIL);
    EXPECT_TRUE(d.released);
}

TEST(ApiPages, CodePageWriterTruncationKeepsTheBlock) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    Decoded d = decode(cat({bytes({0x02, 0x85}), cstr("value")}), 4, 12, &list);
    EXPECT_EQ(d.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(d.released);
}

TEST(ApiPages, CodePageAndApplicationNamesDoNotMerge) {
    // page names keep their spelling, application names are lower-cased,
    // and the merging writer compares names exactly
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    EXPECT_TRUE(Lines(cat({bytes({0x02, 0x85}), cstr("a"), cstr("X-Page-A"), cstr("b")}), "X-Page-A:a\nx-page-a:b\n", 4, &list));
}

TEST(ApiPages, ApplicationHeadersAreReadOnAnyPage) {
    wsp_dec_page pages[] = {{2, 2, kPage2Rows}};
    wsp_dec_page_list list{1, pages};
    EXPECT_TRUE(Lines(cat({bytes({0x02}), cstr("x-a"), cstr("b")}), "x-a:b\n", 4, &list));
}
