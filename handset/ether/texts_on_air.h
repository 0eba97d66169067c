// What a station of the band file sends as data. Portable.
#pragma once

#include <cstdint>
#include <optional>

#include "handset/fmdevice/band/band.h"
#include "handset/transmitter/station_texts.h"

namespace ether {

// Nothing when it sends no RDS. The band file gives no programme identification: it is made of the first
// name, so that stations of one name are one network. `utc_s` is the time since 1970, `halfHours` by how much
// local time is ahead; the texts of that moment come first.
[[nodiscard]] std::optional<transmitter::StationTexts> TextsOnAir(std::uint32_t channel_10kHz,
                                                                  const fm::Station& station, double utc_s,
                                                                  int halfHours);

// Whether both send the same: then one of them may go on in the other's place, at another level.
[[nodiscard]] bool SendTheSame(const fm::Station& one, const fm::Station& other);

}  // namespace ether
