#include "handset/fmdevice/antenna/station_texts.h"

#include <algorithm>

namespace fm {
namespace {

// Groups come every 87.6 ms; in a fade of that length the texts stay on the screen.
constexpr double kReceived_s = 2.0;

}  // namespace

void CStationTexts::Restart() {
    *this = {};
}

void CStationTexts::Take(const sdr::rds::Station& station) {
    const sdr::rds::Text* const kTexts[] = {&station.serviceName, &station.radioText,
                                            &station.programTypeName};
    static_assert(std::size(kTexts) == kRdsTextKinds, "a text for each kind");
    for (std::size_t kind = 0; kind < kRdsTextKinds; ++kind) {
        const sdr::rds::Text& text = *kTexts[kind];
        Row& row = rows_[kind];
        if (text.whole.empty()) {
            row = {};
            continue;
        }
        row.text = text.whole;
        if (text.whole_s <= row.whole_s) continue;
        row.whole_s = text.whole_s;
        if (row.complete_s < 0.0) row.complete_s = text.whole_s;
    }
    services_.serviceName = !station.serviceName.whole.empty();
    services_.radioText = !station.radioText.whole.empty();
    services_.clockTime = station.clock.has_value();
    services_.programmeType = station.programmeType.value_or(kNoProgrammeType);
    services_.alternatives_10kHz = station.alternatives.same_10kHz;
    if (services_.alternatives_10kHz.size() > kMostAlternatives)
        services_.alternatives_10kHz.resize(kMostAlternatives);
    services_.received = station.lastGroup_s >= 0.0 && station.now_s - station.lastGroup_s < kReceived_s;
}

std::optional<RdsText> CStationTexts::Give() {
    if (!services_.received) return std::nullopt;
    Row* next = nullptr;
    for (Row& row : rows_) {
        if (row.complete_s >= 0.0 && (next == nullptr || row.complete_s < next->complete_s)) next = &row;
    }
    if (next != nullptr) {
        next->complete_s = -1.0;
        given_ = RdsText{static_cast<RdsTextKind>(next - rows_.data()), next->text};
    }
    return given_;
}

}  // namespace fm
