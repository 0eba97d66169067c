// The whole receiver: samples of the antenna in, sound and what is known of the signal out; who decodes its
// data listens to the multiplex. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/fmdevice/sdr/channel_filter.h"
#include "handset/fmdevice/sdr/channelizer.h"
#include "handset/fmdevice/sdr/discriminator.h"
#include "handset/fmdevice/sdr/mpx_block.h"
#include "handset/fmdevice/sdr/pilot_loop.h"
#include "handset/fmdevice/sdr/sample.h"
#include "handset/fmdevice/sdr/signal_meter.h"
#include "handset/fmdevice/sdr/stereo_decoder.h"
#include "handset/fmdevice/sdr/tuning.h"

namespace sdr {

enum class ChannelChoice : std::uint8_t { kAutomatic, kWide, kMedium, kNarrow };

struct ReceiverOptions {
    double rate_Hz = 1920000.0;  // of the samples, 200 kHz or more
    DeEmphasis deEmphasis = DeEmphasis::k50us;
    ChannelChoice channel = ChannelChoice::kAutomatic;
    // Whether weak stations lose stereo and treble by degrees; else all of both stays, whatever the noise.
    bool blend = true;
    bool forceMono = false;
};

// Of the moment; ages by the clock of the samples.
struct ReceiverSnapshot {
    Measured carrierToNoise_dBHz;
    Measured level;             // 0 to 100
    Measured carrierOffset_Hz;  // of the carrier from where the receiver is tuned
    Measured stereo;            // 1 when the pilot is there, else 0
    double pilotDeviation_Hz = 0.0;
    double blend = 0.0;  // how much of the difference is in the sound, 0 to 1
    ChannelWidth width = ChannelWidth::kWide;
    double stream_s = 0.0;  // of samples since the last tuning
};

// No thread, no lock and no clock of its own: whoever owns it calls it from one thread at a time, and hands a
// snapshot on as he likes.
class CSampleReceiver {
  public:
    explicit CSampleReceiver(const ReceiverOptions& options);

    // Tunes to a station that far from the samples' centre, within half the rate. Level and pilot start
    // anew; the filters' contents of the station before fade within a millisecond.
    void Tune(double offset_Hz);
    // Not owned; null for none.
    void SetListener(IMpxListener* listener) { listener_ = listener; }

    // Blocks of any size. Values that are no numbers count as 0. Sound is appended: frames of left and right
    // at kSoundRate_Hz, 1.0 for 75 kHz of deviation on both sides.
    void Process(const Sample* samples, std::size_t count, std::vector<float>* frames);

    [[nodiscard]] ReceiverSnapshot Snapshot();

  private:
    void ProcessBlock(const Sample* channel, std::vector<float>* frames);
    void ChooseWidth();

    ReceiverOptions options_;
    CTuning tuning_;
    CChannelizer channelizer_;
    CChannelFilter channelFilter_;
    CDiscriminator discriminator_;
    CSignalMeter meter_;
    CPilotLoop pilot_;
    CStereoDecoder stereo_;
    IMpxListener* listener_ = nullptr;

    std::vector<Sample> tuned_;
    std::vector<Sample> channel_;
    std::vector<Sample> filtered_;
    std::vector<float> multiplex_;
    std::vector<float> pairs_;
    double stream_s_ = 0.0;
};

}  // namespace sdr
