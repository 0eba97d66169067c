// Setting a handset up.
#include "handset/setup/install.h"

#include <windows.h>

#include "handset/controls/encoding.h"
#include "handset/setup/manifest.h"
#include "handset/setup/presets.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

struct ProgramFile {
    const wchar_t* name;
    bool required;
};
constexpr ProgramFile kProgramFiles[] = {
    {L"UI.exe", true},      {L"COREDLL.dll", true},  {L"AYGSHELL.dll", true}, {L"COMMCTRL.dll", true},
    {L"COMMDLG.dll", true}, {L"fmdevice.dll", true}, {L"capture.dll", false},
};

// Folders of the device that its programs take for granted.
constexpr const wchar_t* kFolders[] = {
    L"\\Windows", L"\\Temp", L"\\My Documents", L"\\My Documents\\My Music", L"\\Storage Card",
};

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool MakeFolder(const std::wstring& path) {
    if (Exists(path)) return true;
    const std::size_t parent = path.rfind(L'\\');
    if (parent != std::wstring::npos && parent > 2 && !MakeFolder(path.substr(0, parent))) return false;
    return CreateDirectoryW(path.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

std::wstring ErrorText() {
    return L" (error " + std::to_wstring(GetLastError()) + L")";
}

std::wstring MakeFolders() {
    for (const wchar_t* folder : kFolders) {
        const std::wstring path = handset::HostPath(folder);
        if (!MakeFolder(path)) return L"the folder " + path + L" could not be made" + ErrorText();
    }
    return L"";
}

std::wstring CopyPrograms(const std::wstring& source, std::vector<std::wstring>& present) {
    for (const ProgramFile& file : kProgramFiles) {
        const std::wstring from = source + L"\\" + file.name;
        if (!Exists(from)) {
            if (!file.required) continue;
            return from + L" is missing; build the radio first";
        }
        const std::wstring to = handset::HostPath(L"\\Windows\\") + file.name;
        SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!CopyFileW(from.c_str(), to.c_str(), FALSE)) {
            return to + L" could not be written" + ErrorText() + L"; is the radio running?";
        }
        present.emplace_back(file.name);
    }
    return L"";
}

// The band belongs to the user once it is there.
std::wstring LayBand(const std::wstring& source, std::vector<std::wstring>& done) {
    const std::wstring from = source + L"\\band.ini";
    const std::wstring to = handset::HostPath(L"\\Windows\\band.ini");
    if (Exists(to)) {
        done.emplace_back(L"\\Windows\\band.ini kept");
    } else if (!Exists(from)) {
        done.emplace_back(L"no band.ini beside handset.exe: the band is empty");
    } else if (CopyFileW(from.c_str(), to.c_str(), TRUE)) {
        done.emplace_back(L"\\Windows\\band.ini");
    } else {
        return to + L" could not be written" + ErrorText();
    }
    return L"";
}

}  // namespace

InstallReport InstallHandset(const std::wstring& source) {
    InstallReport report;
    if (handset::DeviceRoot().empty()) {
        report.fault = L"the handset has no device root";
        return report;
    }
    std::vector<std::wstring> present;
    report.fault = MakeFolders();
    if (report.fault.empty()) report.fault = CopyPrograms(source, present);
    if (!report.fault.empty()) return report;
    for (const std::wstring& name : present) report.done.push_back(L"\\Windows\\" + name);
    const std::wstring manifest = handset::HostPath(L"\\Windows\\UI.exe.manifest");
    if (!WriteWholeFile(manifest, ManifestText(present))) {
        report.fault = manifest + L" could not be written" + ErrorText();
        return report;
    }
    report.done.emplace_back(L"\\Windows\\UI.exe.manifest");
    report.fault = LayBand(source, report.done);
    if (report.fault.empty() && !(WriteFirstRegistryValues() && WritePresetFavourites())) {
        report.fault = L"the user's registry refused the first values";
    }
    if (report.fault.empty()) report.done.emplace_back(L"first registry values and preset favourites");
    return report;
}

}  // namespace panel
