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

// "the value is malformed, a lookup missed or the output is full" for
// WSP_ERR_FAIL, and so on: what a library status means to a caller.
std::string status_meaning(int status);

// "WSP_ERR_FAIL (-214): <meaning>".
std::string status_report(int status);

// How an entry is named in a note: `header 0x2f (x-wap-application-id)`,
// `header "x-foo"`, `shift to page 2`.
std::string entry_label(const explain::Entry &entry);

// One line per header the walk stepped over:
//   wsptool: note: offset 12: header 0x2f (x-wap-application-id) stepped over: <reason>
void print_stepped_over_notes(const explain::Explanation &walk, std::ostream &err);

// The failure of a header block decoding (`status`, as wsp_dec_hdr returned
// it), after the lines decoded before it have been printed:
//   wsptool: wsp_dec_hdr failed: WSP_ERR_FAIL (-214): <meaning>
//   wsptool: decoding stopped at offset 7, in the header "x-foo" that starts at offset 2: <reason>
void print_decode_failure(int status, const explain::Explanation &walk, std::ostream &err);

// The header line that made the encoder fail:
//   wsptool: line 3 "Content-Type: text/plain": WSP_ERR_FAIL (-214): <why>
void print_encode_failure(unsigned line_number, std::string_view line, int status, std::ostream &err);

} // namespace wsptool

#endif // WSPTOOL_DIAGNOSTICS_H
