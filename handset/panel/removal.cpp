// Taking a handset away again.
#include "handset/panel/removal.h"

#include <windows.h>

#include <cwchar>

#include "handset/panel/host_folder.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr wchar_t kOwnRoot[] = L"OwnDeviceRoot";  // 1 = the device root is the handset's alone
constexpr const wchar_t* kUsersFolders[] = {L"\\My Documents", L"\\Storage Card"};
constexpr const wchar_t* kSoundEndings[] = {L".amr", L".wav"};

struct FoundFile {
    std::wstring name;
    bool folder, link;
};

std::vector<FoundFile> FilesIn(const std::wstring& folder) {
    std::vector<FoundFile> files;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return files;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        files.push_back({name, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                         (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return files;
}

bool IsSound(const std::wstring& name) {
    for (const wchar_t* ending : kSoundEndings) {
        const std::size_t length = std::wcslen(ending);
        if (name.size() > length && _wcsicmp(name.c_str() + name.size() - length, ending) == 0) return true;
    }
    return false;
}

class FileRemoval {
  public:
    FileRemoval(bool recordingsToo, RemovalReport& report) : all_(recordingsToo), report_(report) {}

    // `users`: everything below is the user's. A folder stays when something in it does.
    void Remove(const std::wstring& folder, bool users) {
        for (const FoundFile& file : FilesIn(folder)) {
            const std::wstring path = folder + L"\\" + file.name;
            if (file.folder && !file.link) {
                Remove(path, users || IsUsersFolder(path));
            } else if (!all_ && (users || IsSound(file.name))) {
                report_.kept.push_back(path);
            } else {
                Delete(path, file.folder);
            }
        }
        RemoveDirectoryW(folder.c_str());
    }

  private:
    static bool IsUsersFolder(const std::wstring& path) {
        for (const wchar_t* folder : kUsersFolders) {
            if (_wcsicmp(path.c_str(), handset::HostPath(folder).c_str()) == 0) return true;
        }
        return false;
    }
    // A link goes by itself, without what it leads to.
    void Delete(const std::wstring& path, bool folder) {
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        const BOOL gone = folder ? RemoveDirectoryW(path.c_str()) : DeleteFileW(path.c_str());
        if (!gone && report_.fault.empty()) {
            report_.fault = path + L" could not be removed (error " + std::to_wstring(GetLastError()) + L")";
        }
    }

    bool all_;
    RemovalReport& report_;
};

}  // namespace

void ClaimDeviceRoot() {
    const std::wstring root = handset::DeviceRoot();
    const bool usual = _wcsicmp(root.c_str(), DefaultDeviceRoot().c_str()) == 0;
    if (usual || FilesIn(root).empty()) handset::SetStateDword(kOwnRoot, 1);
}

RemovalReport RemoveHandset(bool recordingsToo) {
    RemovalReport report;
    const std::wstring root = handset::DeviceRoot();
    report.rootLeft = !root.empty() && handset::StateDword(kOwnRoot, 0) != 1;
    if (!root.empty() && !report.rootLeft) {
        FileRemoval(recordingsToo, report).Remove(root, false);
        // The folder around it, when that held nothing else.
        RemoveDirectoryW(root.substr(0, root.rfind(L'\\')).c_str());
    }
    if (!report.fault.empty()) return report;
    const LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
        report.fault = L"the user's registry refused to forget the handset";
    }
    return report;
}

}  // namespace panel
