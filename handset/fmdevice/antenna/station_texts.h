// The texts of a station on the air in the turn in which the tuner device gives them, and its services.
// Portable. One thread at a time.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "handset/fmdevice/rds_text.h"
#include "handset/fmdevice/sdr/rds/station.h"

namespace fm {

class CStationTexts {
  public:
    // Another station: nothing is known.
    void Restart();
    // What is known now; called often.
    void Take(const sdr::rds::Station& station);
    // The text that has been complete for longest and was not given yet, or the one given last while none is.
    // A text is complete whenever all of it has been received anew.
    [[nodiscard]] std::optional<RdsText> Give();
    const StationServices& Services() const { return services_; }

  private:
    struct Row {
        std::string text;          // the last whole one
        double whole_s = -1.0;     // when it was seen whole last
        double complete_s = -1.0;  // since when it waits to be given; -1: it does not
    };

    std::array<Row, kRdsTextKinds> rows_;
    StationServices services_;
    std::optional<RdsText> given_;
};

// What the radio can keep of a list.
inline constexpr std::size_t kMostAlternatives = 100;

}  // namespace fm
