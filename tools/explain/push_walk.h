// Explains a push PDU: the fields before the header block (transaction id,
// PDU type, HeadersLen, content type) as the library's push decoder reads
// them, then every entry of the header block, then the data.
#ifndef WSPTOOL_EXPLAIN_PUSH_WALK_H
#define WSPTOOL_EXPLAIN_PUSH_WALK_H

#include <cstdint>
#include <vector>

#include "block_walk.h"
#include "entry.h"

namespace wsptool::explain {

struct PushExplanation {
    int push_status = 0;          // what wsp_push_decoding returned
    std::vector<Entry> fields;    // the PDU's own fields before the header block
    Explanation headers;          // the header block's walk (empty when no headers)
    std::vector<Entry> trailer;   // the data after the header block
};

// `tid`: the first octet is a transaction id, stepped over.
PushExplanation explain_push(const std::vector<uint8_t> &pdu, bool tid, const WalkOptions &options);

} // namespace wsptool::explain

#endif // WSPTOOL_EXPLAIN_PUSH_WALK_H
