// Warning and Profile-Warning value decoding: bare codes, the length forms
// with agent and text or target and date, the two spaces of
// Profile-Warning, writers, refusals, bounds and truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kWarning = 0x2C;
constexpr uint32_t kProfileWarning = 0x37;
constexpr uint32_t kProfileWarningV4 = 0x44;

// 784111777 seconds: Sun, 06 Nov 1994 08:49:37 GMT.
const Bytes kDate = bytes({0x04, 0x2E, 0xBC, 0x98, 0xA1});
const std::string kDateText = "Sun, 06 Nov 1994 08:49:37 GMT";

DecodeResult warn(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_warning, kWarning, in, out_size, remaining);
}
DecodeResult pwarn(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_profile_warning, kProfileWarning, in, out_size, remaining);
}

void expect_warn_refused(const Bytes &in) {
    DecodeResult r = warn(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}
void expect_pwarn_refused(const Bytes &in) {
    DecodeResult r = pwarn(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

// ---- Warning ------------------------------------------------------------------

TEST(DecodeWarning, BareCodeAsItStands) {
    DecodeResult r = warn(bytes({0x8A}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10\n");
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(warn(bytes({0x80})).text, "warning:0\n");
    EXPECT_EQ(warn(bytes({0xFF})).text, "warning:127\n");
}

TEST(DecodeWarning, CodeAgentAndText) {
    DecodeResult r = warn(short_length(cat({bytes({0x8A}), cstr("ag"), cstr("tx")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10 ag tx\n");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeWarning, QuotedAndQuoteTexts) {
    DecodeResult r = warn(short_length(cat({bytes({0x8B}), cstr("\"ag"), bytes({0x7F, 0xE9}), cstr("t")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:11 \"ag \xE9t\n");
}

TEST(DecodeWarning, LengthQuoteForm) {
    DecodeResult r = warn(quoted_length(cat({bytes({0x8A}), cstr("a"), cstr("t")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10 a t\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeWarning, RepeatedHeadersMergeIntoOneLine) {
    OutBuffer out(128);
    EXPECT_EQ(decode_into(wsp_dec_warning, kWarning, bytes({0x8A}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_warning, kWarning, short_length(cat({bytes({0x8B}), cstr("a"), cstr("t")})), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10,11 a t\n");
}

TEST(DecodeWarning, BareCodeOutputFullPassesTruncatedAndMovesCursor) {
    DecodeResult r = warn(bytes({0x8A}), 8);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeWarning, LengthFormOutputFullPassesTruncatedAndMovesCursor) {
    DecodeResult r = warn(cat({short_length(cat({bytes({0x8A}), cstr("a"), cstr("t")})), bytes({0x80})}), 12);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeWarning, ZeroLengthWritesNothing) {
    DecodeResult r = warn(bytes({0x00, 0x8A}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeWarning, LengthQuoteOfZeroRefused) { expect_warn_refused(bytes({0x1F, 0x00, 0x8A})); }

TEST(DecodeWarning, RemainingOfOneRefused) { expect_warn_refused(bytes({0x01})); }

TEST(DecodeWarning, RemainingZeroRefused) {
    DecodeResult r = warn(bytes({0x8A}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeWarning, OtherFirstClassRefused) {
    expect_warn_refused(cstr("10"));
    expect_warn_refused(cstr("\"10"));
    expect_warn_refused(bytes({0x7F, '1', 0}));
}

TEST(DecodeWarning, FieldRefusals) {
    expect_warn_refused(short_length(cat({cstr("1"), cstr("a"), cstr("t")})));       // code not a Short-integer
    expect_warn_refused(short_length(cat({bytes({0x8A, 0x85}), cstr("t")})));         // agent class 5
    expect_warn_refused(short_length(cat({bytes({0x8A}), cstr("a"), bytes({0x00})}))); // text class 0
    expect_warn_refused(short_length(cat({bytes({0x8A}), cstr("a")})));              // no text
    expect_warn_refused(short_length(cat({bytes({0x8A}), cstr("a"), bytes({'t', 0x01, 0})}))); // bad octet
    expect_warn_refused(bytes({0x04, 0x8A}));                                          // above remaining
}

TEST(DecodeWarning, LengthNotUsedExactlyRefused) {
    expect_warn_refused(cat({bytes({0x07, 0x8A}), cstr("a"), cstr("t"), bytes({0x00, 0x00})}));
    // The text runs over the length.
    expect_warn_refused(cat({bytes({0x04, 0x8A}), cstr("a"), cstr("tt")}));
    // The length equals remaining: the text's NUL is missing.
    expect_warn_refused(bytes({0x05, 0x8A, 'a', 0, 't', 't'}));
}

TEST(DecodeWarning, TextOf197CharactersWritten) {
    // "10" + " " + 100 + " " + 93 = 197.
    std::string agent(100, 'a'), text(93, 't');
    DecodeResult r = warn(quoted_length(cat({bytes({0x8A}), cstr(agent), cstr(text)})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10 " + agent + " " + text + "\n");
}

TEST(DecodeWarning, TextOf198CharactersRefused) {
    expect_warn_refused(quoted_length(cat({bytes({0x8A}), cstr(std::string(100, 'a')), cstr(std::string(94, 't'))})));
}

TEST(DecodeWarning, TruncatedAtEveryLength) {
    const Bytes forms[] = {short_length(cat({bytes({0x8A}), cstr("ag"), cstr("tx")})),
                           quoted_length(cat({bytes({0x8A}), cstr("a"), cstr("t")}))};
    for (const Bytes &full : forms) {
        ASSERT_EQ(warn(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) expect_warn_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
    }
}

// ---- Profile-Warning ------------------------------------------------------------

TEST(DecodeProfileWarning, BareCodesFromTheStatusTable) {
    const struct {
        int octet;
        const char *text;
    } rows[] = {{0x90, "100"}, {0x91, "101"}, {0x92, "102"}, {0xA0, "200"},
                {0xA1, "201"}, {0xA2, "202"}, {0xA3, "203"}};
    for (const auto &row : rows) {
        DecodeResult r = pwarn(bytes({row.octet}));
        EXPECT_EQ(r.status, WSP_OK) << row.text;
        EXPECT_EQ(r.text, std::string("profile-warning:") + row.text + "\n");
        EXPECT_EQ(r.moved, 1);
    }
}

TEST(DecodeProfileWarning, NewerCodeSameName) {
    EXPECT_EQ(decode(wsp_dec_profile_warning, kProfileWarningV4, bytes({0x90})).text, "profile-warning:100\n");
}

TEST(DecodeProfileWarning, BareCodeWithoutRowRefused) {
    expect_pwarn_refused(bytes({0x80}));
    expect_pwarn_refused(bytes({0x93}));
    expect_pwarn_refused(bytes({0xA4}));
    expect_pwarn_refused(bytes({0xFF}));
}

TEST(DecodeProfileWarning, CodeTargetAndDate) {
    DecodeResult r = pwarn(short_length(cat({bytes({0x90}), cstr("tg"), kDate})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:100  tg " + kDateText + "\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeProfileWarning, QuoteTargetDropsTheQuote) {
    DecodeResult r = pwarn(short_length(cat({bytes({0xA0, 0x7F, 0xE9}), cstr("t"), kDate})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:200  \xE9t " + kDateText + "\n");
}

TEST(DecodeProfileWarning, LengthNotComparedAfterTheDate) {
    // The length claims two more octets; the cursor stops after the date.
    DecodeResult r = pwarn(cat({bytes({0x0B, 0x90}), cstr("tg"), kDate, bytes({0x00, 0x00})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:100  tg " + kDateText + "\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeProfileWarning, DateMayLiePastTheLength) {
    // The date is bounded by the input, not by the length.
    DecodeResult r = pwarn(cat({bytes({0x04, 0x90}), cstr("tg"), kDate}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:100  tg " + kDateText + "\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeProfileWarning, LengthQuoteForm) {
    DecodeResult r = pwarn(quoted_length(cat({bytes({0xA3}), cstr("x"), bytes({0x01, 0x00})})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:203  x Thu, 01 Jan 1970 00:00:00 GMT\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeProfileWarning, FieldRefusals) {
    expect_pwarn_refused(short_length(cat({bytes({0x93}), cstr("t"), kDate})));        // code without a row
    expect_pwarn_refused(short_length(cat({cstr("1"), cstr("t"), kDate})));            // code not a Short-integer
    expect_pwarn_refused(short_length(cat({bytes({0x90, 0x85}), kDate})));             // target class 5
    expect_pwarn_refused(short_length(cat({bytes({0x90}), cstr("t"), bytes({0x85})}))); // date class 5
    expect_pwarn_refused(short_length(cat({bytes({0x90}), cstr("t"), cstr("d")})));     // date as text
    expect_pwarn_refused(short_length(cat({bytes({0x90}), cstr("t"), bytes({0x05, 1, 2, 3, 4, 5})}))); // 5 octets
    expect_pwarn_refused(short_length(cat({bytes({0x90}), cstr("t")})));                // no date
}

TEST(DecodeProfileWarning, TargetBoundedByTheLength) {
    expect_pwarn_refused(cat({bytes({0x03, 0x90}), cstr("tgt"), kDate}));
}

TEST(DecodeProfileWarning, DateTruncatedAtTheInputEndRefused) {
    expect_pwarn_refused(cat({bytes({0x08, 0x90}), cstr("t"), bytes({0x04, 0x2E, 0xBC, 0x98})}));
}

TEST(DecodeProfileWarning, ZeroLengthWritesNothing) {
    DecodeResult r = pwarn(bytes({0x00, 0x90}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeProfileWarning, LengthQuoteOfZeroAndRemainingOfOneRefused) {
    expect_pwarn_refused(bytes({0x1F, 0x00, 0x90}));
    expect_pwarn_refused(bytes({0x01}));
    DecodeResult r = pwarn(bytes({0x90}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeProfileWarning, OtherFirstClassRefused) {
    expect_pwarn_refused(cstr("100"));
    expect_pwarn_refused(cstr("\"100"));
    expect_pwarn_refused(bytes({0x7F, '1', 0}));
}

TEST(DecodeProfileWarning, EachHeaderGetsItsOwnLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_profile_warning, kProfileWarning, bytes({0x90}), out).status, WSP_OK);
    DecodeResult r = decode_into(wsp_dec_profile_warning, kProfileWarning, bytes({0xA0}), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:100\nprofile-warning:200\n");
}

TEST(DecodeProfileWarning, BareCodeOutputFullLeavesCursor) {
    // "profile-warning:100\n" is 20 octets.
    DecodeResult r = pwarn(bytes({0x90}), 19);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    DecodeResult fits = pwarn(bytes({0x90}), 20);
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.text, "profile-warning:100\n");
}

TEST(DecodeProfileWarning, LengthFormOutputFullStillMovesCursor) {
    DecodeResult r = pwarn(short_length(cat({bytes({0x90}), cstr("tg"), kDate})), 30);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeProfileWarning, TextOf197CharactersWritten) {
    // "100" + 2 spaces + 162 + 1 space + 29 = 197.
    std::string target(162, 't');
    DecodeResult r = pwarn(quoted_length(cat({bytes({0x90}), cstr(target), kDate})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "profile-warning:100  " + target + " " + kDateText + "\n");
}

TEST(DecodeProfileWarning, TextOf198CharactersRefused) {
    expect_pwarn_refused(quoted_length(cat({bytes({0x90}), cstr(std::string(163, 't')), kDate})));
}

TEST(DecodeProfileWarning, TruncatedAtEveryLength) {
    const Bytes full = short_length(cat({bytes({0x90}), cstr("tg"), kDate}));
    ASSERT_EQ(pwarn(full).status, WSP_OK);
    for (size_t n = 0; n < full.size(); ++n) expect_pwarn_refused(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
}

TEST(DecodeWarning, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_warning, 0x48, bytes({0x8A})).status, WSP_ERR_FAIL);
}

TEST(DecodeProfileWarning, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_profile_warning, 0x48, bytes({0x90})).status, WSP_ERR_FAIL);
}

TEST(DecodeWarning, BlockWritesBareCode) {
    DecodeResult r = decode_block(bytes({0xAC, 0x8A}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "warning:10\n");
}

} // namespace
