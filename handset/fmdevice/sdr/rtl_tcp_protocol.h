// The bytes that a server of a receiver stick and its client exchange: a greeting of 12 bytes, then unsigned
// samples of 8 bits without end one way, commands of 5 bytes the other. Bytes only, no sockets. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sdr::rtl_tcp {

constexpr std::size_t kHeaderBytes = 12;
constexpr std::size_t kCommandBytes = 5;
constexpr std::uint16_t kDefaultPort = 1234;

enum class Tuner : std::uint32_t { kUnknown = 0, kE4000, kFc0012, kFc0013, kFc2580, kR820t, kR828d };
[[nodiscard]] std::string_view NameOf(Tuner tuner);

struct Header {
    Tuner tuner = Tuner::kUnknown;
    std::uint32_t gains = 0;  // how many steps of gain there are, chosen by index
};

// Takes the greeting out of the first bytes, however they are cut. One thread at a time.
class CHeaderReader {
  public:
    enum class State { kMore, kDone, kWrong };

    // Gives how many bytes belong to the greeting; what follows are samples. A greeting that does not begin
    // with "RTL0" is wrong from the first byte that differs.
    std::size_t Feed(const std::uint8_t* bytes, std::size_t count);
    [[nodiscard]] State Where() const { return state_; }
    [[nodiscard]] const Header& Result() const { return header_; }

  private:
    std::array<std::uint8_t, kHeaderBytes> bytes_{};
    std::size_t held_ = 0;
    State state_ = State::kMore;
    Header header_;
};

enum class Command : std::uint8_t {
    kFrequency_Hz = 0x01,
    kRate_Hz = 0x02,
    kManualGain = 0x03,  // 1 by hand, 0 by the tuner
    kGain_tenthdB = 0x04,
    kCorrection_ppm = 0x05,
    kChipGainControl = 0x08,
    kDirectSampling = 0x09,
    kOffsetTuning = 0x0A,
    kGainIndex = 0x0D,
    kBiasTee = 0x0E,
};
using CommandBytes = std::array<std::uint8_t, kCommandBytes>;
// Negative arguments go as they stand in 32 bits.
[[nodiscard]] CommandBytes Encode(Command command, std::uint32_t argument);

// What a stick is told at first. The rate comes first, since it chooses the tuner's filter, and the frequency
// last.
struct Settings {
    std::uint32_t frequency_Hz = 0;
    std::uint32_t rate_Hz = 1920000;
    std::optional<std::uint32_t> gainIndex;  // without one the tuner decides
    std::int32_t correction_ppm = 0;
    bool biasTee = false;
};
[[nodiscard]] std::vector<std::uint8_t> Opening(const Settings& settings);
// The rates that a stick's chip can do.
[[nodiscard]] bool RateIsPossible(std::uint32_t rate_Hz);

}  // namespace sdr::rtl_tcp
