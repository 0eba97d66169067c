// Taking a handset away again.
#include "handset/setup/removal.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>

#include "handset/base/owned.h"
#include "handset/controls/host_folder.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

// The folders that are the handset's alone, parted by a character that no path holds.
constexpr wchar_t kOwnRoots[] = L"OwnDeviceRoots";
constexpr wchar_t kPartition = L'|';
constexpr const wchar_t* kUsersFolders[] = {L"\\My Documents", L"\\Storage Card"};
constexpr const wchar_t* kSoundEndings[] = {L".amr", L".wav"};

struct FoundFile {
    std::wstring name;
    bool folder, link;
};

std::vector<FoundFile> FilesIn(const std::wstring& folder) {
    std::vector<FoundFile> files;
    WIN32_FIND_DATAW found;
    const handset::OwnedSearch search(handset::Opened(FindFirstFileW((folder + L"\\*").c_str(), &found)));
    if (!search) return files;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        files.push_back({name, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                         (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
    } while (FindNextFileW(search.get(), &found));
    return files;
}

bool IsSound(const std::wstring& name) {
    for (const wchar_t* ending : kSoundEndings) {
        const std::size_t length = std::wcslen(ending);
        if (name.size() > length && _wcsicmp(name.c_str() + name.size() - length, ending) == 0) return true;
    }
    return false;
}

class CFileRemoval {
  public:
    CFileRemoval(bool recordingsToo, RemovalReport& report) : all_(recordingsToo), report_(report) {}

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
            report_.fault =
                SaidPath(path) + L" could not be removed (error " + std::to_wstring(GetLastError()) + L")";
        }
    }

    bool all_;
    RemovalReport& report_;
};

bool SamePath(const std::wstring& one, const std::wstring& other) {
    return _wcsicmp(FullHostPath(one).c_str(), FullHostPath(other).c_str()) == 0;
}

std::vector<std::wstring> OwnRoots() {
    std::vector<std::wstring> roots;
    std::wstring rest = handset::StateString(kOwnRoots, L"");
    for (std::size_t end = 0; !rest.empty(); rest.erase(0, end == rest.size() ? end : end + 1)) {
        end = std::min(rest.find(kPartition), rest.size());
        if (end != 0) roots.push_back(rest.substr(0, end));
    }
    return roots;
}

bool IsOwn(const std::wstring& root) {
    const auto roots = OwnRoots();
    return std::any_of(roots.begin(), roots.end(),
                       [&root](const std::wstring& own) { return SamePath(own, root); });
}

// A folder of a claimed path in which no handset was ever laid is another one of that name.
bool HoldsHandset(const std::wstring& root) {
    return GetFileAttributesW((root + L"\\Windows\\UI.exe.manifest").c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

void ClaimDeviceRoot() {
    const std::wstring root = handset::DeviceRoot();
    if (root.empty()) return;
    const bool usual = SamePath(root, DefaultDeviceRoot());
    const bool claimed = usual || FilesIn(root).empty() || (IsOwn(root) && HoldsHandset(root));
    std::wstring text;
    for (const std::wstring& own : OwnRoots()) {
        if (!SamePath(own, root)) text += own + kPartition;
    }
    if (claimed) text += FullHostPath(root);
    handset::SetStateString(kOwnRoots, text);
}

RemovalReport RemoveHandset(bool recordingsToo) {
    RemovalReport report;
    const std::wstring root = handset::DeviceRoot();
    report.rootLeft = !root.empty() && !IsOwn(root);
    if (!root.empty() && !report.rootLeft) {
        CFileRemoval(recordingsToo, report).Remove(root, false);
        // Around the usual one lies a folder of the handset's own as well.
        if (SamePath(root, DefaultDeviceRoot())) RemoveDirectoryW(root.substr(0, root.rfind(L'\\')).c_str());
    }
    if (!report.fault.empty()) return report;
    const LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
        report.fault = L"the user's registry refused to forget the handset";
    }
    return report;
}

}  // namespace panel
