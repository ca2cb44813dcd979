// What one header did to the output text: compares the text before and
// after the header was decoded and tells whether a line was added at the
// end or an earlier line grew, and which line.
#ifndef WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H
#define WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H

#include <string>

#include "entry.h"

namespace wsptool::explain {

// Sets entry.fate (written, merged, or dropped when nothing changed) and
// entry.line (1-based, counted by line feeds as the decoded text shows).
void settle_by_change(Entry &entry, const std::string &before, const std::string &after);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_OUTPUT_CHANGE_H
