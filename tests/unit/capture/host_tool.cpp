// The way out of Wine: it starts the machine's own programs, but lets nobody wait for them; the last step of
// the line is therefore a file that appears when all is written.
#include "tests/unit/capture/host_tool.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "tests/support/wait.h"
#include "tests/unit/capture/fixture.h"

namespace test {
namespace {

using UnixNameProc = char*(__cdecl*)(const wchar_t*);

UnixNameProc UnixName() {
    return reinterpret_cast<UnixNameProc>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
}

std::string HostName(const std::wstring& path) {
    char* const name = UnixName()(path.c_str());
    const std::string copy = name != nullptr ? name : "";
    HeapFree(GetProcessHeap(), 0, name);
    return copy;
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

std::string Value(const std::string& text, const std::string& name) {
    const std::size_t begin = ("\n" + text).find("\n" + name + "=");
    if (begin == std::string::npos) return "";
    const std::size_t value = begin + name.size() + 1;
    return text.substr(value, text.find_first_of("\r\n", value) - value);
}

}  // namespace

bool HostToolsAvailable() {
    return UnixName() != nullptr;
}

std::string RunOnHost(const std::string& line, const std::vector<std::wstring>& files) {
    static int number = 0;
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    const std::wstring base = std::wstring(folder) + L"capture-tool-" +
                              std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
    const std::wstring out = base + L".out";
    const std::wstring done = base + L".done";
    const std::string home =
        HostName(folder) + "/" +
        std::string(base.begin() + static_cast<std::ptrdiff_t>(std::wcslen(folder)), base.end());
    std::string command = line;
    for (std::size_t i = 0; i < files.size(); ++i)
        command = Replaced(command, "{" + std::to_string(i) + "}", "'" + HostName(files[i]) + "'");
    const std::string script =
        "( " + command + " ) >'" + home + ".out' 2>/dev/null </dev/null; touch '" + home + ".done'\n";
    const std::wstring scriptFile = base + L".sh";
    const HANDLE file = CreateFileW(scriptFile.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, script.data(), static_cast<DWORD>(script.size()), &written, nullptr);
    CloseHandle(file);

    std::string start = "sh \"" + home + ".sh\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    CreateProcessA("Z:\\bin\\sh", start.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                   &process);
    if (process.hProcess != nullptr) CloseHandle(process.hProcess);
    if (process.hThread != nullptr) CloseHandle(process.hThread);
    WaitFor([&] { return GetFileAttributesW(done.c_str()) != INVALID_FILE_ATTRIBUTES; });
    const std::string output = Bytes(out);
    for (const std::wstring& made : {out, done, scriptFile}) DeleteFileW(made.c_str());
    return output;
}

MediaFacts Probe(const std::wstring& hostPath) {
    const std::string text = RunOnHost(
        "ffprobe -v error -of default=nw=1 -show_entries stream=codec_name,sample_rate,channels:"
        "format=format_name,duration {0}",
        {hostPath});
    MediaFacts facts;
    facts.container = Value(text, "format_name");
    facts.codec = Value(text, "codec_name");
    facts.rate_Hz = std::atoi(Value(text, "sample_rate").c_str());
    facts.channels = std::atoi(Value(text, "channels").c_str());
    facts.duration_s = std::atof(Value(text, "duration").c_str());
    return facts;
}

std::vector<short> Decode(const std::wstring& hostPath, std::string* complaints) {
    *complaints = RunOnHost("ffmpeg -v error -i {0} -f null - 2>&1", {hostPath});
    const std::string sound = RunOnHost("ffmpeg -v error -i {0} -f s16le -", {hostPath});
    std::vector<short> samples(sound.size() / 2);
    std::memcpy(samples.data(), sound.data(), samples.size() * 2);
    return samples;
}

}  // namespace test
