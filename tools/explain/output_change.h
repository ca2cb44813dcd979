// What one header did to the output text: compares the text before and
// after the header was decoded and tells whether a line was added at the
// end or an earlier line grew, and which line.
#ifndef WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H
#define WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H

#include <string>

#include "entry.h"

namespace wsptool::explain {

// Keeps a copy of the output text in step with the output, copying only
// what changed, and tells where each change began.
class OutputMirror {
public:
    // The text as of the last update.
    const std::string &text() const { return text_; }

    // What one update found.
    struct Change {
        bool any = false;        // the text changed
        bool at_end = false;     // the change began at the old end: a new line
        unsigned line = 0;       // 1-based line where it began, counted by line feeds
    };

    // Brings the copy up to the output's `length` octets at `now`.  Only
    // the octets from the first difference on are counted and copied, so
    // appending a line costs the line, not the text.
    Change update(const uint8_t *now, size_t length);

private:
    std::string text_;
    size_t line_feeds_ = 0; // in text_
};

// Sets entry.fate and entry.line from what the entry changed: a new line
// at the end is written, a change inside the text is a merge, no change
// drops the entry.
void settle_by_change(Entry &entry, const OutputMirror::Change &change);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H
