// Which RDS text the receiver has at a moment. Portable. Times are milliseconds on the handset's clock.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "handset/fmdevice/band.h"

namespace fm {

// Up to kNoRdsLevel no group comes through; up to kFlawedRdsLevel some seconds are lost, the more the weaker.
inline constexpr int kNoRdsLevel = 15;
inline constexpr int kFlawedRdsLevel = 25;
// A service name takes four groups (IEC 62106, 1187.5 bit/s, 104 bits a group): a text is there for at least
// that long before the next one.
inline constexpr std::uint64_t kTextPace_ms = 350;

enum class RdsTextKind { kServiceName, kRadioText, kProgramText };

struct RdsText {
    RdsTextKind kind;
    std::string text;
};

// True when groups come through at this level in this second. Lost seconds are a fixed pattern of the clock.
[[nodiscard]] bool RdsComesThrough(int level, std::uint64_t now_ms);

// Goes round through the texts of a station: service name, radio text, program text, those that it has. Each
// question moves on to the next when the last one has been there for kTextPace_ms, so a slow asker sees all
// of them in turn. Not safe from several threads.
class CRdsReader {
  public:
    // Another station: begins with the service name.
    void Restart() { current_ = -1; }
    [[nodiscard]] std::optional<RdsText> Next(const RdsData& data, std::uint64_t now_ms);

  private:
    int current_ = -1;
    std::uint64_t since_ms_ = 0;
};

}  // namespace fm
