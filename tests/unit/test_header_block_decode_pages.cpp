// The header block walk (exported wsp_dec_hdr) across code pages: shift
// sequences, page lists and their rows, and skip mode.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace header_block_decode;

// ---- shift sequences --------------------------------------------------------------------

TEST(DecHdr, ShiftToPageOneIsNoChange) {
    Outcome r = run(cat({bytes({0x7F, 0x01, 0x85, 0x85, 0x01, 0x8D, 0x83})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "age:5\ncontent-length:3\n");
}

TEST(DecHdr, BadShiftOctetsRelease) {
    for (const Bytes &in : {bytes({0x00, 0x85, 0x85}), cat({bytes({0x22}), cstr("x")}), bytes({0x85, 0x85, 0x7F})}) {
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
                            cat({bytes({0x02}), cstr("a b"), cstr("v")}), // bad name
                            cat({bytes({0x02}), cstr("x")}),          // name without value
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
    Outcome r = run(cat({bytes({0x02, 0x85}), cstr("hello")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Page-A:hello\n");
}

TEST(DecHdr, CodePageHeadersMergeAndKeepTheirSpelling) {
    Outcome r = run(cat({bytes({0x02, 0x85}), cstr("a"), bytes({0x87}), cstr("b"), bytes({0x85}), cstr("c")}), 4,
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
    Outcome r = run(cat({bytes({0x7F, 0x80, 0x81}), cstr("v")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Eighty:v\n");
}

TEST(DecHdr, BackToPageOneDecodesWellKnownHeaders) {
    Outcome r = run(cat({bytes({0x02, 0x85}), cstr("a"), bytes({0x01, 0x85, 0x85, 0x02, 0x87}), cstr("b")}), 4,
                    &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "X-Page-A:a\nage:5\nx-page-b:b\n");
}

TEST(DecHdr, ApplicationHeadersOnOtherPages) {
    Outcome r = run(cat({bytes({0x02}), app("X-App", "v"), bytes({0x85}), cstr("w")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-app:v\nX-Page-A:w\n");
}

TEST(DecHdr, RowWithoutNameIsSkipped) {
    Outcome r = run(cat({bytes({0x02, 0x86}), cstr("gone"), app("a", "b")}), 4, &kPageList);
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
    Outcome r = run(cat({bytes({0x7F, 0x80, 0x89}), cstr("skipped"), app("x", "y")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, PageOfMoreThan128RowsSkipsAll) {
    Outcome r = run(cat({bytes({0x03, 0x85}), cstr("skipped"), app("x", "y")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, PageNamesBoundedTo31Characters) {
    Outcome r = run(cat({bytes({0x04, 0x81}), cstr("v")}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string("x-a-very-long-page-header-name-") + ":v\n");
}

TEST(DecHdr, PageWithoutRowsSkipsAll) {
    const wsp_dec_page no_rows[] = {{2, 3, nullptr}};
    const wsp_dec_page_list list = {1, no_rows};
    Outcome r = run(cat({bytes({0x02, 0x85}), cstr("skipped"), app("x", "y")}), 4, &list);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x:y\n");
}

TEST(DecHdr, CodePageTextValueFailuresAreArgumentErrors) {
    Outcome r = run(cat({bytes({0x02, 0x85}), bytes({'a', 0x01, 0})}), 4, &kPageList);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    r = run(cat({bytes({0x02, 0x85}), cstr(std::string(198, 'v'))}), 4, &kPageList, 1024);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_TRUE(r.released);
    r = run(cat({bytes({0x02, 0x85}), cstr(std::string(197, 'v'))}), 4, &kPageList, 1024);
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
    Outcome r = run(cat({bytes({0x02, 0x85}), cstr("hello")}), 4, &kPageList, 8);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_FALSE(r.released);
}

TEST(DecHdr, ShortCutShiftUpTo31) {
    // 0x1F in header position is a shift to page 31, not a Length-quote.
    const wsp_code_entry rows[] = {{"x-p31", 2}, {nullptr, 0}};
    const wsp_dec_page page31[] = {{31, 1, rows}};
    const wsp_dec_page_list list = {1, page31};
    Outcome r = run(cat({bytes({0x1F, 0x82}), cstr("v")}), 4, &list);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x-p31:v\n");
}

TEST(DecHdr, CodePageWriterFailureReleases) {
    const wsp_code_entry rows[] = {{"accept-ranges", 1}, {nullptr, 0}};
    const wsp_dec_page page2[] = {{2, 1, rows}};
    const wsp_dec_page_list list = {1, page2};
    Outcome r = run(cat({bytes({0x02, 0x81}), cstr("none"), bytes({0x81}), cstr("bytes")}), 4, &list);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_TRUE(r.released);
}

// ---- truncated blocks -------------------------------------------------------------------

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
