#include "handset/base/antenna_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace handset {
namespace {

constexpr std::array<const char*, 4> kForms = {"cu8", "cs8", "cs16", "cf32"};
constexpr char kStick[] = "rtl_tcp";
constexpr char kFile[] = "file:";

bool BeginsWith(const std::string& text, const std::string& begin) {
    return text.compare(0, begin.size(), begin) == 0;
}

// A whole number of Hz in plain or exponential writing, and nothing around it.
std::optional<double> Frequency(const std::string& text) {
    if (text.empty() || text.find_first_not_of("0123456789.eE+") != std::string::npos) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !std::isfinite(value) || value <= 0.0) return std::nullopt;
    return value;
}

std::string ReadPort(const std::string& text, std::uint16_t* port) {
    unsigned long value = 0;
    if (!text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos)
        value = std::strtoul(text.c_str(), nullptr, 10);
    if (value == 0 || value > 65535) return "\"" + text + "\" is no port: 1 to 65535";
    *port = static_cast<std::uint16_t>(value);
    return {};
}

// "", "HOST", "HOST:PORT", ":PORT", "[ADDRESS]", "[ADDRESS]:PORT".
std::string ReadServer(const std::string& text, Antenna* antenna) {
    std::string host = text;
    std::string port;
    bool hasPort = false;
    if (BeginsWith(text, "[")) {
        const std::size_t end = text.find(']');
        if (end == std::string::npos) return "the bracket of \"" + text + "\" is not closed";
        host = text.substr(1, end - 1);
        const std::string rest = text.substr(end + 1);
        hasPort = !rest.empty();
        if (hasPort && rest[0] != ':') return "behind \"" + host + "\" there is no port";
        if (hasPort) port = rest.substr(1);
    } else if (const std::size_t colon = text.find(':'); colon != std::string::npos) {
        if (text.find(':', colon + 1) != std::string::npos)
            return "an address with colons stands in brackets: [" + text + "]";
        host = text.substr(0, colon);
        port = text.substr(colon + 1);
        hasPort = true;
    }
    if (host.find_first_of(" \t;/\\") != std::string::npos) return "\"" + host + "\" is no name of a host";
    if (!host.empty()) antenna->host = host;
    return hasPort ? ReadPort(port, &antenna->port) : std::string();
}

std::string ReadOption(const std::string& option, Antenna* antenna) {
    const std::size_t equals = option.find('=');
    const std::string name = option.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : option.substr(equals + 1);
    if (name == "form") {
        if (std::find(kForms.begin(), kForms.end(), value) == kForms.end())
            return "\"" + value + "\" is no form of samples: cu8, cs8, cs16 or cf32";
        antenna->form = value;
        return {};
    }
    std::optional<double>* const number = name == "rate"     ? &antenna->rate_Hz
                                          : name == "centre" ? &antenna->centre_Hz
                                                             : nullptr;
    if (number == nullptr) return "\"" + option + "\" is none of rate=, centre= and form=";
    *number = Frequency(value);
    return *number ? std::string() : "\"" + option + "\" is no frequency in Hz";
}

std::string ReadFile(const std::string& text, Antenna* antenna) {
    std::size_t end = text.find(';');
    antenna->path = text.substr(0, end);
    if (antenna->path.empty()) return "file: needs the path of a file";
    while (end != std::string::npos) {
        const std::size_t begin = end + 1;
        end = text.find(';', begin);
        const std::string fault = ReadOption(text.substr(begin, end - begin), antenna);
        if (!fault.empty()) return fault;
    }
    return {};
}

std::string Read(const std::string& text, Antenna* antenna) {
    if (text.empty() || text == "band") return {};
    if (text == kStick || BeginsWith(text, std::string(kStick) + ":")) {
        antenna->kind = AntennaKind::kRtlTcp;
        return ReadServer(text.substr(std::min(text.size(), sizeof kStick)), antenna);
    }
    if (BeginsWith(text, kFile)) {
        antenna->kind = AntennaKind::kFile;
        return ReadFile(text.substr(sizeof kFile - 1), antenna);
    }
    return "\"" + text + "\" is no antenna: band, rtl_tcp:HOST:PORT or file:PATH";
}

}  // namespace

std::string ParseAntenna(const std::string& text, Antenna* antenna) {
    *antenna = {};
    const std::string fault = Read(text, antenna);
    if (!fault.empty()) *antenna = {};
    return fault;
}

}  // namespace handset
