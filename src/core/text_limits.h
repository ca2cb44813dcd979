// The fixed text areas of the library and the limits derived from them.
// Every codec that builds or reads a text in one of these areas takes its
// sizes from here.
#ifndef WSP_CORE_TEXT_LIMITS_H
#define WSP_CORE_TEXT_LIMITS_H

#include <cstdint>

#include "tarnwspencdec.h"

// A value text built on the stack (header values, parameters, dates): the
// area, the capacity handed to the readers and writers (a text must stay
// below it), and the longest text a decoder writes.
inline constexpr uint16_t WSP_TEXT_AREA = 200;
inline constexpr uint16_t WSP_TEXT_CAPACITY = WSP_TEXT_AREA - 2;  // 198
inline constexpr uint16_t WSP_TEXT_LIMIT = WSP_TEXT_CAPACITY - 1; // 197

// A header name read from a block: the area and the capacity handed to the
// name reader (so at most 29 characters).
inline constexpr uint16_t WSP_NAME_AREA = 32;
inline constexpr uint16_t WSP_NAME_CAPACITY = WSP_NAME_AREA - 2; // 30

// The heap area of a long text value (at most 1600 characters).
inline constexpr uint16_t WSP_LONG_TEXT_AREA = 1601;

// A content-type text: the client's array and the capacity a decoded or
// encoded content type must stay below.
inline constexpr uint16_t WSP_CONTENT_TYPE_CAPACITY = WSP_CONTENT_TYPE_SIZE - 2; // 150

static_assert(WSP_TEXT_LIMIT == 197 && WSP_NAME_CAPACITY == 30 && WSP_CONTENT_TYPE_CAPACITY == 150);

#endif
