// What wsptool tells the engineer on standard error beside its output: a
// note for every header the library stepped over, the place and meaning of
// a failure, and the header line that made the encoder fail.
#ifndef WSPTOOL_DIAGNOSTICS_H
#define WSPTOOL_DIAGNOSTICS_H

#include <iosfwd>
#include <string>
#include <string_view>

#include "explain/entry.h"

namespace wsptool {

// "WSP_ERR_FAIL (-214): <meaning>", and "WSP_OK (32767): success" (the
// meanings are those of status_names.h).
std::string status_report(int status);

// How an entry is named in a note: `header 0x2f (x-wap-application-id)`,
// `header "x-foo"`, `shift to page 2`.
std::string entry_label(const explain::Entry &entry);

// One line per header the walk stepped over:
//   wsptool: note: offset 12: header 0x2f (x-wap-application-id) stepped over: <reason>
// `context` goes before the offset ("packet 3, ").
void print_stepped_over_notes(const explain::Explanation &walk, std::ostream &err, std::string_view context = "");

// Where the walk of a block that the library refused stopped:
//   decoding stopped at offset 7, in the header "x-foo" that starts at offset 2: <reason>
std::string describe_stop(const explain::Explanation &walk);

// The header line that made the encoder fail, `where` naming it ("line 3",
// "--header 2"):
//   line 3 "Content-Type: text/plain": WSP_ERR_FAIL (-214): <why>
std::string describe_encode_failure(std::string_view where, std::string_view line, int status);

} // namespace wsptool

#endif // WSPTOOL_DIAGNOSTICS_H
