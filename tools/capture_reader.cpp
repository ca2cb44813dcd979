#include "capture_reader.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include <arpa/inet.h>
#include <pcap/pcap.h>

namespace wsptool {

namespace {

constexpr uint16_t kEtherIpv4 = 0x0800;
constexpr uint16_t kEtherIpv6 = 0x86DD;
constexpr uint8_t kProtocolUdp = 17;

uint16_t be16(const uint8_t *p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }

struct Packet {
    const uint8_t *data;
    size_t length;
};

std::string ipv4_text(const uint8_t *address) {
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, address, text, sizeof text);
    return text;
}

std::string ipv6_text(const uint8_t *address) {
    char text[INET6_ADDRSTRLEN] = {};
    inet_ntop(AF_INET6, address, text, sizeof text);
    return std::string("[") + text + "]";
}

// The UDP datagram of an IP packet, if it carries one.
bool udp_of_ip(const uint8_t *ip, size_t length, Datagram &out) {
    if (length < 1) return false;
    const uint8_t version = ip[0] >> 4;
    const uint8_t *udp = nullptr;
    size_t available = 0;
    std::string source, destination;
    if (version == 4) {
        if (length < 20) return false;
        const size_t header = static_cast<size_t>(ip[0] & 0x0F) * 4;
        const size_t total = be16(ip + 2);
        const uint16_t fragment = be16(ip + 6);
        if (header < 20 || length < header || ip[9] != kProtocolUdp) return false;
        if ((fragment & 0x1FFF) != 0) return false; // a later fragment has no UDP header
        available = std::min(length, total >= header ? total : length) - header;
        udp = ip + header;
        source = ipv4_text(ip + 12);
        destination = ipv4_text(ip + 16);
    } else if (version == 6) {
        if (length < 40 || ip[6] != kProtocolUdp) return false;
        available = std::min(length - 40, static_cast<size_t>(be16(ip + 4)));
        udp = ip + 40;
        source = ipv6_text(ip + 8);
        destination = ipv6_text(ip + 24);
    } else {
        return false;
    }
    if (available < 8) return false;
    const uint16_t source_port = be16(udp);
    const uint16_t destination_port = be16(udp + 2);
    const size_t udp_length = be16(udp + 4);
    const size_t payload = std::min(available, udp_length >= 8 ? udp_length : available) - 8;
    out.source = source + ":" + std::to_string(source_port);
    out.destination = destination + ":" + std::to_string(destination_port);
    out.payload.assign(udp + 8, udp + 8 + payload);
    out.source_port = source_port;
    out.destination_port = destination_port;
    return true;
}

// The IP packet inside a link-layer frame.
bool ip_of_frame(int link, const uint8_t *frame, size_t length, Packet &ip) {
    size_t at = 0;
    uint16_t ether_type = 0;
    switch (link) {
    case DLT_EN10MB:
        if (length < 14) return false;
        ether_type = be16(frame + 12);
        at = 14;
        while ((ether_type == 0x8100 || ether_type == 0x88A8) && length >= at + 4) {
            ether_type = be16(frame + at + 2);
            at += 4;
        }
        if (ether_type != kEtherIpv4 && ether_type != kEtherIpv6) return false;
        break;
    case DLT_LINUX_SLL:
        if (length < 16) return false;
        ether_type = be16(frame + 14);
        if (ether_type != kEtherIpv4 && ether_type != kEtherIpv6) return false;
        at = 16;
        break;
    case DLT_NULL:
    case DLT_LOOP:
        at = 4;
        break;
    case DLT_RAW:
#ifdef DLT_IPV4
    case DLT_IPV4:
    case DLT_IPV6:
#endif
        at = 0;
        break;
    default:
        return false;
    }
    if (length < at) return false;
    ip.data = frame + at;
    ip.length = length - at;
    return true;
}

} // namespace

void read_capture(const std::string &path, const std::vector<uint16_t> &ports,
                  const std::function<void(const Datagram &)> &each) {
    char error[PCAP_ERRBUF_SIZE] = {};
    pcap_t *capture = pcap_open_offline(path.c_str(), error);
    if (capture == nullptr) throw InputError("cannot read the capture " + path + ": " + error);
    const int link = pcap_datalink(capture);
    struct pcap_pkthdr *header = nullptr;
    const u_char *frame = nullptr;
    size_t number = 0;
    int status = 0;
    try {
        while ((status = pcap_next_ex(capture, &header, &frame)) == 1) {
            ++number;
            Packet ip{};
            Datagram datagram;
            if (!ip_of_frame(link, frame, header->caplen, ip) || !udp_of_ip(ip.data, ip.length, datagram)) continue;
            if (std::find(ports.begin(), ports.end(), datagram.source_port) == ports.end() &&
                std::find(ports.begin(), ports.end(), datagram.destination_port) == ports.end())
                continue;
            datagram.number = number;
            datagram.seconds = header->ts.tv_sec;
            datagram.microseconds = static_cast<uint32_t>(header->ts.tv_usec);
            each(datagram);
        }
    } catch (...) {
        pcap_close(capture);
        throw;
    }
    std::string failure = status == PCAP_ERROR ? pcap_geterr(capture) : "";
    pcap_close(capture);
    if (!failure.empty())
        throw InputError("the capture " + path + " breaks off after packet " + std::to_string(number) + ": " +
                         failure);
}

std::string format_capture_time(int64_t seconds, uint32_t microseconds) {
    const time_t t = static_cast<time_t>(seconds);
    struct tm local {};
    localtime_r(&t, &local);
    char date[64];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &local);
    char zone[16];
    std::strftime(zone, sizeof zone, "%Z", &local);
    char text[112];
    std::snprintf(text, sizeof text, "%s.%06u %s", date, static_cast<unsigned>(microseconds), zone);
    return text;
}

} // namespace wsptool
