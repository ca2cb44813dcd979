// The explain engine: walks a header block with the same steps as the
// library's block decoder (wsp_dec_hdr), calling the library's own value
// decoders, readers and line writers into a working output text, and
// records for every entry what it is and what became of it.  The text and
// the status it ends with are those wsp_dec_hdr gives for the same block,
// version and page list; the tests hold it to that.
#ifndef WSPTOOL_EXPLAIN_BLOCK_WALK_H
#define WSPTOOL_EXPLAIN_BLOCK_WALK_H

#include <cstdint>

#include "entry.h"
#include "tarnwspencdec.h"

namespace wsptool::explain {

struct WalkOptions {
    int version = 4;                         // 1..4 for encoding versions 1.1..1.4
    const wsp_dec_page_list *pages = nullptr; // extension code pages, may be null
    uint16_t output_size = 0xFFFF;           // room of the output text, as the caller sizes it
    uint16_t base_offset = 0;                // added to every entry offset (the block's place in a PDU)
};

// `block` holds `length` octets; nothing past them is read.
Explanation explain_block(const uint8_t *block, uint16_t length, const WalkOptions &options);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_BLOCK_WALK_H
