#include "output_change.h"

#include <algorithm>

namespace wsptool::explain {

namespace {

unsigned line_of(const std::string &text, size_t position) {
    return static_cast<unsigned>(std::count(text.begin(), text.begin() + static_cast<long>(position), '\n')) + 1;
}

} // namespace

void settle_by_change(Entry &entry, const std::string &before, const std::string &after) {
    if (before == after) {
        entry.fate = Fate::kDropped;
        entry.reason = "the decoder accepted the value but wrote nothing";
        return;
    }
    size_t first = 0;
    while (first < before.size() && first < after.size() && before[first] == after[first]) ++first;
    if (first >= before.size()) {
        entry.fate = Fate::kWritten;
        entry.line = line_of(before, before.size());
    } else {
        entry.fate = Fate::kMerged;
        entry.line = line_of(before, first);
    }
}

} // namespace wsptool::explain
