#include "output_change.h"

#include <algorithm>
#include <cstring>

namespace wsptool::explain {

namespace {

size_t count_line_feeds(const char *text, size_t length) {
    size_t count = 0;
    const char *end = text + length;
    for (const char *p = text; (p = static_cast<const char *>(std::memchr(p, '\n', static_cast<size_t>(end - p)))) != nullptr; ++p)
        ++count;
    return count;
}

} // namespace

OutputMirror::Change OutputMirror::update(const uint8_t *now, size_t length) {
    const char *octets = reinterpret_cast<const char *>(now);
    const size_t common = std::min(length, text_.size());
    size_t first = 0;
    // Blocks first: a block of tens of thousands of headers compares its
    // whole text once per header.
    constexpr size_t kBlock = 64;
    while (first + kBlock <= common && std::memcmp(text_.data() + first, octets + first, kBlock) == 0) first += kBlock;
    while (first < common && text_[first] == octets[first]) ++first;
    Change change;
    if (first == common && length == text_.size()) return change;

    const size_t feeds_before_first = line_feeds_ - count_line_feeds(text_.data() + first, text_.size() - first);
    change.any = true;
    change.at_end = first >= text_.size();
    change.line = static_cast<unsigned>(feeds_before_first) + 1;
    text_.replace(first, std::string::npos, octets + first, length - first);
    line_feeds_ = feeds_before_first + count_line_feeds(octets + first, length - first);
    return change;
}

void settle_by_change(Entry &entry, const OutputMirror::Change &change) {
    if (!change.any) {
        entry.fate = Fate::kDropped;
        entry.reason = "the decoder accepted the value but wrote nothing";
        return;
    }
    entry.fate = change.at_end ? Fate::kWritten : Fate::kMerged;
    entry.line = change.line;
}

} // namespace wsptool::explain
