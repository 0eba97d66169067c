// The tour's eyes and ears.
#include "handset/tour/tour_watch.h"

#include <windows.h>

#include <cwchar>

#include "handset/controls/encoding.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/wait.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr unsigned kCallTimeout_ms = 15000;
constexpr unsigned kSoundTimeout_ms = 10000;
constexpr unsigned kPictureTimeout_ms = 5000;
constexpr double kListen_s = 0.5;
// What was on its way to the log when something changed is not part of what is heard after it.
constexpr double kSettle_s = 0.3;

std::wstring LogPath(const wchar_t* stateValue) {
    return handset::HostPath(handset::StateString(stateValue, L"").c_str());
}

std::string Log(const wchar_t* stateValue) {
    return ReadWholeFile(LogPath(stateValue)).value_or("");
}

std::uint64_t FileSize(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
    return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

void Restore(const wchar_t* stateValue, const std::wstring& before) {
    if (before.empty()) {
        handset::DeleteStateValue(stateValue);
    } else {
        handset::SetStateString(stateValue, before);
    }
}

}  // namespace

CTourWatch::CTourWatch(std::wstring pictureFolder, CConsole& console)
    : pictureFolder_(std::move(pictureFolder)),
      console_(console),
      tunerLogBefore_(handset::StateString(L"TunerLog", L"")),
      soundLogBefore_(handset::StateString(L"SoundLog", L"")) {
    handset::SetStateString(L"TunerLog", L"\\Temp\\tour.log");
    handset::SetStateString(L"SoundLog", L"\\Temp\\tour.wav");
    DeleteFileW(LogPath(L"TunerLog").c_str());
    DeleteFileW(LogPath(L"SoundLog").c_str());
    const std::wstring band = handset::HostPath(L"\\Windows\\band.ini");
    stations_ = ReadBandStations(ReadWholeFile(band).value_or(""));
}

CTourWatch::~CTourWatch() {
    Restore(L"TunerLog", tunerLogBefore_);
    Restore(L"SoundLog", soundLogBefore_);
}

std::size_t CTourWatch::Calls(const char* operation) const {
    const std::string log = Log(L"TunerLog");
    return CountCalls(ReadTunerLog(log), operation);
}

std::optional<std::uint32_t> CTourWatch::LastNumberOf(const char* operation) const {
    const std::string log = Log(L"TunerLog");
    return LastNumber(ReadTunerLog(log), operation);
}

bool CTourWatch::WaitForCalls(const char* operation, std::size_t count) const {
    return WaitUntil([&] { return Calls(operation) >= count; }, kCallTimeout_ms);
}

bool CTourWatch::WaitForNumber(const char* operation, std::uint32_t number) const {
    return WaitUntil([&] { return LastNumberOf(operation) == number; }, kCallTimeout_ms);
}

std::optional<sound::WavSound> CTourWatch::SoundSoFar() const {
    const std::string log = Log(L"SoundLog");
    sound::WavSound heard;
    const bool read =
        sound::ReadWav({log.begin(), log.end()}, &heard, sound::WavEnd::kAtTheFilesEnd) == nullptr;
    return read ? std::optional(std::move(heard)) : std::nullopt;
}

std::optional<sound::Hearing> CTourWatch::ListenNow() const {
    std::optional<sound::WavSound> heard;
    if (!WaitUntil([&] { return (heard = SoundSoFar()).has_value(); }, kSoundTimeout_ms)) return std::nullopt;
    const std::wstring file = LogPath(L"SoundLog");
    const std::size_t frame_bytes = heard->channels * sizeof(std::int16_t);
    const std::uint64_t wanted =
        FileSize(file) + static_cast<std::uint64_t>((kSettle_s + kListen_s) * heard->rate_Hz) * frame_bytes;
    if (!WaitUntil([&] { return FileSize(file) >= wanted; }, kSoundTimeout_ms)) return std::nullopt;
    heard = SoundSoFar();
    return heard ? std::optional(sound::Listen(*heard, kListen_s)) : std::nullopt;
}

std::wstring CTourWatch::TunedTo() const {
    const auto channel = LastNumberOf("GetChannel");
    if (!channel) return L"no frequency yet";
    wchar_t text[64];
    swprintf(text, std::size(text), L"%u.%u MHz", *channel / 100, *channel % 100 / 10);
    std::wstring line = text;
    for (const BandStation& station : stations_) {
        if (station.channel != *channel) continue;
        line += L", " + (station.name.empty() ? L"a station without a name" : Wide(station.name));
    }
    return line;
}

void CTourWatch::KeepSound() const {
    const std::wstring kept = pictureFolder_ + L"\\tour.wav";
    if (CopyFileW(LogPath(L"SoundLog").c_str(), kept.c_str(), FALSE))
        console_.Line(L"sound: " + SaidPath(kept));
}

void CTourWatch::Picture(const wchar_t* name) const {
    const std::wstring file = pictureFolder_ + L"\\" + name + L".png";
    DeleteFileW(file.c_str());
    console_.Line(std::wstring(L"picture ") + name);
    const auto taken = [&] { return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES; };
    if (!WaitUntil(taken, kPictureTimeout_ms)) console_.Line(L"  (nobody took the picture)");
}

}  // namespace panel
