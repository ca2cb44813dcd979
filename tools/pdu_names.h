// Names of the WSP PDU types and of the status octets of Reply PDUs, as
// wsptool prints them.
#ifndef WSPTOOL_PDU_NAMES_H
#define WSPTOOL_PDU_NAMES_H

#include <cstdint>
#include <string>

namespace wsptool {

// PDU type octets.
enum PduType : uint8_t {
    kPduConnect = 0x01,
    kPduConnectReply = 0x02,
    kPduRedirect = 0x03,
    kPduReply = 0x04,
    kPduDisconnect = 0x05,
    kPduPush = 0x06,
    kPduConfirmedPush = 0x07,
    kPduSuspend = 0x08,
    kPduResume = 0x09,
    kPduGet = 0x40,     // 0x40..0x44: Get, Options, Head, Delete, Trace
    kPduGetLast = 0x44,
    kPduPost = 0x60,    // 0x60..0x61: Post, Put
    kPduPostLast = 0x61,
};

bool is_push_type(uint8_t type);
bool is_get_type(uint8_t type);
bool is_post_type(uint8_t type);

// True for the types that decode-pdu decodes (all of the above but Redirect).
bool is_decodable_type(uint8_t type);

// "Push", "Get", "Options", ...; "unassigned" for octets without a type.
const char *pdu_type_name(uint8_t type);

// "0x06": an octet of a PDU field as the reports print it.
std::string hex_octet(unsigned octet);

// "Push (0x06)".
std::string describe_pdu_type(uint8_t type);

// The HTTP status a Reply status octet stands for ("200 OK"), or "" when
// the octet has no assignment.
std::string reply_status_text(uint8_t status);

} // namespace wsptool

#endif // WSPTOOL_PDU_NAMES_H
