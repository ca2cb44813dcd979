// Extension header code pages given on the command line, as the page list
// the library's header decoder takes:
//   --page 2:x-foo=0x10,x-bar=17   page 2 names code 0x10 x-foo and 17 x-bar
//   --page 3                       page 3 is known but names no header
// Pages are 2..255 (page 1 is the default page), codes 0..127, both decimal
// or with 0x.  Each page's rows end with an empty row, as the list wants.
#ifndef WSPTOOL_PAGE_LIST_H
#define WSPTOOL_PAGE_LIST_H

#include <deque>
#include <string>
#include <vector>

#include "tarnwspencdec.h"

namespace wsptool {

class PageList {
public:
    // Throws InputError naming the option text that is not of that form.
    explicit PageList(const std::vector<std::string> &options);
    PageList(const PageList &) = delete;
    PageList &operator=(const PageList &) = delete;

    // nullptr when no page was given (the decoder then steps over pages).
    const wsp_dec_page_list *list() const { return pages_.empty() ? nullptr : &list_; }

private:
    std::deque<std::string> names_;                 // the header names the rows point at
    std::deque<std::vector<wsp_code_entry>> rows_;  // one run of rows per page, an empty row last
    std::vector<wsp_dec_page> pages_;
    wsp_dec_page_list list_{};
};

} // namespace wsptool

#endif // WSPTOOL_PAGE_LIST_H
