// The Accept family of list encoders: Accept (media types with parameters)
// and the common encoder of Accept-Charset, Accept-Language and
// Accept-Encoding (items with an optional q).  Every comma element becomes
// a header field of its own: header code octet, then the element.
#include <cstdint>
#include <cstring>

#include "encode.h"
#include "encoder_support.h"
#include "primitives.h"
#include "scratch.h"
#include "tables.h"

namespace {

// "*" in Accept-Charset is Any-charset (0), in Accept-Encoding any coding (3).
constexpr uint32_t kAnyCharset = 0;
constexpr uint32_t kAnyCoding = 3;

// Splits a trimmed element at ";": returns the first part (trimmed) and
// leaves *rest on what follows.  An element that yields no first part (an
// empty one) gives an empty item.
char *cut_item(char *element, char **rest) {
    *rest = element;
    char *item = wsp_strtoken(rest, ";");
    if (item == nullptr) item = *rest;
    wsp_trim(&item);
    return item;
}

// The header code octet that opens every element; an output left exactly
// full by it is refused as well.
bool write_element_code(uint16_t code, wsp_buffer *out) { return wsp_ok(wsp_append_short_int(code, out)); }

// A list item without parameters: a known code in the list form, an
// unknown item as plain text and NUL.
int write_bare_item(int32_t code, const char *item, wsp_buffer *out) {
    int status = code >= 0 ? wsp_write_media_code(static_cast<uint32_t>(code), out) : wsp_append_plain_text(item, out);
    return wsp_ok(status) ? kWspOk : kWspErrFail;
}

// Inside a parameterised element the item is an Integer-value when known,
// else a Text-string (with the 127 quote for a first octet of 128 or above).
int write_item_in_scratch(int32_t code, const char *item, wsp_buffer *scratch) {
    int status = code >= 0 ? wsp_append_integer(static_cast<uint32_t>(code), scratch)
                           : wsp_append_text_string(item, scratch);
    return wsp_ok(status) ? kWspOk : kWspErrFail;
}

// An item and the parameters after it (`params`, cut at ";"): the bare item
// when there are none, else the general form, a Value-length around the
// item and then every parameter as `write_param(param, index, scratch)`
// writes it, built in a scratch of `scratch_size` octets.  -214 when any
// step fails.
template <typename WriteParam>
int write_item_with_params(int32_t code, const char *item, char *params, uint16_t scratch_size, wsp_buffer *out,
                           WriteParam write_param) {
    char *param = wsp_enc_next_element(&params, ";");
    if (param == nullptr) return write_bare_item(code, item, out);
    int status = wsp_append_built_value(scratch_size, out, [&](wsp_buffer *scratch) {
        if (!wsp_ok(write_item_in_scratch(code, item, scratch))) return kWspErrFail;
        for (uint16_t index = 0; param != nullptr; ++index, param = wsp_enc_next_element(&params, ";"))
            if (!wsp_ok(write_param(param, index, scratch))) return kWspErrFail;
        return kWspOk;
    });
    return wsp_ok(status) ? kWspOk : kWspErrFail;
}

// One "q" or "q=value" parameter of an Accept-Charset/-Language/-Encoding
// element, written without a parameter code: the q-value, or 00 without one.
int write_q_param(char *param, wsp_buffer *scratch) {
    char *pos = param;
    char *name = wsp_enc_next_element(&pos, "=");
    if (name == nullptr) return kWspErrFail;
    if (std::strcmp(name, wsp_param_names.name(0)) != 0) return kWspErrFail;
    char *value = wsp_enc_next_element(&pos, "=");
    if (value == nullptr) {
        const uint8_t zero = 0;
        return wsp_ok(wsp_append_bytes(&zero, 1, scratch)) ? kWspOk : kWspErrFail;
    }
    uint8_t fallback = 1;
    return wsp_ok(wsp_encode_param_value(value, 0x00, scratch, &fallback)) ? kWspOk : kWspErrFail;
}

} // namespace

int wsp_encode_accept(uint16_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    if (version_index > 3) return kWspErrVersion;
    if (value == nullptr || out == nullptr) return kWspErrFail;
    const uint16_t media_rows = wsp_version_limits[version_index].content_type_rows;

    // Each element's scratch is sized on the whole value as handed in,
    // taken before the value is trimmed and cut into elements.
    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *list = wsp_enc_prepare(value, true);

    char *element = wsp_enc_next_element(&list, ",");
    while (element != nullptr) {
        char *params = nullptr;
        char *media = cut_item(element, &params);
        if (!write_element_code(code, out)) return kWspErrFail;

        int row = wsp_find_name(wsp_content_types, media_rows, media, false);
        int32_t media_code = row >= 0 ? static_cast<int32_t>(wsp_content_types.code(static_cast<uint16_t>(row))) : -1;

        auto write_param = [version_index](char *param, uint16_t, wsp_buffer *scratch) {
            return wsp_encode_param(param, scratch, version_index, nullptr);
        };
        if (!wsp_ok(write_item_with_params(media_code, media, params, scratch_size, out, write_param)))
            return kWspErrFail;
        element = wsp_enc_next_element(&list, ",");
    }
    return kWspOk;
}

int wsp_encode_accept_qlist(uint16_t code, char *value, wsp_buffer *out) {
    const wsp_table *table = nullptr;
    uint16_t rows = 0;
    switch (code) {
    case WSP_HDR_ACCEPT_CHARSET:
    case WSP_HDR_ACCEPT_CHARSET_1_3:
        table = &wsp_charsets;
        rows = WSP_CHARSET_ROWS;
        break;
    case WSP_HDR_ACCEPT_LANGUAGE:
        // Two-letter rows first, then the names: "en" and "english" agree.
        table = &wsp_language_run;
        rows = WSP_LANGUAGE_RUN_ROWS;
        break;
    case WSP_HDR_ACCEPT_ENCODING_1_3:
        table = &wsp_content_codings;
        rows = WSP_CONTENT_CODING_ROWS;
        break;
    default:
        return kWspErrFail;
    }
    // The older Accept-Charset and Accept-Language need at least one element
    // and take one parameter per element; the newer codes do not.
    const bool strict = code == WSP_HDR_ACCEPT_CHARSET || code == WSP_HDR_ACCEPT_LANGUAGE;
    if (value == nullptr || out == nullptr) return kWspErrFail;

    const uint16_t scratch_size = wsp_enc_scratch_size(value);
    char *list = wsp_enc_prepare(value, true);

    uint16_t written = 0;
    char *element = wsp_enc_next_element(&list, ",");
    if (element == nullptr) return strict ? kWspErrArg : kWspOk;
    while (element != nullptr) {
        char *params = nullptr;
        char *item = cut_item(element, &params);
        if (!write_element_code(code, out)) return kWspErrFail;

        int32_t item_code = -1;
        if (code == WSP_HDR_ACCEPT_CHARSET_1_3 && std::strcmp(item, "*") == 0) {
            item_code = kAnyCharset;
        } else if (code == WSP_HDR_ACCEPT_ENCODING_1_3 && std::strcmp(item, "*") == 0) {
            item_code = kAnyCoding;
        } else {
            int row = wsp_find_name(*table, rows, item, false);
            if (row >= 0) item_code = static_cast<int32_t>(table->code(static_cast<uint16_t>(row)));
        }

        // The older codes take one parameter per element.
        auto write_param = [strict](char *param, uint16_t index, wsp_buffer *scratch) {
            if (strict && index > 0) return kWspErrFail;
            return write_q_param(param, scratch);
        };
        if (!wsp_ok(write_item_with_params(item_code, item, params, scratch_size, out, write_param)))
            return kWspErrFail;
        ++written;
        element = wsp_enc_next_element(&list, ",");
    }
    return (strict && written == 0) ? kWspErrArg : kWspOk;
}

int wsp_encode_qlist_entry(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index) {
    (void)version_index; // the lists carry no version-dependent codes
    return wsp_encode_accept_qlist(code, value, out);
}
