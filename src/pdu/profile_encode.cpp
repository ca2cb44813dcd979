// Profile headers: each line of a user-agent profile text becomes one
// Profile header (code 0x35) appended to an encoded header block.
#include <cstdlib>
#include <cstring>

#include "pdu.h"
#include "primitives.h"
#include "tables.h"

namespace {


// Re-entrant line splitting with strtok's rules: runs of delimiters are one
// separator, leading and trailing ones yield no token.
char *next_line(char **save) {
    char *s = *save;
    while (*s == '\n') ++s;
    if (*s == '\0') {
        *save = s;
        return nullptr;
    }
    char *token = s;
    while (*s != '\0' && *s != '\n') ++s;
    if (*s == '\n') *s++ = '\0';
    *save = s;
    return token;
}

} // namespace

int wsp_uaphdr_lines(uint8_t code, char *text, wsp_buffer *out) {
    if (wsp_append_short_int(code, out) != kWspOk) return kWspErrFail;
    wsp_trim(&text);
    char *save = text;
    char *line = next_line(&save);
    // No line at all: the code octet stays written with no value after it.
    while (line != nullptr) {
        wsp_trim(&line);
        int status = wsp_append_text_string(line, out);
        if (status != kWspOk) return status;
        line = next_line(&save);
        if (line != nullptr && wsp_append_short_int(code, out) != kWspOk) return kWspErrFail;
    }
    return kWspOk;
}

extern "C" WSP_API void wsp_uaphdr_encode(wsp_hdrbuf *block, const wsp_uaprof *profile) {
    if (profile == nullptr || profile->text == nullptr || block == nullptr || block->buffer == nullptr) return;
    wsp_buffer *b = block->buffer;
    const uint16_t saved_holder_length = block->length;
    const uint16_t n = b->length;
    const uint16_t saved_size = b->size;
    const uint16_t l = profile->length;
    // (A snapshot of the block's first n bytes used to be taken here and
    // freed unused; nothing observable depends on it, so it is not made.)

    auto *text = static_cast<char *>(std::calloc(static_cast<size_t>(l) + 1, 1));
    if (text == nullptr) return;
    std::memcpy(text, profile->text, l);

    if (b->data != nullptr && b->size >= static_cast<uint16_t>(l + n)) {
        // Direct append; on failure the old lengths come back and the bytes
        // written past them are simply abandoned.
        if (wsp_uaphdr_lines(WSP_HDR_PROFILE, text, b) != kWspOk) {
            block->length = saved_holder_length;
            b->length = n;
            b->size = saved_size;
        } else {
            block->length = b->length;
        }
        std::free(text);
        return;
    }

    // A larger block: room for the text and one code octet per line feed
    // (one when there is none).  It leaves no room for the NUL of each
    // Text-string nor for the Short-integer's last-octet rule, so most texts
    // of several lines fail here and the block stays as it was; the sizing is
    // kept on purpose.
    uint16_t line_feeds = 0;
    for (uint16_t i = 0; i < l; ++i)
        if (text[i] == '\n') ++line_feeds;
    if (line_feeds == 0) line_feeds = 1;
    const uint16_t new_size = static_cast<uint16_t>(l + n + line_feeds);
    // With a wrapped size the old bytes would not fit: give up unchanged.
    // Old bytes are taken from the start of data (offset is not applied) and
    // never beyond the buffer's size.
    if (n > new_size || (n != 0 && (b->data == nullptr || n > b->size))) {
        std::free(text);
        return;
    }
    auto *fresh = static_cast<unsigned char *>(std::calloc(new_size ? new_size : 1, 1));
    if (fresh == nullptr) {
        std::free(text);
        return;
    }
    if (n != 0) std::memcpy(fresh, b->data, n);
    wsp_buffer temp{};
    temp.data = fresh;
    temp.size = new_size;
    temp.length = n;
    if (wsp_uaphdr_lines(WSP_HDR_PROFILE, text, &temp) == kWspOk) {
        if (b->data != nullptr && (b->flags & WSP_BUFFER_EXTERNAL) == 0) std::free(b->data);
        b->data = fresh;
        b->reserved = 0;
        b->size = new_size;
        b->offset = 0;
        b->length = temp.length;
        b->flags = 0;
        b->flags_spare = 0;
        block->length = temp.length;
    } else {
        std::free(fresh);
    }
    std::free(text);
}
