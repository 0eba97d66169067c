// What a receiver has decoded of a station's RDS groups at a moment. Portable. Times are milliseconds on the
// handset's clock.
//
// A group comes every 87.6 ms (IEC 62106: 1187.5 bit/s, 104 bits). Every second one carries two letters of
// the service name, the others four letters of the radio text or of the programme type name, as far as the
// station has them: a name takes four groups of its kind, a radio text up to sixteen.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "handset/fmdevice/band/band.h"
#include "handset/fmdevice/band/rds_text.h"

namespace fm {

// Up to kNoRdsLevel no group comes through; up to kFlawedRdsLevel some seconds are lost, the more the weaker.
inline constexpr int kNoRdsLevel = 15;
inline constexpr int kFlawedRdsLevel = 25;

// The number of the group that is on the air.
[[nodiscard]] std::uint64_t RdsGroupAt(std::uint64_t now_ms);
// True when groups come through at this level in this second. Lost seconds are a fixed pattern of the clock.
[[nodiscard]] bool RdsComesThrough(int level, std::uint64_t now_ms);

// Puts the groups of the tuned station together. Not safe from several threads.
class CRdsReader {
  public:
    // Another station: nothing is known of it yet.
    void Restart(std::uint64_t now_ms);
    // Takes the groups that have come since the last call.
    void Listen(const RdsData& data, int level, std::uint64_t now_ms);
    // The text that has been complete for longest and was not given yet, or the one given last while none is.
    // Nothing before the first is complete, and while no groups come through.
    [[nodiscard]] std::optional<RdsText> Next() const;
    void Given(const RdsText& text);
    // The last service name that was received whole; empty before.
    const std::string& ServiceName() const {
        return assemblies_[static_cast<std::size_t>(RdsTextKind::kServiceName)].complete;
    }
    // A group has been received: what every one of them carries is known.
    bool HasGroup() const { return hasGroup_; }

  private:
    // One text on its way.
    struct Assembly {
        std::string text;             // what is being sent
        std::uint32_t received = 0;   // one bit for each group's share of it
        std::string complete;         // the last one that was received whole
        std::uint64_t completed = 0;  // the group with which it was, not given since; 0 = none
    };
    void Take(const RdsData& data, std::uint64_t group);
    void TakeShare(RdsTextKind kind, const std::string& text, std::uint64_t turn, std::uint64_t group);
    Assembly& Of(RdsTextKind kind) { return assemblies_[static_cast<std::size_t>(kind)]; }

    std::array<Assembly, kRdsTextKinds> assemblies_;
    std::uint64_t next_ = 0;  // the group to be taken next
    bool hasGroup_ = false;
    bool comesThrough_ = false;
    std::optional<RdsText> given_;
};

}  // namespace fm
