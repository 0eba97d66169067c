#include "schedule/schedule_entry.h"

#include <regext.h>
#include <strsafe.h>

namespace {

// Without a leading backslash, which the call that makes a key forbids; the key is the same.
struct KeyPath {
    KeyPath(const WCHAR* path, const WCHAR* name) {
        if (*path == L'\\') ++path;
        StringCchPrintfW(sz, ARRAYSIZE(sz), name == nullptr ? L"%s" : L"%s\\%s", path, name);
    }
    WCHAR sz[MAX_PATH] = L"";
};

// The stored texts in the order in which they are written.
struct TextRow {
    const WCHAR* pszValue;
    WCHAR (ScheduleEntry::*pText)[kBookingTextCapacity];
};

// clang-format off
constexpr TextRow kTexts[] = {
    {L"Channel",   &ScheduleEntry::szChannel},
    {L"StartTime", &ScheduleEntry::szStartTime},
    {L"EndTime",   &ScheduleEntry::szEndTime},
    {L"Week",      &ScheduleEntry::szWeek},
};
// clang-format on

}  // namespace

HRESULT CreateScheduleKey(HKEY root, const WCHAR* path, const WCHAR* name) {
    if (root == nullptr || path == nullptr) return E_INVALIDARG;
    OwnedKey key;
    const LONG error = RegCreateKeyExW(root, KeyPath(path, name).sz, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                       key.put(), nullptr);
    return error == ERROR_SUCCESS ? S_OK : E_FAIL;
}

HRESULT EnumScheduleKey(HKEY root, const WCHAR* path, DWORD index, WCHAR* name, DWORD* length) {
    if (root == nullptr || path == nullptr || name == nullptr || length == nullptr) return E_INVALIDARG;
    return ScheduleKeys(root, path).Enum(index, name, length);
}

ScheduleKeys::ScheduleKeys(HKEY root, const WCHAR* path) {
    RegOpenKeyExW(root, path, 0, KEY_READ, m_key.put());
}

HRESULT ScheduleKeys::Enum(DWORD index, WCHAR* name, DWORD* length) const {
    if (!m_key) return E_FAIL;
    const LONG error = RegEnumKeyExW(m_key.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    if (error == ERROR_MORE_DATA) {
        // A name that fits no entry is somebody else's: the walk goes on behind it.
        name[0] = L'\0';
        *length = 0;
        return S_OK;
    }
    return error == ERROR_SUCCESS ? S_OK : E_FAIL;
}

ScheduleEntry ScheduleKeys::Read(const WCHAR* name) const {
    ScheduleEntry entry = {};
    StringCchCopyW(entry.szName, ARRAYSIZE(entry.szName), name);
    OwnedKey key;
    // No name is no entry's, and as a path it would be that of the key itself.
    if (!m_key || *name == L'\0' || RegOpenKeyExW(m_key.get(), name, 0, KEY_READ, key.put()) != ERROR_SUCCESS)
        return entry;
    for (const TextRow& row : kTexts)
        RegistryGetString(key.get(), nullptr, row.pszValue, entry.*row.pText, kBookingTextCapacity);
    return entry;
}

void WriteScheduleEntry(HKEY root, const WCHAR* path, const ScheduleEntry& entry) {
    CreateScheduleKey(root, path, entry.szName);
    const KeyPath key(path, entry.szName);
    for (const TextRow& row : kTexts) RegistrySetString(root, key.sz, row.pszValue, entry.*row.pText);
}

bool DeleteScheduleKey(HKEY root, const WCHAR* path, const WCHAR* name) {
    return RegDeleteKeyW(root, KeyPath(path, name).sz) == ERROR_SUCCESS;
}
