// Build-time feature switches consulted inside the library.  The four
// exported switches (device_is_sar_enabled and friends) are declared in the
// public header and are never consulted here.
#ifndef WSP_CORE_SWITCHES_H
#define WSP_CORE_SWITCHES_H

// 1: a Content-ID value may start with a quotation mark or a plain text
// octet; 0: only the quotation-mark form is accepted.
int device_content_id_text_allowed();
// 1: Encoding-Version lines are written as application headers.
int device_encoding_version_as_text();

#endif
