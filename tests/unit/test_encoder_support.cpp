// The steps the header value encoders share: value preparation, list
// elements, scratch sizing and the extra writers.
#include <gtest/gtest.h>

#include <string>

#include "encode/encoder_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;

TEST(EncoderSupport, PrepareTrimsAndOptionallyLowerCases) {
    TextCopy a(" \t Foo Bar \r\n");
    EXPECT_STREQ(wsp_enc_prepare(a.get(), false), "Foo Bar");
    TextCopy b("  Foo Bar ");
    EXPECT_STREQ(wsp_enc_prepare(b.get(), true), "foo bar");
    EXPECT_EQ(wsp_enc_prepare(nullptr, true), nullptr);
}

TEST(EncoderSupport, NextElementTrimsEachElement) {
    TextCopy text(" a , \"b, c\" ,d");
    char *cursor = text.get();
    EXPECT_STREQ(wsp_enc_next_element(&cursor, ","), "a");
    EXPECT_STREQ(wsp_enc_next_element(&cursor, ","), "\"b, c\"");
    EXPECT_STREQ(wsp_enc_next_element(&cursor, ","), "d");
    EXPECT_EQ(wsp_enc_next_element(&cursor, ","), nullptr);
}

TEST(EncoderSupport, NextElementOnDelimitersOnlyYieldsOneEmptyElement) {
    TextCopy text(",,");
    char *cursor = text.get();
    EXPECT_STREQ(wsp_enc_next_element(&cursor, ","), "");
    EXPECT_EQ(wsp_enc_next_element(&cursor, ","), nullptr);
    TextCopy empty("");
    cursor = empty.get();
    EXPECT_EQ(wsp_enc_next_element(&cursor, ","), nullptr);
}

TEST(EncoderSupport, ScratchSizeIsTheTextLengthPlusOneInSixteenBits) {
    EXPECT_EQ(wsp_enc_scratch_size(""), 1);
    EXPECT_EQ(wsp_enc_scratch_size(" abc"), 5);
    std::string longest(65534, 'a');
    EXPECT_EQ(wsp_enc_scratch_size(longest.c_str()), 65535);
    std::string wraps(65535, 'a');
    EXPECT_EQ(wsp_enc_scratch_size(wraps.c_str()), 0);
}

TEST(EncoderSupport, UintvarIsAppendedAfterARoomTest) {
    OutBuffer out(3);
    EXPECT_EQ(wsp_append_uintvar(0x80, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "81 00");
    EXPECT_EQ(wsp_append_uintvar(0x80, out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 2);
    EXPECT_EQ(wsp_append_uintvar(5, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "81 00 05");
}

TEST(EncoderSupport, UintvarOfTheLargestValue) {
    OutBuffer out(5);
    EXPECT_EQ(wsp_append_uintvar(0xFFFFFFFFu, out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "8F FF FF FF 7F");
}

TEST(EncoderSupport, DecimalDigits) {
    EXPECT_TRUE(wsp_is_decimal_digits("0123456789"));
    EXPECT_FALSE(wsp_is_decimal_digits(""));
    EXPECT_FALSE(wsp_is_decimal_digits("1.5"));
    EXPECT_FALSE(wsp_is_decimal_digits("-1"));
    EXPECT_FALSE(wsp_is_decimal_digits("12a"));
    EXPECT_FALSE(wsp_is_decimal_digits("\xB9"));
    EXPECT_FALSE(wsp_is_decimal_digits(nullptr));
}

TEST(EncoderSupport, UntypedValueForms) {
    OutBuffer out(64);
    EXPECT_EQ(wsp_append_untyped_value("12", out.get()), WSP_OK);
    EXPECT_EQ(wsp_append_untyped_value("300", out.get()), WSP_OK);
    EXPECT_EQ(wsp_append_untyped_value("\"a b\"", out.get()), WSP_OK);
    EXPECT_EQ(wsp_append_untyped_value("x.y", out.get()), WSP_OK);
    EXPECT_EQ(wsp_append_untyped_value("", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "8C 02 01 2C 22 61 20 62 00 78 2E 79 00 00");
}

TEST(EncoderSupport, UntypedValueSaturatesALargeNumber) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_append_untyped_value("99999999999", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "04 FF FF FF FF");
}

TEST(EncoderSupport, UntypedValueTheWriterRefusesFails) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_append_untyped_value("a/b", out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
    OutBuffer tiny(1);
    EXPECT_EQ(wsp_append_untyped_value("5", tiny.get()), WSP_ERR_FAIL);
}

TEST(EncoderSupport, ParameterListLowerCasesEachElementWhenAsked) {
    TextCopy text(" Foo ; Bar=Baz ");
    OutBuffer out(32);
    EXPECT_EQ(wsp_append_param_list(text.get(), ";", true, out.get(), 3), WSP_OK);
    EXPECT_EQ(out.written_hex(), hex(cat({text_bytes("foo"), bytes({0, 0}), text_bytes("bar"), bytes({0}),
                                          text_bytes("baz"), bytes({0})})));
}

TEST(EncoderSupport, ParameterListKeepsCaseOtherwise) {
    TextCopy text("A=B");
    OutBuffer out(32);
    EXPECT_EQ(wsp_append_param_list(text.get(), ",", false, out.get(), 3), WSP_OK);
    EXPECT_EQ(out.written_hex(), "41 00 42 00");
}

TEST(EncoderSupport, ParameterListFailsOnARefusedParameterOrVersion) {
    TextCopy refused("a=1, start=x");
    OutBuffer out(32);
    EXPECT_EQ(wsp_append_param_list(refused.get(), ",", true, out.get(), 3), WSP_ERR_FAIL);
    TextCopy any("a=1");
    OutBuffer out2(32);
    EXPECT_EQ(wsp_append_param_list(any.get(), ",", true, out2.get(), 4), WSP_ERR_FAIL);
}

TEST(EncoderSupport, EmptyParameterListWritesNothing) {
    TextCopy text("");
    OutBuffer out(8);
    EXPECT_EQ(wsp_append_param_list(text.get(), ",", true, out.get(), 3), WSP_OK);
    EXPECT_EQ(out->length, 0);
}

TEST(EncoderSupport, BlankParameterIsRefused) {
    // Blanks are one element that trims to nothing: a parameter without a
    // name, which the parameter encoder refuses.
    TextCopy text("  ");
    OutBuffer out(8);
    EXPECT_EQ(wsp_append_param_list(text.get(), ",", true, out.get(), 3), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 0);
}
