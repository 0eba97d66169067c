#include "handset/phone/band_source.h"

#include "handset/controls/encoding.h"
#include "handset/controls/switches.h"
#include "handset/fmdevice/band/band_file.h"
#include "handset/state/handset_state.h"

namespace panel {

void CBandSource::ReadFile() {
    const std::wstring path = handset::HostPath(L"\\Windows\\band.ini");
    WIN32_FILE_ATTRIBUTE_DATA now{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &now)) {
        band_ = {};
        read_ = false;
        return;
    }
    const bool same = CompareFileTime(&now.ftLastWriteTime, &written_) == 0 && now.nFileSizeLow == size_;
    if (read_ && same) return;
    const auto text = ReadWholeFile(path);
    if (!text) return;  // it is being replaced; the next look finds it
    std::vector<std::string> faults;
    band_ = fm::ReadBand("band.ini", *text, &faults);
    written_ = now.ftLastWriteTime;
    size_ = now.nFileSizeLow;
    read_ = true;
}

BandShown CBandSource::Look(bool radio) {
    ReadFile();
    BandFacts facts;
    if (radio) facts.reception = handset::ReadReception();
    facts.band = band_;
    if (const auto limit = SignalLimit()) {
        facts.limit = limit->level;
        facts.limited_10kHz = limit->channel;
    }
    facts.tuned_10kHz = radio ? TunedChannel() : 0;
    return ShowBand(facts);
}

}  // namespace panel
