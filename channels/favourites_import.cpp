// Builds the channel volume anew from the preset favourites in the registry.
#include <windows.h>

#include <strsafe.h>

#include <cstring>
#include <cwchar>

#include "channels/channel_db.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/owned.h"

namespace {

constexpr WCHAR kFavouritesKey[] = L"Software\\Quillon\\Kora\\My Favorite";
constexpr WCHAR kChannelValuePrefix[] = L"ChannelValue";
constexpr std::size_t kChannelValuePrefixLength = 12;
static_assert(ARRAYSIZE(kChannelValuePrefix) == kChannelValuePrefixLength + 1);

constexpr DWORD kNameCapacity = 50;  // key names, value names
constexpr DWORD kTextBytes = 100;    // every text is read with this byte count
constexpr std::size_t kPathCapacity = 260;
constexpr std::size_t kSuffixCapacity = 100;

// Room for kTextBytes and a terminator of our own: the registry does not promise one.
struct ImportedText {
    WCHAR sz[kTextBytes / sizeof(WCHAR) + 1] = L"";
};

// Reads a text value; a failed read leaves what was there.
void ReadText(HKEY key, const WCHAR* name, ImportedText& text) {
    WCHAR read[kTextBytes / sizeof(WCHAR)] = L"";
    DWORD type = REG_SZ;
    DWORD size = kTextBytes;
    if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(read), &size) != ERROR_SUCCESS)
        return;
    if (type != REG_SZ) return;
    text = {};
    memcpy(text.sz, read, size);
}

DWORD SubkeyCount(HKEY key) {
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr);
    return count;
}

DWORD ValueCount(HKEY key) {
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                     nullptr, nullptr);
    return count;
}

OwnedKey OpenFavourites() {
    OwnedKey key;
    RegOpenKeyExW(HKEY_CURRENT_USER, kFavouritesKey, 0, KEY_READ, key.put());
    return key;
}

// The subkey at `index`; an empty guard when it cannot be opened.
OwnedKey OpenGroupKey(HKEY favourites, DWORD index) {
    WCHAR name[kNameCapacity] = L"";
    DWORD length = kNameCapacity;
    RegEnumKeyExW(favourites, index, name, &length, nullptr, nullptr, nullptr, nullptr);
    WCHAR path[kPathCapacity] = L"";
    StringCchPrintfW(path, kPathCapacity, L"%s\\%s", kFavouritesKey, name);
    OwnedKey key;
    RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, key.put());
    return key;
}

// The number behind "ChannelValue" in a value's name.
long ChannelNumber(const WCHAR* valueName) {
    // Kept: the rest of the name is taken for a format, so a "%" in it is interpreted.
    WCHAR suffix[kSuffixCapacity] = L"";
    StringCchPrintfW(suffix, kSuffixCapacity, valueName + kChannelValuePrefixLength);
    return _wtol(suffix);
}

void ReadNumbered(HKEY key, const WCHAR* format, long number, ImportedText& text) {
    WCHAR name[kNameCapacity] = L"";
    StringCchPrintfW(name, kNameCapacity, format, number);
    ReadText(key, name, text);
}

// What is read for one channel. The texts are not cleared between channels.
struct ImportedChannel {
    ImportedText group, name, guide;
    DWORD dwValue = 0;

    void Read(HKEY key, const WCHAR* valueName) {
        const long number = ChannelNumber(valueName);
        ReadText(key, L"Name", group);
        ReadNumbered(key, L"ChannelName%d", number, name);
        dwValue = 0;
        DWORD size = sizeof dwValue;
        RegQueryValueExW(key, valueName, nullptr, nullptr, reinterpret_cast<BYTE*>(&dwValue), &size);
        ReadNumbered(key, L"ChannelProgramGuide%d", number, guide);
    }

    void Trace() const {
        NKDbgPrintfW(L"======================================================================");
        NKDbgPrintfW(L"szCountryName: %.80s", group.sz);
        NKDbgPrintfW(L"szChannelName: %.80s dwChannelValue: %d", name.sz, dwValue);
        NKDbgPrintfW(L"szChannelPGuide: %.80s", guide.sz);
    }
};

bool WriteRecord(HANDLE database, CEPROPVAL* properties, WORD count) {
    if (CeWriteRecordProps(database, 0, count, properties) != 0) return true;
    NKDbgPrintfW(L"CeWriteRecordProps failed error [%d]\n", GetLastError());
    return false;
}

bool ImportChannelsOf(HKEY key, HANDLE database, ImportedChannel& channel, int& records) {
    const DWORD values = ValueCount(key);
    for (DWORD index = 0; index < values; ++index) {
        WCHAR valueName[kNameCapacity] = L"";
        DWORD length = kNameCapacity;
        RegEnumValueW(key, index, valueName, &length, nullptr, nullptr, nullptr, nullptr);
        if (wcsncmp(valueName, kChannelValuePrefix, kChannelValuePrefixLength) != 0) continue;
        channel.Read(key, valueName);
        channel.Trace();
        CEPROPVAL properties[kChannelPropertyCount] = {
            TextProperty(kPropGroupName, channel.group.sz),
            TextProperty(kPropChannelName, channel.name.sz),
            NumberProperty(kPropChannelValue, channel.dwValue),
            TextProperty(kPropChannelPGuide, channel.guide.sz),
        };
        if (!WriteRecord(database, properties, kChannelPropertyCount)) return false;
        ++records;
    }
    return true;
}

void ShowBuilt() {
    WCHAR text[260] = L"";
    LoadStringW(g_app.hInstance, IDS_DATABASE_CREATED, text, ARRAYSIZE(text));
    MessageBoxW(nullptr, text, text, MB_OK);
}

}  // namespace

int CChannelDB::CEDB_ImportGroups() {
    if (!DatabaseUsable()) {
        // Kept: counted as success, so that the build goes on.
        NKDbgPrintfW(L"ERROR: Null or invalid database handle\n");
        return 1;
    }
    const OwnedKey favourites = OpenFavourites();
    const DWORD groups = SubkeyCount(favourites.get());
    // Kept: a group without "Name" takes the name that was read before it.
    ImportedText name;
    int records = 0;
    for (DWORD index = 0; index < groups; ++index) {
        const OwnedKey key = OpenGroupKey(favourites.get(), index);
        ReadText(key.get(), L"Name", name);
        CEPROPVAL property = TextProperty(kPropGroupName, name.sz);
        if (!WriteRecord(m_hDatabase, &property, 1)) return 0;
        ++records;
    }
    NKDbgPrintfW(L"DBPlr wrote total: %d records\n", records);
    CeFlushDBVol(&m_guid);
    return 1;
}

int CChannelDB::CEDB_ImportChannels() {
    if (!DatabaseUsable()) {
        NKDbgPrintfW(L"ERROR: Null or invalid database handle\n");
        return 1;
    }
    const OwnedKey favourites = OpenFavourites();
    const DWORD groups = SubkeyCount(favourites.get());
    // Kept: a text that is missing is written as the one of the channel before.
    ImportedChannel channel;
    int records = 0;
    for (DWORD index = 0; index < groups; ++index) {
        const OwnedKey key = OpenGroupKey(favourites.get(), index);
        if (!ImportChannelsOf(key.get(), m_hDatabase, channel, records)) return 0;
    }
    NKDbgPrintfW(L"DBPlr wrote total: %d records\n", records);
    CeFlushDBVol(&m_guid);
    return 1;
}

void CChannelDB::CEDB_BuildFromRegistry() {
    const bool built = Mount(CREATE_ALWAYS) && BuildDatabases();
    if (!built) {
        // Kept: the volume is not unmounted on this path.
        MessageBoxW(nullptr, L"Error", L"Error", MB_OK);
        return;
    }
    CeUnmountDBVol(&m_guid);
    ShowBuilt();
}

bool CChannelDB::BuildDatabases() {
    if (!CEDB_OpenIndexDB(kGroupDatabase) || !CEDB_ImportGroups()) return false;
    CloseHandles();
    if (!CEDB_OpenDB(kChannelDatabase) || !CEDB_ImportChannels()) return false;
    CloseHandles();
    return true;
}
