// Credentials (Authorization, Proxy-Authorization) and challenges
// (Proxy-Authenticate, WWW-Authenticate): the basic forms, scheme tokens
// with parameters, the text layouts, writers, refusals, bounds and
// truncated values.
#include <gtest/gtest.h>

#include <string>

#include "unit_support.h"

namespace {

using namespace wsp_test;

constexpr uint32_t kAuthorization = 0x07;
constexpr uint32_t kProxyAuthorization = 0x21;
constexpr uint32_t kProxyAuthenticate = 0x20;
constexpr uint32_t kWwwAuthenticate = 0x2D;

DecodeResult cred(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_credentials, kAuthorization, in, out_size, remaining);
}
DecodeResult chal(const Bytes &in, uint16_t out_size = 512, int remaining = -1) {
    return decode(wsp_dec_challenge, kWwwAuthenticate, in, out_size, remaining);
}

void expect_cred_refused(const Bytes &in) {
    DecodeResult r = cred(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}
void expect_chal_refused(const Bytes &in) {
    DecodeResult r = chal(in);
    EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
    EXPECT_EQ(r.moved, 0) << hex(in);
    EXPECT_EQ(r.text, "") << hex(in);
}

Bytes basic_cred(const std::string &user, const std::string &password) {
    return cat({bytes({0x80}), cstr(user), cstr(password)});
}

// ---- credentials ------------------------------------------------------------

TEST(DecodeCredentials, Basic) {
    DecodeResult r = cred(short_length(basic_cred("usr", "pw")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:basic usr : pw\n");
    EXPECT_EQ(r.moved, 9);
}

TEST(DecodeCredentials, ProxyAuthorizationName) {
    DecodeResult r = decode(wsp_dec_credentials, kProxyAuthorization, short_length(basic_cred("a", "b")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "proxy-authorization:basic a : b\n");
}

TEST(DecodeCredentials, QuotedUserKeepsItsQuote) {
    DecodeResult r = cred(short_length(basic_cred("\"usr", "\"pw")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:basic \"usr : \"pw\n");
}

TEST(DecodeCredentials, EmptyPasswordIsNoText) {
    // A NUL as the first octet is of class 0, not a text.
    expect_cred_refused(short_length(cat({bytes({0x80}), cstr("u"), cstr("")})));
}

TEST(DecodeCredentials, UserAndPasswordMustBeTokenOrQuotedText) {
    expect_cred_refused(short_length(cat({bytes({0x80, 0x7F}), cstr("u"), cstr("p")})));
    expect_cred_refused(short_length(cat({bytes({0x80, 0x81}), cstr("p")})));
    expect_cred_refused(short_length(cat({bytes({0x80}), cstr("u"), bytes({0x7F}), cstr("p")})));
    expect_cred_refused(short_length(cat({bytes({0x80}), cstr("u"), bytes({0x85})})));
}

TEST(DecodeCredentials, SchemeCodeOtherThanBasicRefused) {
    expect_cred_refused(short_length(cat({bytes({0x81}), cstr("u"), cstr("p")})));
}

TEST(DecodeCredentials, LengthUsedUpBeforeAFieldRefused) {
    expect_cred_refused(bytes({0x01, 0x80}));
    expect_cred_refused(short_length(cat({bytes({0x80}), cstr("usr")})));
    // The user is bounded by the length: a user running over it fails.
    expect_cred_refused(cat({bytes({0x03, 0x80}), cstr("usr"), cstr("pw")}));
}

TEST(DecodeCredentials, PasswordRunningOverTheLengthRefused) {
    // The password is read up to the header's end and then fails the
    // length count.
    expect_cred_refused(cat({bytes({0x05, 0x80}), cstr("u"), cstr("pw")}));
    expect_cred_refused(cat({bytes({0x05, 0x80}), cstr("u"), cstr("pw"), bytes({0x80})}));
}

TEST(DecodeCredentials, LengthLongerThanTheFieldsRefused) {
    expect_cred_refused(cat({bytes({0x09}), basic_cred("usr", "pw"), bytes({0x00})}));
}

TEST(DecodeCredentials, PasswordUnterminatedAtTheInputEndRefused) {
    // The length equals remaining, the password's NUL is missing: nothing
    // past the input is read.
    expect_cred_refused(bytes({0x07, 0x80, 'u', 0, 'p', 'w', 'x'}));
}

TEST(DecodeCredentials, SchemeToken) {
    DecodeResult r = cred(short_length(cstr("Digest")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:Digest\n");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeCredentials, SchemeTokenWithParameters) {
    DecodeResult r = cred(short_length(cat({cstr("x"), cstr("a"), bytes({0x85}), cstr("b"), cstr("c")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:x a=5,b=c\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeCredentials, SchemeTokenWithTypedParameter) {
    // 0x85: "name", a text value.
    DecodeResult r = cred(short_length(cat({cstr("x"), bytes({0x85}), cstr("n")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:x name=n\n");
}

TEST(DecodeCredentials, SchemeTokenRefusals) {
    expect_cred_refused(cat({bytes({0x02}), cstr("abc")}));           // over the length
    expect_cred_refused(short_length(cstr("a/b")));                   // a separator
    expect_cred_refused(short_length(cat({cstr("x"), bytes({0x84, 0x00})}))); // parameter 0x04
    expect_cred_refused(short_length(cat({cstr("x"), bytes({0x01})})));       // bad parameter class
}

TEST(DecodeCredentials, ParameterRunPastTheInputRefused) {
    expect_cred_refused(cat({bytes({0x06}), cstr("x"), cstr("a"), bytes({0x85})}));
}

TEST(DecodeCredentials, OtherClassInsideRefused) {
    expect_cred_refused(bytes({0x02, 0x01, 0x02}));
    expect_cred_refused(short_length(cstr("\"q")));
    expect_cred_refused(short_length(bytes({0x7F, 'q', 0})));
    expect_cred_refused(bytes({0x02, 0x1F, 0x00}));
}

TEST(DecodeCredentials, FirstOctetMustStartALength) {
    expect_cred_refused(bytes({0x80}));
    expect_cred_refused(cstr("basic"));
    expect_cred_refused(cstr("\"x"));
    DecodeResult r = cred(bytes({0x01, 0x80}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeCredentials, ZeroLengthWritesNothing) {
    DecodeResult r = cred(bytes({0x00, 0x80}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeCredentials, ShortLengthAboveRemainingRefused) { expect_cred_refused(bytes({0x04, 0x80, 'u', 0})); }

TEST(DecodeCredentials, LengthQuoteForm) {
    DecodeResult r = cred(quoted_length(basic_cred("usr", "pw")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:basic usr : pw\n");
    EXPECT_EQ(r.moved, 10);
}

TEST(DecodeCredentials, EachHeaderGetsItsOwnLine) {
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_credentials, kAuthorization, short_length(basic_cred("a", "b")), out).status,
              WSP_OK);
    DecodeResult r = decode_into(wsp_dec_credentials, kAuthorization, short_length(basic_cred("c", "d")), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:basic a : b\nauthorization:basic c : d\n");
}

TEST(DecodeCredentials, OutputFullRefusedWithCursorUnchanged) {
    // "authorization:basic a : b\n" is 26 octets.
    DecodeResult r = cred(short_length(basic_cred("a", "b")), 25);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    DecodeResult fits = cred(short_length(basic_cred("a", "b")), 26);
    EXPECT_EQ(fits.status, WSP_OK);
    EXPECT_EQ(fits.moved, 6);
    EXPECT_EQ(fits.text, "authorization:basic a : b\n");
}

TEST(DecodeCredentials, TextOf197CharactersWritten) {
    // "basic " + 100 + " : " + 88 = 197.
    std::string user(100, 'u'), password(88, 'p');
    DecodeResult r = cred(quoted_length(basic_cred(user, password)));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "authorization:basic " + user + " : " + password + "\n");
}

TEST(DecodeCredentials, TextOf198CharactersRefused) {
    expect_cred_refused(quoted_length(basic_cred(std::string(100, 'u'), std::string(89, 'p'))));
}

TEST(DecodeCredentials, TruncatedAtEveryLength) {
    const Bytes forms[] = {
        short_length(basic_cred("usr", "pw")),
        quoted_length(basic_cred("usr", "pw")),
        short_length(cat({cstr("x"), cstr("a"), bytes({0x85})})),
    };
    for (const Bytes &full : forms) {
        ASSERT_EQ(cred(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) {
            Bytes part(full.begin(), full.begin() + static_cast<long>(n));
            DecodeResult r = cred(part);
            EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(part);
            EXPECT_EQ(r.moved, 0) << hex(part);
            EXPECT_EQ(r.text, "") << hex(part);
        }
    }
}

// ---- challenges ---------------------------------------------------------------

TEST(DecodeChallenge, Basic) {
    DecodeResult r = chal(short_length(cat({bytes({0x80}), cstr("home")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"home\"\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeChallenge, ProxyAuthenticateName) {
    DecodeResult r = decode(wsp_dec_challenge, kProxyAuthenticate, short_length(cat({bytes({0x80}), cstr("r")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "proxy-authenticate:basic realm = \"r\"\n");
}

TEST(DecodeChallenge, QuotedRealmKeepsItsQuote) {
    DecodeResult r = chal(short_length(cat({bytes({0x80}), cstr("\"home")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"\"home\"\n");
}

TEST(DecodeChallenge, RealmAfterQuoteOctet) {
    DecodeResult r = chal(short_length(bytes({0x80, 0x7F, 0xE9, 'x', 0})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"\xE9x\"\n");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeChallenge, BasicLengthNotComparedWithTheRealm) {
    // The basic form stops after the realm: the cursor is not moved to the
    // length's end.
    DecodeResult r = chal(cat({bytes({0x08, 0x80}), cstr("home"), bytes({0x00, 0x00})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"home\"\n");
    EXPECT_EQ(r.moved, 7);
}

TEST(DecodeChallenge, BasicRefusals) {
    expect_chal_refused(short_length(cat({bytes({0x81}), cstr("r")})));       // not basic
    expect_chal_refused(short_length(bytes({0x80, 0x85})));                    // realm class 5
    expect_chal_refused(short_length(bytes({0x80, 0x00})));                    // realm class 0
    expect_chal_refused(cat({bytes({0x01, 0x80}), cstr("r")}));               // realm past the length
    expect_chal_refused(bytes({0x01, 0x80}));                                  // no realm
    expect_chal_refused(cat({bytes({0x03, 0x80}), cstr("abc")}));             // realm over the length
    expect_chal_refused(bytes({0x05, 0x80, 'a', 'b', 'c', 'd'}));             // unterminated at the end
}

TEST(DecodeChallenge, SchemeTokenWithRealm) {
    DecodeResult r = chal(short_length(cat({cstr("Digest"), cstr("ho")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:Digest realm = \"ho\"\n");
    EXPECT_EQ(r.moved, 11);
}

TEST(DecodeChallenge, SchemeTokenWithRealmAndParameters) {
    DecodeResult r = chal(short_length(cat({cstr("x"), cstr("r"), cstr("a"), bytes({0x85}), cstr("b"), cstr("c")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:x realm = \"r\",a=5,b=c\n");
    EXPECT_EQ(r.moved, 12);
}

TEST(DecodeChallenge, SchemeTokenRefusals) {
    expect_chal_refused(cat({bytes({0x02}), cstr("abc"), cstr("r")}));         // over the length
    expect_chal_refused(short_length(cstr("x")));                              // no realm
    expect_chal_refused(short_length(cat({cstr("x"), bytes({0x85})})));        // realm class 5
    expect_chal_refused(short_length(cat({cstr("x"), cstr("r"), bytes({0x84, 0x00})}))); // parameter 0x04
}

TEST(DecodeChallenge, ParameterRunPastTheInputRefused) {
    expect_chal_refused(cat({bytes({0x07}), cstr("x"), cstr("r"), cstr("a")}));
}

TEST(DecodeChallenge, OtherClassInsideRefused) {
    expect_chal_refused(bytes({0x02, 0x01, 0x02}));
    expect_chal_refused(short_length(cat({cstr("\"q"), cstr("r")})));
    expect_chal_refused(short_length(cat({bytes({0x7F}), cstr("q"), cstr("r")})));
}

TEST(DecodeChallenge, FirstOctetMustStartALength) {
    expect_chal_refused(bytes({0x80}));
    expect_chal_refused(cstr("basic"));
    DecodeResult r = chal(bytes({0x01, 0x80}), 512, 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeChallenge, ZeroLengthWritesNothing) {
    DecodeResult r = chal(bytes({0x00}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeChallenge, LengthQuoteForm) {
    DecodeResult r = chal(quoted_length(cat({bytes({0x80}), cstr("home")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.moved, 8);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"home\"\n");
}

TEST(DecodeChallenge, WwwAuthenticateNeverMerges) {
    // The name from the table is lower case, so the merging writer (kept
    // for "WWW-Authenticate" spelt so) is never chosen.
    OutBuffer out(256);
    EXPECT_EQ(decode_into(wsp_dec_challenge, kWwwAuthenticate, short_length(cat({bytes({0x80}), cstr("a")})), out)
                  .status,
              WSP_OK);
    DecodeResult r = decode_into(wsp_dec_challenge, kWwwAuthenticate, short_length(cat({cstr("x"), cstr("b")})), out);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"a\"\nwww-authenticate:x realm = \"b\"\n");
}

TEST(DecodeChallenge, BasicFormOutputFullLeavesCursor) {
    DecodeResult r = chal(short_length(cat({bytes({0x80}), cstr("r")})), 20);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeChallenge, TokenFormOutputFullStillMovesCursor) {
    // The token form moves the cursor before it writes.
    DecodeResult r = chal(short_length(cat({cstr("x"), cstr("r")})), 20);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeChallenge, TextOf197CharactersWritten) {
    // "basic realm = \"" is 15 characters, the closing quote one more.
    std::string realm(181, 'r');
    DecodeResult r = chal(quoted_length(cat({bytes({0x80}), cstr(realm)})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:basic realm = \"" + realm + "\"\n");
}

TEST(DecodeChallenge, TextOf198CharactersRefused) {
    expect_chal_refused(quoted_length(cat({bytes({0x80}), cstr(std::string(182, 'r'))})));
    // Token form: scheme, " realm = \"", realm, "\"": 185 + 11 + 2 = 198.
    expect_chal_refused(quoted_length(cat({cstr(std::string(185, 's')), cstr(std::string(2, 'r'))})));
}

TEST(DecodeChallenge, TokenFormTextOf197CharactersWritten) {
    std::string scheme(184, 's');
    DecodeResult r = chal(quoted_length(cat({cstr(scheme), cstr("rr")})));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "www-authenticate:" + scheme + " realm = \"rr\"\n");
}

TEST(DecodeChallenge, TruncatedAtEveryLength) {
    const Bytes forms[] = {
        short_length(cat({bytes({0x80}), cstr("home")})),
        short_length(cat({cstr("x"), cstr("r"), cstr("a"), bytes({0x85})})),
        quoted_length(cat({cstr("x"), cstr("r")})),
    };
    for (const Bytes &full : forms) {
        ASSERT_EQ(chal(full).status, WSP_OK) << hex(full);
        for (size_t n = 0; n < full.size(); ++n) {
            Bytes part(full.begin(), full.begin() + static_cast<long>(n));
            DecodeResult r = chal(part);
            EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(part);
            EXPECT_EQ(r.moved, 0) << hex(part);
            EXPECT_EQ(r.text, "") << hex(part);
        }
    }
}

TEST(DecodeCredentials, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_credentials, 0x48, short_length(basic_cred("a", "b"))).status, WSP_ERR_FAIL);
}

TEST(DecodeChallenge, CodePastTheNameTableRefused) {
    EXPECT_EQ(decode(wsp_dec_challenge, 0x48, short_length(cat({bytes({0x80}), cstr("r")}))).status, WSP_ERR_FAIL);
}

} // namespace
