#include "tests/support/host_tool.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "handset/base/utf8.h"
#include "handset/state/process_start.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr DWORD kToolDeadline_ms = 60000;

std::string TemporaryFile() {
    WCHAR folder[MAX_PATH] = L"", path[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"hst", 0, path);
    return handset::Utf8(path);
}

using UnixName = char*(CDECL*)(const WCHAR*);

UnixName FindUnixName() {
    return reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
}

}  // namespace

bool HostToolsAvailable() {
    return FindUnixName() != nullptr;
}

std::string HostPath(const std::wstring& file) {
    const UnixName unixName = FindUnixName();
    char* const path = unixName == nullptr ? nullptr : unixName(file.c_str());
    const std::string quoted = path == nullptr ? "" : "'" + std::string(path) + "'";
    HeapFree(GetProcessHeap(), 0, path);
    return quoted;
}

// Wine starts the machine's programs, but gives no handle to wait for: the end is told by a file that
// appears.
std::string RunOnHost(const std::string& command) {
    const std::wstring output = handset::Wide(TemporaryFile());
    const std::wstring done = output + L".done";
    const std::string target = HostPath(output);
    std::wstring line = handset::Wide("\"/bin/sh\" -c \"{ " + command + "; } >" + target + " 2>&1; touch " +
                                      target + ".done\"");
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(handset::StartProcess(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                      nullptr, &startup, &process));
    EXPECT_TRUE(WaitFor([&] { return GetFileAttributesW(done.c_str()) != INVALID_FILE_ATTRIBUTES; },
                        kToolDeadline_ms))
        << command;
    std::string text = ReadWholeFile(output);
    DeleteFileW(done.c_str());
    DeleteFileW(output.c_str());
    return text;
}

std::map<std::string, std::string> TagsOfSound(const std::wstring& file) {
    std::map<std::string, std::string> tags;
    for (const std::string& line :
         Lines(RunOnHost("ffprobe -v error -of default=nw=1 -show_entries format_tags " + HostPath(file)))) {
        const std::size_t equals = line.find('=');
        if (line.rfind("TAG:", 0) == 0 && equals != line.npos)
            tags[line.substr(4, equals - 4)] = line.substr(equals + 1);
    }
    return tags;
}

SoundFile ProbeSound(const std::wstring& file) {
    const std::string path = HostPath(file);
    // One line for both: a start of the machine's shell takes longer than they do.
    const std::string mark = "complaints:\n";
    const std::string said =
        RunOnHost(kProbeCommand + path + "; echo complaints:; ffmpeg -v error -i " + path + " -f null -");
    const std::size_t end = said.find(mark);
    SoundFile sound = ReadProbe(said.substr(0, end));
    if (end != std::string::npos) sound.complaints = said.substr(end + mark.size());
    return sound;
}

std::vector<std::int16_t> DecodeSound(const std::wstring& file, Channels channels) {
    // There before it is named: only what exists has a path of the machine.
    const std::wstring raw = file + L".raw";
    WriteWholeFile(raw, "");
    RunOnHost("ffmpeg -v quiet -y -i " + HostPath(file) + " -f s16le " +
              (channels == Channels::kMean ? "-ac 1 " : "") + HostPath(raw));
    const std::string bytes = ReadWholeFile(raw);
    DeleteFileW(raw.c_str());
    return SamplesOf(bytes);
}

}  // namespace test
