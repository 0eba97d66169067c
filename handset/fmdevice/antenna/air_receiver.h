// The radio behind an antenna without its threads: samples of a stream go in, sound and what is known of the
// tuned station come out; on the way it sets the stream's centre, leaves out what was on its way before that,
// and looks at the band. Portable; whoever owns it calls it from one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "handset/fmdevice/antenna/band_memory.h"
#include "handset/fmdevice/band/receiver_sound.h"
#include "handset/fmdevice/sdr/band_scan.h"
#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "handset/fmdevice/sdr/sample_form.h"

namespace fm {

struct StreamForm {
    sdr::SampleForm form = sdr::SampleForm::kCu8;
    double rate_Hz = 1920000.0;
    double centre_Hz = 0.0;
    bool tunable = false;  // else the centre stays where it is
};

// What is known of a tuned channel; `measured` when the stream has been there for long enough to tell.
struct AirSnapshot {
    bool measured = false;
    bool beside = false;  // what comes in is another channel's
    int level = 0;
    bool stereo = false;
    std::optional<double> carrierToNoise_dBHz;
    std::optional<double> offset_Hz;
    std::optional<double> blockErrors;  // 0 to 1
    std::optional<std::uint16_t> pi;
};

class CAirReceiver {
  public:
    // `setCentre` is told where the stream is to be from now on, and gives for how many seconds the samples
    // that come next are still of the place before.
    using SetCentre = std::function<double(double centre_Hz)>;
    CAirReceiver(const StreamForm& form, sdr::DeEmphasis deEmphasis, CBandMemory* band, SetCentre setCentre);

    // A station that is in view already is there at once.
    void Tune(std::uint32_t channel_10kHz);
    // Leaves the station to look at the stream around a centre; what is seen goes into the band's memory.
    // `LookDone` once it has been seen.
    void Look(double centre_Hz);
    [[nodiscard]] bool LookDone() const { return mode_ == Mode::kSeen; }
    // Back to the station.
    void EndLook();
    // How far from the centre a channel can be looked at.
    [[nodiscard]] double HalfWidth_Hz() const { return look_.UsableHalfWidth_Hz(); }

    // Bytes of the stream; appends as much sound at sdr::kSoundRate_Hz, silence for what is not the
    // station's.
    void Process(const std::uint8_t* bytes, std::size_t count, std::uint64_t now_ms,
                 std::vector<float>* frames);
    // So many bytes of the stream were lost: silence stands for them.
    void Lost(std::uint64_t count, std::vector<float>* frames);

    [[nodiscard]] AirSnapshot Snapshot();
    // Of the RDS data; valid until the next call of anything here.
    [[nodiscard]] const sdr::rds::Station& Station();

  private:
    enum class Mode { kStation, kLook, kSeen };

    void GoTo(double centre_Hz);
    void Silence(double seconds, std::vector<float>* frames);
    void Hiss(double seconds, std::vector<float>* frames);
    void AddToLook(const std::uint8_t* bytes, std::size_t count, std::size_t begin, std::uint64_t now_ms);
    [[nodiscard]] bool LookIsOverdriven() const;
    void RestartLook();
    void TakeLook(std::uint64_t now_ms);
    [[nodiscard]] double Offset_Hz() const;

    StreamForm form_;
    CBandMemory* band_;
    SetCentre setCentre_;
    sdr::CSampleDecoder decoder_;
    sdr::rds::CDecoder rds_;
    sdr::CSampleReceiver receiver_;
    sdr::CBandLook look_;
    CHiss hiss_{4711};

    Mode mode_ = Mode::kStation;
    std::uint32_t channel_10kHz_ = kBandBottom_10kHz;
    double centre_Hz_;
    double stale_s_ = 0.0;       // of samples that are of the centre before
    double owed_ = 0.0;          // parts of a frame of silence
    std::size_t looked_ = 0;     // samples of this look
    std::size_t clipped_ = 0;    // bytes of them
    double overdriven_s_ = 0.0;  // of looks that were given up for that
    double idle_s_ = 0.0;        // since the channels in view were looked at
    std::vector<sdr::Sample> samples_;
    sdr::ReceiverSnapshot snapshot_;
};

}  // namespace fm
