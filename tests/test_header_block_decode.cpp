// The header block walk (exported wsp_dec_hdr).
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// An encoded block in a calloc'ed buffer of exactly offset + its size
// octets, so that any read past the block's end is caught.
class Block {
  public:
    explicit Block(const Bytes &b, uint16_t offset = 0) {
        std::memset(&buf_, 0, sizeof buf_);
        size_t total = offset + b.size();
        buf_.data = static_cast<unsigned char *>(std::calloc(total ? total : 1, 1));
        if (!b.empty()) std::memcpy(buf_.data + offset, b.data(), b.size());
        buf_.size = static_cast<uint16_t>(total);
        buf_.offset = offset;
        hdr_.length = static_cast<uint16_t>(b.size());
        hdr_.buffer = &buf_;
    }
    ~Block() { std::free(buf_.data); }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    wsp_hdrbuf *get() { return &hdr_; }
    wsp_buffer &buffer() { return buf_; }
    bool released() const { return buf_.data == nullptr; }

  private:
    wsp_buffer buf_;
    wsp_hdrbuf hdr_;
};

struct Outcome {
    int status;
    std::string text;
    uint16_t length;
    bool released;
};

Outcome run(const Bytes &in, int version = 4, const wsp_dec_page_list *pages = nullptr, uint16_t out_size = 512) {
    Block block(in);
    OutBuffer out(out_size);
    int status = wsp_dec_hdr(block.get(), out.get(), pages, version);
    return {status, out.text(), out->length, block.released()};
}

Bytes str0(const std::string &s) {
    Bytes b(s.begin(), s.end());
    b.push_back(0);
    return b;
}

// An application header with a text value.
Bytes app(const std::string &name, const std::string &value) { return cat({str0(name), str0(value)}); }

// Pages for the code-page tests: page 2 names codes 5 and 6 and has a
// named end row; page 0x80 has an unnamed end row; page 3 claims 129 rows.
const wsp_code_entry kPage2Rows[] = {
    {"X-Page-A", 0x105}, // compared on its low 8 bits: code 5
    {nullptr, 6},
    {"x-page-b", 7},
    {"end", 0},
};
const wsp_code_entry kPage80Rows[] = {
    {"X-Eighty", 1},
    {nullptr, 0},
};
const wsp_code_entry kLongNameRows[] = {
    {"x-a-very-long-page-header-name-of-40-chars", 1},
    {nullptr, 0},
};
const wsp_dec_page kPages[] = {
    {2, 3, kPage2Rows},
    {0x80, 1, kPage80Rows},
    {3, 129, kPage2Rows},
    {4, 1, kLongNameRows},
};
const wsp_dec_page_list kPageList = {4, kPages};

} // namespace

// ---- argument checks ------------------------------------------------------------

TEST(DecHdr, NullBlockNotReleased) {
    OutBuffer out(32);
    EXPECT_EQ(wsp_dec_hdr(nullptr, out.get(), nullptr, 4), WSP_ERR_ARG);
}

TEST(DecHdr, NullBufferOrDataRefused) {
    OutBuffer out(32);
    wsp_hdrbuf no_buffer{3, nullptr};
    EXPECT_EQ(wsp_dec_hdr(&no_buffer, out.get(), nullptr, 4), WSP_ERR_ARG);
    wsp_buffer empty{};
    wsp_hdrbuf no_data{3, &empty};
    EXPECT_EQ(wsp_dec_hdr(&no_data, out.get(), nullptr, 4), WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(DecHdr, NullOutputReleasesBlock) {
    Block block(app("a", "b"));
    EXPECT_EQ(wsp_dec_hdr(block.get(), nullptr, nullptr, 4), WSP_ERR_ARG);
    EXPECT_TRUE(block.released());
}

TEST(DecHdr, NullOutputDataReleasesBlock) {
    Block block(app("a", "b"));
    wsp_buffer out{};
    out.size = 10;
    EXPECT_EQ(wsp_dec_hdr(block.get(), &out, nullptr, 4), WSP_ERR_ARG);
    EXPECT_TRUE(block.released());
}

TEST(DecHdr, OutputSizeZeroReleasesBlock) {
    Block block(app("a", "b"));
    OutBuffer out(0);
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_ERR_ARG);
    EXPECT_TRUE(block.released());
}

TEST(DecHdr, FullOutputRefusedBeforeReading) {
    Block block(app("a", "b"));
    OutBuffer out(8);
    std::memcpy(out->data, "abcdefgh", 8);
    out->length = 8;
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_ERR_ARG);
    EXPECT_TRUE(block.released());
    EXPECT_EQ(out->length, 8);
}

TEST(DecHdr, ExternalBlockIsNeverFreed) {
    Block block(app("a", "b"));
    block.buffer().flags = WSP_BUFFER_EXTERNAL;
    EXPECT_EQ(wsp_dec_hdr(block.get(), nullptr, nullptr, 4), WSP_ERR_ARG);
    EXPECT_FALSE(block.released());
}

TEST(DecHdr, EmptyBlockWritesNothing) {
    Outcome r = run({});
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.length, 0);
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, BlockStartsAtOffset) {
    Block block(app("x-foo", "bar"), 5);
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_OK);
    EXPECT_EQ(out.text(), "x-foo:bar\n");
    EXPECT_FALSE(block.released());
}

// ---- application headers ------------------------------------------------------------

TEST(DecHdr, ApplicationHeaderLine) {
    Outcome r = run(app("X-Foo", "bar"));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:bar\n");
    EXPECT_EQ(r.length, 10);
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, RepeatedApplicationHeadersMerge) {
    Outcome r = run(cat({app("X-Foo", "a"), app("x-foo", "b")}));
    EXPECT_EQ(r.text, "x-foo:a,b\n");
    r = run(cat({app("X-Foo", "a"), app("X-Other", "z"), app("X-FOO", "b"), app("x-foo", "c")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:a,b,c\nx-other:z\n");
}

TEST(DecHdr, NameOf29CharactersWritten) {
    std::string name(29, 'n');
    Outcome r = run(cat({app(name, "v"), app("b", "w")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, name + ":v\nb:w\n");
}

TEST(DecHdr, NameOf30CharactersSkipsWholeHeader) {
    std::string name(30, 'n');
    Outcome r = run(cat({app(name, "v"), app("b", "w")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "b:w\n");
    // Also with a raw value after the long name.
    r = run(cat({str0(name), bytes({0x02, 0x01, 0x02}), app("b", "w")}));
    EXPECT_EQ(r.text, "b:w\n");
}

TEST(DecHdr, LongNameWhoseValueIsMissingFails) {
    Outcome r = run(str0(std::string(30, 'n')));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, ValueOf197CharactersWritten) {
    std::string value(197, 'v');
    Outcome r = run(app("x", value), 4, nullptr, 1024);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:" + value + "\n");
}

TEST(DecHdr, ValueOf198CharactersDropsHeader) {
    Outcome r = run(cat({app("x", std::string(198, 'v')), app("b", "w")}), 4, nullptr, 1024);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "b:w\n");
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, QuoteAndQuotedStringValues) {
    Outcome r = run(cat({str0("x"), bytes({0x7F, 0xE9, 'a', 0}), str0("y"), str0("\"q r")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\xE9" "a\ny:\"q r\n");
}

TEST(DecHdr, EmptyTextValue) {
    Outcome r = run(cat({str0("x"), bytes({0x00}), app("y", "z")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\ny:z\n");
}

TEST(DecHdr, BadNameCharacterReadsValueFromNameStart) {
    Outcome r = run(cat({str0("X-Foo(bar)"), app("b", "w")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:X-Foo(bar)\nb:w\n");
}

TEST(DecHdr, UnreadableApplicationValueIsArgumentError) {
    Outcome r = run(cat({str0("x"), bytes({'a', 0x01, 0})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    // A text that runs to the block's end.
    r = run(cat({str0("x"), bytes({'a', 'b'})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, MissingApplicationValueFails) {
    Outcome r = run(str0("x"));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, RawShortIntegerValueIsTheOctetItself) {
    Outcome r = run(cat({str0("X-Foo"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:\x85\n");
    // The raw writer counts the NUL of the empty text too.
    EXPECT_EQ(r.length, 9);
}

TEST(DecHdr, RawLengthValuesCopiedWithTheirLength) {
    Outcome r = run(cat({str0("x"), bytes({0x02, 0x41, 0x42}), str0("y"), bytes({0x1F, 0x02, 0x43, 0x44})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(hex(text_bytes(r.text.c_str())), "78 3A 02 41 42 0A 79 3A 1F 02 43 44 0A");
}

TEST(DecHdr, RawRepeatsExtendTheLine) {
    Outcome r = run(cat({str0("x"), bytes({0x85}), str0("x"), bytes({0x86})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\x85,\x86\n");
    EXPECT_EQ(r.length, 5 + 3);
}

TEST(DecHdr, RawValuePastBlockEndRefused) {
    Outcome r = run(cat({str0("x"), bytes({0x05, 0x01})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(cat({str0("x"), bytes({0x1F, 0x81})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, ApplicationWriterTruncationKeepsBlock) {
    Outcome r = run(cat({app("a", "1"), app("b", "2")}), 4, nullptr, 6);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(r.released);
    EXPECT_EQ(r.text, "a:1\n");
}

TEST(DecHdr, RawWriterTruncationKeepsBlock) {
    Outcome r = run(cat({str0("x"), bytes({0x85})}), 4, nullptr, 4);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, ApplicationWriterFailureReleases) {
    Outcome r = run(cat({app("accept-ranges", "none"), app("accept-ranges", "bytes")}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, OutputExactlyFull) {
    Outcome r = run(app("x", "y"), 4, nullptr, 4);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
    EXPECT_EQ(r.length, 4);
}

TEST(DecHdr, LinesAlreadyInOutputAreMergedInto) {
    Block block(cat({app("X-Foo", "b"), app("Y", "2")}));
    OutBuffer out(64);
    std::memcpy(out->data, "x-foo:a\nz:9\n", 13);
    out->length = 12;
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_OK);
    EXPECT_EQ(out.text(), "x-foo:a,b\nz:9\ny:2\n");
    EXPECT_EQ(out->length, 18);
}

// ---- well-known headers --------------------------------------------------------------

TEST(DecHdr, ContentTypeIsNeverWritten) {
    Outcome r = run(cat({bytes({0x91, 0x03, 0x83, 0x81, 0xEA}), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
    r = run(cat({bytes({0x91, 0x83}), app("a", "b")}));
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, CodesAboveTableAreSkipped) {
    Outcome r = run(cat({bytes({0xC8, 0x85, 0xFF}), str0("text"), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, VersionLimits) {
    Bytes app_id = bytes({0xAF, 0x84});
    EXPECT_EQ(run(app_id, 1).text, "");
    EXPECT_EQ(run(app_id, 2).text, "x-wap-application-id:x-wap-application:mms.ua\n");

    Bytes security = bytes({0xC6, 0x80});
    EXPECT_EQ(run(security, 3).text, "");
    EXPECT_EQ(run(security, 4).text, "x-wap-security:close-subordinate\n");

    Bytes content_id = cat({bytes({0xC0}), str0("\"abc")});
    EXPECT_EQ(run(content_id, 2).text, "");
    EXPECT_EQ(run(content_id, 3).text, "content-id:abc\n");
}

TEST(DecHdr, OtherVersionNumbersSkipEveryWellKnownHeader) {
    Bytes in = cat({bytes({0x85, 0x85}), app("a", "b"), bytes({0x8D, 0x82})});
    for (int version : {0, 5, -1, 100}) {
        Outcome r = run(in, version);
        EXPECT_EQ(r.status, WSP_OK) << version;
        EXPECT_EQ(r.text, "a:b\n") << version;
    }
    EXPECT_EQ(run(in, 1).text, "age:5\na:b\ncontent-length:2\n");
}

TEST(DecHdr, EmptyTableEntriesAreSkipped) {
    // profile (0x35), expect (0x38), cookie (0x42).
    Outcome r = run(cat({bytes({0xB5}), str0("http://p"), bytes({0xB8, 0x80, 0xC2, 0x01, 0x80}), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, DecoderFailureDropsHeaderOnly) {
    // age with a text value: the age decoder refuses it, the value is
    // measured and passed.
    Outcome r = run(cat({bytes({0x85}), str0("abc"), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, DecoderFailureWithUnmeasurableValueReleases) {
    Outcome r = run(bytes({0x85, 0x1F, 0x80, 0x01}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(bytes({0x85}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, DecoderTruncationReleasesBlock) {
    // An accept-encoding token longer than the decoder's scratch.
    Outcome r = run(cat({bytes({0x82}), str0(std::string(198, 't'))}), 4, nullptr, 1024);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, MergingDecoderOnFullOutputReleasesBlock) {
    Block block(bytes({0x84, 0x81, 0x84, 0x81}));
    OutBuffer out(20);
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_ERR_TRUNCATED);
    EXPECT_TRUE(block.released());
    // The first line filled the output exactly; the refused merge left that
    // line split (its ':' and '\n' are NUL) and length unchanged.
    EXPECT_EQ(std::string(reinterpret_cast<char *>(out->data), 20), std::string("accept-ranges\0bytes\0", 20));
    EXPECT_EQ(out->length, 20);
}

TEST(DecHdr, PlainDecoderOnFullOutputDropsHeader) {
    Outcome r = run(cat({bytes({0x85, 0x85, 0x85, 0x86}), app("a", "b")}), 4, nullptr, 10);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "age:5\na:b\n");
}

TEST(DecHdr, AcceptRangesNoneIsNotCombined) {
    Block block(bytes({0x84, 0x80, 0x84, 0x81}));
    OutBuffer out(64);
    EXPECT_EQ(wsp_dec_hdr(block.get(), out.get(), nullptr, 4), WSP_OK);
    EXPECT_FALSE(block.released());
    // The second value is refused and the header dropped; the line stays as
    // the merging writer's split left it, and length is not updated.
    EXPECT_EQ(std::string(reinterpret_cast<char *>(out->data), 19), std::string("accept-ranges\0none\0", 19));
    EXPECT_EQ(out->length, 19);
}

TEST(DecHdr, LineAfterRefusedMergeFollowsTheSplitText) {
    // A later line goes after the text as it now reads ("accept-ranges"):
    // kept as it is, the output is only meant to be read up to its NUL.
    Outcome r = run(cat({bytes({0x84, 0x80, 0x84, 0x81}), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "accept-rangesa:b\n");
    EXPECT_EQ(r.length, 17);
}

TEST(DecHdr, SkippedValueThatCannotBeSteppedOverReleases) {
    Outcome r = run(cat({bytes({0x91}), str0(std::string(197, 't'))}), 4, nullptr, 64);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(bytes({0x91}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(bytes({0xC8, 0x1F}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, SkippedLengthPastEndEndsTheWalk) {
    Outcome r = run(cat({app("a", "b"), bytes({0x91, 0x1E, 0x01})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
    EXPECT_FALSE(r.released);
}

// ---- shift sequences --------------------------------------------------------------------

TEST(DecHdr, ShiftToPageOneIsNoChange) {
    Outcome r = run(cat({bytes({0x7F, 0x01, 0x85, 0x85, 0x01, 0x8D, 0x83})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "age:5\ncontent-length:3\n");
}

TEST(DecHdr, BadShiftOctetsRelease) {
    for (const Bytes &in : {bytes({0x00, 0x85, 0x85}), cat({bytes({0x22}), str0("x")}), bytes({0x85, 0x85, 0x7F})}) {
        Outcome r = run(in);
        EXPECT_EQ(r.status, WSP_ERR_ARG) << hex(in);
        EXPECT_TRUE(r.released);
    }
}

TEST(DecHdr, SkipModeWithoutPageList) {
    Bytes in = cat({bytes({0x85, 0x85}),                             // age:5
                    bytes({0x7F, 0x02}),                             // page 2, no list: skip
                    bytes({0x85, 0x86}), app("x-skipped", "v"),      // skipped
                    bytes({0x91, 0x03, 0x83, 0x81, 0xEA}),           // skipped
                    bytes({0x03}), bytes({0x85, 0x87}),              // page 3: still skipping
                    bytes({0x01}),                                   // back to page 1
                    bytes({0x8D, 0x84}), app("a", "b")});
    Outcome r = run(in);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "age:5\ncontent-length:4\na:b\n");
}

TEST(DecHdr, SkipModeReturnsWithLongShift) {
    Outcome r = run(cat({bytes({0x02, 0x85, 0x86, 0x7F, 0x01, 0x85, 0x87})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "age:7\n");
}

TEST(DecHdr, SkipModeToTheEnd) {
    Outcome r = run(cat({app("a", "b"), bytes({0x02, 0x85, 0x86}), app("c", "d")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, SkipModeFailuresAreArgumentErrors) {
    for (const Bytes &in : {bytes({0x02, 0x91, 'a', 'b'}),          // text without NUL
                            cat({bytes({0x02}), str0("a b"), str0("v")}), // bad name
                            cat({bytes({0x02}), str0("x")}),          // name without value
                            bytes({0x02, 0x00}),                      // bad shift
                            bytes({0x02, 0x7F}),                      // shift without page
                            bytes({0x02, 0x85})}) {                   // code without value
        Outcome r = run(in);
        EXPECT_EQ(r.status, WSP_ERR_ARG) << hex(in);
        EXPECT_TRUE(r.released);
    }
}

TEST(DecHdr, PageListWithoutPagesRefused) {
    wsp_dec_page_list empty = {0, kPages};
    Outcome r = run(bytes({0x02, 0x85, 0x85}), 4, &empty);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, PageNotInListRefused) {
    Outcome r = run(bytes({0x05, 0x85, 0x85}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    // Page 1 needs no list entry.
    r = run(bytes({0x01, 0x85, 0x85}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
}

TEST(DecHdr, CodePageHeaderTextValue) {
    Outcome r = run(cat({bytes({0x02, 0x85}), str0("hello")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Page-A:hello\n");
}

TEST(DecHdr, CodePageHeadersMergeAndKeepTheirSpelling) {
    Outcome r = run(cat({bytes({0x02, 0x85}), str0("a"), bytes({0x87}), str0("b"), bytes({0x85}), str0("c")}), 4,
                    &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Page-A:a,c\nx-page-b:b\n");
}

TEST(DecHdr, CodePageHeaderRawValue) {
    Outcome r = run(bytes({0x02, 0x85, 0x90, 0x87, 0x02, 0x01, 0x02}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(hex(text_bytes(r.text.c_str())), hex(cat({text_bytes("X-Page-A:"), bytes({0x90, 0x0A}),
                                                        text_bytes("x-page-b:"), bytes({0x02, 0x01, 0x02, 0x0A})})));
}

TEST(DecHdr, LongShiftSelectsAnyPage) {
    Outcome r = run(cat({bytes({0x7F, 0x80, 0x81}), str0("v")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Eighty:v\n");
}

TEST(DecHdr, BackToPageOneDecodesWellKnownHeaders) {
    Outcome r = run(cat({bytes({0x02, 0x85}), str0("a"), bytes({0x01, 0x85, 0x85, 0x02, 0x87}), str0("b")}), 4,
                    &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Page-A:a\nage:5\nx-page-b:b\n");
}

TEST(DecHdr, ApplicationHeadersOnOtherPages) {
    Outcome r = run(cat({bytes({0x02}), app("X-App", "v"), bytes({0x85}), str0("w")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-app:v\nX-Page-A:w\n");
}

TEST(DecHdr, RowWithoutNameIsSkipped) {
    Outcome r = run(cat({bytes({0x02, 0x86}), str0("gone"), app("a", "b")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, NamedEndRowSkipsOneExtraOctet) {
    // Code 9 is not on page 2, whose end row has a name: 0xAA is passed
    // over on its own, then the value 0x83, then x:y is decoded.
    Outcome r = run(cat({bytes({0x02, 0x89, 0xAA, 0x83}), app("x", "y")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, NamedEndRowWithNothingLeftFails) {
    Outcome r = run(bytes({0x02, 0x89}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(bytes({0x02, 0x89, 0xAA}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, UnnamedEndRowSkipsTheValueOnly) {
    Outcome r = run(cat({bytes({0x7F, 0x80, 0x89}), str0("skipped"), app("x", "y")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, PageOfMoreThan128RowsSkipsAll) {
    Outcome r = run(cat({bytes({0x03, 0x85}), str0("skipped"), app("x", "y")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, PageNamesBoundedTo31Characters) {
    Outcome r = run(cat({bytes({0x04, 0x81}), str0("v")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string("x-a-very-long-page-header-name-") + ":v\n");
}

TEST(DecHdr, PageWithoutRowsSkipsAll) {
    const wsp_dec_page no_rows[] = {{2, 3, nullptr}};
    const wsp_dec_page_list list = {1, no_rows};
    Outcome r = run(cat({bytes({0x02, 0x85}), str0("skipped"), app("x", "y")}), 4, &list);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, CodePageTextValueFailuresAreArgumentErrors) {
    Outcome r = run(cat({bytes({0x02, 0x85}), bytes({'a', 0x01, 0})}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    r = run(cat({bytes({0x02, 0x85}), str0(std::string(198, 'v'))}), 4, &kPageList, 1024);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    r = run(cat({bytes({0x02, 0x85}), str0(std::string(197, 'v'))}), 4, &kPageList, 1024);
    EXPECT_EQ(r.status, WSP_OK);
}

TEST(DecHdr, CodePageValueMissingOrUnmeasurableFails) {
    Outcome r = run(bytes({0x02, 0x85}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(bytes({0x02, 0x85, 0x1F, 0x80, 0x01}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, CodePageWriterTruncationKeepsBlock) {
    Outcome r = run(cat({bytes({0x02, 0x85}), str0("hello")}), 4, &kPageList, 8);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(r.released);
}

// ---- realistic blocks -------------------------------------------------------------------

TEST(DecHdr, PushHeadersMixed) {
    Bytes in = cat({
        bytes({0xAF, 0x84}),                         // x-wap-application-id: mms.ua
        bytes({0x91, 0x03, 0x83, 0x81, 0xEA}),       // content-type (never written)
        bytes({0x8D, 0x02, 0x04, 0x00}),             // content-length: 1024
        bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1}), // date
        bytes({0xA6}), str0("Apache"),               // server
        bytes({0x84, 0x81}),                         // accept-ranges: bytes
        bytes({0x80, 0x83}),                         // accept: text/plain
        app("X-Mms-Foo", "bar"),                     // application header
        bytes({0x80, 0x82}),                         // accept: text/html, merged
        bytes({0x85, 0x81}),                         // age: 1
    });
    Outcome r = run(in);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-wap-application-id:x-wap-application:mms.ua\n"
                      "content-length:1024\n"
                      "date:Sun, 06 Nov 1994 08:49:37 GMT\n"
                      "server:Apache\n"
                      "accept-ranges:bytes\n"
                      "accept:text/plain,text/html\n"
                      "x-mms-foo:bar\n"
                      "age:1\n");
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, RequestHeadersMixed) {
    Bytes in = cat({
        bytes({0xA9}), str0("Handset/1.0"),     // user-agent
        bytes({0x81, 0xEA}),                    // accept-charset: utf-8
        bytes({0x83, 0x99}),                    // accept-language: english
        bytes({0x96}), str0("example.com"),     // host
        app("X-Up-Subno", "12345"),
        bytes({0xA9}), str0("Extra"),           // user-agent again: merged
        bytes({0x7F, 0x02, 0x85, 0x86, 0x01}),  // other page without list: skipped
        bytes({0x9F, 0x80}),                    // pragma: no-cache
    });
    Outcome r = run(in);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "user-agent:Handset/1.0,Extra\n"
                      "accept-charset:utf-8\n"
                      "accept-language:english\n"
                      "host:example.com\n"
                      "x-up-subno:12345\n"
                      "pragma:no-cache\n");
}

// ---- truncated blocks -------------------------------------------------------------------

TEST(DecHdr, NameRunningToBlockEndIsUnreadable) {
    Outcome r = run(cat({app("a", "b"), bytes({'x', 'y', 'z'})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    EXPECT_EQ(r.text, "a:b\n");
}

struct CutCase {
    size_t n;
    int status;
    const char *text; // expected text on success
};

TEST(DecHdr, BlockCutAtEveryLength) {
    // Every prefix of a block is decoded without reading past it (the
    // block's buffer has exactly the prefix's size).  A cut inside a
    // length-prefixed value ends the walk there, as a step past the end
    // would; any other cut inside an entry fails and releases the block.
    Bytes full = cat({
        bytes({0xAF, 0x84}),              // 0..1
        app("X-A", "v"),                  // 2..7
        bytes({0x8D, 0x02, 0x04, 0x00}),  // 8..11
        bytes({0x7F, 0x02, 0x85}), str0("p"), // 12..16
        bytes({0x01}),                    // 17
        bytes({0x85, 0x81}),              // 18..19
    });
    const char *l1 = "x-wap-application-id:x-wap-application:mms.ua\n";
    std::string l12 = std::string(l1) + "x-a:v\n";
    std::string l123 = l12 + "content-length:1024\n";
    std::string l1234 = l123 + "X-Page-A:p\n";
    std::string all = l1234 + "age:1\n";
    const CutCase cases[] = {
        {0, WSP_OK, ""},           {1, WSP_ERR_FAIL, nullptr}, {2, WSP_OK, l1},
        {3, WSP_ERR_ARG, nullptr}, {4, WSP_ERR_ARG, nullptr},  {5, WSP_ERR_ARG, nullptr},
        {6, WSP_ERR_FAIL, nullptr}, {7, WSP_ERR_ARG, nullptr}, {8, WSP_OK, l12.c_str()},
        {9, WSP_ERR_FAIL, nullptr}, {10, WSP_OK, l12.c_str()}, {11, WSP_OK, l12.c_str()},
        {12, WSP_OK, l123.c_str()}, {13, WSP_ERR_ARG, nullptr}, {14, WSP_OK, l123.c_str()},
        {15, WSP_ERR_FAIL, nullptr}, {16, WSP_ERR_ARG, nullptr}, {17, WSP_OK, l1234.c_str()},
        {18, WSP_OK, l1234.c_str()}, {19, WSP_ERR_FAIL, nullptr}, {20, WSP_OK, all.c_str()},
    };
    ASSERT_EQ(full.size(), 20u);
    for (const CutCase &c : cases) {
        Outcome r = run(Bytes(full.begin(), full.begin() + static_cast<long>(c.n)), 4, &kPageList);
        EXPECT_EQ(r.status, c.status) << c.n;
        EXPECT_EQ(r.released, c.status != WSP_OK) << c.n;
        if (c.text != nullptr) EXPECT_EQ(r.text, c.text) << c.n;
    }
}

TEST(DecHdr, SkipModeBlockCutAtEveryLength) {
    Bytes full = cat({bytes({0x02, 0x85, 0x86}), app("x", "y"), bytes({0x91, 0x02, 0x83, 0x80}),
                      bytes({0x7F, 0x01, 0x85, 0x85})});
    const CutCase cases[] = {
        {0, WSP_OK, ""},           {1, WSP_OK, ""},            {2, WSP_ERR_ARG, nullptr},
        {3, WSP_OK, ""},           {4, WSP_ERR_ARG, nullptr},  {5, WSP_ERR_ARG, nullptr},
        {6, WSP_ERR_ARG, nullptr}, {7, WSP_OK, ""},            {8, WSP_ERR_ARG, nullptr},
        {9, WSP_OK, ""},           {10, WSP_OK, ""},           {11, WSP_OK, ""},
        {12, WSP_ERR_ARG, nullptr}, {13, WSP_OK, ""},          {14, WSP_ERR_FAIL, nullptr},
        {15, WSP_OK, "age:5\n"},
    };
    ASSERT_EQ(full.size(), 15u);
    for (const CutCase &c : cases) {
        Outcome r = run(Bytes(full.begin(), full.begin() + static_cast<long>(c.n)));
        EXPECT_EQ(r.status, c.status) << c.n;
        EXPECT_EQ(r.released, c.status != WSP_OK) << c.n;
        if (c.text != nullptr) EXPECT_EQ(r.text, c.text) << c.n;
    }
}

TEST(DecHdr, QuoteLedValueEndingTheBlock) {
    Outcome r = run(cat({str0("x"), bytes({0x7F, 0xE9, 0})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\xE9\n");
    // Without its NUL the text would need the octet past the block.
    r = run(cat({str0("x"), bytes({0x7F, 0xE9})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, ShortCutShiftUpTo31) {
    // 0x1F in header position is a shift to page 31, not a Length-quote.
    const wsp_code_entry rows[] = {{"x-p31", 2}, {nullptr, 0}};
    const wsp_dec_page page31[] = {{31, 1, rows}};
    const wsp_dec_page_list list = {1, page31};
    Outcome r = run(cat({bytes({0x1F, 0x82}), str0("v")}), 4, &list);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-p31:v\n");
}

TEST(DecHdr, CodePageWriterFailureReleases) {
    const wsp_code_entry rows[] = {{"accept-ranges", 1}, {nullptr, 0}};
    const wsp_dec_page page2[] = {{2, 1, rows}};
    const wsp_dec_page_list list = {1, page2};
    Outcome r = run(cat({bytes({0x02, 0x81}), str0("none"), bytes({0x81}), str0("bytes")}), 4, &list);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}
