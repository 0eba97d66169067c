// The front end behind a real antenna: a source of samples, the radio in software, and what the tuner device
// asks of both.
//
// Three threads: the source's fills the stream; the radio's takes blocks of 10 ms from it, makes sound and a
// snapshot of them, and publishes the reception twice a second; who calls only leaves orders and looks at the
// snapshot. The sound thread copies. No lock is held over a wait or over a block's work.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "handset/fmdevice/antenna/air_receiver.h"
#include "handset/fmdevice/antenna/clocked_sound.h"
#include "handset/fmdevice/antenna/sample_stream.h"
#include "handset/fmdevice/antenna/station_texts.h"
#include "handset/fmdevice/band/front_end.h"
#include "handset/fmdevice/sdr/clock_bridge.h"
#include "handset/state/locks.h"
#include "handset/state/reception_state.h"

namespace handset {
struct Antenna;
}

namespace fm {

class CRealFrontEnd : public ITunerFrontEnd, public std::enable_shared_from_this<CRealFrontEnd> {
  public:
    // The antenna is no simulated band.
    CRealFrontEnd(const handset::Antenna& antenna, const handset::AntennaChoice& choice);
    ~CRealFrontEnd() override;

    // Gain, correction and feed of the same antenna.
    void Apply(const handset::AntennaChoice& choice);

    void Power(bool) override {}
    [[nodiscard]] bool Refresh() override { return false; }
    void Tune(std::uint32_t channel) override;
    [[nodiscard]] Reception Receive() override;
    [[nodiscard]] StationServices Services() override;
    [[nodiscard]] std::optional<RdsText> TakeText() override;
    [[nodiscard]] std::string StationName() override;
    [[nodiscard]] std::unique_ptr<ISeek> Seek(bool up) override;
    [[nodiscard]] int AwaitLevel() override;
    void Render(const Reception& reception, std::uint64_t position, float* frames,
                std::size_t count) override;

  private:
    friend class CRealSeek;
    // What is to be done; each number counts the orders of its kind.
    struct Orders {
        std::uint64_t tuning = 0;
        std::uint32_t channel_10kHz = kBandBottom_10kHz;
        std::uint64_t look = 0;
        std::optional<CBandSeek> around;  // none: back to the station
    };
    // What the radio's thread keeps between two blocks.
    struct Work {
        std::unique_ptr<CAirReceiver> air;
        std::uint64_t stream = 0;
        double inHand_s = 0.0;  // of the stream, taken and not yet received
        Orders done;
        std::uint64_t heard = 0;  // the tuning that was heard last
        CBandMemory band;
        std::vector<std::uint8_t> bytes;
        std::vector<float> frames;
        std::vector<float> sound;
        std::uint64_t heard_ms = 0;  // when samples came last
        std::uint64_t lost_ms = 0;   // when some were lost last
        std::uint64_t published_ms = 0;
        std::string said;
    };
    void Run();
    void Follow(const CSampleStream::Taken& taken, Work* work);
    void Obey(const Orders& orders, Work* work);
    void Hear(const CSampleStream::Taken& taken, const Orders& orders, Work* work);
    void Note(Work* work);
    void Publish(Work* work);
    std::string Condition(const Work& work);

    // For a seek:
    bool Receiving();
    std::uint64_t OrderLook(const CBandSeek& around);  // with lock_ held
    bool AwaitLook(std::uint64_t look, DWORD timeout_ms);
    void EndLooks();

    const std::wstring name_;
    const sdr::DeEmphasis deEmphasis_;
    CSampleStream stream_;
    std::unique_ptr<ISampleSource> source_;
    std::atomic<bool> stop_{false};

    handset::CLock lock_;  // guards all up to the next lock
    handset::CCondition changed_;
    Orders orders_;
    AirSnapshot snapshot_;
    std::uint64_t snapshotOf_ = 0;  // the tuning that it is of
    std::uint64_t lookDone_ = 0;
    bool receiving_ = false;  // samples come
    CStationTexts texts_;
    CBandMemory seen_;
    std::uint64_t seekUnended_ms_ = 0;  // when a seek ran out of time, and since when its looks count
    std::uint64_t seekSince_ms_ = 0;
    std::uint64_t soughtRound_ms_ = 0;  // when a seek came round the band and had found nothing

    handset::CLock soundLock_;  // guards the sound; inside lock_ or alone
    CClockedSound sound_;
    sdr::CClockBridge bridge_;  // the radio's thread's own

    std::thread thread_;
};

}  // namespace fm
