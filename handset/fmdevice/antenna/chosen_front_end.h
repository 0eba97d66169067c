// The front end that the state's value "Antenna" names: the simulated band, or a real antenna. It may change
// while the radio plays. Also publishes what the simulated band receives.
#pragma once

#include <memory>

#include "handset/fmdevice/band/front_end.h"
#include "handset/fmdevice/band/simulated_band.h"
#include "handset/state/locks.h"
#include "handset/state/reception_state.h"

namespace fm {

class CRealFrontEnd;

class CChosenFrontEnd : public ITunerFrontEnd {
  public:
    CChosenFrontEnd();
    ~CChosenFrontEnd() override;

    void Power(bool on) override;
    [[nodiscard]] bool Refresh() override;
    void Tune(std::uint32_t channel) override;
    [[nodiscard]] Reception Receive() override { return current_->Receive(); }
    [[nodiscard]] StationServices Services() override { return current_->Services(); }
    [[nodiscard]] std::optional<RdsText> TakeText() override { return current_->TakeText(); }
    [[nodiscard]] std::string StationName() override { return current_->StationName(); }
    [[nodiscard]] std::unique_ptr<ISeek> Seek(bool up) override { return current_->Seek(up); }
    [[nodiscard]] int AwaitLevel() override { return Current()->AwaitLevel(); }
    void Render(const Reception& reception, std::uint64_t position, float* frames,
                std::size_t count) override;

  private:
    // With the receiver's lock:
    bool Choose();
    void PublishBand();

    std::shared_ptr<ITunerFrontEnd> Current();

    const std::shared_ptr<CSimulatedBand> band_;
    std::shared_ptr<CRealFrontEnd> real_;
    handset::AntennaChoice choice_;
    bool lifelike_ = true;  // the clock goes as the air does
    std::wstring condition_;
    std::uint32_t channel_ = kBandBottom_10kHz;
    std::uint64_t published_ms_ = 0;

    handset::CLock lock_;  // guards the pointer, for who comes without the receiver's lock
    std::shared_ptr<ITunerFrontEnd> current_;
};

}  // namespace fm
