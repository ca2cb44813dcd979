// The header block walk (exported wsp_dec_hdr): arguments, application and
// well-known headers, realistic blocks and blocks cut short.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace header_block_decode;

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
    r = run(cat({cstr(name), bytes({0x02, 0x01, 0x02}), app("b", "w")}));
    EXPECT_EQ(r.text, "b:w\n");
}

TEST(DecHdr, LongNameWhoseValueIsMissingFails) {
    Outcome r = run(cstr(std::string(30, 'n')));
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
    Outcome r = run(cat({cstr("x"), bytes({0x7F, 0xE9, 'a', 0}), cstr("y"), cstr("\"q r")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\xE9" "a\ny:\"q r\n");
}

TEST(DecHdr, EmptyTextValue) {
    Outcome r = run(cat({cstr("x"), bytes({0x00}), app("y", "z")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\ny:z\n");
}

TEST(DecHdr, BadNameCharacterReadsValueFromNameStart) {
    Outcome r = run(cat({cstr("X-Foo(bar)"), app("b", "w")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:X-Foo(bar)\nb:w\n");
}

TEST(DecHdr, UnreadableApplicationValueIsArgumentError) {
    Outcome r = run(cat({cstr("x"), bytes({'a', 0x01, 0})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    // A text that runs to the block's end.
    r = run(cat({cstr("x"), bytes({'a', 'b'})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, MissingApplicationValueFails) {
    Outcome r = run(cstr("x"));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

TEST(DecHdr, RawShortIntegerValueIsTheOctetItself) {
    Outcome r = run(cat({cstr("X-Foo"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-foo:\x85\n");
    // The raw writer counts the NUL of the empty text too.
    EXPECT_EQ(r.length, 9);
}

TEST(DecHdr, RawLengthValuesCopiedWithTheirLength) {
    Outcome r = run(cat({cstr("x"), bytes({0x02, 0x41, 0x42}), cstr("y"), bytes({0x1F, 0x02, 0x43, 0x44})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(hex(text_bytes(r.text.c_str())), "78 3A 02 41 42 0A 79 3A 1F 02 43 44 0A");
}

TEST(DecHdr, RawRepeatsExtendTheLine) {
    Outcome r = run(cat({cstr("x"), bytes({0x85}), cstr("x"), bytes({0x86})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\x85,\x86\n");
    EXPECT_EQ(r.length, 5 + 3);
}

TEST(DecHdr, RawValuePastBlockEndRefused) {
    Outcome r = run(cat({cstr("x"), bytes({0x05, 0x01})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
    r = run(cat({cstr("x"), bytes({0x1F, 0x81})}));
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
    Outcome r = run(cat({cstr("x"), bytes({0x85})}), 4, nullptr, 4);
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
    Outcome r = run(cat({bytes({0xC8, 0x85, 0xFF}), cstr("text"), app("a", "b")}));
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

    Bytes content_id = cat({bytes({0xC0}), cstr("\"abc")});
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
    Outcome r = run(cat({bytes({0xB5}), cstr("http://p"), bytes({0xB8, 0x80, 0xC2, 0x01, 0x80}), app("a", "b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a:b\n");
}

TEST(DecHdr, DecoderFailureDropsHeaderOnly) {
    // age with a text value: the age decoder refuses it, the value is
    // measured and passed.
    Outcome r = run(cat({bytes({0x85}), cstr("abc"), app("a", "b")}));
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
    Outcome r = run(cat({bytes({0x82}), cstr(std::string(198, 't'))}), 4, nullptr, 1024);
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
    Outcome r = run(cat({bytes({0x91}), cstr(std::string(197, 't'))}), 4, nullptr, 64);
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

// ---- realistic blocks -------------------------------------------------------------------

TEST(DecHdr, PushHeadersMixed) {
    Bytes in = cat({
        bytes({0xAF, 0x84}),                         // x-wap-application-id: mms.ua
        bytes({0x91, 0x03, 0x83, 0x81, 0xEA}),       // content-type (never written)
        bytes({0x8D, 0x02, 0x04, 0x00}),             // content-length: 1024
        bytes({0x92, 0x04, 0x2E, 0xBC, 0x98, 0xA1}), // date
        bytes({0xA6}), cstr("Apache"),               // server
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
        bytes({0xA9}), cstr("Handset/1.0"),     // user-agent
        bytes({0x81, 0xEA}),                    // accept-charset: utf-8
        bytes({0x83, 0x99}),                    // accept-language: english
        bytes({0x96}), cstr("example.com"),     // host
        app("X-Up-Subno", "12345"),
        bytes({0xA9}), cstr("Extra"),           // user-agent again: merged
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

TEST(DecHdr, BlockCutAtEveryLength) {
    // Every prefix of a block is decoded without reading past it (the
    // block's buffer has exactly the prefix's size).  A cut inside a
    // length-prefixed value ends the walk there, as a step past the end
    // would; any other cut inside an entry fails and releases the block.
    Bytes full = cat({
        bytes({0xAF, 0x84}),              // 0..1
        app("X-A", "v"),                  // 2..7
        bytes({0x8D, 0x02, 0x04, 0x00}),  // 8..11
        bytes({0x7F, 0x02, 0x85}), cstr("p"), // 12..16
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

TEST(DecHdr, QuoteLedValueEndingTheBlock) {
    Outcome r = run(cat({cstr("x"), bytes({0x7F, 0xE9, 0})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:\xE9\n");
    // Without its NUL the text would need the octet past the block.
    r = run(cat({cstr("x"), bytes({0x7F, 0xE9})}));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
}
