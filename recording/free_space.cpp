#include "recording/free_space.h"

#include "recording/storage_card.h"
#include "resources/resource_ids.h"
#include "shell/settings_key.h"
#include "shell/texts.h"

namespace {
constexpr WCHAR kObjectStore[] = L"\\Windows\\";
}

std::uint64_t FreeSpaceBytes() {
    ULARGE_INTEGER forCaller = {}, total = {}, free = {};
    free.QuadPart = UINT64_MAX;
    const WCHAR* folder = ReadSetting(kSaveFileType) != 0 ? kStorageCard : kObjectStore;
    GetDiskFreeSpaceExW(folder, &forCaller, &total, &free);
    NKDbgPrintfW(L"FM: disk space = %d\n", free.LowPart);
    return free.QuadPart;
}

void ShowInsufficientSpace(HWND owner) {
    const ResourceText text(IDS_NO_SPACE);
    MessageBoxW(owner, text.sz[0] != L'\0' ? text.sz : L"Insufficient Storage Space !", L"FM",
                MB_ICONEXCLAMATION);
}
