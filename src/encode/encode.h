// Header encoding (text to binary): the header block encoder, the content
// type and parameter encoders, the Accept list encoders and the per-header
// value encoders reached through wsp_header_encoders.
#ifndef WSP_ENCODE_ENCODE_H
#define WSP_ENCODE_ENCODE_H

#include <cstdint>

#include "tables.h"
#include "tarnwspencdec.h"

// Version index: 0..3 for "1.1".."1.4", 4 when the text is not recognised.
inline constexpr uint8_t WSP_VERSION_UNKNOWN = 4;

// A well-known header value encoder: writes the header's code octet and the
// encoded value text (writable, cut in place) to out.
using wsp_header_encoder = int (*)(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);

// 72 entries, index = header code 0x00..0x47; nullptr = no encoder.
extern const wsp_header_encoder wsp_header_encoders[WSP_HEADER_NAME_ROWS];

// ---- content types, parameters, Accept lists ----
int wsp_encode_param(char *text, wsp_buffer *out, uint8_t version_index, const char *media);
int wsp_encode_param_value(char *value, uint8_t code, wsp_buffer *out, uint8_t *fallback);
int wsp_encode_accept(uint16_t code, char *value, wsp_buffer *out, uint8_t version_index);
int wsp_encode_accept_qlist(uint16_t code, char *value, wsp_buffer *out);
int wsp_write_general_form(wsp_buffer *out, const wsp_buffer *scratch);
// Writes a known media code (from wsp_content_types) the way the list
// encoders do: a Short-integer up to 127, else length octet plus Long-integer.
int wsp_write_media_code(uint32_t code, wsp_buffer *out);

// The Accept-Charset / Accept-Language / Accept-Encoding list encoder in the
// shape of a table entry.
int wsp_encode_qlist_entry(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);

// ---- value encoders, one for each kind of value ----
// Numbers (Age, Content-Length, Max-Forwards) and plain texts (Content-Base,
// Etag, Server, User-Agent ...).
int wsp_encode_number_or_text(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Accept-Encoding on its first code: content codings, one header each.
int wsp_encode_accept_encoding(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Token lists looked up in a value table (Accept-Ranges, Connection,
// Content-Encoding, Content-Language, Public, Transfer-Encoding).
int wsp_encode_token_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Allow: method names or method numbers.
int wsp_encode_allow(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Cache-Control directives, with and without arguments.
int wsp_encode_cache_control(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Pragma: no-cache or one parameter.
int wsp_encode_pragma(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Text lists (If-Match, If-None-Match, Upgrade, Via).
int wsp_encode_text_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Credentials (Authorization, Proxy-Authorization).
int wsp_encode_credentials(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Content-Disposition with its parameters.
int wsp_encode_disposition(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Content-MD5: sixteen hexadecimal octets.
int wsp_encode_content_md5(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Content-Range: first position and entity length.
int wsp_encode_content_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Range: byte ranges and suffix ranges.
int wsp_encode_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Retry-After: a date or a number of seconds.
int wsp_encode_retry_after(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Vary: header names.
int wsp_encode_vary(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Warning: code, agent and text.
int wsp_encode_warning(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// X-Wap-Application-Id: one push application.
int wsp_encode_app_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Accept-Application: push applications, one header each.
int wsp_encode_accept_app(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Bearer-Indication and Push-Flag: one small number.
int wsp_encode_bearer_push_flag(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Challenges (Proxy-Authenticate, WWW-Authenticate).
int wsp_encode_challenge(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Expect: 100-continue or expressions with parameters.
int wsp_encode_expect(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// TE: transfer codings with a q-value.
int wsp_encode_te(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Trailer: header names.
int wsp_encode_trailer(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Content-ID: a quoted identifier in angle brackets.
int wsp_encode_content_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Cookie: a version and the cookies that follow it.
int wsp_encode_cookie(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Encoding-Version, with or without a code page.
int wsp_encode_encoding_version(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// X-Wap-Security: close-subordinate.
int wsp_encode_security(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// Dates (Date, Expires, If-Modified-Since, If-Unmodified-Since,
// Last-Modified, X-Wap-Tod): an HTTP-date as a Long-integer of seconds.
int wsp_encode_date_header(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);
// If-Range: a date, or an entity tag as text.
int wsp_encode_if_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);

// Writes the header's code octet (code | 0x80) with the Short-integer
// writer; any failure (including the octet filling the output exactly) is
// -214: the room check every value encoder makes after its code octet.
int wsp_write_code_octet(uint8_t code, wsp_buffer *out);

#endif
