// The channel database: every stored channel and group, in one volume of the device. The volume is never kept
// open: each operation mounts it, opens one database, works, closes and unmounts.
//
// An operation runs on the calling thread (main or scan thread); one object runs one operation at a time. The
// list senders block until the list's thread has handled each message.
#pragma once

#include <windows.h>

#include <cedb.h>

#include "channels/channel_record.h"

// Where an operation shows rows: the messages of a list view or list box, answered by whoever owns the
// window.
struct ListSender {
    void* pContext;
    LRESULT (*pfnSend)(void* context, UINT message, WPARAM wParam, LPARAM lParam);

    // 0, and nothing is sent, without a function.
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const {
        return pfnSend == nullptr ? 0 : pfnSend(pContext, message, wParam, lParam);
    }
};

// lParam of LVM_SETITEMTEXTW to a list sender; wParam is the row. LVM_SETCOLUMNWIDTH takes the column in
// wParam and a pointer to the width in lParam.
struct ListItemText {
    int nColumn;
    const WCHAR* pszText;
};

inline constexpr WCHAR kChannelDatabase[] = L"FileDB";
inline constexpr WCHAR kGroupDatabase[] = L"FileIndexDB";

// How much CEDB_DeleteGroup removes.
inline constexpr int kEmptyGroup = 0;
inline constexpr int kRemoveGroup = 1;

class CChannelDB {
  public:
    CChannelDB() { CEDB_Init(); }

    void CEDB_Init();
    void SetListSender(void* context, LRESULT (*send)(void*, UINT, WPARAM, LPARAM));
    void SetGroupSender(void* context, LRESULT (*send)(void*, UINT, WPARAM, LPARAM));

    // --- channels (channel_operations.cpp, channel_lookup.cpp) ---

    // Fills `record`; fields that the stored record lacks keep what they held. Result of the unmount.
    BOOL CEDB_ReadRecord(CEOID oid, PropRecord* record);
    BOOL CEDB_DeleteRecord(CEOID oid);
    // The new record's identifier, and a row at the end of the list; 0 when refused (same group and
    // frequency) or failed.
    CEOID CEDB_InsertRecord(const PropRecord& record);
    // Overwrites record `oid` and refreshes the row of the selection mark; 0 when refused or failed.
    CEOID CEDB_UpdateRecord(CEOID oid, const PropRecord& record);
    // 1 and the name (kChannelTextCapacity characters of room) of the first channel with this frequency at or
    // after the group's first record, else 0.
    int CEDB_FindChannelName(const WCHAR* group, DWORD value, WCHAR* name);
    // 1 and the identifier of a record of the same group with the same frequency or a higher one, else 0.
    int CEDB_FindDuplicate(const PropRecord& record, CEOID* oid);

    // --- groups (group_operations.cpp) ---

    // kEmptyGroup deletes the group's channels, kRemoveGroup the group as well. Null does nothing.
    void CEDB_DeleteGroup(int mode, const WCHAR* group);
    // Exact, case-sensitive; 0 when there is none.
    CEOID CEDB_FindGroup(const WCHAR* group);
    CEOID CEDB_AddGroup(const WCHAR* name);
    // 1 for equal names, 0 for an unknown group or a failed write, -1 for a group without channels, else the
    // result of the last channel write.
    int CEDB_RenameGroup(const WCHAR* oldName, const WCHAR* newName);

    // --- lists (list_fill.cpp) ---

    // Appends every group to the group list. 0 when the scan cannot start.
    int CEDB_LoadGroups(const WCHAR* database);
    // Fills the channel list with a group's channels, by name. 0 when the scan cannot start.
    int CEDB_ShowGroup(const WCHAR* database, const WCHAR* group);

    // --- build from the preset favourites (favourites_import.cpp) ---

    // Discards the volume, builds it anew and shows the outcome in a box.
    void CEDB_BuildFromRegistry();
    // Fill the database that is open; 0 for a failed write.
    int CEDB_ImportGroups();
    int CEDB_ImportChannels();

    // --- volume and databases (channel_volume.cpp) ---

    // Opens the database, and makes it first when it is missing: four sort orders, or one for the groups.
    int CEDB_OpenDB(const WCHAR* name);
    int CEDB_OpenIndexDB(const WCHAR* name);
    // Opens by one sort order and never creates. The database handle, or INVALID_HANDLE_VALUE.
    HANDLE CEDB_OpenByGroup(const WCHAR* name);
    HANDLE CEDB_OpenByName(const WCHAR* name);
    HANDLE CEDB_OpenByValue(const WCHAR* name);
    // Closes session and database and unmounts; the result of the unmount.
    BOOL CEDB_Close();

  private:
    struct OpenTexts;
    bool BuildDatabases();
    bool Mount(DWORD flags);
    bool MountOrSay();
    void CloseHandles();
    int CreateOrOpen(const WCHAR* name, const CEPROPID* sortOrders, WORD count, const OpenTexts& texts);
    HANDLE OpenSorted(const WCHAR* name, CEPROPID property);
    bool DatabaseUsable() const { return m_hDatabase != nullptr && m_hDatabase != INVALID_HANDLE_VALUE; }
    CEOID SeekText(CEPROPID property, const WCHAR* text);
    CEOID SeekValue(CEPROPVAL& value);
    CEOID SeekRecord(CEOID oid);
    bool SeekBeginning();
    int RenameChannels(const WCHAR* oldName, const WCHAR* newName);
    int DumPDB(const WCHAR* group);
    void SetRowText(int row, int column, const WCHAR* text);
    void SetRowFrequency(int row, DWORD value);
    void ShowRow(int row, CEOID oid, const WCHAR* name, DWORD value);

    CEGUID m_guid;
    CEDBASEINFOEX m_info;  // rebuilt before each create
    HANDLE m_hDatabase;
    HANDLE m_hSession;
    ListSender m_channelList;
    ListSender m_groupList;
};

// A property that no record of ours has: says so and stops in the debugger; the scan then goes on.
void ReportUnknownProperty();
