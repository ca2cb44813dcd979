// The date headers (Date, Expires, If-Modified-Since, If-Unmodified-Since,
// Last-Modified, X-Wap-Tod) and If-Range, driven through wsp_enc_hdr.  The
// handset's local time is UTC here (the tests run with TZ=UTC).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api_support.h"
#include "tarnwspencdec.h"

using namespace api_encode;
using wsp_test::hex;
using wsp_test::OutBuffer;

namespace {

// ===================================================================
// Dates: Date, Expires, If-Modified-Since, If-Unmodified-Since,
// Last-Modified, X-Wap-Tod, If-Range
// ===================================================================

TEST(ApiEncodeDates, Rfc1123Form) {
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 GMT"), "OK 92 04 2E BC 98 A1");
    EXPECT_EQ(enc("If-Modified-Since: Fri, 31 Dec 1999 23:59:59 GMT"), "OK 97 04 38 6D 43 7F");
    EXPECT_EQ(enc("If-Unmodified-Since: Sun, 02 Jan 2005 03:04:05 GMT"), "OK 9B 04 41 D7 64 A5");
}

TEST(ApiEncodeDates, AsctimeForm) {
    EXPECT_EQ(enc("Last-Modified: Sun Nov  6 08:49:37 1994"), "OK 9D 04 2E BC 98 A1");
}

TEST(ApiEncodeDates, Rfc850FormIsAccepted) {
    // The two-digit year is taken as written; the value it then carries is
    // not part of the contract, only its Long-integer form.
    std::string r = enc("Expires: Sunday, 06-Nov-94 08:49:37 GMT");
    ASSERT_EQ(r.substr(0, 6), "OK 94 ");
    const std::string octets = r.substr(6);
    const unsigned n = static_cast<unsigned>(std::stoul(octets.substr(0, 2), nullptr, 16));
    EXPECT_GE(n, 1u);
    EXPECT_LE(n, 4u);
    EXPECT_EQ(octets.size(), 2 + 3 * n);
}

TEST(ApiEncodeDates, YearRangeOf1123AndAsctime) {
    EXPECT_EQ(enc("Date: Thu, 01 Jan 1970 00:00:00 GMT"), "OK 92 01 00");
    EXPECT_EQ(enc("Date: Tue, 31 Dec 2069 23:59:59 GMT"), "OK 92 04 BC 19 13 7F");
    EXPECT_EQ(enc("Date: Sun, 06 Nov 2070 08:49:37 GMT"), kFail);
    EXPECT_EQ(enc("Date: Wed, 31 Dec 1969 23:59:59 GMT"), kFail);
    EXPECT_EQ(enc("Date: Sun Nov  6 08:49:37 2070"), kFail);
}

TEST(ApiEncodeDates, TrailingGmtIsOptional) {
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37"), "OK 92 04 2E BC 98 A1");
}

TEST(ApiEncodeDates, SurplusOrWrongTrailingWordFails) {
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 GMT x"), kFail);
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 UTC"), kFail);
    EXPECT_EQ(enc("Date: Sunday, 06-Nov-94 08:49:37 GMT x"), kFail);
    EXPECT_EQ(enc("Date: Sun Nov  6 08:49:37 1994 GMT"), kFail);
}

TEST(ApiEncodeDates, UnknownDayOrMonthFails) {
    EXPECT_EQ(enc("Date: Sunday 06 Nov 1994 08:49:37 GMT"), kFail);
    EXPECT_EQ(enc("Date: Sux, 06 Nov 1994 08:49:37 GMT"), kFail);
    EXPECT_EQ(enc("Date: Sun, 06 Nox 1994 08:49:37 GMT"), kFail);
    EXPECT_EQ(enc("Date: Sun Nox  6 08:49:37 1994"), kFail);
    EXPECT_EQ(enc("Date: Sunday, 06-Nox-94 08:49:37 GMT"), kFail);
}

TEST(ApiEncodeDates, TimeParts) {
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37:00 GMT"), kFail);
    // A missing second stays 0.
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49 GMT"), "OK 92 04 2E BC 98 7C");
}

TEST(ApiEncodeDates, Rfc850FourthDatePartFails) {
    EXPECT_EQ(enc("Date: Sunday, 06-Nov-94-1 08:49:37 GMT"), kFail);
}

TEST(ApiEncodeDates, XWapTodFrom13) {
    EXPECT_EQ(enc("X-Wap-Tod: Sun, 06 Nov 1994 08:49:37 GMT", "1.3"), "OK BF 04 2E BC 98 A1");
    EXPECT_EQ(enc("X-Wap-Tod: Sun, 06 Nov 1994 08:49:37 GMT", "1.2"),
              "OK " + app("x-wap-tod", " Sun, 06 Nov 1994 08:49:37 GMT"));
}

TEST(ApiEncodeDates, DateRoom) {
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 GMT", "1.4", 6), "OK 92 04 2E BC 98 A1");
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 GMT", "1.4", 5), kFail);
    EXPECT_EQ(enc("Date: Sun, 06 Nov 1994 08:49:37 GMT", "1.4", 1), kFail);
}

TEST(ApiEncodeDates, IfRangeDateOrEntityTag) {
    EXPECT_EQ(enc("If-Range:Sun, 06 Nov 1994 08:49:37 GMT"), "OK 9A 04 2E BC 98 A1");
    EXPECT_EQ(enc("If-Range: \"ABC\""), "OK 9A " + tz("\"abc\""));
}

TEST(ApiEncodeDates, IfRangeLooksAtTheValueAsItStands) {
    // The day-name test sees the leading blank, so this value is sent as a
    // (lower-cased) Text-string rather than a date.
    EXPECT_EQ(enc("If-Range: Sun, 06 Nov 1994 08:49:37 GMT"), "OK 9A " + tz("sun, 06 nov 1994 08:49:37 gmt"));
}

} // namespace
