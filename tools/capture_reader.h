// Reading captures (pcap and pcapng, through libpcap): the UDP datagrams
// to or from the connectionless WSP ports, with their packet numbers and
// times.
#ifndef WSPTOOL_CAPTURE_READER_H
#define WSPTOOL_CAPTURE_READER_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "hex_io.h"

namespace wsptool {

// Connectionless WSP (9200) and connectionless push (2948).
inline constexpr uint16_t kWspPorts[] = {9200, 2948};

struct Datagram {
    size_t number = 0;       // the packet's number in the capture, from 1
    int64_t seconds = 0;     // capture time
    uint32_t microseconds = 0;
    std::string source;      // "192.0.2.1:9200", "[2001:db8::1]:2948"
    std::string destination;
    uint16_t source_port = 0;
    uint16_t destination_port = 0;
    Octets payload;          // the UDP payload: the PDU
};

// Calls `each` for every UDP datagram of the capture whose source or
// destination port is one of `ports`, in capture order.  Other packets
// (other ports, other protocols, IP fragments after the first) are passed
// over.  Link types: Ethernet (with VLAN tags), Linux cooked, raw IP,
// loopback.  A file libpcap cannot open is an InputError.
void read_capture(const std::string &path, const std::vector<uint16_t> &ports,
                  const std::function<void(const Datagram &)> &each);

// "2026-01-02 03:04:05.000123 UTC": the capture time in the process's zone.
std::string format_capture_time(int64_t seconds, uint32_t microseconds);

} // namespace wsptool

#endif // WSPTOOL_CAPTURE_READER_H
