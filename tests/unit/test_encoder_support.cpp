// The steps the header value encoders share: value preparation, list
// elements and the walk over them, scratch sizing, values built behind
// their Value-length, and the extra writers.
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

TEST(EncoderSupport, CodeOrTokenWritesTheRowsCodeAsAnIntegerValue) {
    OutBuffer out(16);
    EXPECT_EQ(wsp_append_code_or_token(wsp_methods, WSP_METHOD_ROWS, "POST", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "E0");
    // A code above 127 goes out as a Long-integer.
    EXPECT_EQ(wsp_append_code_or_token(wsp_push_app_ids, WSP_PUSH_APP_ID_ROWS, "x-microsoft:drm.meter", out.get()),
              WSP_OK);
    EXPECT_EQ(out.written_hex(), "E0 02 90 34");
}

TEST(EncoderSupport, CodeOrTokenSendsANameWithoutARowAsTokenText) {
    OutBuffer out(16);
    // Names are matched as written: "post" has no row.
    EXPECT_EQ(wsp_append_code_or_token(wsp_methods, WSP_METHOD_ROWS, "post", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "70 6F 73 74 00");
}

TEST(EncoderSupport, CodeOrTokenLooksOnlyAtTheFirstRows) {
    OutBuffer out(16);
    EXPECT_EQ(wsp_append_code_or_token(wsp_cache_directives, WSP_CACHE_S_MAXAGE, "s-maxage", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "73 2D 6D 61 78 61 67 65 00");
    EXPECT_EQ(wsp_append_code_or_token(wsp_cache_directives, WSP_CACHE_DIRECTIVE_ROWS, "s-maxage", out.get()), WSP_OK);
    EXPECT_EQ(out.written_hex(), "73 2D 6D 61 78 61 67 65 00 8B");
}

TEST(EncoderSupport, CodeOrTokenFailsWhenTheWriterDoes) {
    // A Short-integer may not fill the buffer to its last octet: written,
    // counted, and refused with -214.
    OutBuffer out(1);
    EXPECT_EQ(wsp_append_code_or_token(wsp_methods, WSP_METHOD_ROWS, "GET", out.get()), WSP_ERR_FAIL);
    EXPECT_EQ(out->length, 1);
    EXPECT_EQ(out.region_hex(), "C0");
}

TEST(EncoderSupport, EachElementWritesTheCodeOctetBeforeEveryValue) {
    OutBuffer out(16);
    TextCopy list(" a , b ");
    std::string seen;
    int status = wsp_encode_each_element(0x2A, list.get(), out.get(), WSP_ERR_FAIL, [&](char *element) {
        seen += std::string("[") + element + "]";
        return wsp_append_short_int(1, out.get());
    });
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(seen, "[a][b]");
    EXPECT_EQ(out.written_hex(), "AA 81 AA 81");
}

TEST(EncoderSupport, EachElementAnswersAnEmptyListAsTold) {
    OutBuffer out(16);
    auto never = [](char *) { return WSP_ERR_ARG; };
    TextCopy refused("");
    EXPECT_EQ(wsp_encode_each_element(0x2A, refused.get(), out.get(), WSP_ERR_FAIL, never), WSP_ERR_FAIL);
    TextCopy allowed("");
    EXPECT_EQ(wsp_encode_each_element(0x2A, allowed.get(), out.get(), WSP_OK, never), WSP_OK);
    EXPECT_EQ(out->length, 0);
}

TEST(EncoderSupport, EachElementStopsAtTheFirstRefusalWithFail) {
    OutBuffer out(16);
    TextCopy list("a,b,c");
    int calls = 0;
    int status = wsp_encode_each_element(0x2A, list.get(), out.get(), WSP_OK, [&](char *) {
        ++calls;
        return calls == 2 ? WSP_ERR_ARG : WSP_OK;
    });
    // Whatever the value's status, the walk answers -214; the code octet of
    // the refused element stays written.
    EXPECT_EQ(status, WSP_ERR_FAIL);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(out.written_hex(), "AA AA");
}

namespace {

// Walks `text` under code 0x2A, every value a Short-integer 1, with "x"
// standing alone when it comes first; returns the walk's status and the
// octets written.
struct Walk {
    int status;
    std::string hex;
};
Walk walk_with_lone_x(const char *text, wsp_after_lone_first after) {
    OutBuffer out(16);
    TextCopy list(text);
    auto one = [&out](char *) { return wsp_append_short_int(1, out.get()); };
    auto is_x = [](const char *element) { return std::string(element) == "x"; };
    int status = wsp_encode_each_element(0x2A, list.get(), out.get(), WSP_OK, one, is_x, after);
    return {status, out.written_hex()};
}

} // namespace

TEST(EncoderSupport, EachElementRefusesAnElementAfterALoneFirstBeforeItsCodeOctet) {
    Walk w = walk_with_lone_x("x, y", wsp_after_lone_first::refused);
    EXPECT_EQ(w.status, WSP_ERR_FAIL);
    EXPECT_EQ(w.hex, "AA 81");
}

TEST(EncoderSupport, EachElementEndsTheListAfterALoneFirstWhenTheRestIsIgnored) {
    Walk w = walk_with_lone_x("x, y", wsp_after_lone_first::ignored);
    EXPECT_EQ(w.status, WSP_OK);
    EXPECT_EQ(w.hex, "AA 81");
}

TEST(EncoderSupport, EachElementTreatsOnlyTheFirstElementAsStandingAlone) {
    Walk w = walk_with_lone_x("y, x, x", wsp_after_lone_first::refused);
    EXPECT_EQ(w.status, WSP_OK);
    EXPECT_EQ(w.hex, "AA 81 AA 81 AA 81");
}

TEST(EncoderSupport, KnownOrBuiltSendsAKnownElementAsAShortIntegerAndTheRestInAValueLength) {
    OutBuffer out(16);
    TextCopy list("x, yz");
    auto known = [](const char *element) { return std::string(element) == "x" ? 5 : -1; };
    auto build = [](char *element, wsp_buffer *body) { return wsp_tokentext_encode_buff(element, body); };
    EXPECT_EQ(wsp_encode_known_or_built_list(0x38, list.get(), 8, out.get(), known, build), WSP_OK);
    EXPECT_EQ(out.written_hex(), "B8 85 B8 03 79 7A 00");
}

TEST(EncoderSupport, KnownOrBuiltFailsWhenTheBuildOrItsScratchFails) {
    OutBuffer out(16);
    TextCopy list("yz");
    auto unknown = [](const char *) { return -1; };
    auto build = [](char *element, wsp_buffer *body) { return wsp_tokentext_encode_buff(element, body); };
    // A scratch of 2 octets cannot hold "yz" and its NUL.
    EXPECT_EQ(wsp_encode_known_or_built_list(0x38, list.get(), 2, out.get(), unknown, build), WSP_ERR_FAIL);
    EXPECT_EQ(out.written_hex(), "B8");
}

TEST(EncoderSupport, BuiltValueGoesOutBehindItsLength) {
    OutBuffer out(8);
    int status = wsp_append_built_value(4, out.get(), [](wsp_buffer *body) {
        EXPECT_EQ(body->size, 4);
        EXPECT_EQ(body->length, 0);
        return wsp_append_short_int(3, body);
    });
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(out.written_hex(), "01 83");
}

TEST(EncoderSupport, BuiltValueReturnsTheBuildsOwnStatus) {
    OutBuffer out(8);
    EXPECT_EQ(wsp_append_built_value(4, out.get(), [](wsp_buffer *) { return WSP_ERR_ARG; }), WSP_ERR_ARG);
    EXPECT_EQ(out->length, 0);
}

TEST(EncoderSupport, BuiltValueLargerThanTheLocalAreaUsesTheHeap) {
    OutBuffer out(400);
    const uint16_t size = wsp_scratch::kLocalSize + 44;
    int status = wsp_append_built_value(size, out.get(), [size](wsp_buffer *body) {
        EXPECT_EQ(body->size, size);
        const std::string text(280, 'a');
        return wsp_tokentext_encode_buff(text.c_str(), body);
    });
    EXPECT_EQ(status, WSP_OK);
    // A Length-quote, the uintvar 281, then the 280 octets and the NUL.
    EXPECT_EQ(out->length, 1 + 2 + 281);
    EXPECT_EQ(out.written_hex().substr(0, 11), "1F 82 19 61");
}

TEST(EncoderSupport, BuiltValueThatDoesNotFitFails) {
    OutBuffer out(2);
    EXPECT_EQ(wsp_append_built_value(8, out.get(), [](wsp_buffer *body) { return wsp_append_text_string("abc", body); }),
              WSP_ERR_FAIL);
}

TEST(EncoderSupport, OpenValueCutsATokenFromTheTextAsWrittenAndLowerCasesItAlone) {
    TextCopy value(" Basic QWxh:Zm9v");
    wsp_value_opening opening{};
    char *first = wsp_enc_open_value(value.get(), " ", wsp_first_part::token_lowered, &opening);
    EXPECT_STREQ(first, "basic");
    EXPECT_STREQ(opening.rest, "QWxh:Zm9v");
    // Measured on the value as handed in, leading blank included.
    EXPECT_EQ(opening.scratch_size, 17);
}

TEST(EncoderSupport, OpenValueCutsATrimmedElementFromTheLowerCasedValue) {
    TextCopy value("Attachment ; Filename=Report.TXT");
    wsp_value_opening opening{};
    char *first = wsp_enc_open_value(value.get(), ";", wsp_first_part::element, &opening);
    EXPECT_STREQ(first, "attachment");
    EXPECT_STREQ(opening.rest, " filename=report.txt");
    EXPECT_EQ(opening.scratch_size, 33);
}

TEST(EncoderSupport, OpenValueFindsNoFirstPartInANullOrBlankValue) {
    wsp_value_opening opening{};
    EXPECT_EQ(wsp_enc_open_value(nullptr, ";", wsp_first_part::element, &opening), nullptr);
    TextCopy blank("   ");
    EXPECT_EQ(wsp_enc_open_value(blank.get(), " ", wsp_first_part::token_lowered, &opening), nullptr);
    TextCopy blank_list("  ");
    EXPECT_EQ(wsp_enc_open_value(blank_list.get(), ";", wsp_first_part::element, &opening), nullptr);
}

TEST(EncoderSupport, HeadedValueWritesTheCodeOctetThenTheBodyBehindItsLength) {
    OutBuffer out(16);
    TextCopy value("Inline; X");
    int status = wsp_encode_headed_value(0x2E, value.get(), ";", wsp_first_part::element, out.get(),
                                         [](char *first, char *rest, wsp_buffer *body) {
                                             EXPECT_STREQ(first, "inline");
                                             EXPECT_STREQ(rest, " x");
                                             return wsp_tokentext_encode_buff(first, body);
                                         });
    EXPECT_EQ(status, WSP_OK);
    EXPECT_EQ(out.written_hex(), "AE 07 69 6E 6C 69 6E 65 00");
}

TEST(EncoderSupport, HeadedValueWithoutAFirstPartWritesNothing) {
    OutBuffer out(16);
    TextCopy value("   ");
    bool built = false;
    int status = wsp_encode_headed_value(0x2E, value.get(), ";", wsp_first_part::element, out.get(),
                                         [&built](char *, char *, wsp_buffer *) {
                                             built = true;
                                             return WSP_OK;
                                         });
    EXPECT_EQ(status, WSP_ERR_FAIL);
    EXPECT_FALSE(built);
    EXPECT_EQ(out->length, 0);
}
