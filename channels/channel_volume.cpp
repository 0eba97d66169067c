// The volume "KORA.vol" and its two databases: mounting, creating, opening, closing.
#include "channels/channel_db.h"

#include <strsafe.h>

namespace {

WCHAR g_volumeName[] = L"KORA.vol";

// Bit 31 is handed to the platform as it is.
constexpr DWORD kMountFlagsBit = 0x80000000;

constexpr CEPROPID kChannelSortOrders[] = {kPropGroupName, kPropChannelName, kPropChannelValue,
                                           kPropChannelPGuide};
constexpr CEPROPID kGroupSortOrders[] = {kPropGroupName};
constexpr WORD kCreationVersion = 2;
constexpr WORD kSortVersion = 2;

SORTORDERSPECEX SortBy(CEPROPID property) {
    SORTORDERSPECEX order = {};
    order.wVersion = kSortVersion;
    order.wNumProps = 1;
    order.rgPropID[0] = property;
    order.rgdwFlags[0] = CEDB_SORT_UNKNOWNFIRST;
    return order;
}

bool IsOpen(HANDLE handle) {
    return handle != INVALID_HANDLE_VALUE;
}

}  // namespace

// What creating and opening a database says; the group database speaks without the prefix.
struct CChannelDB::OpenTexts {
    const WCHAR* pszCreateFailed;
    const WCHAR* pszExists;
    const WCHAR* pszOpened;
    const WCHAR* pszOpenFailed;
};

void CChannelDB::CEDB_Init() {
    m_hDatabase = nullptr;
    m_hSession = nullptr;
    m_guid = {};
    m_info = {};
    m_channelList = {};
    m_groupList = {};
}

void CChannelDB::SetListSender(void* context, LRESULT (*send)(void*, UINT, WPARAM, LPARAM)) {
    m_channelList = {context, send};
}

void CChannelDB::SetGroupSender(void* context, LRESULT (*send)(void*, UINT, WPARAM, LPARAM)) {
    m_groupList = {context, send};
}

bool CChannelDB::Mount(DWORD flags) {
    if (CeMountDBVol(&m_guid, g_volumeName, kMountFlagsBit | flags)) return true;
    NKDbgPrintfW(L"[CEDB_MountVol]ERROR: could not lcreate: volume\n");
    return false;
}

// The operations that change something say it a second time. All carry on: the open then fails on its own.
bool CChannelDB::MountOrSay() {
    if (Mount(OPEN_ALWAYS)) return true;
    NKDbgPrintfW(L"CEDB_MountVol Failed....\r\n");
    return false;
}

int CChannelDB::CreateOrOpen(const WCHAR* name, const CEPROPID* sortOrders, WORD count,
                             const OpenTexts& texts) {
    m_info = {};
    m_info.wVersion = kCreationVersion;
    m_info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC | CEDB_VALIDDBFLAGS;
    m_info.wNumSortOrder = count;
    StringCchCopyW(m_info.szDbaseName, CEDB_MAXDBASENAMELEN, name);
    for (WORD i = 0; i < count; ++i) m_info.rgSortSpecs[i] = SortBy(sortOrders[i]);

    CEOID oid = CeCreateDatabaseWithProps(&m_guid, &m_info, 0, nullptr);
    if (oid != 0) {
        NKDbgPrintfW(L"Database created: %.24s\n", name);
    } else if (const DWORD error = GetLastError(); error != ERROR_DUP_NAME) {
        NKDbgPrintfW(texts.pszCreateFailed, name, error);
    } else {
        NKDbgPrintfW(texts.pszExists, name);
    }

    m_hSession = CeCreateSession(&m_guid);
    SORTORDERSPECEX order = SortBy(sortOrders[0]);
    m_hDatabase = CeOpenDatabaseInSession(m_hSession, &m_guid, &oid, const_cast<WCHAR*>(name), &order,
                                          CEDB_AUTOINCREMENT, nullptr);
    if (!IsOpen(m_hDatabase)) {
        NKDbgPrintfW(texts.pszOpenFailed, name, GetLastError());
        return 0;
    }
    NKDbgPrintfW(texts.pszOpened, name);
    return 1;
}

int CChannelDB::CEDB_OpenDB(const WCHAR* name) {
    static const OpenTexts kTexts = {
        L"[CEDB_OpenDB]ERROR: Failed creating database %.24s - error = %ld\n",
        L"[CEDB_OpenDB]ERROR: Name already exists!: %.24s\n",
        L"[CEDB_OpenDB]OK: opened database: %.24s\n",
        L"[CEDB_OpenDB]ERROR: could not open the created database!: %.24s GetLastError(): 0x%x\n",
    };
    return CreateOrOpen(name, kChannelSortOrders, ARRAYSIZE(kChannelSortOrders), kTexts);
}

int CChannelDB::CEDB_OpenIndexDB(const WCHAR* name) {
    static const OpenTexts kTexts = {
        L"ERROR: Failed creating database %.24s - error = %ld\n",
        L"ERROR: Name already exists!: %.24s\n",
        L"OK: opened database: %.24s\n",
        L"ERROR: could not open the created database!: %.24s GetLastError(): 0x%x\n",
    };
    return CreateOrOpen(name, kGroupSortOrders, ARRAYSIZE(kGroupSortOrders), kTexts);
}

HANDLE CChannelDB::OpenSorted(const WCHAR* name, CEPROPID property) {
    CEOID byName = 0;
    SORTORDERSPECEX order = SortBy(property);
    m_hSession = CeCreateSession(&m_guid);
    m_hDatabase = CeOpenDatabaseInSession(m_hSession, &m_guid, &byName, const_cast<WCHAR*>(name), &order,
                                          CEDB_AUTOINCREMENT, nullptr);
    return m_hDatabase;
}

HANDLE CChannelDB::CEDB_OpenByGroup(const WCHAR* name) {
    return OpenSorted(name, kPropGroupName);
}
HANDLE CChannelDB::CEDB_OpenByName(const WCHAR* name) {
    return OpenSorted(name, kPropChannelName);
}
HANDLE CChannelDB::CEDB_OpenByValue(const WCHAR* name) {
    return OpenSorted(name, kPropChannelValue);
}

// Kept: the handles keep their stale values; a handle counts as open unless it is INVALID_HANDLE_VALUE.
void CChannelDB::CloseHandles() {
    if (IsOpen(m_hSession)) CloseHandle(m_hSession);
    if (IsOpen(m_hDatabase)) CloseHandle(m_hDatabase);
}

BOOL CChannelDB::CEDB_Close() {
    CloseHandles();
    return CeUnmountDBVol(&m_guid);
}

CEOID CChannelDB::SeekText(CEPROPID property, const WCHAR* text) {
    CEPROPVAL value = TextProperty(property, text);
    return SeekValue(value);
}

CEOID CChannelDB::SeekValue(CEPROPVAL& value) {
    DWORD index = 0;
    return CeSeekDatabaseEx(m_hDatabase, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&value), 1,
                            &index);
}

CEOID CChannelDB::SeekRecord(CEOID oid) {
    DWORD index = 0;
    return CeSeekDatabaseEx(m_hDatabase, CEDB_SEEK_CEOID, oid, 0, &index);
}
