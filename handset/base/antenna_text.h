// What the tuner's antenna is, as people write it: "band", "rtl_tcp:HOST:PORT" or "file:PATH;rate=HZ".
// Portable; texts are UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace handset {

enum class AntennaKind {
    kBand,    // the simulated band
    kRtlTcp,  // a server of a receiver stick, here or elsewhere
    kFile,    // recorded samples, played in a loop
};

inline constexpr std::uint16_t kDefaultRtlTcpPort = 1234;

struct Antenna {
    AntennaKind kind = AntennaKind::kBand;
    std::string host = "127.0.0.1";
    std::uint16_t port = kDefaultRtlTcpPort;
    std::string path;
    // What the file does not say of itself.
    std::optional<double> rate_Hz;
    std::optional<double> centre_Hz;
    std::string form;  // cu8, cs8, cs16 or cf32
};

// An empty text, "band", "rtl_tcp", "rtl_tcp:HOST", "rtl_tcp:HOST:PORT", "rtl_tcp::PORT" (an address of IPv6
// in brackets), or "file:PATH" with any of ";rate=HZ", ";centre=HZ" and ";form=FORM" behind it. Gives an
// empty text, or what is wrong in a sentence; the antenna is then the simulated band.
[[nodiscard]] std::string ParseAntenna(const std::string& text, Antenna* antenna);

}  // namespace handset
