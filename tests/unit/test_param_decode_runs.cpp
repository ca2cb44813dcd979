// Parameters and parameter runs: single parameters, runs and lists, the
// single-parameter and q-value forms, and field-name lists.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "decode/decode.h"
#include "unit_support.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace param_decode;

namespace {

using RunFn = int (*)(const uint8_t **, uint16_t, char *, uint16_t);

Result run_fn(RunFn fn, const Bytes &in, const std::string &before = "", uint16_t capacity = WSP_TEXT_CAPACITY,
              int run = -1) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out(before);
    uint16_t r = run < 0 ? copy.size() : static_cast<uint16_t>(run);
    int status = fn(&p, r, out.text, capacity);
    return {status, out.text, p - copy.data()};
}

Result param(const Bytes &in, const std::string &before = "", uint16_t capacity = WSP_TEXT_CAPACITY, int run = -1) {
    return run_fn(wsp_decode_param, in, before, capacity, run);
}

Result field_names(const Bytes &in, const std::string &before = "", int run = -1) {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    Area out(before);
    uint16_t r = run < 0 ? copy.size() : static_cast<uint16_t>(run);
    int status = wsp_decode_field_name_list(&p, out.text, r);
    return {status, out.text, p - copy.data()};
}

} // namespace

// ---- wsp_decode_param -------------------------------------------------------------------------

TEST(Param, TypedWithValue) {
    Result r = param(bytes({0x81, 0xEA, 0x99}), "", WSP_TEXT_CAPACITY, 2);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=utf-8");
    EXPECT_EQ(r.moved, 2);
}

TEST(Param, AppendsToExistingText) {
    Result r = param(bytes({0x81, 0xEA}), "text/plain;");
    EXPECT_EQ(r.text, "text/plain;charset=utf-8");
}

TEST(Param, NoValueOctetForTypedAndUntyped) {
    Result r = param(bytes({0x81, 0x00}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset");
    EXPECT_EQ(r.moved, 2);
    r = param(cat({cstr("x"), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 3);
}

TEST(Param, UntypedShortInteger) {
    Result r = param(cat({cstr("x"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=5");
    EXPECT_EQ(r.moved, 3);
    EXPECT_EQ(param(cat({cstr("x"), bytes({0xFF})})).text, "x=127");
}

TEST(Param, UntypedLongIntegerIsSigned) {
    Result r = param(cat({cstr("x"), bytes({0x04, 0xFF, 0xFF, 0xFF, 0xFF})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=-1");
    EXPECT_EQ(r.moved, 7);
}

TEST(Param, TypedSizeIsUnsigned) {
    Result r = param(bytes({0x96, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "size=4294967295");
}

TEST(Param, UntypedQuotedString) {
    Result r = param(cat({cstr("x"), cstr("\"a b")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x=\"a b\"");
    EXPECT_EQ(r.moved, 7);
}

TEST(Param, UntypedTokenText) {
    Result r = param(cat({cstr("x"), cstr("abc")}));
    EXPECT_EQ(r.text, "x=abc");
    EXPECT_EQ(r.moved, 6);
}

TEST(Param, UntypedRefusedClasses) {
    for (const Bytes &value : {bytes({0x1F, 0x01, 0x05}), bytes({0x7F, 'a', 0})}) {
        Result r = param(cat({cstr("x"), value}));
        EXPECT_EQ(r.status, WSP_ERR_FAIL);
        EXPECT_EQ(r.moved, 0);
        EXPECT_EQ(r.text, "x"); // partial text stays
    }
}

TEST(Param, UntypedTokenRefusesNonTokenText) {
    Result r = param(cat({cstr("x"), cstr("a b")}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, TypedValueFallsBackToUntyped) {
    // A charset given as text is not a charset: read again as a token.
    Result r = param(cat({bytes({0x81}), cstr("abc")}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=abc");
    EXPECT_EQ(r.moved, 5);
    // A level given as a Long-integer becomes a signed number.
    r = param(bytes({0x82, 0x01, 0x05}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "level=5");
    EXPECT_EQ(r.moved, 3);
}

TEST(Param, TypedEmptyValueStillGetsEquals) {
    Result r = param(bytes({0x90, 0x85}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "secure=");
    EXPECT_EQ(r.moved, 2);
}

TEST(Param, NameClassesRefused) {
    for (uint8_t o : {0x01, 0x1F, 0x22, 0x7F}) {
        Result r = param(bytes({o, 0x41, 0}));
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << int(o);
        EXPECT_EQ(r.text, "");
        EXPECT_EQ(r.moved, 0);
    }
}

TEST(Param, CodesWithoutNameRefused) {
    EXPECT_EQ(param(bytes({0x84, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0x9E, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0xFF, 0x85})).status, WSP_ERR_FAIL);
    EXPECT_EQ(param(bytes({0x9D, 0x00})).text, "path");
}

TEST(Param, NameRoomTest) {
    // "charset" is 7: 0 + 7 + 1 must be below the capacity.
    Result r = param(bytes({0x81, 0x00}), "", 8);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "");
    r = param(bytes({0x81, 0x00}), "", 9);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset");
}

TEST(Param, ValueRoomTest) {
    // 7 + 5 + 2 = 14 must not exceed the capacity.
    Result r = param(bytes({0x81, 0xEA}), "", 14);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "charset=utf-8");
    r = param(bytes({0x81, 0xEA}), "", 13);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "charset");
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, UntypedValueRoomTest) {
    Result r = param(cat({cstr("x"), bytes({0x85})}), "", 4);
    EXPECT_EQ(r.status, WSP_OK);
    r = param(cat({cstr("x"), bytes({0x85})}), "", 3);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "x");
}

TEST(Param, MissingValueOctetFails) {
    Result r = param(cstr("x"));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = param(bytes({0x81}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, LongTokenNameIsTruncatedStatus) {
    Result r = param(cat({cstr(std::string(198, 'n')), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0);
}

TEST(Param, NothingToReadFails) {
    Result r = param(bytes({0x81, 0xEA}), "", WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(Param, ValueBoundedByRemaining) {
    // The Long-integer's last octet lies past the run.
    Result r = param(cat({cstr("x"), bytes({0x02, 0x01, 0x02})}), "", WSP_TEXT_CAPACITY, 4);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- wsp_decode_params --------------------------------------------------------------------------

TEST(Params, CharsetAndLevel) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA, 0x82, 0x90}), "text/plain", 150);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8;level=1.0");
    EXPECT_EQ(r.moved, 4);
}

TEST(Params, EmptyRunAppendsNothing) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA}), "a", 150, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a");
    EXPECT_EQ(r.moved, 0);
}

TEST(Params, FailureLeavesCursor) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA, 0x84, 0x00}), "t", 150);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(r.text, "t;charset=utf-8;");
}

TEST(Params, TruncatedStatusPassedOn) {
    Result r = run_fn(wsp_decode_params, cat({cstr(std::string(200, 'n')), bytes({0x00})}), "t", 150);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 0);
}

TEST(Params, TextAtCapacityIsRefused) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0x00}), "abcd", 4);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "abcd");
}

TEST(Params, RunEndingInsideParameterFails) {
    Result r = run_fn(wsp_decode_params, bytes({0x81, 0xEA}), "t", 150, 1);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- wsp_decode_param_list -----------------------------------------------------------------------

TEST(ParamList, JoinsWithComma) {
    Result r = run_fn(wsp_decode_param_list, cat({cstr("a"), bytes({0x85}), cstr("b"), bytes({0x00}), bytes({0x81, 0xEA})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a=5,b,charset=utf-8");
    EXPECT_EQ(r.moved, 8);
}

TEST(ParamList, EmptyRun) {
    Result r = run_fn(wsp_decode_param_list, bytes({0x85}), "x", WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 0);
}

TEST(ParamList, FailureStatusPassedOn) {
    Result r = run_fn(wsp_decode_param_list, cat({cstr("a"), bytes({0x85, 0x84, 0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = run_fn(wsp_decode_param_list, cat({cstr(std::string(199, 'n')), bytes({0x00})}));
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
}

TEST(ParamList, LengthLimitBoundary) {
    std::string before(191, 'p');
    // 191 + "abcdef" = 197: passes the parameter's own room test (capacity
    // 200) and the list's 197 limit.
    Result ok = run_fn(wsp_decode_param_list, cat({cstr("abcdef"), bytes({0x00})}), before, 200);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.text.size(), 197u);
    Result too_long = run_fn(wsp_decode_param_list, cat({cstr("abcdefg"), bytes({0x00})}), before, 200);
    EXPECT_EQ(too_long.status, WSP_ERR_FAIL);
    EXPECT_EQ(too_long.moved, 0);
}

// ---- wsp_decode_single_param -----------------------------------------------------------------------

TEST(SingleParam, ExactlyOneParameter) {
    Result r = run_fn(wsp_decode_single_param, cat({cstr("a"), bytes({0x85})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a=5");
    EXPECT_EQ(r.moved, 3);
}

TEST(SingleParam, EmptyRunSucceeds) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x85}), "x", WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "x");
    EXPECT_EQ(r.moved, 0);
}

TEST(SingleParam, OctetsLeftOverFail) {
    Result r = run_fn(wsp_decode_single_param, cat({cstr("a"), bytes({0x85, 0x85})}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(SingleParam, FailureReturned) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x84, 0x00}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(SingleParam, TextOver197Fails) {
    Result r = run_fn(wsp_decode_single_param, bytes({0x85}), std::string(198, 'p'), WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    r = run_fn(wsp_decode_single_param, bytes({0x85}), std::string(197, 'p'), WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_OK);
}

// ---- wsp_decode_qvalue_param -----------------------------------------------------------------------

TEST(QValueParam, EmptyRunAppendsNothing) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33}), "text/*", WSP_TEXT_CAPACITY, 0);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/*");
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, QValue) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33}), "text/*");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/*;q=0.50");
    EXPECT_EQ(r.moved, 1);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x83, 0x31}), "a");
    EXPECT_EQ(r.text, "a;q=0.333");
    EXPECT_EQ(r.moved, 2);
}

TEST(QValueParam, ZeroOctetLeavesQAlone) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "a");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "a;q");
    EXPECT_EQ(r.moved, 1);
}

TEST(QValueParam, LeftoverOctetsAreArgumentError) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x33, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x00, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, BadQValueFails) {
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x80, 0x01}), "a");
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(QValueParam, CapacityTest) {
    // "abc" + ";q" = 5 must be below the capacity.
    Result r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "abc", 5);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    r = run_fn(wsp_decode_qvalue_param, bytes({0x00}), "abc", 6);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "abc;q");
}

TEST(QValueParam, TextOver197Fails) {
    Result ok = run_fn(wsp_decode_qvalue_param, bytes({0x33}), std::string(190, 'p'), 198);
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.text.size(), 197u);
    Result too_long = run_fn(wsp_decode_qvalue_param, bytes({0x33}), std::string(191, 'p'), 198);
    EXPECT_EQ(too_long.status, WSP_ERR_FAIL);
    EXPECT_EQ(too_long.moved, 0);
    // Left-over octets are reported before the length.
    Result leftover = run_fn(wsp_decode_qvalue_param, bytes({0x33, 0x01}), std::string(191, 'p'), 198);
    EXPECT_EQ(leftover.status, WSP_ERR_ARG);
}

// ---- wsp_decode_field_name_list -------------------------------------------------------------------

TEST(FieldNameList, EmptyRunIsArgumentError) {
    Result r = field_names(bytes({0x91}), "no-cache", 0);
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.text, "no-cache");
}

TEST(FieldNameList, CodesAndTokens) {
    Result r = field_names(cat({bytes({0x91}), cstr("x-foo"), bytes({0xC7})}), "no-cache");
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "no-cache= \"content-type,x-foo,cache-control\"");
    EXPECT_EQ(r.moved, 8);
}

TEST(FieldNameList, BadClassIsArgumentError) {
    Result r = field_names(bytes({0x05, 0x01}), "p");
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(field_names(cstr("\"x"), "p").status, WSP_ERR_ARG);
}

TEST(FieldNameList, UnknownCodeOrBadTokenFails) {
    EXPECT_EQ(field_names(bytes({0xC8}), "p").status, WSP_ERR_FAIL);
    EXPECT_EQ(field_names(cstr("a b"), "p").status, WSP_ERR_FAIL);
    Result r = field_names(bytes({'a', 'b'}), "p"); // no NUL before the run's end
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(FieldNameList, OpeningPastLimitIsArgumentError) {
    Result r = field_names(bytes({0x91}), std::string(195, 'p'));
    EXPECT_EQ(r.status, WSP_ERR_ARG);
    EXPECT_EQ(r.text.size(), 195u);
    r = field_names(bytes({0x85}), std::string(194, 'p')); // 197 + "age": too long
    EXPECT_EQ(r.status, WSP_ERR_ARG);
}

TEST(FieldNameList, NameUpTo197AndClosingQuote) {
    // 180 + 3 + 14 ("content-length") = 197, then the closing mark: 198.
    Result r = field_names(bytes({0x8D}), std::string(180, 'p'));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string(180, 'p') + "= \"content-length\"");
    Result too_long = field_names(bytes({0x8D}), std::string(181, 'p'));
    EXPECT_EQ(too_long.status, WSP_ERR_ARG);
    EXPECT_EQ(too_long.moved, 0);
}

TEST(Params, RunCutAtEveryLength) {
    // Cuts between parameters succeed with the parameters so far; cuts inside
    // one fail without moving the cursor.
    Bytes full = cat({bytes({0x81, 0xEA}), cstr("x"), bytes({0x02, 0x01, 0x02}), bytes({0x93, 0x01, 0x05})});
    for (size_t n = 0; n <= full.size(); ++n) {
        Result r = run_fn(wsp_decode_params, Bytes(full.begin(), full.begin() + static_cast<long>(n)), "t", 198);
        if (n == 0) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t");
        } else if (n == 2) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8");
        } else if (n == 7) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8;x=258");
        } else if (n == full.size()) {
            EXPECT_EQ(r.status, WSP_OK);
            EXPECT_EQ(r.text, "t;charset=utf-8;x=258;creation-date=Thu, 01 Jan 1970 00:00:05 GMT");
            EXPECT_EQ(r.moved, static_cast<long>(full.size()));
        } else {
            EXPECT_NE(r.status, WSP_OK) << n;
            EXPECT_EQ(r.moved, 0) << n;
        }
    }
}
