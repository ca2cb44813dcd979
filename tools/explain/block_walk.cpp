// The steps below follow the library's block decoder one for one: same
// order of tests, same readers, same bounds, same writers into an output of
// the same size.  Where the library ends the call, the walk ends with the
// same status and records whether the library releases the block.
#include "block_walk.h"

#include <cstdio>
#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "library_internals.h"
#include "output_change.h"
#include "value_form.h"

namespace wsptool::explain {

namespace {

constexpr uint8_t kShiftDelimiter = 0x7F;
constexpr uint8_t kShortCutShiftHighest = 31;
constexpr uint8_t kDefaultPage = 1;
constexpr uint8_t kMostPageRows = 128;

const char *const kVersionTexts[] = {"1.1", "1.2", "1.3", "1.4"};

std::string hex_code(unsigned code) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02x", code);
    return text;
}

std::string version_text(int version) {
    if (version >= 1 && version <= 4) return kVersionTexts[version - 1];
    return std::to_string(version);
}

// An output text of `size` usable octets over a zeroed block one octet
// longer, as wsptool hands it to the library.
class WorkingText {
public:
    explicit WorkingText(uint16_t size) : storage_(static_cast<size_t>(size) + 1, 0) {
        record_.data = storage_.data();
        record_.size = size;
    }
    wsp_buffer *record() { return &record_; }
    std::string text() const { return std::string(reinterpret_cast<const char *>(storage_.data()), record_.length); }

    // Sets `text` (length octets) as the whole content, the rest zero as in
    // a fresh buffer.  Writers write one run of octets from the start, and a
    // NUL at most one octet past it; what lies past `length` is cleared up
    // to the first zero octets.
    void reset(const std::string &text) {
        size_t dirty = static_cast<size_t>(record_.length) + 2;
        while (dirty < storage_.size() && storage_[dirty] != 0) ++dirty;
        std::fill(storage_.begin(), storage_.begin() + static_cast<long>(std::min(dirty, storage_.size())), 0);
        std::copy(text.begin(), text.end(), storage_.begin());
        record_.length = static_cast<uint16_t>(text.size());
    }

private:
    std::vector<uint8_t> storage_;
    wsp_buffer record_{};
};

// Continue the walk; any other value ends it with that status.
constexpr int kContinue = lib::kOk;

class Walk {
public:
    Walk(const uint8_t *start, uint16_t length, const WalkOptions &options)
        : start_(start), length_(length), options_(options), out_(options.output_size) {}

    Explanation run() {
        int status = lib::kOk;
        while (!at_end()) {
            lib::ValueClass cls = lib::value_class(here()[0]);
            if (cls == lib::kShortInteger)
                status = page_ == kDefaultPage ? well_known_header() : code_page_header();
            else if (cls == lib::kText)
                status = application_header();
            else
                status = shift_sequence();
            if (status != kContinue) break;
        }
        result_.status = status;
        result_.stop_offset = static_cast<uint16_t>(options_.base_offset + pos_);
        result_.text = out_.text();
        return std::move(result_);
    }

private:
    const uint8_t *start_;
    uint16_t length_;
    WalkOptions options_;
    WorkingText out_;
    WorkingText scratch_{options_.output_size}; // for trying a decoder aside
    std::optional<WorkingText> roomy_;          // the largest output, made when first needed
    OutputMirror mirror_;                       // the output as of the last entry
    Explanation result_;
    uint16_t pos_ = 0;
    uint8_t page_ = kDefaultPage;
    const wsp_dec_page *current_ = nullptr;
    char name_[64] = {};
    char value_[256] = {};
    char skipped_name_[64] = {};

    bool at_end() const { return pos_ >= length_; }
    const uint8_t *here() const { return start_ + pos_; }
    uint16_t remaining() const { return static_cast<uint16_t>(length_ - pos_); }
    void advance(uint32_t n) { pos_ = n < remaining() ? static_cast<uint16_t>(pos_ + n) : length_; }
    void move_to(const uint8_t *p) { advance(p > here() ? static_cast<uint32_t>(p - here()) : 0); }

    // ---- entry records ----

    Entry &begin(Kind kind) {
        Entry e;
        e.offset = static_cast<uint16_t>(options_.base_offset + pos_);
        e.kind = kind;
        e.page = page_;
        result_.entries.push_back(std::move(e));
        entry_start_ = pos_;
        return result_.entries.back();
    }

    // The entry's octets run from its start to where the walk now stands
    // (at least to `end_at_least` for an entry that ended the walk).
    void close(Entry &e, uint16_t end_at_least = 0) {
        uint16_t end = pos_ > end_at_least ? pos_ : end_at_least;
        if (end > length_) end = length_;
        e.octets.assign(start_ + entry_start_, start_ + end);
    }

    int dropped(Entry &e, std::string reason, std::optional<int> status = std::nullopt) {
        e.fate = Fate::kDropped;
        e.reason = std::move(reason);
        e.status = status;
        close(e);
        return kContinue;
    }

    // Ends the walk at this entry.  `released`: the library frees the
    // block on this failure.
    int failed(Entry &e, int status, std::string reason, bool released = true) {
        e.fate = Fate::kFailed;
        e.status = status;
        e.reason = std::move(reason);
        close(e, length_);
        result_.block_released = released;
        return status;
    }

    // Steps over the value at here() and drops the entry; when the value
    // cannot be stepped over the walk fails with `failure`.
    int skip_and_drop(Entry &e, std::string reason, int failure) {
        const uint8_t *p = here();
        if (lib::skip_value(&p, remaining()) != lib::kOk)
            return failed(e, failure, reason + "; then the value could not be stepped over");
        move_to(p);
        return dropped(e, std::move(reason));
    }

    // ---- the entry kinds ----

    // What a decoder writes for the value at here() into an output of the
    // same size that holds `text` (empty: the header on its own).
    int probe(WorkingText &scratch, lib::HeaderDecoder decoder, uint8_t code, uint16_t remaining_octets,
              const std::string &text, std::string *written) {
        scratch.reset(text);
        const uint8_t *p = here();
        int status = decoder(code, &p, scratch.record(), remaining_octets);
        *written = scratch.text().substr(text.size());
        if (!written->empty() && written->back() == '\n') written->pop_back();
        return status;
    }

    int well_known_header() {
        Entry &e = begin(Kind::kWellKnown);
        const uint8_t code = here()[0] & 0x7F;
        e.code = code;
        if (const char *name = lib::header_name(code)) e.name = name;
        pos_ = static_cast<uint16_t>(pos_ + 1);
        const uint16_t rem = remaining();
        e.form = value_form(here(), rem,
                            lib::decodes_long_integer(code) ? ShortLengthAs::kLongInteger : ShortLengthAs::kValueLength);

        if (code == lib::kContentTypeCode)
            return skip_and_drop(e, "content-type inside a header block is never written out", lib::kErrFail);
        if (code > lib::kHighestHeaderCode)
            return skip_and_drop(e, "no header has code " + hex_code(code), lib::kErrFail);
        lib::HeaderDecoder decoder = lib::header_decoder(code);
        const int highest = lib::highest_code(options_.version);
        if (static_cast<int>(code) > highest) {
            std::string reason = highest < 0 ? "encoding version " + version_text(options_.version) +
                                                   " decodes no well-known header"
                                             : "code above the limit of encoding version " +
                                                   version_text(options_.version) + " (" +
                                                   hex_code(static_cast<unsigned>(highest)) + ")";
            return skip_and_drop(e, std::move(reason), lib::kErrFail);
        }
        if (decoder == nullptr)
            return skip_and_drop(e, "no decoder for this code under encoding version " + version_text(options_.version),
                                 lib::kErrFail);

        const uint8_t *p = here();
        int status = decoder(code, &p, out_.record(), rem);
        std::string own_text;
        const int alone_status = probe(scratch_, decoder, code, rem, "", &own_text);
        e.text = own_text;
        if (status == lib::kOk) {
            move_to(p);
            settle(e);
            close(e);
            return kContinue;
        }
        if (status == lib::kErrTruncated) {
            return failed(e, status,
                          alone_status == lib::kOk ? "the line does not fit the output"
                                                   : "the decoder refused the value: a text filled its scratch area");
        }
        std::string reason = "the decoder refused the value";
        if (alone_status == lib::kOk) {
            // The value decodes on its own: what was already written, or the
            // room left, refused it.  An output with the same text and room
            // to spare tells which.
            if (!roomy_) roomy_.emplace(0xFFFF);
            std::string ignored;
            const int with_room = probe(*roomy_, decoder, code, rem, mirror_.text(), &ignored);
            if (with_room == lib::kOk)
                reason = "the writer refused it: the line does not fit the output";
            else if (e.name == "accept-ranges")
                reason = "the writer refused it: \"none\" is never joined with another range unit";
            else
                reason = "only the first " + e.name + " is kept: the name already appears in the text";
        }
        reason += damaged_line();
        uint32_t size = 0;
        const int measured = lib::value_size(here(), &size, rem);
        if (measured != lib::kOk) return failed(e, measured, reason + "; then the value could not be measured");
        advance(size);
        return dropped(e, std::move(reason), status);
    }

    // A merge the writer refused leaves the line it had split with NUL
    // octets in place of its colon and line feed; the text keeps them.
    std::string damaged_line() {
        const OutputMirror::Change change = mirror_.update(out_.record()->data, out_.record()->length);
        if (!change.any) return "";
        return "; line " + std::to_string(change.line) +
               " keeps NUL octets where the writer cut it (its colon and line feed)";
    }

    // Written or merged, and which line, from what the entry changed.
    void settle(Entry &e) {
        settle_by_change(e, mirror_.update(out_.record()->data, out_.record()->length));
    }

    int code_page_header() {
        Entry &e = begin(Kind::kCodePage);
        std::memset(name_, 0, sizeof name_);
        const uint8_t code = here()[0] & 0x7F;
        e.code = code;
        pos_ = static_cast<uint16_t>(pos_ + 1);
        e.form = value_form(here(), remaining(), ShortLengthAs::kText);
        const std::string page = "page " + std::to_string(page_);

        const wsp_dec_page *record = current_;
        if (record == nullptr) return skip_and_drop(e, "no page record for " + page, lib::kErrFail);
        if (record->header_count > kMostPageRows)
            return skip_and_drop(e, page + " claims more than 128 header rows", lib::kErrFail);
        const wsp_code_entry *rows = record->header_rows;
        if (rows == nullptr) return skip_and_drop(e, page + " has no header rows", lib::kErrFail);

        const wsp_code_entry *row = nullptr;
        for (uint16_t i = 0; i < record->header_count; ++i) {
            if (static_cast<uint8_t>(rows[i].code) == code) {
                row = &rows[i];
                break;
            }
        }
        if (row == nullptr) {
            const wsp_code_entry &end_row = rows[record->header_count];
            if (end_row.name != nullptr) {
                if (at_end()) return failed(e, lib::kErrFail, "the code is not on " + page + " and the block ends");
                pos_ = static_cast<uint16_t>(pos_ + 1);
                return skip_and_drop(e, "the code is not on " + page + " (one octet and a value stepped over)",
                                     lib::kErrFail);
            }
            return skip_and_drop(e, "the code is not on " + page, lib::kErrFail);
        }
        if (row->name == nullptr) return skip_and_drop(e, page + " names no header for this code", lib::kErrFail);
        std::strncpy(name_, row->name, lib::kNameArea - 1);
        name_[lib::kNameArea - 1] = 0;
        e.name = name_;
        return named_value(e, false);
    }

    int application_header() {
        Entry &e = begin(Kind::kApplication);
        std::memset(name_, 0, sizeof name_);
        const uint8_t *p = here();
        int status = lib::read_token_text(&p, name_, remaining(), lib::kNameCapacity);
        if (status == lib::kErrTruncated) {
            e.name.assign(name_, strnlen(name_, lib::kNameCapacity));
            for (int part = 0; part < 2; ++part) {
                uint32_t size = 0;
                if (lib::value_size(here(), &size, remaining()) != lib::kOk)
                    return failed(e, lib::kErrFail,
                                  std::string("a name of 30 characters or more; then its ") +
                                      (part == 0 ? "name" : "value") + " could not be measured");
                advance(size);
            }
            e.form = "name and value stepped over";
            return dropped(e, "a name of 30 characters or more", status);
        }
        move_to(p);
        lib::str_lower(name_);
        e.name = name_;
        e.form = value_form(here(), remaining(), ShortLengthAs::kText);
        return named_value(e, true);
    }

    // The value of an application or code-page header under name_.
    int named_value(Entry &e, bool drop_long_text) {
        const uint16_t rem = remaining();
        if (rem == 0) return failed(e, lib::kErrFail, "the block ends before the value");
        const uint8_t *value = here();
        int status;
        if (lib::is_text_class(lib::value_class(value[0])) || value[0] == 0) {
            const uint8_t *p = value;
            std::memset(value_, 0, sizeof value_);
            status = lib::read_text_string(&p, value_, rem, lib::kValueCapacity);
            if (status == lib::kErrTruncated && drop_long_text) {
                uint32_t size = 0;
                if (lib::value_size(here(), &size, rem) != lib::kOk)
                    return failed(e, lib::kErrFail,
                                  "a text value of 198 characters or more; then it could not be measured");
                advance(size);
                return dropped(e, "a text value of 198 characters or more", status);
            }
            if (status != lib::kOk)
                return failed(e, lib::kErrArg, "the text value cannot be read (" + read_failure(status) + ")");
            e.text = e.name + ":" + value_;
            status = lib::add_header_line(out_.record(), name_, value_);
            if (status == lib::kOk) move_to(p);
        } else {
            uint32_t size = 0;
            if (lib::value_size(value, &size, rem) != lib::kOk)
                return failed(e, lib::kErrFail, "the value cannot be measured");
            if (size > rem) return failed(e, lib::kErrFail, "the value runs past the end of the block");
            e.text = e.name + ":" + std::string(reinterpret_cast<const char *>(value), size);
            status = lib::add_raw_header_line(out_.record(), name_, value, static_cast<uint16_t>(size));
            if (status == lib::kOk) advance(size);
        }
        if (status == lib::kOk) {
            settle(e);
            close(e);
            return kContinue;
        }
        if (status == lib::kErrTruncated) return failed(e, status, "the line does not fit the output", false);
        return failed(e, status, "the writer refused the line");
    }

    static std::string read_failure(int status) {
        if (status == lib::kErrTruncated) return "198 characters or more";
        return "it runs past the block or holds an octet a text may not";
    }

    // ---- shifts ----

    bool read_shift(uint8_t *new_page) {
        const uint8_t o = here()[0];
        if (o == kShiftDelimiter) {
            if (remaining() < 2) return false;
            *new_page = here()[1];
            pos_ = static_cast<uint16_t>(pos_ + 2);
            return true;
        }
        if (o >= 1 && o <= kShortCutShiftHighest) {
            *new_page = o;
            pos_ = static_cast<uint16_t>(pos_ + 1);
            return true;
        }
        return false;
    }

    static std::string shift_form(uint8_t octet) {
        if (octet == kShiftDelimiter) return "Shift-delimiter + page";
        if (octet >= 1 && octet <= kShortCutShiftHighest) return "Short-cut-shift";
        return "-";
    }

    static std::string shift_failure(uint8_t octet) {
        if (octet == kShiftDelimiter) return "a shift delimiter without its page octet";
        if (octet == 0) return "octet 0x00 cannot start an entry";
        if (octet == '"') return "a quotation mark cannot start an entry";
        return "octet " + hex_code(octet) + " cannot start an entry";
    }

    // Reads the shift at here() into a new entry.  False when the octet
    // cannot be followed: the walk then fails at that entry with -211.
    bool shift_entry(Entry **entry) {
        Entry &e = begin(Kind::kShift);
        *entry = &e;
        const uint8_t octet = here()[0];
        e.form = shift_form(octet);
        uint8_t new_page = 0;
        if (!read_shift(&new_page)) {
            failed(e, lib::kErrArg, shift_failure(octet));
            return false;
        }
        page_ = new_page;
        e.code = new_page;
        e.fate = Fate::kShifted;
        close(e);
        if (new_page == kDefaultPage) {
            e.reason = "back to page 1";
        } else {
            e.reason = "to page " + std::to_string(new_page);
            if (options_.pages == nullptr) e.reason += ": without a page list its headers are stepped over";
        }
        return true;
    }

    int shift_sequence() {
        Entry *shift = nullptr;
        if (!shift_entry(&shift)) return lib::kErrArg;
        Entry &e = *shift;
        const uint8_t new_page = page_;
        // Page 1 keeps the current page record; it is not used there.
        if (new_page == kDefaultPage) return kContinue;
        if (options_.pages == nullptr) return skip_mode();
        if (options_.pages->count == 0 || options_.pages->pages == nullptr)
            return failed(e, lib::kErrArg, "the page list is empty");
        for (uint16_t i = 0; i < options_.pages->count; ++i) {
            if (options_.pages->pages[i].page == new_page) {
                current_ = &options_.pages->pages[i];
                return kContinue;
            }
        }
        return failed(e, lib::kErrArg, "page " + std::to_string(new_page) + " is not in the page list");
    }

    // Without a page list everything up to a shift back to page 1 is
    // passed over; any failure here gives -211.
    int skip_mode() {
        const std::string why = "page " + std::to_string(page_) + " is not decoded without a page list";
        while (!at_end()) {
            lib::ValueClass cls = lib::value_class(here()[0]);
            if (cls == lib::kShortInteger) {
                Entry &e = begin(Kind::kCodePage);
                e.code = here()[0] & 0x7F;
                pos_ = static_cast<uint16_t>(pos_ + 1);
                e.form = value_form(here(), remaining(), ShortLengthAs::kValueLength);
                int status = skip_and_drop(e, why, lib::kErrArg);
                if (status != kContinue) return status;
            } else if (cls == lib::kText) {
                Entry &e = begin(Kind::kApplication);
                const uint8_t *p = here();
                if (lib::read_token_text(&p, skipped_name_, remaining(), lib::kNameCapacity) != lib::kOk)
                    return failed(e, lib::kErrArg, why + "; its name could not be read");
                e.name = skipped_name_;
                move_to(p);
                e.form = value_form(here(), remaining(), ShortLengthAs::kText);
                uint32_t size = 0;
                if (lib::value_size(here(), &size, remaining()) != lib::kOk)
                    return failed(e, lib::kErrArg, why + "; its value could not be measured");
                advance(size);
                dropped(e, why);
            } else {
                Entry *shift = nullptr;
                if (!shift_entry(&shift)) return lib::kErrArg;
                if (page_ == kDefaultPage) return kContinue;
            }
        }
        return kContinue;
    }

    uint16_t entry_start_ = 0;
};

} // namespace

Explanation explain_block(const uint8_t *block, uint16_t length, const WalkOptions &options) {
    Walk walk(block, length, options);
    return walk.run();
}

} // namespace wsptool::explain
