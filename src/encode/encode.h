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

// Size of the Cookie test's scratch area in wsp_enc_hdr.
inline constexpr uint16_t WSP_COOKIE_SCRATCH = 200;

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

// ---- value encoders, one per family of headers ----
int wsp_encode_number_or_text(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);   // A
int wsp_encode_accept_encoding(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);  // B
int wsp_encode_token_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);       // C
int wsp_encode_allow(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);            // D
int wsp_encode_cache_control(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);    // E
int wsp_encode_pragma(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);           // F
int wsp_encode_text_list(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);        // G
int wsp_encode_credentials(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);      // H
int wsp_encode_disposition(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);      // I
int wsp_encode_content_md5(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);      // J
int wsp_encode_content_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);    // K
int wsp_encode_range(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);            // L
int wsp_encode_retry_after(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);      // M
int wsp_encode_vary(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);             // N
int wsp_encode_warning(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);          // O
int wsp_encode_app_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);           // P
int wsp_encode_accept_app(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);       // Q
int wsp_encode_bearer_push_flag(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index); // R
int wsp_encode_challenge(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);        // S
int wsp_encode_expect(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);           // T
int wsp_encode_te(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);               // U
int wsp_encode_trailer(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);          // V
int wsp_encode_content_id(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);       // W
int wsp_encode_cookie(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);           // X
int wsp_encode_encoding_version(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index); // Y
int wsp_encode_security(uint8_t code, char *value, wsp_buffer *out, uint8_t version_index);         // Z

// Writes the header's code octet (code | 0x80) with the Short-integer
// writer; any failure (including the octet filling the output exactly) is
// -214, which is the "room check" every family makes after its code octet.
int wsp_write_code_octet(uint8_t code, wsp_buffer *out);

#endif
