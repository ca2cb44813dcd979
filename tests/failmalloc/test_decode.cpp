// Header block decoding with each allocation failing in turn: text values
// of a reply, and repeated application headers merged into a line that has
// a long text after it (the part after the line is then set aside on the
// heap).  The long lines hold a quoted word: a quotation mark in the text
// takes the writers off their line index and onto the walk that sets the
// remainder aside.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failmalloc_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace failmalloc;
using wsp_test::bytes;
using wsp_test::cat;
using wsp_test::text_bytes;

namespace {

// A long, plain value for the lines that follow a merged line.
std::string filler(char c, size_t n) { return std::string(n, c); }
// The same with a quoted word in front.
std::string quoted_filler(char c, size_t n) { return "\"q\" " + filler(c, n); }

// A reply as a gateway sends it: text headers, a date, a length, a long
// location.
std::vector<Entry> reply_entries() {
    return {
        well_known(cat({bytes({0xA6}), text0("Apache/2.4.57 (Debian) mod_wap/1.0")})),   // server
        well_known(cat({bytes({0x8E}), text0("http://wap.example.com/news/today.wml")})), // content-location
        well_known(cat({bytes({0x93}), text0("\"5e3a-61c2f0a4b8e00\"")})),                // etag
        well_known(bytes({0x92, 0x04, 0x65, 0x5F, 0x1A, 0x00})),                          // date
        well_known(bytes({0x8D, 0xA4})),                                                  // content-length
        well_known(cat({bytes({0xAB}), text0("1.1 gateway.example.net (WAP-GW/3.2)")})),  // via
        well_known(cat({bytes({0x9C}), text0("http://wap.example.com/archive/" + filler('n', 260) + ".wml")})),
        app_text("X-Request-Id", "7f3a9c21-b0e4-5d6a"),
    };
}

} // namespace

// Text values are checked where they stand in the block: a reply decodes
// without a single allocation, so there is nothing to fail.
TEST(FailmallocDecode, ReplyTextValuesDecodeWithoutAllocating) {
    const Decoded clean = decode_failing_each_allocation(reply_entries());
    ASSERT_EQ(WSP_OK, clean.status);
    EXPECT_TRUE(clean.block_kept);
    EXPECT_NE(std::string::npos, text_of(clean.text).find("server:Apache/2.4.57 (Debian) mod_wap/1.0\n"));
    EXPECT_EQ(0u, clean.allocations);
}

TEST(FailmallocDecode, ApplicationHeaderMergedOverALongRemainderSurvivesEachFailure) {
    const Decoded clean = decode_failing_each_allocation({
        app_text("X-Session", "a1"),
        app_text("X-Trace", quoted_filler('t', 150)),
        app_text("X-Route", filler('r', 150)),
        app_text("X-Session", "b2", merge::text),
    });
    ASSERT_EQ(WSP_OK, clean.status);
    EXPECT_EQ("x-session:a1,b2\nx-trace:" + quoted_filler('t', 150) + "\nx-route:" + filler('r', 150) + "\n",
              text_of(clean.text));
    if (clean.allocations == 0) GTEST_SKIP() << "this merge allocates nothing";
}

TEST(FailmallocDecode, RawValueMergedOverALongRemainderSurvivesEachFailure) {
    const Decoded clean = decode_failing_each_allocation({
        app_octets("X-Count", bytes({0x85})),
        app_text("X-Trace", quoted_filler('t', 150)),
        app_text("X-Route", filler('r', 150)),
        app_octets("X-Count", bytes({0x86}), merge::raw),
    });
    ASSERT_EQ(WSP_OK, clean.status);
    EXPECT_EQ(std::string("x-count:\x85,\x86\nx-trace:") + quoted_filler('t', 150) + "\nx-route:" + filler('r', 150) +
                  "\n",
              text_of(clean.text));
    if (clean.allocations == 0) GTEST_SKIP() << "this merge allocates nothing";
}
