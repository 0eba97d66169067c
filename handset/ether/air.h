// The air over the handset: the stations of the band as a stick with a good aerial would sample them.
// Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "handset/ether/station_signal.h"
#include "handset/ether/stick.h"
#include "handset/ether/synthesis.h"
#include "handset/fmdevice/band/band.h"

namespace ether {

// The carrier of a station of level 45 at the stick's gain of 29.7 dB, of full scale. A level is the carrier
// to noise density in dB-Hz, less 48; samples of 8 bits hold no more than some 55 to 60 of it.
inline constexpr double kUsualCarrier = 0.3;
inline constexpr double kUsualLevel = 45;
inline constexpr double kUsualGain_dB = 29.7;
inline constexpr double kLevelOf0 = 48;

class CAir {
  public:
    // Plays a WAV file of the device; asked again each time that its station is begun anew.
    using OpenFile = std::function<std::unique_ptr<fm::IGenerator>(const std::string& devicePath)>;
    // `utc_s`: the time at the first sample; `halfHours`: by how much local time is ahead.
    CAir(OpenFile openFile, double utc_s, int halfHours);
    ~CAir();

    // Stations that send what they sent before go on without a break.
    void SetBand(const fm::Band& band);
    // No station comes in better than that; `channel_10kHz` 0: none at all, else that one.
    void SetLimit(int level, std::uint32_t channel_10kHz);
    void SetWindow(const Window& window);
    [[nodiscard]] const Window& Seen() const { return window_; }

    // Appends the samples of the next few milliseconds as unsigned bytes. Result: how many samples.
    std::size_t Read(std::vector<std::uint8_t>* bytes);
    // So much time passes without anybody looking.
    void Pass(double seconds);

  private:
    struct OnAir;
    [[nodiscard]] double LevelOf(std::uint32_t channel_10kHz, const fm::Station& station) const;
    [[nodiscard]] double Gain_dB() const;
    void AddStation(OnAir* onAir, double size);
    void AddNoise(double gain_dB);
    [[nodiscard]] std::unique_ptr<CStationSignal> Begin(std::uint32_t channel_10kHz,
                                                        const fm::Station& station) const;

    OpenFile openFile_;
    double utc_s_;
    int halfHours_;
    int limit_ = 100;
    std::uint32_t limitedChannel_ = 0;
    Window window_;
    std::unique_ptr<CSynthesis> synthesis_;
    std::map<std::uint32_t, std::unique_ptr<OnAir>> stations_;
    std::vector<std::complex<float>> samples_;
    std::vector<std::complex<float>> noise_;
    std::uint64_t random_ = 1;
};

}  // namespace ether
