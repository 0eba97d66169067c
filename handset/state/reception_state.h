// The antenna as it was chosen, and what the tuner device receives with it, for whoever shows it: the
// handset's command line and its panel. Host code only, any thread.
//
// Chosen by values of the state (handset_state.h), which may change while the radio plays:
//   Antenna            text: see antenna_text.h; missing = the simulated band
//   AntennaGain        number: the tuner's step of gain, 0 being the lowest (an R820T has 29, up to 49.6 dB);
//   beyond
//                      the highest it is that; missing or 0xFFFFFFFF = held by the receiver itself
//   AntennaPpm         number, signed: what the stick's crystal is to be corrected by, -1000 to 1000 (0)
//   AntennaDeemphasis  number: 50 or 75 µs (50)
//   AntennaBias        number: 1 = the stick feeds an amplifier at its antenna (0)
//
// Received: the volatile key "Reception" below the state key, rewritten about twice a second while the radio
// is powered up and is asked for anything.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace handset {

inline constexpr std::uint32_t kAutomaticGain = 0xFFFFFFFF;

struct AntennaChoice {
    std::wstring antenna;  // as it was written
    std::uint32_t gain = kAutomaticGain;
    std::int32_t correction_ppm = 0;
    std::uint32_t deemphasis_us = 50;
    bool bias = false;

    bool operator==(const AntennaChoice& other) const {
        return antenna == other.antenna && gain == other.gain && correction_ppm == other.correction_ppm &&
               deemphasis_us == other.deemphasis_us && bias == other.bias;
    }
};
// What lies outside its range counts as missing.
AntennaChoice ChosenAntenna();

// Channels of the band, 100 kHz apart from 87.5 to 108 MHz.
inline constexpr std::uint32_t kFirstBandChannel_10kHz = 8750;
inline constexpr std::uint32_t kBandStep_10kHz = 10;
inline constexpr std::size_t kBandChannels = 206;
inline constexpr std::uint8_t kLevelNotSeen = 255;
using BandLevels = std::array<std::uint8_t, kBandChannels>;

struct ReceptionState {
    std::wstring source;     // "band", or the antenna as it was written
    std::wstring condition;  // a plain sentence: "plays", "no connection to 127.0.0.1:1234: …"
    std::uint32_t channel_10kHz = 0;
    std::uint32_t level = 0;  // 0 to 100
    bool stereo = false;
    // What a simulated band has none of, or what is not known (yet), is missing.
    std::optional<double> carrierToNoise_dBHz;
    std::optional<std::int32_t> offset_Hz;             // of the carrier from the channel
    std::optional<std::uint32_t> blockErrors_percent;  // of RDS, over the last second or so
    std::optional<std::uint16_t> pi;
    bool trafficProgramme = false, trafficAnnouncement = false;  // as the station's data say
    BandLevels levels;             // of every channel as last seen; kLevelNotSeen
    std::uint64_t written_ms = 0;  // GetTickCount64 at the writing, filled in by it

    ReceptionState() { levels.fill(kLevelNotSeen); }
};

// Nothing when no radio has written since the handset's last end of it, or not for kReceptionStale_ms.
inline constexpr std::uint64_t kReceptionStale_ms = 5000;
std::optional<ReceptionState> ReadReception();
// Writes what differs from what this process wrote last. False when the registry refuses.
bool WriteReception(const ReceptionState& state);
// The radio is switched off: nothing is received.
void ClearReception();

}  // namespace handset
