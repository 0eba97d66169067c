// Looking through a folder. The device lists neither "." nor "..", and nothing for a card that is not in.
#include <cwchar>
#include <mutex>
#include <set>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;

std::mutex g_lock;                // guards g_rootSearches
std::set<HANDLE> g_rootSearches;  // those that go through the root, where the card's folder is

bool SearchesRoot(HANDLE search) {
    const std::lock_guard<std::mutex> lock(g_lock);
    return g_rootSearches.count(search) != 0;
}

bool Hidden(const WIN32_FIND_DATAW& found, bool inRoot) {
    if (std::wcscmp(found.cFileName, L".") == 0 || std::wcscmp(found.cFileName, L"..") == 0) return true;
    const std::wstring path = std::wstring(L"\\") + found.cFileName;
    return inRoot && handset::IsOnStorageCard(path) && !handset::StorageCardPresent();
}

bool SkipHidden(HANDLE search, WIN32_FIND_DATAW* found, bool inRoot) {
    while (Hidden(*found, inRoot)) {
        if (!FindNextFileW(search, found)) return false;
    }
    return true;
}

HANDLE FindFirst(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
    const CDevicePath path = OnDevice(pattern);
    if (!path) return INVALID_HANDLE_VALUE;
    const HANDLE search = FindFirstFileW(path.host(), found);
    if (search == INVALID_HANDLE_VALUE) return search;
    const bool inRoot = path.device().rfind(L'\\') == 0;
    if (!SkipHidden(search, found, inRoot)) {
        FindClose(search);
        SetLastError(ERROR_NO_MORE_FILES);
        return INVALID_HANDLE_VALUE;
    }
    if (inRoot) {
        const std::lock_guard<std::mutex> lock(g_lock);
        g_rootSearches.insert(search);
    }
    return search;
}

}  // namespace

COREDLL_EXPORT HANDLE WINAPI DeviceFindFirstFileW(const wchar_t* pattern, WIN32_FIND_DATAW* found) try {
    const CCallGuard guard;
    return FindFirst(pattern, found);
} catch (...) {
    return handset::EdgeAnswer<HANDLE>(INVALID_HANDLE_VALUE);
}

// The device knows no other search than the plain one.
COREDLL_EXPORT HANDLE WINAPI DeviceFindFirstFileExW(const wchar_t* pattern, FINDEX_INFO_LEVELS /*level*/,
                                                    void* found, FINDEX_SEARCH_OPS /*search*/,
                                                    void* /*filter*/, DWORD /*flags*/) try {
    const CCallGuard guard;
    return FindFirst(pattern, static_cast<WIN32_FIND_DATAW*>(found));
} catch (...) {
    return handset::EdgeAnswer<HANDLE>(INVALID_HANDLE_VALUE);
}

COREDLL_EXPORT BOOL WINAPI DeviceFindNextFileW(HANDLE search, WIN32_FIND_DATAW* found) try {
    const CCallGuard guard;
    return FindNextFileW(search, found) && SkipHidden(search, found, SearchesRoot(search));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceFindClose(HANDLE search) try {
    const CCallGuard guard;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        g_rootSearches.erase(search);
    }
    return FindClose(search);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
