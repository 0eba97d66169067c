#include "handset/fmdevice/antenna/station_texts.h"

#include <utility>

namespace fm {
namespace {

// Groups come every 87.6 ms; in a fade of that length the texts stay on the screen.
constexpr double kReceived_s = 2.0;
// After so long without any code what was known is old.
constexpr double kKept_s = 60.0;

}  // namespace

void CStationTexts::Retune() {
    if (pi_) kept_ = Kept{*pi_, std::move(now_)};
    now_ = {};
    pi_.reset();
}

void CStationTexts::Identify(const sdr::rds::Station& station) {
    if (!station.pi && station.now_s > kKept_s) kept_.reset();
    if (station.pi == pi_) return;
    Retune();
    if (!station.pi) return;
    pi_ = station.pi;
    if (kept_ && kept_->pi == *pi_) {
        now_ = std::move(kept_->known);
        double turn = 0.0;
        for (Row& row : now_.rows) {
            row.kept = !row.text.empty();
            row.whole_s = -1.0;
            // Each is given once more, in the order of their kinds, before what comes.
            row.complete_s = row.kept ? turn : -1.0;
            turn += 1e-6;
        }
        now_.given.reset();
    }
    kept_.reset();
}

void CStationTexts::TakeTexts(const sdr::rds::Station& station) {
    const sdr::rds::Text* const kTexts[] = {&station.serviceName, &station.radioText,
                                            &station.programTypeName};
    static_assert(std::size(kTexts) == kRdsTextKinds, "a text for each kind");
    if (station.radioTextFlag && now_.textFlag && *station.radioTextFlag != *now_.textFlag)
        now_.rows[static_cast<std::size_t>(RdsTextKind::kRadioText)] = {};
    if (station.radioTextFlag) now_.textFlag = station.radioTextFlag;
    for (std::size_t kind = 0; kind < kRdsTextKinds; ++kind) {
        const sdr::rds::Text& text = *kTexts[kind];
        Row& row = now_.rows[kind];
        if (text.whole.empty()) {
            if (!row.kept) row = {};
            continue;
        }
        row.text = text.whole;
        row.kept = false;
        if (text.whole_s <= row.whole_s) continue;
        row.whole_s = text.whole_s;
        if (row.complete_s < 0.0) row.complete_s = text.whole_s;
    }
}

void CStationTexts::TakeServices(const sdr::rds::Station& station) {
    StationServices& services = now_.services;
    services.serviceName = !now_.rows[static_cast<std::size_t>(RdsTextKind::kServiceName)].text.empty();
    services.radioText = !now_.rows[static_cast<std::size_t>(RdsTextKind::kRadioText)].text.empty();
    if (station.clock) services.clockTime = true;
    if (station.programmeType) services.programmeType = *station.programmeType;
    if (station.trafficProgramme) services.trafficProgramme = *station.trafficProgramme;
    if (station.trafficAnnouncement) services.trafficAnnouncement = *station.trafficAnnouncement;
    // A list that was kept holds until the new one is as good.
    const auto& same = station.alternatives.same_10kHz;
    if (station.alternatives.whole || same.size() >= services.alternatives_10kHz.size())
        services.alternatives_10kHz = same;
    if (services.alternatives_10kHz.size() > kMostAlternatives)
        services.alternatives_10kHz.resize(kMostAlternatives);
    services.received = station.lastGroup_s >= 0.0 && station.now_s - station.lastGroup_s < kReceived_s;
}

void CStationTexts::Take(const sdr::rds::Station& station) {
    Identify(station);
    TakeTexts(station);
    TakeServices(station);
}

std::optional<RdsText> CStationTexts::Give() {
    if (!now_.services.received) return std::nullopt;
    Row* next = nullptr;
    for (Row& row : now_.rows) {
        if (row.complete_s >= 0.0 && (next == nullptr || row.complete_s < next->complete_s)) next = &row;
    }
    if (next != nullptr) {
        next->complete_s = -1.0;
        now_.given = RdsText{static_cast<RdsTextKind>(next - now_.rows.data()), next->text};
    }
    return now_.given;
}

}  // namespace fm
