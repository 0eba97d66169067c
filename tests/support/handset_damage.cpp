#include "tests/support/handset_damage.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "tests/support/host_tool.h"
#include "tests/support/tuner_contract.h"

namespace test {
namespace {

constexpr wchar_t kVolume[] = L"\\KORA.vol";
constexpr wchar_t kNotifications[] = L"HKLM\\System\\Notifications";
constexpr std::size_t kShortestName = 20;
constexpr int kLowest_10kHz = 8750, kHighest_10kHz = 10800;
// Before the first sound a file holds at most this, and of a file that was cut off the last second may be
// lost.
constexpr double kHeads_bytes = 2048;
constexpr double kLost_s = 1;
constexpr double kAmr_bytes_s = 1600;  // 12.2 kbit/s: 32 bytes, 50 times a second
// Half a second of frames, and what is written beside them: the boxes of a fragment, and its place in the
// movie.
constexpr double kFragmentSound_bytes = kAmr_bytes_s / 2;
constexpr double kFragmentHead_bytes = 108 + 4;

std::string Narrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());
}

std::vector<std::string> Parts(const std::string& line, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : line) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

void LookAtChannels(const HandsetUnderTest& handset, Kept& kept) {
    const std::string sound =
        RunOnHost("sqlite3 " + HostPath(handset.DevicePath(kVolume)) + " 'pragma integrity_check'");
    if (sound != "ok\n") kept.damage.push_back("the volume: " + sound);
    std::string printed;
    if (RunProgram(L"channel_dump.exe", L"", &printed) != 0) kept.damage.push_back("the volume: " + printed);
    std::set<std::string> groups;
    for (const std::string& line : Lines(printed)) {
        if (line.rfind("G ", 0) == 0) {
            groups.insert(line.substr(2));
            continue;
        }
        const auto parts = Parts(line.substr(2), '|');
        const int value = parts.size() == 4 ? std::atoi(parts[2].c_str()) : 0;
        if (value < kLowest_10kHz || value > kHighest_10kHz || parts[1].empty() ||
            groups.count(parts[0]) == 0)
            kept.damage.push_back("a channel: " + line);
        ++kept.channels;
    }
    kept.groups = static_cast<int>(groups.size());
}

void LookAtBookings(const HandsetUnderTest& handset, Kept& kept) {
    std::set<std::wstring> entries, notifications;
    for (const std::wstring& name : handset.RegistrySubkeys(kRadioSettings)) {
        if (name.size() >= kShortestName) entries.insert(name);
    }
    for (const std::wstring& name : handset.RegistrySubkeys(kNotifications)) notifications.insert(name);
    if (entries != notifications) {
        kept.damage.push_back(std::to_string(entries.size()) + " entries and " +
                              std::to_string(notifications.size()) + " notifications of other names");
    }
    for (const std::wstring& name : entries) {
        for (const wchar_t* value : {L"Channel", L"StartTime", L"EndTime", L"Week"}) {
            if (handset.RegistryText(kRadioSettings + (L"\\" + name), value).empty())
                kept.damage.push_back("a booking without its " + Narrow(value));
        }
    }
    std::string schedule;
    RunProgram(L"handset.exe", L"schedule", &schedule);
    if (schedule.find("cannot be read") != std::string::npos) kept.damage.push_back(schedule);
    kept.bookings = static_cast<int>(notifications.size());
}

void LookAtRecording(const std::filesystem::path& path, Kept& kept) {
    const SoundFile sound = ProbeSound(path.wstring());
    const bool amr = path.extension() == L".amr";
    const double rate_bytes_s = amr ? kAmr_bytes_s : 2.0 * sound.rate_Hz * sound.channels;
    const auto size = static_cast<double>(std::filesystem::file_size(path));
    const auto name = [&] { return "recording " + Narrow(path.filename().wstring()); };
    if (sound.codec.empty()) {
        // One that was ended before the first sound was written.
        if (size > kHeads_bytes + kAmr_bytes_s)
            kept.damage.push_back(name() + " of " + std::to_string(size) + " bytes");
        return;
    }
    if (!sound.complaints.empty()) kept.damage.push_back(name() + ": " + sound.complaints);
    const double length_s =
        static_cast<double>(DecodeSound(path.wstring(), Channels::kMean).size()) / sound.rate_Hz;
    const double sound_share = amr ? kFragmentSound_bytes / (kFragmentSound_bytes + kFragmentHead_bytes) : 1;
    const double written_s = (size - kHeads_bytes) / rate_bytes_s * sound_share;
    if (length_s < written_s - kLost_s) {
        kept.damage.push_back(name() + " plays " + std::to_string(length_s) + " s of " +
                              std::to_string(written_s));
    }
    kept.recorded_s += length_s;
}

// A file that goes while it is looked for is left out.
std::vector<std::filesystem::path> RecordingsOf(const HandsetUnderTest& handset) {
    std::vector<std::filesystem::path> files;
    std::error_code gone;
    for (std::filesystem::recursive_directory_iterator at(handset.Root(), gone), end; !gone && at != end;
         at.increment(gone)) {
        const auto extension = at->path().extension();
        std::error_code left;
        if ((extension == L".amr" || extension == L".wav") && at->is_regular_file(left))
            files.push_back(at->path());
    }
    return files;
}

void LookAtRecordings(const HandsetUnderTest& handset, Kept& kept) {
    const std::vector<std::filesystem::path> files = RecordingsOf(handset);
    for (const auto& file : files) LookAtRecording(file, kept);
    kept.recordings = static_cast<int>(files.size());
}

}  // namespace

Kept LookAtWhatIsKept(const HandsetUnderTest& handset) {
    Kept kept;
    LookAtChannels(handset, kept);
    LookAtBookings(handset, kept);
    LookAtRecordings(handset, kept);
    return kept;
}

std::uintmax_t RecordedBytes(const HandsetUnderTest& handset) {
    std::uintmax_t bytes = 0;
    for (const auto& file : RecordingsOf(handset)) {
        std::error_code gone;
        const std::uintmax_t size = std::filesystem::file_size(file, gone);
        if (!gone) bytes += size;
    }
    return bytes;
}

}  // namespace test
