// Reading state shared by the header decoders whose values carry a
// Value-length and several fields (cache-control, credentials, challenges,
// ranges, disposition, encoding-version, warnings, set-cookie).
//
// Every value has a hard end: the cursor at entry plus the remaining count
// the block decoder hands over.  Nothing at or past it is read, whatever
// the value's own length claims; a field that would need such an octet
// fails with -214.  The claimed length itself is kept as the 16-bit count
// the value carries (a Length-quote uintvar above 0xFFFF wraps), and the
// octets used are counted from the first octet after the length.
#ifndef WSP_DECODE_STRUCTURED_VALUE_H
#define WSP_DECODE_STRUCTURED_VALUE_H

#include <cstdint>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"
#include "text_builder.h"

// Returned by wsp_value_reader::peek_class when no octet is left before the
// hard end: it equals no real class, so every "must be of class ..." test
// refuses a missing octet.
inline constexpr uint8_t WSP_CLASS_NONE = 0xFF;

struct wsp_value_reader {
    const uint8_t *p = nullptr;     // next octet to read
    const uint8_t *start = nullptr; // first octet after the length
    const uint8_t *end = nullptr;   // hard end of the input
    uint16_t length = 0;            // octets the value claims

    // Octets read since the length.
    uint16_t used() const { return static_cast<uint16_t>(p - start); }
    // Octets left before the hard end.
    uint16_t left() const { return static_cast<uint16_t>(end - p); }
    bool has_octet() const { return p < end; }
    uint8_t peek_class() const { return has_octet() ? wsp_class_of(*p) : WSP_CLASS_NONE; }
    // Octets of the claimed length not read yet (0 once the reads passed it).
    uint16_t rest_of_length() const {
        uint16_t u = used();
        return u < length ? static_cast<uint16_t>(length - u) : 0;
    }
    bool length_used_up() const { return used() >= length; }
    // A reader's bound, never reaching past the hard end.
    uint16_t bound(uint16_t described) const {
        uint16_t l = left();
        return described < l ? described : l;
    }
    // The rest of the claimed length as a run for the parameter decoders.
    // False when the run would reach past the hard end: the run's last
    // parameter would then be read from octets the caller never handed in.
    bool rest_as_run(uint16_t *run) const {
        *run = rest_of_length();
        return *run <= left();
    }
};

// The length forms a structured value may open with.
enum class wsp_length_form : uint8_t {
    // Class 1 (the octet 31 and a uintvar bounded by remaining - 1) or class
    // 0 (the octet itself, at most remaining); a Short-length of 0 is passed
    // over without a line.
    short_or_quoted,
    // Class 0 alone; a length of 0 is read like any other.
    short_only,
};

// The opening every structured decoder shares: the code must have a line
// name, at least one octet must remain, and the value must open with
// `form` at *cursor.  True when the value is open: `v` then reads it from the
// first octet after the length.  Otherwise *status holds what the decoder
// returns at once: -214 for a refusal, with *cursor left alone, or WSP_OK
// for a Short-length of 0 in the short_or_quoted form, which moves *cursor
// past its octet and writes no line.
inline bool wsp_open_structured(uint32_t code, const uint8_t **cursor, uint16_t remaining, wsp_value_reader *v,
                                int *status, wsp_length_form form = wsp_length_form::short_or_quoted) {
    const uint8_t *at = *cursor;
    *status = kWspErrFail;
    if (wsp_decoded_header_name(code) == nullptr || remaining == 0) return false;
    if (form == wsp_length_form::short_only && wsp_class_of(at[0]) != WSP_CLASS_SHORT_LENGTH) return false;
    const uint8_t *p = at;
    uint32_t length = 0;
    if (wsp_read_value_length(&p, remaining, &length) != kWspOk) return false;
    v->p = p;
    v->start = p;
    v->end = at + remaining;
    v->length = static_cast<uint16_t>(length);
    if (form == wsp_length_form::short_or_quoted && at[0] == 0) {
        *cursor = p;
        *status = kWspOk;
        return false;
    }
    return true;
}

// The closing every structured decoder shares: writes the built text as
// the code's line with `writer` and moves *cursor to where `v` stopped
// reading, as `rule` says; returns the writer's status.
inline int wsp_close_structured(uint32_t code, const wsp_text_builder &b, const wsp_value_reader &v, wsp_buffer *out,
                                wsp_line_writer writer, const uint8_t **cursor, wsp_cursor_rule rule) {
    return wsp_write_value_line(code, b.text, out, writer, cursor, v.p, rule);
}

// A parameter run decoder: wsp_decode_params or wsp_decode_param_list.
using wsp_param_run_decoder = int (*)(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity);

// When octets of the claimed length remain, appends `separator` (may be
// null) and then the rest of the length decoded by `decode` into the text
// (capacity 198).  False when the run would reach past the hard end, the
// separator does not fit, or the decoder fails: the callers' -214.
inline bool wsp_append_param_run(wsp_value_reader *v, wsp_text_builder *b, const char *separator,
                                 wsp_param_run_decoder decode) {
    if (v->length_used_up()) return true;
    uint16_t run = 0;
    if (separator != nullptr && !b->append(separator)) return false;
    if (!v->rest_as_run(&run)) return false;
    if (decode(&v->p, run, b->text, WSP_TEXT_CAPACITY) != kWspOk) return false;
    b->sync();
    return true;
}

#endif
