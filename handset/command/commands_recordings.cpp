// recordings: what was recorded, as the files themselves tell it.
#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>

#include "handset/base/file_time.h"
#include "handset/base/owned.h"
#include "handset/capture/files/recording_facts.h"
#include "handset/command/command.h"
#include "handset/controls/device_registry.h"
#include "handset/controls/encoding.h"
#include "handset/include/tuner_slots.h"
#include "handset/state/handset_state.h"
#include "handset/state/handset_time.h"

namespace panel {
namespace {

class CHostFileBytes : public capture::IFileBytes {
  public:
    explicit CHostFileBytes(const std::wstring& path)
        : file_(handset::Opened(CreateFileW(path.c_str(), GENERIC_READ,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

    std::uint64_t Size() const override {
        LARGE_INTEGER size = {};
        return file_ && GetFileSizeEx(file_.get(), &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    }
    bool ReadAt(std::uint64_t offset, void* data, std::size_t size) override {
        LARGE_INTEGER place;
        place.QuadPart = static_cast<LONGLONG>(offset);
        DWORD read = 0;
        return file_ && SetFilePointerEx(file_.get(), place, nullptr, FILE_BEGIN) &&
               ReadFile(file_.get(), data, static_cast<DWORD>(size), &read, nullptr) && read == size;
    }

  private:
    handset::OwnedHandle file_;
};

// "2026-11-23 09:58", the handset's local time.
std::wstring TimeText(const FILETIME& written) {
    const FILETIME ticks = handset::FileTime(handset::LocalFromUniversal(handset::Ticks(written)));
    SYSTEMTIME time = {};
    FileTimeToSystemTime(&ticks, &time);
    wchar_t text[32];
    swprintf(text, std::size(text), L"%04u-%02u-%02u %02u:%02u", time.wYear, time.wMonth, time.wDay,
             time.wHour, time.wMinute);
    return text;
}

// "0:03:20".
std::wstring LengthText(double length_s) {
    const auto seconds = static_cast<std::uint64_t>(length_s);
    wchar_t text[40];
    swprintf(text, std::size(text), L"%u:%02u:%02u", static_cast<unsigned>(seconds / 3600),
             static_cast<unsigned>(seconds / 60 % 60), static_cast<unsigned>(seconds % 60));
    return text;
}

struct Row {
    std::wstring date, length, size, station, file;
};

Row RowOf(const std::wstring& devicePath) {
    Row row;
    row.file = devicePath;
    const std::wstring path = handset::HostPath(devicePath.c_str());
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    row.date = TimeText(data.ftLastWriteTime);
    CHostFileBytes bytes(path);
    row.size = std::to_wstring(bytes.Size()) + L" bytes";
    const auto facts = capture::ReadFacts(bytes);
    row.length = facts ? LengthText(facts->length_s) : L"-";
    if (!facts) {
        row.station = L"no recording of this phone";
        return row;
    }
    const capture::RecordingTags& tags = facts->tags;
    constexpr std::size_t kToTheMinute = 16;
    if (tags.date.size() >= kToTheMinute) {
        row.date = Wide(tags.date.substr(0, kToTheMinute));
        std::replace(row.date.begin(), row.date.end(), L'T', L' ');
    }
    row.station = Wide(tags.title.empty() ? "unknown" : tags.title);
    if (!tags.station.empty() && tags.station != tags.title) row.station += L" (" + Wide(tags.station) + L")";
    if (!tags.frequency.empty() && tags.frequency != tags.title) row.station += L", " + Wide(tags.frequency);
    return row;
}

bool HasEnding(const std::wstring& path) {
    constexpr std::size_t kLength = 4;
    if (path.size() < kLength) return false;
    const wchar_t* const ending = path.c_str() + path.size() - kLength;
    return _wcsicmp(ending, L".amr") == 0 || _wcsicmp(ending, L".wav") == 0;
}

// Recordings below a folder of the device, as paths there.
void Collect(const std::wstring& folder, std::vector<std::wstring>* files) {
    const std::filesystem::path root = handset::HostPath(folder.c_str());
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator at(root, error), end; !error && at != end;
         at.increment(error)) {
        const std::wstring path = at->path().wstring();
        if (HasEnding(path) && at->is_regular_file(error))
            files->push_back(folder + path.substr(root.wstring().size()));
    }
}

std::vector<std::wstring> Recordings() {
    std::vector<std::wstring> files;
    Collect(L"\\My Documents\\My Music", &files);
    if (handset::StorageCardPresent()) Collect(L"\\Storage Card", &files);
    // The one file that the settings may name has any name.
    const std::wstring own = DeviceString(fm::kTunerKey, L"DefineFileName", L"");
    for (const wchar_t* ending : {L"amr", L"wav"}) {
        const std::wstring file = own + ending;
        const bool known = std::find(files.begin(), files.end(), file) != files.end();
        const DWORD attributes = own.empty() || known
                                     ? INVALID_FILE_ATTRIBUTES
                                     : GetFileAttributesW(handset::HostPath(file.c_str()).c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES) files.push_back(file);
    }
    return files;
}

std::wstring Padded(const std::wstring& text, std::size_t width, bool right) {
    const std::wstring blanks(text.size() < width ? width - text.size() : 0, L' ');
    return right ? blanks + text : text + blanks;
}

int List(const Arguments& arguments, CConsole& console) {
    if (!arguments.empty()) return BadArguments(console, L"recordings", L"no arguments are wanted");
    std::vector<Row> rows;
    for (const std::wstring& file : Recordings()) rows.push_back(RowOf(file));
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row& one, const Row& other) { return one.date < other.date; });
    if (rows.empty()) console.Line(L"nothing was recorded yet");
    for (const Row& row : rows) {
        console.Line(row.date + L"  " + Padded(row.length, 8, true) + L"  " + Padded(row.size, 16, true) +
                     L"  " + Padded(row.station, 32, false) + L"  " + row.file);
    }
    return kDone;
}

const Command kCommands[] = {
    {L"recordings", List, L"", L"lists what was recorded", L"handset recordings",
     L"One line for each recording in the music folder, on the storage card, and under the name that the\n"
     L"settings give: when it began by the handset's clock, its length and size, the channel, the station's\n"
     L"own name and the frequency, as the file says them, and where it lies on the phone.\n"},
};

}  // namespace

CommandGroup RecordingCommands() {
    return {L"Recordings", kCommands, std::size(kCommands)};
}

}  // namespace panel
