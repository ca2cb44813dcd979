// Writes the small captures that the wsptool tests read: the same packets
// as pcap and as pcapng.
//
//   wsptool_make_capture pcap|pcapng FILE [bad]
//
// Packets (Ethernet; times 2023-11-14 22:13:20 UTC plus the packet number):
//   1  IPv4 UDP 1024 -> 2948   a service indication push, transaction id 0x01
//   2  IPv4 UDP 1025 -> 53     not WSP: passed over
//   3  IPv6 UDP 9200 -> 1026   a Reply with its transaction id 0x02
//   4  IPv4 UDP 1027 -> 9999   an MMS notification push: read with --port 9999
//   5  ARP                     not IP: passed over
// With "bad", packet 6: IPv4 UDP 1028 -> 2948, a push whose headers length
// runs past the end; packet 7: IPv4 UDP 1029 -> 2948, a push whose header
// block has a header stepped over and then a shift the decoder refuses.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

void put16be(Bytes &b, uint16_t v) {
    b.push_back(static_cast<uint8_t>(v >> 8));
    b.push_back(static_cast<uint8_t>(v));
}
void put16le(Bytes &b, uint16_t v) {
    b.push_back(static_cast<uint8_t>(v));
    b.push_back(static_cast<uint8_t>(v >> 8));
}
void put32le(Bytes &b, uint32_t v) {
    put16le(b, static_cast<uint16_t>(v));
    put16le(b, static_cast<uint16_t>(v >> 16));
}

Bytes ethernet(uint16_t type, const Bytes &payload) {
    Bytes f = {0x02, 0, 0, 0, 0, 0x02, 0x02, 0, 0, 0, 0, 0x01};
    put16be(f, type);
    f.insert(f.end(), payload.begin(), payload.end());
    return f;
}

Bytes udp(uint16_t source, uint16_t destination, const Bytes &payload) {
    Bytes u;
    put16be(u, source);
    put16be(u, destination);
    put16be(u, static_cast<uint16_t>(8 + payload.size()));
    put16be(u, 0);
    u.insert(u.end(), payload.begin(), payload.end());
    return u;
}

Bytes ipv4(const Bytes &udp_datagram) {
    Bytes p = {0x45, 0};
    put16be(p, static_cast<uint16_t>(20 + udp_datagram.size()));
    const uint8_t rest[] = {0, 1, 0, 0, 64, 17, 0, 0, 192, 0, 2, 1, 192, 0, 2, 2};
    p.insert(p.end(), std::begin(rest), std::end(rest));
    p.insert(p.end(), udp_datagram.begin(), udp_datagram.end());
    return ethernet(0x0800, p);
}

Bytes ipv6(const Bytes &udp_datagram) {
    Bytes p = {0x60, 0, 0, 0};
    put16be(p, static_cast<uint16_t>(udp_datagram.size()));
    p.push_back(17);
    p.push_back(64);
    for (uint8_t last : {1, 2}) {
        const uint8_t address[16] = {0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, last};
        p.insert(p.end(), std::begin(address), std::end(address));
    }
    p.insert(p.end(), udp_datagram.begin(), udp_datagram.end());
    return ethernet(0x86DD, p);
}

Bytes text(const char *s) { return Bytes(s, s + std::strlen(s) + 1); }

Bytes join(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes &p : parts) out.insert(out.end(), p.begin(), p.end());
    return out;
}

std::vector<Bytes> packets(bool bad) {
    // Service indication: tid, Push, HeadersLen 3, application/vnd.wap.sic,
    // X-Wap-Application-Id wml.ua, then the SI in WBXML.
    const Bytes si = join({{0x01, 0x06, 0x03, 0xAE, 0xAF, 0x82, 0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03},
                           text("example.com/news"),
                           {0x01, 0x03},
                           text("Breaking news"),
                           {0x01, 0x01}});
    // Reply: tid, Reply, 200 OK, HeadersLen 3, text/plain, Content-Length 2, "ok".
    const Bytes reply = {0x02, 0x04, 0x20, 0x03, 0x83, 0x8D, 0x82, 0x6F, 0x6B};
    // MMS notification: tid, Push, HeadersLen 3, mms-message, mms.ua, a short body.
    const Bytes mms = {0x03, 0x06, 0x03, 0xBE, 0xAF, 0x84, 0x8C, 0x82, 0x98, 0x54, 0x31, 0x00};
    const Bytes arp = ethernet(0x0806, Bytes(28, 0));
    std::vector<Bytes> out = {
        ipv4(udp(1024, 2948, si)),
        ipv4(udp(1025, 53, Bytes{0x12, 0x34, 0x01, 0x00})),
        ipv6(udp(9200, 1026, reply)),
        ipv4(udp(1027, 9999, mms)),
        arp,
    };
    if (bad) {
        out.push_back(ipv4(udp(1028, 2948, Bytes{0x04, 0x06, 0x09, 0x83})));
        // tid, Push, HeadersLen 6, text/plain, Push-Flag 1, a Content-Type
        // inside the block (stepped over), a shift delimiter without its page.
        out.push_back(ipv4(udp(1029, 2948, Bytes{0x05, 0x06, 0x06, 0x83, 0xB4, 0x81, 0x91, 0x83, 0x7F})));
    }
    return out;
}

constexpr uint32_t kFirstSecond = 1700000000;

Bytes pcap_file(const std::vector<Bytes> &frames) {
    Bytes f;
    put32le(f, 0xA1B2C3D4);
    put16le(f, 2);
    put16le(f, 4);
    put32le(f, 0);
    put32le(f, 0);
    put32le(f, 65535);
    put32le(f, 1); // Ethernet
    for (size_t i = 0; i < frames.size(); ++i) {
        put32le(f, kFirstSecond + static_cast<uint32_t>(i + 1));
        put32le(f, 250000);
        put32le(f, static_cast<uint32_t>(frames[i].size()));
        put32le(f, static_cast<uint32_t>(frames[i].size()));
        f.insert(f.end(), frames[i].begin(), frames[i].end());
    }
    return f;
}

void block(Bytes &f, uint32_t type, const Bytes &body) {
    const uint32_t length = static_cast<uint32_t>(12 + (body.size() + 3) / 4 * 4);
    put32le(f, type);
    put32le(f, length);
    f.insert(f.end(), body.begin(), body.end());
    f.insert(f.end(), (4 - body.size() % 4) % 4, 0);
    put32le(f, length);
}

Bytes pcapng_file(const std::vector<Bytes> &frames) {
    Bytes f, section, interface;
    put32le(section, 0x1A2B3C4D);
    put16le(section, 1);
    put16le(section, 0);
    put32le(section, 0xFFFFFFFF);
    put32le(section, 0xFFFFFFFF);
    block(f, 0x0A0D0D0A, section);
    put16le(interface, 1); // Ethernet
    put16le(interface, 0);
    put32le(interface, 65535);
    block(f, 1, interface);
    for (size_t i = 0; i < frames.size(); ++i) {
        const uint64_t micros = (kFirstSecond + i + 1) * 1000000ULL + 250000;
        Bytes packet;
        put32le(packet, 0);
        put32le(packet, static_cast<uint32_t>(micros >> 32));
        put32le(packet, static_cast<uint32_t>(micros));
        put32le(packet, static_cast<uint32_t>(frames[i].size()));
        put32le(packet, static_cast<uint32_t>(frames[i].size()));
        packet.insert(packet.end(), frames[i].begin(), frames[i].end());
        block(f, 6, packet);
    }
    return f;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3 || (std::strcmp(argv[1], "pcap") != 0 && std::strcmp(argv[1], "pcapng") != 0)) {
        std::fprintf(stderr, "usage: wsptool_make_capture pcap|pcapng FILE [bad]\n");
        return 2;
    }
    const bool bad = argc > 3 && std::strcmp(argv[3], "bad") == 0;
    const std::vector<Bytes> frames = packets(bad);
    const Bytes file = std::strcmp(argv[1], "pcap") == 0 ? pcap_file(frames) : pcapng_file(frames);
    FILE *out = std::fopen(argv[2], "wb");
    if (out == nullptr || std::fwrite(file.data(), 1, file.size(), out) != file.size() || std::fclose(out) != 0) {
        std::perror(argv[2]);
        return 1;
    }
    return 0;
}
