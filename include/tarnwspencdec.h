/*
 * tarnwspencdec.h - WSP (WAP-230) header codec, plain C interface.
 *
 * libtarnwspencdec.so.1 converts HTTP-style header lines to the binary WSP
 * header encoding and back, and splits push PDUs into content type, header
 * block and body.  This header compiles as C (C89 and later, given
 * <stdint.h>) and as C++ (C++98 and later).
 *
 * Conventions
 * -----------
 * Statuses.  Every function that reports a status returns an int whose low
 *   16 bits carry a signed 16-bit code: WSP_OK (32767) on success or one of
 *   the negative WSP_ERR_* codes.  Compare the low 16 bits only
 *   ((int16_t)status == WSP_OK).  wsp_dec_varintLen reports its failure as
 *   the unsigned pattern 65322 (0xFF2A), the 16-bit form of -214.
 *
 * Cursor style.  Functions that take `const uint8_t **cursor` (readers) or
 *   `uint8_t **cursor` (writers) read or write at *cursor and advance it past
 *   what they consumed on success; on failure *cursor is left unchanged.
 *   Readers given a count of available octets (wsp_decode_content,
 *   wsp_dec_varint, wsp_dec_varintLen, wsp_decode_hdentity) read only
 *   octets below that count: a value whose terminator or last octet would
 *   be the first octet after it is refused as cut short, even when the
 *   caller's memory holds that octet.  wsp_dec_hdr, which knows the input
 *   buffer, reads the terminating NUL of an application header's name or
 *   text value, or of a code-page header's text value, on the first octet
 *   after the block when that octet lies below the input buffer's size
 *   (counted from data); values handed to the per-header decoders stay
 *   bounded by the block.
 *
 * Buffer style.  Functions that append to a wsp_buffer write at
 *   data + offset + length, test length against size first and add what
 *   they wrote to length.  size limits length, not offset + length: the
 *   writable region is data[0 .. offset + size), so a block must hold
 *   offset + size octets.  Nothing is written outside that region.  The only
 *   octet a writer may leave out while still counting it is a terminating
 *   NUL that would land exactly at data + offset + size: the encoders'
 *   Quoted-string of a text without a closing quotation mark, and the NUL
 *   after the last line of wsp_dec_hdr's text when that line fills the
 *   output exactly.  Writers never roll back partial output: discard a
 *   buffer after a failure.
 *
 * Sizes.  All lengths, sizes, offsets and counters are unsigned 16-bit and
 *   wrap at 0x10000; no buffer handled by the library exceeds 65535 bytes.
 *
 * Ownership.  The caller owns every record.  The library allocates (calloc,
 *   exact size, zero-filled) only the data blocks of buffers it creates and
 *   frees data blocks only through the wsp_dealloc_* functions or on the
 *   failure paths documented below.  A buffer whose flags bit 0
 *   (WSP_BUFFER_EXTERNAL) is set belongs to the caller and is never freed.
 *   Data blocks handed to the library for freeing must come from malloc/calloc.
 *   The release functions free `data` and set it to NULL; they never free a
 *   wsp_buffer record itself.
 *
 * Received push PDUs.  wsp_push_decoding hands out one data block through
 *   up to two holders; see the comment at wsp_push_decoding for which block
 *   that is and the one safe order of use and release.
 *
 * Text.  Text handed to the encoders is cut and lower-cased in place:
 *   pass writable text and do not expect it unchanged after the call.
 *
 * Threads.  No function keeps state between calls and the library has no
 *   mutable global data; calls on different records may run concurrently.
 */
#ifndef TARNWSPENCDEC_H
#define TARNWSPENCDEC_H

#include <stddef.h>
#include <stdint.h>

/* Version of this interface (also the library's version).  The shared
 * object's soname changes only with the major number. */
#define TARNWSPENCDEC_VERSION_MAJOR 1
#define TARNWSPENCDEC_VERSION_MINOR 0
#define TARNWSPENCDEC_VERSION_PATCH 0

#if defined(TARNWSPENCDEC_BUILD)
#define WSP_API __attribute__((visibility("default")))
#else
#define WSP_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status codes (low 16 bits of an int result) ------------------------ */
#define WSP_OK 32767             /* success */
#define WSP_ERR_ARG (-211)       /* required argument missing or unusable, bad shift, value of a refused form */
#define WSP_ERR_FAIL (-214)      /* every other failure: no memory, no room, malformed value, lookup miss */
#define WSP_ERR_TRUNCATED (-216) /* a text filled its scratch array, or a header line did not fit the output */
#define WSP_ERR_VERSION (-217)   /* unknown encoding version in the content-type encoder */
#define WSP_VARINTLEN_FAIL 65322 /* wsp_dec_varintLen's failure pattern (0xFF2A) */

#define WSP_BUFFER_EXTERNAL 0x01 /* flags bit 0: the caller owns data */
#define WSP_CONTENT_TYPE_SIZE 152

/* ---- Records ------------------------------------------------------------- */

/* A byte-buffer descriptor.  Valid bytes: `length` bytes at data + offset. */
typedef struct wsp_buffer {
    unsigned char *data; /* the bytes; library-created blocks come from calloc */
    uint32_t reserved;   /* not interpreted */
    uint16_t size;       /* capacity of data */
    uint16_t offset;     /* position of the first valid byte */
    uint16_t length;     /* valid bytes after offset (bytes written so far) */
    uint8_t flags;       /* bit 0: external, the library never frees data */
    uint8_t flags_spare; /* no meaning; zeroed together with flags */
} wsp_buffer;

/* A header-block holder: `length` encoded bytes at buffer->data + buffer->offset. */
typedef struct wsp_hdrbuf {
    uint16_t length;
    wsp_buffer *buffer;
} wsp_hdrbuf;

/* A body holder: content-type text and the buffer holding the body (or NULL). */
typedef struct wsp_bodybuf {
    char content_type[WSP_CONTENT_TYPE_SIZE];
    wsp_buffer *body;
} wsp_bodybuf;

/* Filled by wsp_push_decoding. */
typedef struct wsp_push_result {
    wsp_hdrbuf headers;
    wsp_bodybuf body;
} wsp_push_result;

/* Filled by wsp_decode_body; `body` is held inline. */
typedef struct wsp_body_result {
    char content_type[WSP_CONTENT_TYPE_SIZE];
    wsp_buffer body;
} wsp_body_result;

/* Capability item and record: only released by the library, never filled. */
typedef struct wsp_capab_item {
    uint32_t kind; /* not touched by the library */
    void *data;    /* heap block, freed by wsp_dealloc_capab */
} wsp_capab_item;

typedef struct wsp_capab {
    uint32_t client_sdu_size; /* the four leading fields are not touched by the library */
    uint32_t server_sdu_size;
    uint32_t protocol_options;
    uint32_t method_mor_push_mor;
    wsp_capab_item *first;
    wsp_capab_item *second;
    wsp_capab_item *third;
} wsp_capab;

/* Profile-text carrier for wsp_uaphdr_encode. */
typedef struct wsp_uaprof {
    uint32_t untouched[6];     /* not touched by the library */
    const unsigned char *text; /* profile text, not NUL-terminated */
    uint32_t untouched2[2];    /* not touched by the library */
    uint16_t length;           /* octets of text */
} wsp_uaprof;

/* One row of an assigned-number table or of a caller's code-page table:
 * a name and a code whose low bits hold the assigned number. */
typedef struct wsp_code_entry {
    const char *name;
    uint32_t code;
} wsp_code_entry;

/* Decoder side: an extension header code page known to the caller.
 * header_rows holds header_count rows followed by one end row. */
typedef struct wsp_dec_page {
    uint8_t page;
    uint8_t header_count; /* above 128: every header of the page is skipped */
    const wsp_code_entry *header_rows;
} wsp_dec_page;

typedef struct wsp_dec_page_list {
    uint16_t count;
    const wsp_dec_page *pages;
} wsp_dec_page_list;

/* Encoder side: the text lines of one header code page. */
typedef struct wsp_hdr_page {
    uint8_t page;       /* 1, or 0x10..0x7F for an extension page */
    uint8_t name_count; /* 0 for page 1; rows of names for an extension page */
    const wsp_code_entry *names;
    wsp_buffer text; /* lines at data + offset, `length` bytes, NUL-terminated, writable */
} wsp_hdr_page;

typedef struct wsp_hdr_page_list {
    uint16_t count;
    wsp_hdr_page *pages;
} wsp_hdr_page_list;

/* ---- Header blocks ------------------------------------------------------- */

/* Decodes the encoded header block into text lines ("name:value\n", repeated
 * headers merged with ",") appended to out (a NUL-terminated text whose
 * `length` counts the text already there, offset 0).  pages may be NULL;
 * version is 1..4 for encoding versions 1.1..1.4.
 * Returns WSP_OK; WSP_ERR_ARG (NULL block: block kept; missing buffer/data,
 * NULL or full output, bad shift, unknown page, unreadable code-page or
 * application text, failure while skipping a page: block released);
 * WSP_ERR_FAIL (a value that cannot be stepped over: block released);
 * WSP_ERR_TRUNCATED (a line did not fit: block released when a well-known
 * header's decoder reported it, kept for application and code-page headers);
 * any other writer status for application or code-page headers (released).
 * A line that does not fit the output is not always reported:
 *  - headers whose repeats share one line (merged with ","), application
 *    headers and code-page headers stop the call with WSP_ERR_TRUNCATED;
 *  - headers written one line each (numbers and dates such as Age,
 *    Content-Length, Date, Retry-After and If-Range, Content-MD5,
 *    Content-ID, Bearer-Indication, Push-Flag, X-Wap-Application-Id,
 *    X-Wap-Security, Warning, Range, Content-Disposition, Encoding-Version,
 *    the credential and challenge headers) and plain text values (such as
 *    Location, Server, User-Agent) are dropped when their line does not
 *    fit; decoding goes on and the call may still return WSP_OK.
 * Size out generously when every header matters.  Headers that cannot be
 * decoded are dropped the same way.  On the failures marked "released" the
 * block's data is freed; for a block from wsp_push_decoding that is the
 * body's data too. */
WSP_API int wsp_dec_hdr(wsp_hdrbuf *block, wsp_buffer *out, const wsp_dec_page_list *pages, int version);

/* Encodes page records of text lines into a header block appended to
 * out->buffer; on success out->length is the number of bytes appended.
 * version is "1.1".."1.4".  The page texts are modified in place.
 * Returns WSP_OK or WSP_ERR_FAIL.  On failure the output data is freed
 * (set to NULL), except when out/buffer checks fail: NULL holder or buffer
 * (nothing to free), external flag set, NULL data or size 0 (nothing freed). */
WSP_API int wsp_enc_hdr(wsp_hdr_page_list *pages, wsp_hdrbuf *out, const char *version);

/* ---- Content types ------------------------------------------------------- */

/* Decodes one Content-type value at *cursor (avail octets) into out, which
 * must hold at least 151 bytes (WSP_CONTENT_TYPE_SIZE recommended).
 * Returns WSP_OK (a broken parameter run or an over-long media text yields
 * an empty text and success); WSP_ERR_FAIL for a NULL argument, avail 0, a
 * malformed value or a text that does not fit out; WSP_ERR_ARG passed on
 * from parameter decoding. */
WSP_API int wsp_decode_content(const uint8_t **cursor, char *out, uint16_t avail);

/* Encodes a content-type text with parameters (text may be NULL; it is not
 * modified) and appends it to out.  version is "1.1".."1.4".
 * Returns WSP_OK, WSP_ERR_VERSION (unknown version), WSP_ERR_FAIL (no room,
 * no memory, refused parameter). */
WSP_API int wsp_encode_content(const char *text, wsp_buffer *out, const char *version);

/* ---- PDUs ---------------------------------------------------------------- */

/* Splits a push PDU (type octet at pdu->data + offset) into content type,
 * header block and body.  *spare names the caller's spare buffer record used
 * when pdu->flags bit 0 is set (copies are made into it).
 * Returns WSP_OK or WSP_ERR_FAIL (NULL pdu or result, empty PDU, unreadable
 * HeadersLen, headers claiming more than the PDU holds, an external PDU
 * without a spare, no memory, any failure once data is present);
 * content-type failures in a PDU without data are passed on unchanged.
 * HeadersLen 0 frees an own PDU's data and leaves the result empty.
 *
 * Which block the result holds:
 *  - own PDU (flags bit 0 clear): the PDU's own block, re-pointed (its
 *    offset and length change); it now belongs to the result;
 *  - external PDU (bit 0 set): the PDU stays the caller's, untouched; a
 *    fresh calloc'ed block is installed in *spare (its data pointer and
 *    flags are overwritten: pass a spare record that holds no block).
 * Without data after the headers, result->headers.buffer describes the
 * header block and result->body.body is NULL.  With data, headers and body
 * share that ONE block and normally the same wsp_buffer record:
 * result->body.body covers the header block followed by the data (the data
 * starts result->headers.length octets in), and result->headers.buffer
 * names the same record (or is NULL when there are no header octets).
 *
 * Safe order of use and release:
 *   1. wsp_dec_hdr(&result->headers, ...)  -- before step 2, which moves
 *      the bytes; a failure that releases the block releases the body too;
 *   2. either keep the body in place and finish with
 *      wsp_dealloc_hdrbuf(&result->headers) and
 *      wsp_dealloc_bodybuf(&result->body) (the second finds data NULL), or
 *      hand it over with wsp_decode_body(&result->body, &out) and free
 *      out.body.data yourself, once, WITHOUT releasing result->headers
 *      afterwards: the holder still names the same block.
 * Freeing the block yourself and also calling a wsp_dealloc_* function on
 * the result, or calling wsp_dealloc_hdrbuf after wsp_decode_body and then
 * freeing out.body.data, frees it twice. */
WSP_API int wsp_push_decoding(wsp_buffer *pdu, wsp_push_result *result, wsp_buffer **spare);

/* Copies count bytes at *cursor into a fresh calloc'ed block described by
 * target (offset 0, size = length = count) and advances the cursor.  The
 * target's previous data pointer is overwritten, not freed.
 * Returns WSP_OK or WSP_ERR_FAIL (NULL argument; no memory: target->data set
 * to NULL). */
WSP_API int wsp_decode_hdr(wsp_buffer *target, const uint8_t **cursor, uint16_t count);

/* Decodes the content type at *cursor and places headers and body of a push
 * PDU that carries a body.  *cursor is read, not advanced.
 * Returns WSP_OK, WSP_ERR_FAIL (NULL argument, a content type longer than
 * headers_length, no memory, an external PDU whose body->body is NULL), or
 * the content-type decoder's status. */
WSP_API int wsp_decode_hdentity(const uint8_t **cursor, wsp_buffer *pdu, wsp_push_result *result,
                                wsp_bodybuf *body, uint16_t headers_length, uint16_t remaining);

/* Hands the source's body bytes, moved to the start of their block, over to
 * out; the source's body pointer becomes NULL and the caller frees
 * out->body.data.  For a result of wsp_push_decoding the bytes handed over
 * are the header block followed by the data (see there: the header holder
 * still names the same block and must not be released as well).  Without a
 * body, out->body.data is NULL and the content type empty.  Always returns
 * WSP_OK. */
WSP_API int wsp_decode_body(wsp_bodybuf *source, wsp_body_result *out);

/* Appends one Profile header per line of the profile text to the block.
 * Reports nothing: on failure the holder is left as it was. */
WSP_API void wsp_uaphdr_encode(wsp_hdrbuf *block, const wsp_uaprof *profile);

/* ---- Primitives ---------------------------------------------------------- */

/* Writes value as a uintvar at *cursor (no room check: 5 bytes suffice) and
 * stores the octet count.  Returns WSP_OK, or WSP_ERR_FAIL for a NULL
 * argument. */
WSP_API int wsp_enc_varint(uint32_t value, uint8_t **cursor, uint8_t *count);

/* Reads a uintvar of at most 5 octets within avail octets.
 * Returns WSP_OK or WSP_ERR_FAIL (NULL argument, leading 0x80, too long,
 * past avail). */
WSP_API int wsp_dec_varint(const uint8_t **cursor, uint32_t *value, uint16_t avail);

/* Reads a uintvar that must occupy exactly `octets` octets.
 * Returns WSP_OK or WSP_VARINTLEN_FAIL (65322) for every failure, a NULL
 * argument included. */
WSP_API int wsp_dec_varintLen(const uint8_t **cursor, uint16_t octets, uint32_t *value, uint16_t avail);

/* Reads a Short-integer (octet 128..255; value = octet & 0x7F).
 * Returns WSP_OK or WSP_ERR_FAIL (NULL argument, octet below 128). */
WSP_API int wsp_shortint_direct_decode(const uint8_t **cursor, uint8_t *value);

/* Writes value modulo 256 as a Short-integer (no room check).  Returns
 * WSP_OK or WSP_ERR_FAIL (NULL argument, bit 7 of value modulo 256 set). */
WSP_API int wsp_short_int_encodeto(uint8_t **cursor, uint32_t value);

/* Appends text as a Token-text (characters, then NUL) in buffer style.
 * Returns WSP_OK or WSP_ERR_FAIL (NULL argument, no room, separator or
 * control character; characters before a refused one stay written, length
 * is not changed). */
WSP_API int wsp_tokentext_encode_buff(const char *text, wsp_buffer *out);

/* Splits the text at *pos in place at the one-character delimiter delim,
 * leaving double-quoted sections whole; returns the token or NULL. */
WSP_API char *wsp_strtoken(char **pos, const char *delim);

/* ---- Release -------------------------------------------------------------- */

/* Frees block->buffer->data unless NULL or external; NULL holder is a no-op. */
WSP_API void wsp_dealloc_hdrbuf(wsp_hdrbuf *block);
/* Frees body->body->data unless NULL or external; NULL holder is a no-op. */
WSP_API void wsp_dealloc_bodybuf(wsp_bodybuf *body);
/* Frees the second, third and first items (data, then item). */
WSP_API void wsp_dealloc_capab(wsp_capab *capab);

/* ---- Build switches -------------------------------------------------------- */
WSP_API int device_is_sar_enabled(void);               /* 1 */
WSP_API int device_is_optionTPI_support_enabled(void); /* 1 */
WSP_API int device_Is_SIA_Available(void);             /* 0 */
WSP_API int device_fallback_to_byterange(void);        /* 1 */

#ifdef __cplusplus
}
#endif

/* Layout checks: the records cross a process-wide ABI.  C++11 and later use
 * static_assert; older C++ and every C use a negative-size array typedef. */
#if defined(__cplusplus) && __cplusplus >= 201103L
#define WSP_LAYOUT_CHECK(cond, name) static_assert(cond, #name)
#else
#define WSP_LAYOUT_CHECK(cond, name) typedef char wsp_layout_check_##name[(cond) ? 1 : -1]
#endif
#if defined(__SIZEOF_POINTER__) && __SIZEOF_POINTER__ == 4
WSP_LAYOUT_CHECK(sizeof(wsp_buffer) == 16, wsp_buffer);
WSP_LAYOUT_CHECK(sizeof(wsp_hdrbuf) == 8, wsp_hdrbuf);
WSP_LAYOUT_CHECK(sizeof(wsp_bodybuf) == 156, wsp_bodybuf);
WSP_LAYOUT_CHECK(sizeof(wsp_push_result) == 164, wsp_push_result);
WSP_LAYOUT_CHECK(sizeof(wsp_body_result) == 168, wsp_body_result);
WSP_LAYOUT_CHECK(sizeof(wsp_capab) == 28, wsp_capab);
WSP_LAYOUT_CHECK(sizeof(wsp_uaprof) == 40, wsp_uaprof);
WSP_LAYOUT_CHECK(offsetof(wsp_buffer, size) == 8, wsp_buffer_size);
WSP_LAYOUT_CHECK(offsetof(wsp_buffer, flags) == 14, wsp_buffer_flags);
WSP_LAYOUT_CHECK(offsetof(wsp_uaprof, text) == 24, wsp_uaprof_text);
WSP_LAYOUT_CHECK(offsetof(wsp_uaprof, length) == 36, wsp_uaprof_length);
WSP_LAYOUT_CHECK(offsetof(wsp_capab, first) == 16, wsp_capab_first);
#elif defined(__SIZEOF_POINTER__) && __SIZEOF_POINTER__ == 8
WSP_LAYOUT_CHECK(sizeof(wsp_buffer) == 24, wsp_buffer);
WSP_LAYOUT_CHECK(sizeof(wsp_hdrbuf) == 16, wsp_hdrbuf);
WSP_LAYOUT_CHECK(sizeof(wsp_bodybuf) == 160, wsp_bodybuf);
WSP_LAYOUT_CHECK(sizeof(wsp_push_result) == 176, wsp_push_result);
WSP_LAYOUT_CHECK(sizeof(wsp_body_result) == 176, wsp_body_result);
WSP_LAYOUT_CHECK(sizeof(wsp_capab) == 40, wsp_capab);
WSP_LAYOUT_CHECK(sizeof(wsp_uaprof) == 48, wsp_uaprof);
WSP_LAYOUT_CHECK(offsetof(wsp_buffer, size) == 12, wsp_buffer_size);
WSP_LAYOUT_CHECK(offsetof(wsp_buffer, flags) == 18, wsp_buffer_flags);
WSP_LAYOUT_CHECK(offsetof(wsp_uaprof, text) == 24, wsp_uaprof_text);
WSP_LAYOUT_CHECK(offsetof(wsp_uaprof, length) == 40, wsp_uaprof_length);
WSP_LAYOUT_CHECK(offsetof(wsp_capab, first) == 16, wsp_capab_first);
#endif

#endif /* TARNWSPENCDEC_H */
