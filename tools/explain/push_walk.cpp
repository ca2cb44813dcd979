#include "push_walk.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "library_internals.h"
#include "tarnwspencdec.h"
#include "value_form.h"

namespace wsptool::explain {

namespace {

Entry field(uint16_t offset, const uint8_t *first, size_t count, std::string name, std::string form,
            std::string text) {
    Entry e;
    e.offset = offset;
    e.octets.assign(first, first + count);
    e.kind = Kind::kPduField;
    e.name = std::move(name);
    e.form = std::move(form);
    e.text = std::move(text);
    e.fate = Fate::kField;
    return e;
}

std::string pdu_type_text(uint8_t type) {
    if (type == 0x06) return "push";
    if (type == 0x07) return "confirmed push";
    return "";
}

} // namespace

PushExplanation explain_push(const std::vector<uint8_t> &pdu, bool tid, const WalkOptions &options) {
    PushExplanation result;
    const uint16_t skip = tid ? 1 : 0;
    const uint8_t *octets = pdu.data();
    const uint16_t total = static_cast<uint16_t>(pdu.size());

    // The push decoder on a copy marked as the caller's own: it copies the
    // headers and the data into the spare record, which is freed here.
    std::vector<uint8_t> copy(pdu.begin(), pdu.end());
    copy.resize(copy.size() + 8, 0);
    wsp_buffer record{};
    record.data = copy.data();
    record.size = total;
    record.offset = skip;
    record.length = static_cast<uint16_t>(total - skip);
    record.flags = WSP_BUFFER_EXTERNAL;
    wsp_buffer spare{};
    wsp_buffer *spare_ptr = &spare;
    wsp_push_result pushed{};
    result.push_status = wsp_push_decoding(&record, &pushed, &spare_ptr);
    std::free(spare.data);

    if (tid) result.fields.push_back(field(0, octets, 1, "transaction-id", "octet", std::to_string(octets[0])));
    result.fields.push_back(field(skip, octets + skip, 1, "pdu-type", "octet", pdu_type_text(octets[skip])));

    // HeadersLen as the push decoder reads it.
    const uint8_t *p = octets + skip + 1;
    uint32_t headers_len = 0;
    const uint16_t after_type = static_cast<uint16_t>(total - skip - 1);
    const bool have_length = after_type > 0 && lib::read_uintvar(&p, &headers_len, after_type) == lib::kOk;
    const uint16_t prefix_end = static_cast<uint16_t>(p - octets);
    if (!have_length) {
        Entry e = field(static_cast<uint16_t>(skip + 1), octets + skip + 1, after_type, "headers-length", "uintvar", "");
        e.fate = Fate::kFailed;
        e.reason = "the HeadersLen uintvar cannot be read";
        e.status = result.push_status;
        result.fields.push_back(std::move(e));
        return result;
    }
    result.fields.push_back(field(static_cast<uint16_t>(skip + 1), octets + skip + 1, prefix_end - skip - 1,
                                  "headers-length", "uintvar", std::to_string(headers_len)));
    if (static_cast<int16_t>(result.push_status) != WSP_OK) {
        Entry e = field(prefix_end, octets + prefix_end, total - prefix_end, "content-type",
                        value_form(octets + prefix_end, static_cast<uint16_t>(total - prefix_end),
                                   ShortLengthAs::kValueLength),
                        "");
        e.fate = Fate::kFailed;
        e.status = result.push_status;
        e.reason = headers_len > static_cast<uint32_t>(total - prefix_end)
                       ? "HeadersLen claims more octets than the PDU holds"
                       : "the content type cannot be decoded";
        result.fields.push_back(std::move(e));
        return result;
    }
    if (headers_len == 0) return result;

    const std::string content_type(pushed.body.content_type,
                                   strnlen(pushed.body.content_type, sizeof pushed.body.content_type));
    const uint16_t header_octets = pushed.headers.buffer != nullptr ? pushed.headers.length : 0;
    const uint16_t type_octets = static_cast<uint16_t>(headers_len - header_octets);
    result.fields.push_back(field(prefix_end, octets + prefix_end, type_octets, "content-type",
                                  value_form(octets + prefix_end, static_cast<uint16_t>(total - prefix_end),
                                             ShortLengthAs::kValueLength),
                                  content_type));

    const uint16_t block_start = static_cast<uint16_t>(prefix_end + type_octets);
    WalkOptions block_options = options;
    block_options.base_offset = block_start;
    result.headers = explain_block(octets + block_start, header_octets, block_options);

    const uint16_t data_start = static_cast<uint16_t>(block_start + header_octets);
    if (data_start < total) {
        const uint16_t n = static_cast<uint16_t>(total - data_start);
        result.trailer.push_back(field(data_start, octets + data_start, n, "data", "octets",
                                       std::to_string(n) + (n == 1 ? " octet" : " octets")));
    }
    return result;
}

} // namespace wsptool::explain
