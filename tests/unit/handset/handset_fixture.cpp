// The handset of a test's own.
#include "tests/unit/handset/handset_fixture.h"

#include <filesystem>

#include "handset/controls/encoding.h"
#include "handset/controls/host_folder.h"

namespace panel {

std::wstring RecordingConsole::Joined(const std::vector<std::wstring>& parts) {
    std::wstring text;
    for (const std::wstring& part : parts) text += part + L"\n";
    return text;
}

HandsetTest::HandsetTest() {
    static int count = 0;
    const std::wstring mark = std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    home_ = (std::filesystem::temp_directory_path() / (L"kora-panel-" + mark)).wstring();
    root_ = home_ + L"\\device";
    stateKey_ = L"Software\\Kora Handset Test " + mark;
    std::filesystem::create_directories(root_);
    SetEnvironmentVariableW(L"KORA_STATEKEY", stateKey_.c_str());
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", root_.c_str());
}

HandsetTest::~HandsetTest() {
    RegDeleteTreeW(HKEY_CURRENT_USER, stateKey_.c_str());
    SetEnvironmentVariableW(L"KORA_STATEKEY", nullptr);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", nullptr);
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
}

int HandsetTest::Run(const Arguments& words) {
    console_.lines.clear();
    console_.errors.clear();
    return RunCommandLine(words, console_);
}

std::wstring HandsetTest::ProgramsToInstall() {
    const std::wstring folder = home_ + L"\\programs";
    std::filesystem::create_directories(folder);
    for (const wchar_t* name :
         {L"COREDLL.dll", L"AYGSHELL.dll", L"COMMCTRL.dll", L"COMMDLG.dll", L"fmdevice.dll"}) {
        WriteWholeFile(folder + L"\\" + name, "first " + Utf8(name));
    }
    WriteWholeFile(folder + L"\\band.ini", "[band]\nwrap=1\n");
    CopyFileW((ProgramFolder() + L"\\stand_in_radio.exe").c_str(), (folder + L"\\UI.exe").c_str(), FALSE);
    return folder;
}

}  // namespace panel
