// Header decoding (binary to text): the header block walk, its three line
// writers, the content-type and parameter decoders, and the per-header value
// decoders reached through wsp_header_decoders.
#ifndef WSP_DECODE_DECODE_H
#define WSP_DECODE_DECODE_H

#include <cstdint>

#include "tables.h"
#include "tarnwspencdec.h"
#include "text_limits.h"

// A well-known header value decoder: reads the value at *cursor (remaining
// octets to the block's end), writes its line and leaves *cursor past the
// value on WSP_OK.
using wsp_header_decoder = int (*)(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);

// 72 entries, index = header code 0x00..0x47; nullptr = header skipped.
extern const wsp_header_decoder wsp_header_decoders[WSP_HEADER_NAME_ROWS];

// ---- line writers ----
int wsp_add_header_line(wsp_buffer *out, const char *name, const char *value);
int wsp_append_header_line(wsp_buffer *out, const char *name, const char *value);
int wsp_add_raw_header_line(wsp_buffer *out, const char *name, const uint8_t *value, uint16_t size);

// ---- Value-length ----
// Reads the Value-length at *cursor: class 0, the octet itself, which must not
// exceed remaining; class 1, the octet 31 and a uintvar bounded by
// remaining - 1.  On success *cursor is past the length octets and *length
// holds the length (callers decide what a length of 0 means).  Any other
// class or a failed uintvar gives -214 with *cursor unchanged.
int wsp_read_value_length(const uint8_t **cursor, uint16_t remaining, uint32_t *length);

// ---- stepping over values ----
int wsp_skip_value(const uint8_t **cursor, uint16_t remaining);
int wsp_value_size(const uint8_t *value, uint32_t *size, uint16_t remaining);

// ---- content types and parameters ----
int wsp_decode_params(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity);
int wsp_decode_param(const uint8_t **cursor, uint16_t remaining, char *out, uint16_t capacity);
int wsp_decode_param_value(const uint8_t **cursor, char *out, uint8_t code, uint16_t remaining);
int wsp_decode_integer_text(const uint8_t **cursor, char *out, uint16_t remaining);
int wsp_decode_param_list(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity);
int wsp_decode_single_param(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity);
int wsp_decode_qvalue_param(const uint8_t **cursor, uint16_t run, char *out, uint16_t capacity);
int wsp_decode_field_name_list(const uint8_t **cursor, char *out, uint16_t run);

// ---- single-value header decoders ----
int wsp_dec_accept(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_text_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_listed_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_allow(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_date_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_integer_value(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_vary(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_content_id(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_bearer(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_push_flag(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_app_id(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_accept_app(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_trailer(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_retry_after(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_if_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_content_md5(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_pragma(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_security(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);

// ---- structured header decoders ----
int wsp_dec_cache_control(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_credentials(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_content_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_disposition(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_range(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_encoding_version(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_profile_warning(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_set_cookie(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);
int wsp_dec_challenge(uint32_t code, const uint8_t **cursor, wsp_buffer *out, uint16_t remaining);

#endif
