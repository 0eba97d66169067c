// The device's special folders.
#include <windows.h>

#include <shlobj.h>

#include <cwchar>

#include "handset/base/module_edge.h"
#include "handset/base/rows.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

struct SpecialFolder {
    int id;
    const wchar_t* path;
};

// clang-format off
constexpr SpecialFolder kSpecialFolders[] = {
    {CSIDL_APPDATA,          L"\\Application Data"},
    {CSIDL_DESKTOPDIRECTORY, L"\\Windows\\Desktop"},
    {CSIDL_FAVORITES,        L"\\Windows\\Favorites"},
    {CSIDL_FONTS,            L"\\Windows\\Fonts"},
    {CSIDL_MYMUSIC,          L"\\My Documents\\My Music"},
    {CSIDL_MYPICTURES,       L"\\My Documents\\My Pictures"},
    {CSIDL_MYVIDEO,          L"\\My Documents\\My Videos"},
    {CSIDL_PERSONAL,         L"\\My Documents"},
    {CSIDL_PROGRAMS,         L"\\Windows\\Start Menu\\Programs"},
    {CSIDL_PROGRAM_FILES,    L"\\Program Files"},
    {CSIDL_STARTMENU,        L"\\Windows\\Start Menu"},
    {CSIDL_STARTUP,          L"\\Windows\\StartUp"},
    {CSIDL_WINDOWS,          L"\\Windows"},
};
// clang-format on

// Each folder on the way is made as well.
bool MakeFolders(const std::wstring& path) {
    for (std::size_t end = path.find(L'\\', 1); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
        CreateDirectoryW(handset::OnDevice(path.substr(0, end).c_str()).host(), nullptr);
    }
    const handset::CDevicePath folder = handset::OnDevice(path.c_str());
    return folder && (CreateDirectoryW(folder.host(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS);
}

}  // namespace

// With `create`, FALSE when the folder can be neither found nor made; without, the path is given all the
// same.
COREDLL_EXPORT BOOL WINAPI DeviceSHGetSpecialFolderPath(HWND /*owner*/, wchar_t* path, int folder,
                                                        BOOL create) try {
    const coredll::CCallGuard guard;
    const SpecialFolder* const found = handset::RowWith(kSpecialFolders, &SpecialFolder::id, folder);
    if (path == nullptr || found == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::wcscpy(path, found->path);
    return !create || MakeFolders(found->path);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
