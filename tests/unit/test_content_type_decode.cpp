// Content-type values to text (exported wsp_decode_content).
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "decode/decode.h"
#include "wsp_test_support.h"

using namespace wsp_test;

namespace {

// The output: exactly 151 heap octets, the least a caller may hand in.
constexpr size_t kOutSize = 151;

struct Result {
    int status;
    std::string text;
    long moved;
};

Result decode(const Bytes &in, int avail = -1, const char *before = "junk") {
    InBytes copy(in);
    const uint8_t *p = copy.data();
    char *out = static_cast<char *>(std::calloc(kOutSize, 1));
    std::strcpy(out, before);
    uint16_t a = avail < 0 ? copy.size() : static_cast<uint16_t>(avail);
    int status = wsp_decode_content(&p, out, a);
    Result r{status, std::string(out, strnlen(out, kOutSize)), p - copy.data()};
    std::free(out);
    return r;
}

// A general-form value: Value-length (short or quoted) then body.
Bytes general(const Bytes &body) {
    if (body.size() <= 30) return cat({bytes({static_cast<int>(body.size())}), body});
    uint32_t n = static_cast<uint32_t>(body.size());
    Bytes len;
    if (n < 128) {
        len = bytes({0x1F, static_cast<int>(n)});
    } else {
        len = bytes({0x1F, static_cast<int>(0x80 | (n >> 7)), static_cast<int>(n & 0x7F)});
    }
    return cat({len, body});
}

} // namespace

TEST(DecodeContent, NullArgumentsFail) {
    const uint8_t one = 0x83;
    const uint8_t *p = &one;
    char out[152] = {};
    EXPECT_EQ(wsp_decode_content(nullptr, out, 1), WSP_ERR_FAIL);
    EXPECT_EQ(wsp_decode_content(&p, nullptr, 1), WSP_ERR_FAIL);
    const uint8_t *none = nullptr;
    EXPECT_EQ(wsp_decode_content(&none, out, 1), WSP_ERR_FAIL);
    EXPECT_EQ(p, &one);
}

TEST(DecodeContent, NothingAvailableFails) {
    Result r = decode(bytes({0x83}), 0);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.text, "junk");
    EXPECT_EQ(r.moved, 0);
}

// ---- constrained forms ---------------------------------------------------------

TEST(DecodeContent, WellKnownCode) {
    Result r = decode(bytes({0x83, 0x99}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain");
    EXPECT_EQ(r.moved, 1);
    EXPECT_EQ(decode(bytes({0x80})).text, "*/*");
    EXPECT_EQ(decode(bytes({0xB8})).text, "application/vnd.wap.hashed-certifiate");
    EXPECT_EQ(decode(bytes({0xBF})).text, "application/vnd.wap.rollover-certificate");
}

TEST(DecodeContent, CodesAbove63SearchedByCode) {
    EXPECT_EQ(decode(bytes({0xC2})).text, "application/vnd.syncml.dm+wbxml");
    EXPECT_EQ(decode(bytes({0xC3})).text, "application/vnd.syncml.dm+xml");
    EXPECT_EQ(decode(bytes({0xC4})).text, "application/vnd.syncml.notification");
    EXPECT_EQ(decode(bytes({0xCA})).text, "application/vnd.oma.drm.rights+xml");
    EXPECT_EQ(decode(bytes({0xCB})).text, "application/vnd.oma.drm.rights+wbxml");
}

TEST(DecodeContent, UncodedValuesUpTo81LeaveOutputUntouched) {
    for (int v : {64, 65, 69, 70, 73, 76, 81}) {
        Result r = decode(bytes({0x80 | v}));
        EXPECT_EQ(r.status, WSP_OK) << v;
        EXPECT_EQ(r.text, "junk") << v;
        EXPECT_EQ(r.moved, 1);
    }
}

TEST(DecodeContent, CodesAbove81Refused) {
    for (int v : {82, 100, 127}) {
        Result r = decode(bytes({0x80 | v}));
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << v;
        EXPECT_EQ(r.moved, 0);
    }
}

TEST(DecodeContent, MediaText) {
    Result r = decode(cat({cstr("text/x-foo"), bytes({0x99})}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/x-foo");
    EXPECT_EQ(r.moved, 11);
}

TEST(DecodeContent, MediaTextCapacity150) {
    Result ok = decode(cstr(std::string(149, 'm')));
    EXPECT_EQ(ok.status, WSP_OK);
    EXPECT_EQ(ok.text, std::string(149, 'm'));
    EXPECT_EQ(ok.moved, 150);
    Result too_long = decode(cstr(std::string(150, 'm')));
    EXPECT_EQ(too_long.status, WSP_ERR_FAIL);
    EXPECT_EQ(too_long.moved, 0);
}

TEST(DecodeContent, MediaTextMustEndBeforeAvail) {
    Result r = decode(cstr("text/x"), 6);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = decode(bytes({'a', 0x01, 0}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
}

TEST(DecodeContent, QuotedFormsRefused) {
    EXPECT_EQ(decode(bytes({0x7F, 0xE9, 0})).status, WSP_ERR_FAIL);
    Result r = decode(cstr("\"text/x"));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

// ---- general form ----------------------------------------------------------------------

TEST(DecodeContent, ZeroLengthGivesEmptyText) {
    Result r = decode(bytes({0x00, 0x83}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 1);
}

TEST(DecodeContent, GeneralShortIntegerIndexesDirectly) {
    Result r = decode(bytes({0x01, 0xC2}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "application/vnd.syncml.notification");
    EXPECT_EQ(r.moved, 2);
    EXPECT_EQ(decode(bytes({0x01, 0xD1})).text, "application/vnd.omaloc-supl-init");
    EXPECT_EQ(decode(bytes({0x01, 0xD2})).status, WSP_ERR_FAIL);
}

TEST(DecodeContent, GeneralLongIntegerCode) {
    Result r = decode(bytes({0x03, 0x02, 0x03, 0x12}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "application/vnd.omaloc-supl-init");
    EXPECT_EQ(r.moved, 4);
    EXPECT_EQ(decode(bytes({0x02, 0x01, 0x7F})).text, "application/x-agps");
    EXPECT_EQ(decode(bytes({0x03, 0x02, 0x02, 0x01})).text, "application/vnd.uplanet.cacheop-wbxml");
    EXPECT_EQ(decode(bytes({0x02, 0x01, 0x03})).text, "text/plain");
}

TEST(DecodeContent, GeneralLongIntegerWithoutRowFails) {
    Result r = decode(bytes({0x03, 0x02, 0x01, 0x00}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    EXPECT_EQ(decode(bytes({0x02, 0x01, 0x40})).status, WSP_ERR_FAIL);
}

TEST(DecodeContent, GeneralMediaText) {
    Result r = decode(general(cstr("text/x")));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/x");
    EXPECT_EQ(r.moved, 8);
}

TEST(DecodeContent, GeneralOtherMediaClassesRefused) {
    for (const Bytes &in : {bytes({0x02, 0x1F, 0x00}), bytes({0x03, 0x7F, 'a', 0}), bytes({0x03, '"', 'a', 0})}) {
        Result r = decode(in);
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << hex(in);
        EXPECT_EQ(r.moved, 0);
    }
}

TEST(DecodeContent, CharsetParameter) {
    Result r = decode(bytes({0x03, 0x83, 0x81, 0xEA, 0x99}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8");
    EXPECT_EQ(r.moved, 4);
    EXPECT_EQ(decode(bytes({0x03, 0x83, 0x81, 0x80})).text, "text/plain;charset=unknown-charset");
}

TEST(DecodeContent, SeveralParameters) {
    Result r = decode(bytes({0x05, 0x83, 0x81, 0xEA, 0x82, 0x90}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8;level=1.0");
    EXPECT_EQ(r.moved, 6);
}

TEST(DecodeContent, MultipartRelatedWithTypeAndStart) {
    Bytes body = cat({bytes({0xB3, 0x89, 0xA9}), bytes({0x8A}), cstr("<a@b>")});
    Result r = decode(general(body));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "application/vnd.wap.multipart.related;type=application/vnd.wap.wbxml;start=<a@b>");
    EXPECT_EQ(r.moved, 1 + static_cast<long>(body.size()));
}

TEST(DecodeContent, LengthQuoteForm) {
    Result r = decode(bytes({0x1F, 0x03, 0x83, 0x81, 0xEA}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8");
    EXPECT_EQ(r.moved, 5);
}

TEST(DecodeContent, LengthQuoteFailures) {
    EXPECT_EQ(decode(bytes({0x1F})).status, WSP_ERR_FAIL);             // no uintvar
    EXPECT_EQ(decode(bytes({0x1F, 0x80, 0x01, 0x83})).status, WSP_ERR_FAIL); // leading 0x80
    EXPECT_EQ(decode(bytes({0x1F, 0x00, 0x83})).status, WSP_ERR_FAIL);  // length 0: media cannot fit
    Result r = decode(bytes({0x1F, 0x81}));                              // uintvar cut by the end
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
}

TEST(DecodeContent, ValueLengthPastAvailIsRefused) {
    Result r = decode(bytes({0x05, 0x83, 0x81, 0xEA}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    r = decode(bytes({0x03, 0x83, 0x81, 0xEA}), 3);
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(decode(bytes({0x1F, 0x04, 0x83, 0x81, 0xEA})).status, WSP_ERR_FAIL);
}

TEST(DecodeContent, MediaLongerThanValueLengthFails) {
    Result r = decode(cat({bytes({0x02}), cstr("abc")}));
    EXPECT_EQ(r.status, WSP_ERR_FAIL);
    EXPECT_EQ(r.moved, 0);
    // A Long-integer whose length octet equals the value length.
    EXPECT_EQ(decode(bytes({0x01, 0x01, 0x7F})).status, WSP_ERR_FAIL);
    EXPECT_EQ(decode(bytes({0x02, 0x02, 0x03, 0x12})).status, WSP_ERR_FAIL);
}

TEST(DecodeContent, BrokenParameterEmptiesTextAndSkipsValue) {
    Result r = decode(bytes({0x04, 0x83, 0x84, 0x00, 0x00, 0x99}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 5);
    // A parameter whose value runs past the value length.
    r = decode(bytes({0x03, 0x83, 0x81, 0x02, 0x03, 0xEC}));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, 4);
}

TEST(DecodeContent, GeneralMediaTextOf149IsDroppedWithValue) {
    Bytes body = cat({cstr(std::string(149, 'm')), bytes({0x81, 0xEA})});
    Bytes in = cat({general(body), bytes({0x99})});
    Result r = decode(in);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.moved, static_cast<long>(in.size()) - 1);
}

TEST(DecodeContent, GeneralMediaTextOf148IsKept) {
    Bytes body = cstr(std::string(148, 'm'));
    Result r = decode(general(body));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string(148, 'm'));
}

TEST(DecodeContent, ParameterPastCapacityEmptiesText) {
    // 147 + ";" + "x" + 1 reaches 150: the parameter is refused, the text
    // goes, the header stays.  All writes stay inside 151 octets.
    Bytes body = cat({cstr(std::string(147, 'm')), cstr("x"), bytes({0x00})});
    Result r = decode(general(body));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "");
    Bytes body2 = cat({cstr(std::string(146, 'm')), cstr("x"), bytes({0x00})});
    r = decode(general(body2));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, std::string(146, 'm') + ";x");
}

TEST(DecodeContent, TruncatedParameterNameIsReturned) {
    Bytes body = cat({bytes({0x83}), cstr(std::string(200, 'n')), bytes({0x00})});
    Bytes in = general(body);
    Result r = decode(in);
    EXPECT_EQ(r.status, WSP_ERR_TRUNCATED);
    // The cursor is left where the parameters began.
    EXPECT_EQ(r.moved, static_cast<long>(in.size() - body.size()) + 1);
}

TEST(DecodeContent, UntypedParameters) {
    Bytes body = cat({bytes({0x83}), cstr("x"), bytes({0x85}), cstr("y"), cstr("\"a b")});
    Result r = decode(general(body));
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;x=5;y=\"a b\"");
}

TEST(DecodeContent, CutAtEveryLength) {
    Bytes full = bytes({0x05, 0x83, 0x81, 0xEA, 0x82, 0x90});
    for (size_t n = 0; n < full.size(); ++n) {
        Result r = decode(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0) << n;
    }
    Result r = decode(full);
    EXPECT_EQ(r.status, WSP_OK);
    EXPECT_EQ(r.text, "text/plain;charset=utf-8;level=1.0");
}

TEST(DecodeContent, MediaTextCutAtEveryLength) {
    Bytes full = cstr("text/x");
    for (size_t n = 0; n < full.size(); ++n) {
        Result r = decode(Bytes(full.begin(), full.begin() + static_cast<long>(n)));
        EXPECT_EQ(r.status, WSP_ERR_FAIL) << n;
        EXPECT_EQ(r.moved, 0) << n;
    }
}
