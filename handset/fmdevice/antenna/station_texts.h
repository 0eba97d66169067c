// The texts of a station on the air in the turn in which the tuner device gives them, and its services. What
// is known is kept by the PI code: a retune to another frequency of the same network goes on with it.
// Portable. One thread at a time.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "handset/fmdevice/band/rds_text.h"
#include "handset/fmdevice/sdr/rds/station.h"

namespace fm {

class CStationTexts {
  public:
    // Another channel: nothing is known until its PI code is. Under the code of the station before, what was
    // known of that is known again; under another one it is forgotten.
    void Retune();
    // What is known now; called often. Without a code it is a station anew.
    void Take(const sdr::rds::Station& station);
    // The text that has been complete for longest and was not given yet, or the one given last while none is.
    // A text is complete whenever all of it has been received anew.
    [[nodiscard]] std::optional<RdsText> Give();
    const StationServices& Services() const { return now_.services; }
    const std::string& ServiceName() const {
        return now_.rows[static_cast<std::size_t>(RdsTextKind::kServiceName)].text;
    }

  private:
    struct Row {
        std::string text;          // the last whole one
        bool kept = false;         // from before the retune, and not seen whole since
        double whole_s = -1.0;     // when it was seen whole last
        double complete_s = -1.0;  // since when it waits to be given; -1: it does not
    };
    struct Known {
        std::array<Row, kRdsTextKinds> rows;
        std::optional<bool> textFlag;  // of the radio text: another one is another text
        StationServices services;
        std::optional<RdsText> given;
    };
    struct Kept {
        std::uint16_t pi;
        Known known;
    };
    void Identify(const sdr::rds::Station& station);
    void TakeTexts(const sdr::rds::Station& station);
    void TakeServices(const sdr::rds::Station& station);

    std::optional<std::uint16_t> pi_;
    Known now_;
    std::optional<Kept> kept_;
};

// What the radio can keep of a list.
inline constexpr std::size_t kMostAlternatives = 100;

}  // namespace fm
