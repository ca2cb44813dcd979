// The capabilities of Connect, ConnectReply and Resume PDUs, taken apart for
// the reports: each capability's identifier, its name and its value as text.
//
// A capability is its length (uintvar, counting what follows), an
// identifier (a Short-integer, or a Token-text for a private one) and the
// parameter octets, read by identifier:
//   0x00 Client-SDU-Size, 0x01 Server-SDU-Size, 0x08 Client-Message-Size,
//   0x09 Server-Message-Size   a uintvar, in octets
//   0x02 Protocol Options      flag octets: 0x80 confirmed push, 0x40 push,
//                              0x20 session resume, 0x10 acknowledgement
//                              headers, 0x08 large data transfer
//   0x03 Method-MOR, 0x04 Push-MOR  one octet: outstanding requests
//   0x05 Extended Methods      PDU type and method name (Text-string) pairs;
//                              from the server, the PDU types alone
//   0x06 Header Code Pages     page code and page name pairs; from the
//                              server, the page codes alone
//   0x07 Aliases               addresses: a type octet (0x80 bearer type
//                              follows, 0x40 port follows, low 6 bits the
//                              address length), bearer, port, address
// Any other identifier keeps its parameters in hex.
#ifndef WSPTOOL_CAPABILITIES_H
#define WSPTOOL_CAPABILITIES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "hex_io.h"

namespace wsptool {

struct Capability {
    size_t offset = 0;            // where its length starts, in the capabilities field
    Octets octets;                // all its octets: length, identifier, parameters
    std::optional<unsigned> code; // the identifier number; none for a Token-text identifier
    std::string name;             // "Client-SDU-Size", the Token-text, or "" for an unassigned number
    std::string value;            // the parameters as text ("3000 octets"), hex when they are not read
    std::string problem;          // set: these octets do not form a capability (the rest of the field)
};

// `from_server`: the field of a ConnectReply, whose lists hold codes alone.
std::vector<Capability> decode_capabilities(const Octets &field, bool from_server);

// One line of the text report (no line end):
//   Client-SDU-Size (0x00): 3000 octets
//   capability 0x0a: 01 02
//   x-private: 01 02
//   octet 4 on: the capability length claims 9 octets; 2 are left: 09 80 01
std::string describe_capability(const Capability &capability);

} // namespace wsptool

#endif // WSPTOOL_CAPABILITIES_H
