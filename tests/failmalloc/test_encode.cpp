// Header block and content-type encoding with each allocation failing in
// turn: request headers whose values are long enough that the encoders
// build them on the heap (Accept lists with parameters, credentials,
// dispositions, a long Encoding-Version text), and a long content-type
// text.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "failmalloc_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace failmalloc;

namespace {

std::string repeat(const std::string &s, size_t n) {
    std::string out;
    for (size_t i = 0; i < n; ++i) out += s;
    return out;
}

// A browser's request as a handset sends it, with a few long values, one
// header per line.
std::vector<std::string> request_lines() {
    return {
        "Accept: text/vnd.wap.wml;q=1.0, application/vnd.wap.wmlc;q=0.9, application/vnd.wap.xhtml+xml;q=0.9, "
        "application/xhtml+xml;q=0.8, text/html;q=0.7, image/gif, image/jpeg;q=0.6, image/png;q=0.6, "
        "image/vnd.wap.wbmp;q=0.5, audio/amr;q=0.3, application/vnd.oma.dd+xml;q=0.5, "
        "application/vnd.oma.drm.message;q=0.4, */*;q=0.1",
        "Accept-Language: en-gb, en;q=0.8, fr;q=0.5",
        "User-Agent: ExampleHandset/2.0 (Series60) Browser/7.1",
        "Host: wap.example.com",
        "Authorization: Basic alice:" + repeat("c2VjcmV0", 36),
        "Content-Disposition: attachment; filename=\"" + repeat("report-", 40) + "2026.pdf\"",
        "Encoding-Version: 1 1.2-" + repeat("gateway-compat-", 5) + "build",
        "Cache-Control: no-cache",
        "X-Forwarded-For: 192.0.2.17",
    };
}

std::string joined(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) text += line + "\n";
    return text;
}

constexpr uint16_t kOutSize = 2048;
constexpr uint16_t kHolderSentinel = 0xBEEF;

struct Encoded {
    int status;
    unsigned allocations;
    bool released;
    uint16_t holder_length;
    wsp_test::Bytes bytes;
};

// Encodes the lines as one page-1 record into a fresh output block
// (allocated by the test), with the fail_at-th allocation failing.
Encoded encode_request(const std::string &lines, unsigned fail_at) {
    wsp_test::TextCopy text(lines);
    wsp_hdr_page page;
    std::memset(&page, 0, sizeof page);
    page.page = 1;
    page.text.data = reinterpret_cast<unsigned char *>(text.get());
    page.text.size = static_cast<uint16_t>(std::strlen(text.get()) + 1);
    page.text.length = static_cast<uint16_t>(std::strlen(text.get()));
    wsp_hdr_page_list list{1, &page};
    wsp_test::OutBuffer out(kOutSize);
    wsp_hdrbuf holder{kHolderSentinel, out.get()};

    Encoded e;
    arm(fail_at);
    e.status = wsp_enc_hdr(&list, &holder, "1.4");
    e.allocations = disarm();
    e.released = out->data == nullptr;
    e.holder_length = holder.length;
    e.bytes = out.written();
    return e;
}

// Encodes the lines cleanly, then once per allocation of that run with it
// failing.  Returns the number of allocations of the clean run.
unsigned encode_failing_each_allocation(const std::string &lines) {
    reset();
    const Encoded clean = encode_request(lines, 0);
    EXPECT_EQ(WSP_OK, clean.status);
    EXPECT_FALSE(clean.released);
    EXPECT_EQ(clean.bytes.size(), clean.holder_length);
    EXPECT_EQ(0u, live_blocks());
    for (unsigned k = 1; k <= clean.allocations; ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k) + " of " + std::to_string(clean.allocations) + " fails");
        reset();
        const Encoded failed = encode_request(lines, k);
        // Every failure is -214: the output's data is freed and set to NULL,
        // the holder's length is not updated.
        EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(failed.status));
        EXPECT_TRUE(failed.released);
        EXPECT_EQ(kHolderSentinel, failed.holder_length);
        EXPECT_EQ(k, failed.allocations) << "the block ends at the failed allocation";
        EXPECT_EQ(0u, live_blocks());
    }
    return clean.allocations;
}

} // namespace

TEST(FailmallocEncode, RequestHeadersFailAsAWholeAndFreeTheOutput) {
    const unsigned total = encode_failing_each_allocation(joined(request_lines()));
    RecordProperty("allocations", static_cast<int>(total));
    if (total == 0) GTEST_SKIP() << "these values are encoded without allocating";
}

// Each header of the request on its own, so that every encoder that
// allocates is seen failing first as well as later in a block.
TEST(FailmallocEncode, EachRequestHeaderOnItsOwn) {
    unsigned total = 0;
    for (const std::string &line : request_lines()) {
        SCOPED_TRACE(line.substr(0, 40));
        const unsigned n = encode_failing_each_allocation(line + "\n");
        RecordProperty(line.substr(0, line.find(':')), static_cast<int>(n));
        total += n;
    }
    if (total == 0) GTEST_SKIP() << "these values are encoded without allocating";
}

// A content-type text longer than the encoder's stack copy whose parameters
// encode compactly, so that the value still fits its 150-octet limit.
TEST(FailmallocEncode, LongContentTypeTextFailsWithoutWriting) {
    const std::string text = "application/vnd.wap.wmlc; charset=utf-8" + repeat("; charset=utf-8; level=1.2", 10);
    const unsigned total = fail_each_allocation([&](unsigned k) {
        wsp_test::OutBuffer out(kOutSize);
        unsigned char *data = out->data;
        arm(k);
        const int status = wsp_encode_content(text.c_str(), out.get(), "1.4");
        const unsigned n = disarm();
        EXPECT_EQ(data, out->data) << "the caller's output is never freed here";
        if (k == 0) {
            EXPECT_EQ(WSP_OK, status);
            EXPECT_GT(out->length, 40);
        } else {
            EXPECT_EQ(WSP_ERR_FAIL, static_cast<int16_t>(status));
            EXPECT_EQ(0, out->length);
            EXPECT_EQ(wsp_test::Bytes(kOutSize, 0), wsp_test::Bytes(out->data, out->data + kOutSize))
                << "nothing is written before the value is complete";
        }
        EXPECT_EQ(0u, live_blocks());
        return n;
    });
    if (total == 0) GTEST_SKIP() << "this content type is encoded without allocating";
}
