// The header block walk (exported wsp_dec_hdr): well-known headers of the
// default code page go to their value decoders, application headers and
// headers of the caller's extension pages are written by the block walk
// itself, shift sequences change the page, and headers that cannot be
// written are stepped over.
//
// Input bounds: the block is the holder's `length` octets from data +
// offset, and nothing past its end is read, with one exception: a
// Token-text name or a text value read by the walk itself may end with its
// NUL on the first octet after the block when that octet is below the
// input buffer's `size` (counted from data).  Positions are kept as
// offsets from the block start; a value that claims more octets than are
// left ends the walk at the block's end, exactly where a step past it would
// have ended it.  An entry whose next octet would lie past the end fails
// like a value that cannot be read.
//
// Which failures release the block (wsp_dealloc_hdrbuf) is part of the
// contract: every failure does, except a null holder and a -216 from a line
// writer for an application or code-page header (the caller may grow the
// output and decode the same block again).  A well-known decoder's -216
// does release.  Callers rely on both (DecHdr.ApplicationWriterTruncationKeepsBlock,
// DecHdr.CodePageWriterTruncationKeepsBlock, DecHdr.MergingDecoderOnFullOutputReleasesBlock).
#include <cstdint>
#include <cstring>

#include "decode.h"
#include "line_index.h"
#include "primitives.h"

namespace {

constexpr uint8_t kShiftDelimiter = 0x7F;
constexpr uint8_t kShortCutShiftHighest = 31;
constexpr uint8_t kDefaultPage = 1;
// A page that claims more rows than this has every header skipped.
constexpr uint8_t kMostPageRows = 128;
// Page-list names are bounded to the name area, leaving room for the NUL.
constexpr size_t kLongestPageName = WSP_NAME_AREA - 1;

// The well-known codes each encoding version (1..4) decodes; any other
// version number decodes none of them.
bool version_admits(int version, uint8_t code) {
    if (version < 1 || version > WSP_VERSION_ROWS) return false;
    return code < wsp_version_limits[version - 1].header_end;
}

// Continue the walk: every other value is the final status of the call.
constexpr int kContinue = kWspOk;

struct block_walk {
    wsp_hdrbuf *block;
    wsp_buffer *out;
    const wsp_dec_page_list *pages;
    const uint8_t *start;
    uint16_t length;
    int version;
    uint16_t pos = 0;
    uint8_t page = kDefaultPage;
    const wsp_dec_page *current = nullptr;
    // The octet just past the block lies inside the input buffer.
    bool end_octet_readable = false;
    char name[WSP_NAME_AREA] = {};
    char skipped_name[WSP_NAME_AREA] = {};

    bool at_end() const { return pos >= length; }
    const uint8_t *here() const { return start + pos; }
    uint16_t remaining() const { return static_cast<uint16_t>(length - pos); }
    // The bound handed to the walk's own text readers: a text whose NUL is
    // the first octet after the block is read when that octet lies inside
    // the input buffer.  Length forms and the decoders keep `remaining`.
    uint16_t text_bound() const { return static_cast<uint16_t>(remaining() + (end_octet_readable ? 1 : 0)); }

    // Moves `n` octets on, stopping at the block's end.
    void advance(uint32_t n) { pos = n < remaining() ? static_cast<uint16_t>(pos + n) : length; }

    // Takes over a read pointer that a reader or decoder moved on from
    // here(); it never goes back and stops at the block's end.
    void move_to(const uint8_t *p) {
        uintptr_t from = reinterpret_cast<uintptr_t>(here());
        uintptr_t to = reinterpret_cast<uintptr_t>(p);
        advance(to > from ? static_cast<uint32_t>(to - from) : 0);
    }

    int release(int status) {
        wsp_dealloc_hdrbuf(block);
        return status;
    }

    // Steps over the value at here(); a failure releases the block and ends
    // the call with `status`.
    int skip_value(int status) {
        const uint8_t *p = here();
        if (wsp_skip_value(&p, remaining()) != kWspOk) return release(status);
        move_to(p);
        return kContinue;
    }

    // Measures the value at here() and steps over it; a failure releases
    // the block and ends the call with -214.
    int pass_value() {
        uint32_t size = 0;
        if (wsp_value_size(here(), &size, remaining()) != kWspOk) return release(kWspErrFail);
        advance(size);
        return kContinue;
    }
};

// ---- entries -----------------------------------------------------------------

// A line writer's answer for an application or code-page header: -216 ends
// the call and keeps the block; any other failure releases it.
int writer_result(block_walk &w, int status) {
    if (status == kWspOk) return kContinue;
    if (status == kWspErrTruncated) return kWspErrTruncated;
    return w.release(status);
}

// The value of an application or code-page header, at here(), written under
// w.name.  Text values (a Quote, a Quoted-string, a plain text, or 0x00 for
// an empty text) are read as a Text-string of at most 197 characters; every
// other value is copied raw with its encoding as it stands.
//
// `drop_long_text`: an application header whose text reaches 198
// characters is dropped (the value is stepped over); for a code-page header
// that is an unreadable value like any other (-211).
int write_named_value(block_walk &w, bool drop_long_text) {
    const uint16_t remaining = w.remaining();
    if (remaining == 0) return w.release(kWspErrFail);
    const uint8_t *value = w.here();
    if (wsp_is_text_class(wsp_class_of(value[0])) || value[0] == 0) {
        // Checked in place and written from the block itself.
        const uint8_t *p = value;
        const char *text = nullptr;
        int status = wsp_check_text_string(&p, &text, w.text_bound(), WSP_TEXT_CAPACITY);
        if (status == kWspErrTruncated && drop_long_text) return w.pass_value();
        if (status != kWspOk) return w.release(kWspErrArg);
        status = wsp_add_header_line(w.out, w.name, text);
        if (status == kWspOk) w.move_to(p);
        return writer_result(w, status);
    }
    uint32_t size = 0;
    if (wsp_value_size(value, &size, remaining) != kWspOk) return w.release(kWspErrFail);
    // A raw value reaching past the block's end cannot be copied without
    // reading outside the block: refused like a value that cannot be
    // measured.
    if (size > remaining) return w.release(kWspErrFail);
    int status = wsp_add_raw_header_line(w.out, w.name, value, static_cast<uint16_t>(size));
    if (status == kWspOk) w.advance(size);
    return writer_result(w, status);
}

int well_known_header(block_walk &w) {
    uint8_t code = w.here()[0] & 0x7F;
    w.pos = static_cast<uint16_t>(w.pos + 1);
    const uint16_t remaining = w.remaining();

    // A content-type inside a header block is never written out, and codes
    // past the name table have no decoder.
    if (code == WSP_HDR_CONTENT_TYPE || code >= WSP_HEADER_NAME_ROWS) return w.skip_value(kWspErrFail);
    wsp_header_decoder decoder = wsp_header_decoders[code];
    if (!version_admits(w.version, code) || decoder == nullptr) return w.skip_value(kWspErrFail);

    const uint8_t *p = w.here();
    int status = decoder(code, &p, w.out, remaining);
    if (status == kWspOk) {
        w.move_to(p);
        return kContinue;
    }
    if (status == kWspErrTruncated) return w.release(kWspErrTruncated);
    // Any other failure drops the header, not the call: the value is
    // measured from its first octet and passed over.
    uint32_t size = 0;
    status = wsp_value_size(w.here(), &size, remaining);
    if (status != kWspOk) return w.release(status);
    w.advance(size);
    return kContinue;
}

// A header of an extension page, named by the caller's page record.
int code_page_header(block_walk &w) {
    std::memset(w.name, 0, sizeof w.name);
    uint8_t code = w.here()[0] & 0x7F;
    w.pos = static_cast<uint16_t>(w.pos + 1);

    const wsp_dec_page *page = w.current;
    if (page == nullptr || page->header_count > kMostPageRows) return w.skip_value(kWspErrFail);
    // A record without rows has neither header rows nor an end row: every
    // header of the page is skipped.
    const wsp_code_entry *rows = page->header_rows;
    if (rows == nullptr) return w.skip_value(kWspErrFail);

    const wsp_code_entry *row = nullptr;
    for (uint16_t i = 0; i < page->header_count; ++i) {
        if (static_cast<uint8_t>(rows[i].code) == code) {
            row = &rows[i];
            break;
        }
    }
    if (row == nullptr) {
        // Not on the page: the end row decides how the value is passed.  A
        // named end row costs one extra octet before the value; kept as it
        // is, callers' pages are laid out for it.
        const wsp_code_entry &end_row = rows[page->header_count];
        if (end_row.name != nullptr) {
            if (w.at_end()) return w.release(kWspErrFail);
            w.pos = static_cast<uint16_t>(w.pos + 1);
        }
        return w.skip_value(kWspErrFail);
    }
    if (row->name == nullptr) return w.skip_value(kWspErrFail);
    // Names longer than the name area are cut to its 31 characters.
    std::strncpy(w.name, row->name, kLongestPageName);
    w.name[kLongestPageName] = 0;
    return write_named_value(w, false);
}

int application_header(block_walk &w) {
    std::memset(w.name, 0, sizeof w.name);
    const uint8_t *p = w.here();
    int status = wsp_read_token_text(&p, w.name, w.text_bound(), WSP_NAME_CAPACITY);
    if (status == kWspErrTruncated) {
        // A name of 30 characters or more: the whole header is passed over.
        status = w.pass_value();
        if (status != kContinue) return status;
        return w.pass_value();
    }
    // Every other result counts as a name.  After a character a token may
    // not hold, the name is what came before it and the read pointer has
    // not moved: the value is then read from the name's own first octet.
    // Kept as it is on purpose.
    w.move_to(p);
    wsp_str_lower(w.name);
    return write_named_value(w, true);
}

// Reads a shift at here(): 0x7F and the page that follows it, or a
// Short-cut-shift 1..31.  0x00, 0x22 and a 0x7F without its page octet
// cannot be followed.
bool read_shift(block_walk &w, uint8_t *new_page) {
    uint8_t o = w.here()[0];
    if (o == kShiftDelimiter) {
        if (w.remaining() < 2) return false;
        *new_page = w.here()[1];
        w.pos = static_cast<uint16_t>(w.pos + 2);
        return true;
    }
    if (o >= 1 && o <= kShortCutShiftHighest) {
        *new_page = o;
        w.pos = static_cast<uint16_t>(w.pos + 1);
        return true;
    }
    return false;
}

// Without a page list, everything after a shift away from page 1 is passed
// over until a shift back to page 1 or the block's end.  Any failure here
// releases the block and gives -211.
int skip_mode(block_walk &w) {
    while (!w.at_end()) {
        uint8_t cls = wsp_class_of(w.here()[0]);
        if (cls == WSP_CLASS_SHORT_INT) {
            w.pos = static_cast<uint16_t>(w.pos + 1);
            int status = w.skip_value(kWspErrArg);
            if (status != kContinue) return status;
        } else if (cls == WSP_CLASS_TEXT) {
            const uint8_t *p = w.here();
            if (wsp_read_token_text(&p, w.skipped_name, w.text_bound(), WSP_NAME_CAPACITY) != kWspOk)
                return w.release(kWspErrArg);
            w.move_to(p);
            uint32_t size = 0;
            if (wsp_value_size(w.here(), &size, w.remaining()) != kWspOk) return w.release(kWspErrArg);
            w.advance(size);
        } else {
            uint8_t new_page = 0;
            if (!read_shift(w, &new_page)) return w.release(kWspErrArg);
            w.page = new_page;
            if (new_page == kDefaultPage) return kContinue;
        }
    }
    return kContinue;
}

int shift_sequence(block_walk &w) {
    uint8_t new_page = 0;
    if (!read_shift(w, &new_page)) return w.release(kWspErrArg);
    w.page = new_page;
    // Page 1 keeps the current page record; it is not used there.
    if (new_page == kDefaultPage) return kContinue;
    if (w.pages == nullptr) return skip_mode(w);
    if (w.pages->count == 0 || w.pages->pages == nullptr) return w.release(kWspErrArg);
    for (uint16_t i = 0; i < w.pages->count; ++i) {
        if (w.pages->pages[i].page == new_page) {
            w.current = &w.pages->pages[i];
            return kContinue;
        }
    }
    return w.release(kWspErrArg);
}

} // namespace

int wsp_decode_header_block(wsp_hdrbuf *block, wsp_buffer *out, const wsp_dec_page_list *pages, int version,
                            bool indexed) {
    if (block == nullptr) return kWspErrArg;
    if (block->buffer == nullptr || block->buffer->data == nullptr || out == nullptr || out->data == nullptr ||
        out->size == 0 || out->length == out->size) {
        wsp_dealloc_hdrbuf(block);
        return kWspErrArg;
    }
    if (block->length == 0) return kWspOk;

    // The decoders write through the view; only its length changes, and it
    // goes back to the caller's record whatever the outcome.
    wsp_indexed_output io;
    wsp_indexed_output_start(&io, out, indexed);
    const wsp_buffer *in = block->buffer;
    block_walk w{block, &io.view, pages, in->data + in->offset, block->length, version};
    w.end_octet_readable = static_cast<uint32_t>(in->offset) + block->length < in->size;
    int status = kWspOk;
    while (status == kContinue && !w.at_end()) {
        uint8_t cls = wsp_class_of(w.here()[0]);
        if (cls == WSP_CLASS_SHORT_INT) {
            status = w.page == kDefaultPage ? well_known_header(w) : code_page_header(w);
        } else if (cls == WSP_CLASS_TEXT) {
            status = application_header(w);
        } else {
            status = shift_sequence(w);
        }
    }
    out->length = io.view.length;
    return status;
}

extern "C" WSP_API int wsp_dec_hdr(wsp_hdrbuf *block, wsp_buffer *out, const wsp_dec_page_list *pages, int version) {
    return wsp_decode_header_block(block, out, pages, version, true);
}
