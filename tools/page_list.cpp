#include "page_list.h"

#include <cstdlib>

#include "hex_io.h"

namespace wsptool {

namespace {

constexpr unsigned long kFirstExtensionPage = 2;
constexpr unsigned long kLastPage = 255;
constexpr unsigned long kLastCode = 127;
constexpr size_t kMostRows = 128; // more make the decoder step over the whole page

// A number in decimal or with 0x, within [low, high]; false otherwise.
bool read_number(const std::string &text, unsigned long low, unsigned long high, unsigned long *value) {
    if (text.empty()) return false;
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::string digits = hex ? text.substr(2) : text;
    if (digits.empty() || digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") != std::string::npos)
        return false;
    if (digits.size() > 8) return false;
    *value = std::strtoul(digits.c_str(), nullptr, hex ? 16 : 10);
    return *value >= low && *value <= high;
}

[[noreturn]] void refuse(const std::string &option, const std::string &why) {
    throw InputError("--page " + option + ": " + why +
                     " (the form is PAGE or PAGE:NAME=CODE,..., PAGE 2..255, CODE 0..127)");
}

} // namespace

PageList::PageList(const std::vector<std::string> &options) {
    for (const std::string &option : options) {
        const size_t colon = option.find(':');
        unsigned long page = 0;
        if (!read_number(option.substr(0, colon), kFirstExtensionPage, kLastPage, &page))
            refuse(option, "the page is not a number from 2 to 255");
        for (const wsp_dec_page &known : pages_)
            if (known.page == page) refuse(option, "page " + std::to_string(page) + " is given twice");

        std::vector<wsp_code_entry> &rows = rows_.emplace_back();
        if (colon != std::string::npos) {
            const std::string list = option.substr(colon + 1);
            size_t start = 0;
            while (start <= list.size()) {
                size_t end = list.find(',', start);
                if (end == std::string::npos) end = list.size();
                const std::string row = list.substr(start, end - start);
                const size_t equals = row.find('=');
                unsigned long code = 0;
                if (equals == std::string::npos || equals == 0)
                    refuse(option, "\"" + row + "\" is not NAME=CODE");
                if (!read_number(row.substr(equals + 1), 0, kLastCode, &code))
                    refuse(option, "the code of \"" + row + "\" is not a number from 0 to 127");
                if (rows.size() == kMostRows) refuse(option, "a page names at most 128 headers");
                names_.push_back(row.substr(0, equals));
                rows.push_back({names_.back().c_str(), static_cast<uint32_t>(code)});
                start = end + 1;
            }
        }
        const auto count = static_cast<uint8_t>(rows.size());
        rows.push_back({nullptr, 0});
        pages_.push_back({static_cast<uint8_t>(page), count, rows.data()});
    }
    list_.count = static_cast<uint16_t>(pages_.size());
    list_.pages = pages_.data();
}

} // namespace wsptool
