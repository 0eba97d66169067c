#include "tests/support/host_tool.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/handset_under_test.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr DWORD kToolDeadline_ms = 60000;

std::string Narrow(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

std::wstring Wide(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()),
                                                     wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

std::string TemporaryFile() {
    WCHAR folder[MAX_PATH] = L"", path[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"hst", 0, path);
    return Narrow(path);
}

std::string ValueOf(const std::string& lines, const std::string& key) {
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        if (line.rfind(key + "=", 0) == 0) return line.substr(key.size() + 1);
    }
    return "";
}

}  // namespace

std::string HostPath(const std::wstring& file) {
    using UnixName = char*(CDECL*)(const WCHAR*);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    const char* path = unixName == nullptr ? nullptr : unixName(file.c_str());
    return path == nullptr ? "" : "'" + std::string(path) + "'";
}

// Wine starts the machine's programs, but gives no handle to wait for: the end is told by a file that
// appears.
std::string RunOnHost(const std::string& command) {
    const std::wstring output = Wide(TemporaryFile());
    const std::wstring done = output + L".done";
    const std::string target = HostPath(output);
    std::wstring line =
        Wide("\"/bin/sh\" -c \"{ " + command + "; } >" + target + " 2>&1; touch " + target + ".done\"");
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &process));
    EXPECT_TRUE(WaitFor([&] { return GetFileAttributesW(done.c_str()) != INVALID_FILE_ATTRIBUTES; },
                        kToolDeadline_ms))
        << command;
    std::string text = ReadWholeFile(output);
    DeleteFileW(done.c_str());
    DeleteFileW(output.c_str());
    return text;
}

SoundFile ProbeSound(const std::wstring& file) {
    const std::string path = HostPath(file);
    const std::string said = RunOnHost(
        "ffprobe -v error -show_entries format=format_name,duration:stream=codec_name,sample_rate,channels "
        "-of default=noprint_wrappers=1 " +
        path);
    SoundFile sound;
    sound.container = ValueOf(said, "format_name");
    sound.container = sound.container.substr(0, sound.container.find(','));
    sound.codec = ValueOf(said, "codec_name");
    sound.rate_Hz = std::atoi(ValueOf(said, "sample_rate").c_str());
    sound.channels = std::atoi(ValueOf(said, "channels").c_str());
    sound.length_s = std::atof(ValueOf(said, "duration").c_str());
    sound.complaints = RunOnHost("ffmpeg -v error -i " + path + " -f null -");
    return sound;
}

}  // namespace test
