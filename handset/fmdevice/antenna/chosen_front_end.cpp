#include "handset/fmdevice/antenna/chosen_front_end.h"

#include <mutex>

#include "handset/base/antenna_text.h"
#include "handset/base/utf8.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/antenna/real_front_end.h"
#include "handset/fmdevice/band/debug_output.h"

namespace fm {
namespace {

constexpr std::uint64_t kPublish_ms = 500;
constexpr wchar_t kBand[] = L"band";

// Why the simulated band plays though something else was chosen; empty when nothing is in the way.
std::string InTheWay(const handset::AntennaChoice& choice, bool lifelike, handset::Antenna* antenna) {
    const std::string fault = handset::ParseAntenna(handset::Utf8(choice.antenna), antenna);
    if (!fault.empty()) return fault;
    // The air goes at its own pace.
    if (antenna->kind != handset::AntennaKind::kBand && !lifelike) return "the clock's rate is not 1";
    return {};
}

}  // namespace

CChosenFrontEnd::CChosenFrontEnd() : band_(std::make_shared<CSimulatedBand>()), current_(band_) {}

CChosenFrontEnd::~CChosenFrontEnd() = default;

std::shared_ptr<ITunerFrontEnd> CChosenFrontEnd::Current() {
    const std::lock_guard<handset::CLock> guard(lock_);
    return current_;
}

void CChosenFrontEnd::Power(bool on) {
    if (on) {
        choice_ = {};
        lifelike_ = HandsetClockRate() == 1;
        condition_ = handset::Wide(kPlays);
        Choose();
        return;
    }
    std::shared_ptr<CRealFrontEnd> gone;
    {
        const std::lock_guard<handset::CLock> guard(lock_);
        current_ = band_;
        gone.swap(real_);
    }
    gone.reset();
    published_ms_ = 0;
    handset::ClearReception();
}

bool CChosenFrontEnd::Choose() {
    const handset::AntennaChoice choice = handset::ChosenAntenna();
    const bool lifelike = HandsetClockRate() == 1;
    if (choice == choice_ && lifelike == lifelike_) return false;
    const bool sameAntenna =
        choice.antenna == choice_.antenna && choice.deemphasis_us == choice_.deemphasis_us;
    choice_ = choice;
    lifelike_ = lifelike;
    handset::Antenna antenna;
    const std::string fault = InTheWay(choice, lifelike, &antenna);
    const bool onAir = fault.empty() && antenna.kind != handset::AntennaKind::kBand;
    if (sameAntenna && onAir == (real_ != nullptr)) {
        if (real_) real_->Apply(choice);
        return false;
    }
    condition_ = handset::Wide(kPlays);
    if (!fault.empty()) {
        condition_ = handset::Wide(fault + ": the simulated band plays");
        ReportLine("antenna: " + handset::Utf8(condition_));
    }
    std::shared_ptr<CRealFrontEnd> real;
    if (onAir) real = std::make_shared<CRealFrontEnd>(antenna, choice);
    {
        const std::lock_guard<handset::CLock> guard(lock_);
        real_.swap(real);
        current_ = real_ ? std::static_pointer_cast<ITunerFrontEnd>(real_)
                         : std::static_pointer_cast<ITunerFrontEnd>(band_);
    }
    // The one before ends here, unless a seek still holds it.
    real.reset();
    published_ms_ = 0;
    current_->Tune(channel_);
    return true;
}

bool CChosenFrontEnd::Refresh() {
    const bool chosen = Choose();
    const bool changed = current_->Refresh();
    PublishBand();
    return chosen || changed;
}

void CChosenFrontEnd::Tune(std::uint32_t channel) {
    channel_ = channel;
    current_->Tune(channel);
}

void CChosenFrontEnd::PublishBand() {
    if (real_) return;
    const std::uint64_t now_ms = GetTickCount64();
    if (now_ms - published_ms_ < kPublish_ms) return;
    published_ms_ = now_ms;
    handset::ReceptionState state;
    state.source = kBand;
    state.condition = condition_;
    const Reception reception = band_->Receive();
    state.channel_10kHz = reception.channel;
    state.level = static_cast<std::uint32_t>(reception.level);
    state.stereo = reception.stereo;
    const StationServices services = band_->Services();
    state.trafficProgramme = services.received && services.trafficProgramme;
    state.trafficAnnouncement = services.received && services.trafficAnnouncement;
    for (std::size_t i = 0; i < handset::kBandChannels; ++i) {
        const auto channel =
            static_cast<std::uint32_t>(handset::kFirstBandChannel_10kHz + i * handset::kBandStep_10kHz);
        state.levels[i] = static_cast<std::uint8_t>(band_->Level(channel));
    }
    handset::WriteReception(state);
}

void CChosenFrontEnd::Render(const Reception& reception, std::uint64_t position, float* frames,
                             std::size_t count) {
    Current()->Render(reception, position, frames, count);
}

}  // namespace fm
