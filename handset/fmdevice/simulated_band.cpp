// The simulated band: keeps up with its file and renders what its stations play.
#include "handset/fmdevice/simulated_band.h"

#include <algorithm>

#include "handset/fmdevice/band_file.h"
#include "handset/fmdevice/debug_output.h"
#include "handset/fmdevice/host_file.h"
#include "handset/fmdevice/receiver_sound.h"
#include "handset/state/handset_state.h"
#include "handset/state/utf8_text.h"

namespace fm {
namespace {

constexpr wchar_t kBandPath[] = L"\\Windows\\band.ini";
constexpr std::size_t kLargestBandFile = 1 << 20;
constexpr std::size_t kLargestSoundFile = 64 << 20;
constexpr std::uint64_t kSettled_100ns = 10'000'000;

std::uint64_t Ticks(const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

std::unique_ptr<IGenerator> OpenFile(const std::string& devicePath) {
    const auto bytes = ReadHostFile(ReachableHostPath(handset::Wide(devicePath)), kLargestSoundFile);
    WavSound sound;
    const char* fault =
        bytes ? ReadWav(*bytes, &sound) : "there is no such file, or it is larger than 64 MiB";
    if (fault == nullptr) return MakeFileGenerator(std::move(sound));
    ReportLine(devicePath + " cannot be played: " + fault);
    return MakeGenerator({});
}

}  // namespace

CSimulatedBand::FileStamp CSimulatedBand::StampOf(const std::wstring& hostPath) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(hostPath.c_str(), GetFileExInfoStandard, &data)) return {};
    return {true, Ticks(data.ftLastWriteTime),
            static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow};
}

bool CSimulatedBand::Refresh() {
    const bool limited = RefreshLimit();
    return RefreshFile() || limited;
}

bool CSimulatedBand::RefreshLimit() {
    const int before = limit_;
    const std::uint32_t channelBefore = limitedChannel_;
    limit_ = static_cast<int>(std::min<std::uint32_t>(handset::StateDword(L"SignalLimit", 100), 100));
    limitedChannel_ = limit_ < 100 ? handset::StateDword(L"SignalLimitChannel", 0) : 0;
    return limit_ != before || limitedChannel_ != channelBefore;
}

bool CSimulatedBand::RefreshFile() {
    const std::wstring path = handset::HostPath(kBandPath);
    const FileStamp stamp = StampOf(path);
    const bool same = looked_ && path == path_ && stamp == stamp_;
    if (same && (settled_ || !stamp.there)) return false;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    settled_ = Ticks(now) > stamp.written + kSettled_100ns;

    const auto bytes = ReadHostFile(path, kLargestBandFile);
    std::string text = bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
    const bool changed = !looked_ || path != path_ || stamp.there != stamp_.there || text != text_;
    looked_ = true;
    path_ = path;
    stamp_ = stamp;
    text_ = std::move(text);
    if (!changed) return false;
    if (!bytes) {
        ReportLine(handset::Utf8(path) +
                   (stamp.there ? ": the band file cannot be read or is larger than 1 MiB"
                                : ": there is no band file") +
                   "; the band is nothing but noise");
    }
    Read(text_);
    return true;
}

void CSimulatedBand::Read(const std::string& text) {
    std::vector<std::string> faults;
    band_ = ReadBand("band.ini", text, &faults);
    for (const std::string& fault : faults) ReportLine(fault);
}

int CSimulatedBand::Level(std::uint32_t channel) const {
    const auto station = band_.stations.find(channel);
    const int level = station == band_.stations.end() ? kNoiseLevel : station->second.level;
    return limitedChannel_ == 0 || limitedChannel_ == channel ? std::min(limit_, level) : level;
}

Reception CSimulatedBand::Receive(std::uint32_t channel) const {
    const int level = Level(channel);
    const auto found = band_.stations.find(channel);
    if (found == band_.stations.end()) return {channel, level, false, {}};
    const Station& station = found->second;
    return {channel, level, station.stereo && level > kStereoThreshold, station.programme};
}

RdsData CSimulatedBand::Rds(std::uint32_t channel) const {
    const auto station = band_.stations.find(channel);
    return station == band_.stations.end() ? RdsData() : station->second.rds;
}

void CSimulatedBand::Render(const Reception& reception, float* frames, std::size_t count) {
    const Programme& programme = reception.programme;
    if (!generator_ || generatorChannel_ != reception.channel || generatorSource_ != programme.source) {
        generator_ =
            programme.kind == ProgrammeKind::kFile ? OpenFile(programme.text) : MakeGenerator(programme);
        generatorChannel_ = reception.channel;
        generatorSource_ = programme.source;
    }
    generator_->Render(frames, count);
    AddReception(reception.level, reception.stereo, &hiss_, frames, count);
}

}  // namespace fm
