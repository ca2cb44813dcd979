#include "pdu_names.h"

#include <cstdio>

namespace wsptool {

bool is_push_type(uint8_t type) { return type == kPduPush || type == kPduConfirmedPush; }
bool is_get_type(uint8_t type) { return type >= kPduGet && type <= kPduGetLast; }
bool is_post_type(uint8_t type) { return type >= kPduPost && type <= kPduPostLast; }

bool is_decodable_type(uint8_t type) {
    return (type >= kPduConnect && type <= kPduResume && type != kPduRedirect) || is_get_type(type) ||
           is_post_type(type);
}

const char *pdu_type_name(uint8_t type) {
    switch (type) {
    case kPduConnect: return "Connect";
    case kPduConnectReply: return "ConnectReply";
    case kPduRedirect: return "Redirect";
    case kPduReply: return "Reply";
    case kPduDisconnect: return "Disconnect";
    case kPduPush: return "Push";
    case kPduConfirmedPush: return "ConfirmedPush";
    case kPduSuspend: return "Suspend";
    case kPduResume: return "Resume";
    case 0x40: return "Get";
    case 0x41: return "Options";
    case 0x42: return "Head";
    case 0x43: return "Delete";
    case 0x44: return "Trace";
    case 0x60: return "Post";
    case 0x61: return "Put";
    default: return "unassigned";
    }
}

std::string hex_octet(unsigned octet) {
    char code[8];
    std::snprintf(code, sizeof code, "0x%02X", octet & 0xFFu);
    return code;
}

std::string describe_pdu_type(uint8_t type) {
    return std::string(pdu_type_name(type)).append(" (").append(hex_octet(type)).append(")");
}

std::string reply_status_text(uint8_t status) {
    struct Row {
        uint8_t octet;
        const char *text;
    };
    // The status octets of Reply PDUs and the HTTP statuses they carry.
    static constexpr Row kStatuses[] = {
        {0x10, "100 Continue"},
        {0x11, "101 Switching Protocols"},
        {0x20, "200 OK"},
        {0x21, "201 Created"},
        {0x22, "202 Accepted"},
        {0x23, "203 Non-Authoritative Information"},
        {0x24, "204 No Content"},
        {0x25, "205 Reset Content"},
        {0x26, "206 Partial Content"},
        {0x30, "300 Multiple Choices"},
        {0x31, "301 Moved Permanently"},
        {0x32, "302 Found"},
        {0x33, "303 See Other"},
        {0x34, "304 Not Modified"},
        {0x35, "305 Use Proxy"},
        {0x37, "307 Temporary Redirect"},
        {0x40, "400 Bad Request"},
        {0x41, "401 Unauthorized"},
        {0x42, "402 Payment Required"},
        {0x43, "403 Forbidden"},
        {0x44, "404 Not Found"},
        {0x45, "405 Method Not Allowed"},
        {0x46, "406 Not Acceptable"},
        {0x47, "407 Proxy Authentication Required"},
        {0x48, "408 Request Timeout"},
        {0x49, "409 Conflict"},
        {0x4A, "410 Gone"},
        {0x4B, "411 Length Required"},
        {0x4C, "412 Precondition Failed"},
        {0x4D, "413 Request Entity Too Large"},
        {0x4E, "414 Request-URI Too Long"},
        {0x4F, "415 Unsupported Media Type"},
        {0x50, "416 Requested Range Not Satisfiable"},
        {0x51, "417 Expectation Failed"},
        {0x60, "500 Internal Server Error"},
        {0x61, "501 Not Implemented"},
        {0x62, "502 Bad Gateway"},
        {0x63, "503 Service Unavailable"},
        {0x64, "504 Gateway Timeout"},
        {0x65, "505 HTTP Version Not Supported"},
    };
    for (const Row &row : kStatuses)
        if (row.octet == status) return row.text;
    return "";
}

} // namespace wsptool
