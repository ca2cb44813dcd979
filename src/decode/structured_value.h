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

// Opens the common length form at `at` (remaining octets to the hard end):
// class 1 is the octet 31 and a uintvar bounded by remaining - 1, class 0
// the octet itself, which must not exceed remaining.  Any other class or a
// bad length gives -214.  *empty is set for a Short-length of 0, the form
// that callers pass over without writing a line.
inline int wsp_open_length_form(const uint8_t *at, uint16_t remaining, wsp_value_reader *v, bool *empty) {
    const uint8_t *p = at;
    uint32_t length = 0;
    if (remaining == 0) return kWspErrFail;
    if (wsp_read_value_length(&p, remaining, &length) != kWspOk) return kWspErrFail;
    v->p = p;
    v->start = p;
    v->end = at + remaining;
    v->length = static_cast<uint16_t>(length);
    *empty = at[0] == 0;
    return kWspOk;
}

// The opening every structured decoder shares: the length form at *cursor.
// A Short-length of 0 moves *cursor past its octet and sets *done, and the
// caller then returns WSP_OK without writing a line.
inline int wsp_open_structured(const uint8_t **cursor, uint16_t remaining, wsp_value_reader *v, bool *done) {
    bool empty = false;
    if (wsp_open_length_form(*cursor, remaining, v, &empty) != kWspOk) return kWspErrFail;
    if (empty) *cursor = v->p;
    *done = empty;
    return kWspOk;
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
    if (decode(&v->p, run, b->text, WSP_DEC_SCRATCH) != kWspOk) return false;
    b->sync();
    return true;
}

#endif
