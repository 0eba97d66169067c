// The simulated band: keeps up with its file and renders what its stations play.
#include "handset/fmdevice/band/simulated_band.h"

#include <algorithm>

#include "handset/base/file_time.h"
#include "handset/base/utf8.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/band/band_file.h"
#include "handset/fmdevice/band/debug_output.h"
#include "handset/fmdevice/band/host_file.h"
#include "handset/fmdevice/band/seek.h"
#include "handset/state/handset_state.h"

namespace fm {
namespace {

using handset::Ticks;

constexpr wchar_t kBandPath[] = L"\\Windows\\band.ini";
constexpr std::size_t kLargestBandFile = 1 << 20;
constexpr std::size_t kLargestSoundFile = 64 << 20;
constexpr std::uint64_t kSettled_100ns = 10'000'000;
// A file that was not touched for so long is whole.
constexpr std::uint64_t kQuiet_100ns = 2'000'000;

std::uint64_t Now_100ns() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return Ticks(now);
}

std::unique_ptr<IGenerator> OpenFile(const std::string& devicePath) {
    const auto bytes = ReadHostFile(ReachableHostPath(handset::Wide(devicePath)), kLargestSoundFile);
    sound::WavSound sound;
    const char* fault =
        bytes ? sound::ReadWav(*bytes, &sound) : "there is no such file, or it is larger than 64 MiB";
    if (fault == nullptr) return MakeFileGenerator(std::move(sound));
    ReportLine(devicePath + " cannot be played: " + fault);
    return MakeGenerator({});
}

// Where the seek ends is known at once; its time passes step by step, so that a tuning ends it.
class CSimulatedSeek : public ISeek {
  public:
    explicit CSimulatedSeek(const SeekResult& result)
        : result_(result), end_ms_(HandsetMilliseconds() + result.Duration_ms()) {}

    SeekState Step(std::uint32_t* channel) override {
        constexpr DWORD kStep_ms = 20;
        ::Sleep(std::min(HandsetRealTimeout(Left_ms()), kStep_ms));
        if (Left_ms() > 0) return SeekState::kUnderWay;
        *channel = result_.channel;
        return result_.found ? SeekState::kFound : SeekState::kNothing;
    }

  private:
    DWORD Left_ms() const {
        const std::uint64_t now_ms = HandsetMilliseconds();
        return static_cast<DWORD>(end_ms_ - std::min(now_ms, end_ms_));
    }

    const SeekResult result_;
    const std::uint64_t end_ms_;
};

}  // namespace

void CSimulatedBand::Power(bool) {}

CSimulatedBand::FileStamp CSimulatedBand::StampOf(const std::wstring& hostPath) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(hostPath.c_str(), GetFileExInfoStandard, &data)) return {};
    return {true, Ticks(data.ftLastWriteTime),
            static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow};
}

bool CSimulatedBand::Refresh() {
    const bool limited = RefreshLimit();
    const bool changed = RefreshFile() || limited;
    if (changed) level_ = Level(channel_);
    return changed;
}

bool CSimulatedBand::RefreshLimit() {
    const int before = limit_;
    const std::uint32_t channelBefore = limitedChannel_;
    limit_ = static_cast<int>(std::min<std::uint32_t>(handset::StateDword(L"SignalLimit", 100), 100));
    limitedChannel_ = limit_ < 100 ? handset::StateDword(L"SignalLimitChannel", 0) : 0;
    return limit_ != before || limitedChannel_ != channelBefore;
}

bool CSimulatedBand::IsAtRest(const FileLook& look, std::uint64_t now_100ns) {
    if (!(look == seen_)) {
        seen_ = look;
        seenSince_100ns_ = now_100ns;
    }
    // Its own time tells as well, which may be long ago.
    const bool untouched = look.text && look.stamp.written + kQuiet_100ns <= now_100ns;
    return untouched || now_100ns - seenSince_100ns_ >= kQuiet_100ns;
}

bool CSimulatedBand::RefreshFile() {
    const std::wstring path = handset::HostPath(kBandPath);
    const bool first = !looked_ || path != path_;
    FileLook look{StampOf(path), std::nullopt};
    if (!first && look.stamp == stamp_ && (settled_ || !look.stamp.there)) return false;
    const std::uint64_t now = Now_100ns();
    if (const auto bytes = ReadHostFile(path, kLargestBandFile))
        look.text.emplace(bytes->begin(), bytes->end());
    // Somebody is writing it, or has taken it away to lay another one there: the band stays as it was.
    if (!IsAtRest(look, now) && !first) return false;

    if (look.stamp.there && !look.text) {
        if (!unreadable_) {
            ReportLine(handset::Utf8(path) +
                       ": the band file cannot be read or is larger than 1 MiB; the band " +
                       (first ? "is nothing but noise" : "stays as it was"));
        }
        unreadable_ = true;
        if (!first) return false;
    } else {
        unreadable_ = false;
    }
    const std::string text = look.text.value_or("");
    const bool changed = first || look.stamp.there != stamp_.there || text != text_;
    looked_ = true;
    path_ = path;
    stamp_ = look.stamp;
    settled_ = !unreadable_ && now > look.stamp.written + kSettled_100ns;
    if (!changed) return false;
    if (!look.stamp.there) {
        ReportLine(handset::Utf8(path) + ": there is no band file; the band is nothing but noise");
    }
    text_ = text;
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

void CSimulatedBand::Tune(std::uint32_t channel) {
    channel_ = channel;
    level_ = Level(channel);
    rds_.Restart(HandsetMilliseconds());
}

Reception CSimulatedBand::Receive() {
    const int level = Level(channel_);
    const auto found = band_.stations.find(channel_);
    if (found == band_.stations.end()) return {channel_, level, false, {}};
    const Station& station = found->second;
    return {channel_, level, station.stereo && level > kStereoThreshold, station.programme};
}

const RdsData& CSimulatedBand::Sent() const {
    static const RdsData kNothing;
    const auto station = band_.stations.find(channel_);
    return station == band_.stations.end() ? kNothing : station->second.rds;
}

void CSimulatedBand::Listen() {
    rds_.Listen(Sent(), Level(channel_), HandsetMilliseconds());
}

// The list and the services are what the station sends, at any level: a receiver keeps them from better
// moments.
StationServices CSimulatedBand::Services() {
    Listen();
    const RdsData& sent = Sent();
    StationServices services;
    services.serviceName = !sent.serviceNames.empty();
    services.radioText = !sent.radioTexts.empty();
    services.clockTime = sent.clockTime;
    services.trafficProgramme = sent.trafficProgramme;
    services.trafficAnnouncement = sent.trafficAnnouncement;
    services.programmeType = sent.programmeType;
    services.alternatives_10kHz = sent.alternatives_10kHz;
    services.received = rds_.HasGroup() && Level(channel_) > kNoRdsLevel;
    return services;
}

std::optional<RdsText> CSimulatedBand::TakeText() {
    Listen();
    const auto next = rds_.Next();
    if (next) rds_.Given(*next);
    return next;
}

std::string CSimulatedBand::StationName() {
    Listen();
    return rds_.ServiceName();
}

std::unique_ptr<ISeek> CSimulatedBand::Seek(bool up) {
    return std::make_unique<CSimulatedSeek>(
        SeekStation(channel_, up, band_.wrap, [this](std::uint32_t channel) { return Level(channel); }));
}

int CSimulatedBand::AwaitLevel() {
    return level_;
}

void CSimulatedBand::Render(const Reception& reception, std::uint64_t, float* frames, std::size_t count) {
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
