// One station of the band as a carrier around 0 Hz. Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "handset/ether/studio.h"
#include "handset/transmitter/biphase.h"
#include "handset/transmitter/station_texts.h"

namespace ether {

// The rate at which stations are made: as wide as one of them is.
inline constexpr double kStationRate_Hz = 384000;
inline constexpr std::size_t kStationFactor = 8;  // samples for each one of the studio

class CStationSignal {
  public:
    // Without texts there is no RDS.
    CStationSignal(std::unique_ptr<fm::IGenerator> programme, bool stereo,
                   const std::optional<transmitter::StationTexts>& texts);

    // The next `count` samples of a carrier of size 1 that lies at `offset_Hz`; a multiple of kStationFactor.
    // `timeScale`: by how much its time passes faster than at that rate.
    void Read(std::complex<float>* carrier, std::size_t count, double offset_Hz, double timeScale);
    // So much time has passed unheard: its data are sent on from there.
    void Pass(double seconds);

  private:
    void ReadStudio(std::size_t count, double timeScale);
    void AddMultiplex(std::size_t count, double timeScale);
    void Modulate(std::complex<float>* carrier, std::size_t count, double offset_Hz);

    CStudio studio_;
    bool stereo_;
    std::shared_ptr<transmitter::CGroupScheduler> scheduler_;
    std::optional<transmitter::CBiphaseSignal> rds_;
    double rdsBits_ = 0;
    double passed_s_ = 0;
    double pilot_turns_ = 0;
    std::uint32_t phase_ = 0;  // of the carrier, 2^32 to a turn
    // At the studio's rate, with what is still under the filter before it.
    std::vector<float> left_, right_, sum_, difference_, data_;
    std::vector<float> deviation_Hz_;  // with the samples before it that the modulation needs
    std::vector<std::uint32_t> phases_;
};

}  // namespace ether
