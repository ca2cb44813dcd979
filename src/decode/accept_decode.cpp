// Accept, Accept-Charset and Accept-Language: a bare code or token, or the
// general form with a length, a media/charset/language and parameters.
// Every line goes through the merging writer, so repeats share one line.
#include <cstring>

#include "decode.h"
#include "decoder_support.h"
#include "primitives.h"
#include "tables.h"
#include "text_builder.h"

namespace {

enum class accept_kind : uint8_t { media, charset, language, coding };

struct accept_table {
    accept_kind kind;
    const wsp_table *rows;
    uint16_t count;
};

// 0x3B and 0x3C have empty dispatch entries and never arrive here; their
// tables are kept so that a direct call behaves like their siblings.
bool accept_table_for(uint32_t code, accept_table *table) {
    switch (code) {
    case 0x00: *table = {accept_kind::media, &wsp_content_types, WSP_CONTENT_TYPE_ROWS}; return true;
    case 0x01:
    case 0x3B: *table = {accept_kind::charset, &wsp_charsets, WSP_CHARSET_ROWS}; return true;
    case 0x03: *table = {accept_kind::language, &wsp_language_run, WSP_LANGUAGE_RUN_ROWS}; return true;
    case 0x3C: *table = {accept_kind::coding, &wsp_content_codings, WSP_CONTENT_CODING_ROWS}; return true;
    default: return false;
    }
}

// The first row carrying a Short-integer code.  Accept-Language passes
// over the two-letter rows on purpose, so that "english" is written rather
// than "en".  The scan never looks past the table's last row: a code missing
// from the table finds nothing.
const char *accept_row_name(const accept_table &table, uint32_t code) {
    uint16_t from = 0;
    while (from < table.count) {
        int hit = wsp_find_code(*table.rows, table.count, code, from);
        if (hit < 0) return nullptr;
        const char *name = table.rows->name(static_cast<uint16_t>(hit));
        if (table.kind != accept_kind::language || std::strlen(name) != 2) return name;
        from = static_cast<uint16_t>(hit + 1);
    }
    return nullptr;
}

// What a bare Short-integer with no row becomes.
const char *accept_unknown_name(accept_kind kind) {
    if (kind == accept_kind::charset) return "unknown-charset";
    if (kind == accept_kind::language) return "unknown-language";
    return nullptr;
}

// Class 4 (a bare token) or class 5 (a bare code).  The cursor moves
// whatever the merging writer answers.
int accept_bare(const accept_table &table, uint32_t code, uint8_t cls, const uint8_t **cursor, wsp_buffer *out,
                uint16_t remaining) {
    const uint8_t *p = *cursor;
    wsp_text_builder value;
    if (cls == WSP_CLASS_TEXT) {
        int status = wsp_read_text_value(&p, value.text, WSP_CLASS_TEXT, remaining, WSP_TEXT_CAPACITY);
        if (status != kWspOk) return status;
        value.sync();
    } else {
        uint8_t short_code = 0;
        if (wsp_shortint_direct_decode(&p, &short_code) != kWspOk) return kWspErrFail;
        const char *name = accept_row_name(table, short_code);
        if (name == nullptr) name = accept_unknown_name(table.kind);
        if (name == nullptr) return kWspErrFail;
        if (!value.append(name, WSP_TEXT_LIMIT)) return kWspErrFail;
    }
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::merging, cursor, p, wsp_cursor_rule::always);
}

// The parameters after the media, charset or language: Accept takes a
// full parameter list, the other two a q-value alone.
int accept_params(const accept_table &table, const uint8_t **p, uint16_t described, uint16_t left, char *text) {
    wsp_bounded_run run = wsp_bound_run(described, left);
    int status = table.kind == accept_kind::charset || table.kind == accept_kind::language
                     ? wsp_decode_qvalue_param(p, run.run, text, WSP_TEXT_CAPACITY)
                     : wsp_decode_params(p, run.run, text, WSP_TEXT_CAPACITY);
    if (status != kWspOk || !run.cut) return status;
    // The run reached past the end of the block.  A parameter list would go
    // on to read the octet there; a q-value that ended inside the block
    // leaves octets of its run unread (-211), one that never started would
    // read that octet too.
    if (table.kind == accept_kind::charset || table.kind == accept_kind::language)
        return run.run == 0 ? kWspErrFail : kWspErrArg;
    return kWspErrFail;
}

// Classes 0 and 1: a Value-length, then the field.
int accept_general(const accept_table &table, uint32_t code, uint8_t cls, const uint8_t **cursor, wsp_buffer *out,
                   uint16_t remaining) {
    const uint8_t *start = *cursor;
    const uint8_t *p = start;
    uint32_t length32 = 0;
    if (wsp_read_value_length(&p, remaining, &length32) != kWspOk) return kWspErrFail;
    const uint16_t length = static_cast<uint16_t>(length32);
    if (cls == WSP_CLASS_SHORT_LENGTH && length == 0) {
        *cursor = p;
        return kWspOk;
    }
    const uint8_t *field = p;
    const uint16_t left = wsp_octets_left(start, remaining, field);
    // The field's first octet would lie past the end of the block.
    if (left == 0) return kWspErrFail;

    const uint8_t field_cls = wsp_class_of(*field);
    if (table.kind == accept_kind::charset && (field_cls == WSP_CLASS_LENGTH_QUOTE || field_cls == WSP_CLASS_QUOTE ||
                                               field_cls == WSP_CLASS_QUOTED))
        return kWspErrFail;
    if (table.kind == accept_kind::language && field_cls == WSP_CLASS_LENGTH_QUOTE) return kWspErrFail;

    const bool coded_by_long = table.kind == accept_kind::charset || table.kind == accept_kind::language;
    wsp_text_builder value;
    if (field_cls == WSP_CLASS_SHORT_INT) {
        uint8_t short_code = 0;
        if (wsp_shortint_direct_decode(&p, &short_code) != kWspOk) return kWspErrFail;
        // No "unknown-charset" or "unknown-language" in this form.
        const char *name = accept_row_name(table, short_code);
        if (name == nullptr || !value.append(name, WSP_TEXT_LIMIT)) return kWspErrFail;
    } else if (field_cls == WSP_CLASS_TEXT) {
        int status = table.kind == accept_kind::media || table.kind == accept_kind::coding
                         ? wsp_read_text_value(&p, value.text, WSP_CLASS_TEXT, left, WSP_TEXT_CAPACITY)
                         : wsp_read_text_string(&p, value.text, left, WSP_TEXT_CAPACITY);
        if (status != kWspOk) return status;
        value.sync();
    } else if (field_cls == WSP_CLASS_SHORT_LENGTH && coded_by_long) {
        uint32_t long_code = 0;
        int status = wsp_read_long_int(&p, &long_code, wsp_long_int_in_field(length, left));
        if (status != kWspOk) return status;
        // A Long-integer code takes the first row that carries it, two-letter
        // rows included: 0x81 gives "na", not "nauru".  Only the Short-integer
        // forms pass over the two-letter rows; clients see both as they are.
        const char *name = wsp_code_name(*table.rows, table.count, long_code);
        if (name == nullptr || !value.append(name, WSP_TEXT_LIMIT)) return kWspErrFail;
        // A code that fills the length exactly is the one bare value this
        // form lets through.
        if (wsp_octets_used(field, p) == length)
            return wsp_write_value_line(code, value.text, out, wsp_line_writer::merging, cursor, p,
                                        wsp_cursor_rule::on_ok);
    }
    // Any other class reads nothing: the whole length is parameters.

    const uint16_t consumed = wsp_octets_used(field, p);
    if (length <= consumed) {
        // A bare media, charset or language inside a length: refused on
        // purpose (the block decoder then drops the header and skips the
        // value).  Only the short forms carry a bare value.
        return kWspErrFail;
    }
    int status = accept_params(table, &p, static_cast<uint16_t>(length - consumed), wsp_octets_left(start, remaining, p),
                               value.text);
    if (status != kWspOk) return status;
    return wsp_write_value_line(code, value.text, out, wsp_line_writer::merging, cursor, p, wsp_cursor_rule::on_ok);
}

} // namespace

int wsp_dec_accept(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining) {
    accept_table table{};
    if (!accept_table_for(code, &table)) return kWspErrFail;
    if (remaining == 0) return kWspErrFail;
    const uint8_t cls = wsp_class_of(**cursor);
    if (cls == WSP_CLASS_TEXT || cls == WSP_CLASS_SHORT_INT) return accept_bare(table, code, cls, cursor, out, remaining);
    if (cls == WSP_CLASS_SHORT_LENGTH || cls == WSP_CLASS_LENGTH_QUOTE)
        return accept_general(table, code, cls, cursor, out, remaining);
    // A bare quoted text or Quote octet is not an Accept form.
    return kWspErrFail;
}
