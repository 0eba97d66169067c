// The stages one after another.
#include "handset/fmdevice/sdr/receiver.h"

#include <algorithm>

namespace sdr {
namespace {

// What stays in the processor's nearest memory from stage to stage.
constexpr std::size_t kChunk = 2048;
// A neighbour that strong reaches into the wide channel; noise alone is as strong only below FM's threshold.
constexpr double kStrongNeighbour = 0.25;
constexpr double kWeakNeighbour = 0.15;
// Above this the medium filter's distortion counts for more than the noise that it keeps out.
constexpr double kWideFrom_dBHz = 71.5;
constexpr double kMediumFrom_dBHz = 70.0;
// What the filters still hold of the station before may be a thousand times as strong as this one.
constexpr double kFaded_s = 0.002;

ChannelWidth FirstWidth(ChannelChoice choice) {
    switch (choice) {
        case ChannelChoice::kAutomatic:
            return ChannelWidth::kMedium;
        case ChannelChoice::kWide:
            return ChannelWidth::kWide;
        case ChannelChoice::kMedium:
            return ChannelWidth::kMedium;
        case ChannelChoice::kNarrow:
            return ChannelWidth::kNarrow;
    }
    return ChannelWidth::kMedium;
}

}  // namespace

CSampleReceiver::CSampleReceiver(const ReceiverOptions& options)
    : options_(options),
      tuning_(options.rate_Hz),
      channelizer_(options.rate_Hz),
      meter_(channelizer_.NoiseBandwidth_Hz()),
      stereo_(options.deEmphasis),
      filtered_(kBlockSamples),
      multiplex_(kBlockSamples),
      pairs_(2 * kBlockSamples) {
    channelFilter_.SetWidth(FirstWidth(options.channel));
}

void CSampleReceiver::Tune(double offset_Hz) {
    tuning_.SetOffset(offset_Hz);
    channel_.clear();
    meter_.Reset();
    pilot_.Reset();
    channelFilter_.SetWidth(FirstWidth(options_.channel));
    stream_s_ = 0.0;
    if (listener_ != nullptr) listener_->OnTuned();
}

void CSampleReceiver::Process(const Sample* samples, std::size_t count, std::vector<float>* frames) {
    while (count > 0) {
        const std::size_t chunk = std::min(count, kChunk);
        tuned_.assign(samples, samples + chunk);
        tuning_.Process(tuned_.data(), chunk);
        channelizer_.Process(tuned_.data(), chunk, &channel_);
        std::size_t done = 0;
        for (; channel_.size() - done >= kBlockSamples; done += kBlockSamples) {
            ProcessBlock(channel_.data() + done, frames);
        }
        channel_.erase(channel_.begin(), channel_.begin() + static_cast<std::ptrdiff_t>(done));
        samples += chunk;
        count -= chunk;
    }
}

void CSampleReceiver::ProcessBlock(const Sample* channel, std::vector<float>* frames) {
    channelFilter_.Process(Pairs(channel), kBlockSamples, Pairs(filtered_.data()));
    discriminator_.Process(Pairs(filtered_.data()), kBlockSamples, multiplex_.data());
    if (stream_s_ >= kFaded_s) {
        meter_.AddChannel(channel, filtered_.data(), channelFilter_.Width(), kBlockSamples);
        meter_.AddMultiplex(multiplex_.data(), kBlockSamples);
    }
    MpxBlock block;
    pilot_.Process(multiplex_.data(), &block, pairs_.data());
    if (listener_ != nullptr) listener_->OnMultiplex(block);

    const Measured carrierToNoise_dBHz = meter_.CarrierToNoise_dBHz();
    SoundQuality quality = options_.blend ? SoundQuality::At(carrierToNoise_dBHz.value) : SoundQuality();
    if (options_.blend && !carrierToNoise_dBHz.present) quality = {0.0, 1.0};
    if (options_.forceMono || !pilot_.Locked()) quality.stereo = 0.0;
    stereo_.Process(pairs_.data(), kBlockSamples, quality, frames);
    stream_s_ += kBlockSamples / kMpxRate_Hz;
    ChooseWidth();
}

void CSampleReceiver::ChooseWidth() {
    if (options_.channel != ChannelChoice::kAutomatic) return;
    const ChannelWidth width = channelFilter_.Width();
    const Measured neighbour = meter_.NeighbourShare();
    const Measured carrierToNoise_dBHz = meter_.CarrierToNoise_dBHz();
    if (neighbour.present &&
        neighbour.value > (width == ChannelWidth::kNarrow ? kWeakNeighbour : kStrongNeighbour)) {
        channelFilter_.SetWidth(ChannelWidth::kNarrow);
    } else if (carrierToNoise_dBHz.present) {
        const bool wide =
            carrierToNoise_dBHz.value > (width == ChannelWidth::kWide ? kMediumFrom_dBHz : kWideFrom_dBHz);
        channelFilter_.SetWidth(wide ? ChannelWidth::kWide : ChannelWidth::kMedium);
    }
}

ReceiverSnapshot CSampleReceiver::Snapshot() {
    ReceiverSnapshot snapshot;
    snapshot.carrierToNoise_dBHz = meter_.CarrierToNoise_dBHz();
    snapshot.level = meter_.Level();
    snapshot.carrierOffset_Hz = meter_.CarrierOffset_Hz();
    snapshot.stereo = {pilot_.Locked() ? 1.0 : 0.0, 0.0, true};
    snapshot.pilotDeviation_Hz = pilot_.Locked() ? pilot_.Deviation_Hz() : 0.0;
    snapshot.blend = stereo_.Stereo();
    snapshot.width = channelFilter_.Width();
    snapshot.stream_s = stream_s_;
    return snapshot;
}

}  // namespace sdr
