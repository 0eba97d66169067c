// Adding, renaming and deleting groups.
#include <windows.h>

#include <strsafe.h>

#include <cwchar>

#include "channels/channel_db.h"
#include "channels/record_reader.h"

namespace {

// What a channel keeps when its group gets another name.
struct KeptProperties {
    WCHAR szName[kGroupNameCapacity] = L"";
    WCHAR szPGuide[kGroupNameCapacity] = L"";
    DWORD dwValue = 0;

    explicit KeptProperties(const RecordReader& reader) {
        for (const CEPROPVAL& property : reader) {
            if (property.propid == kPropChannelName) {
                StringCchCopyW(szName, kGroupNameCapacity, property.val.lpwstr);
            } else if (property.propid == kPropChannelPGuide) {
                StringCchCopyW(szPGuide, kGroupNameCapacity, property.val.lpwstr);
            } else if (property.propid == kPropChannelValue) {
                dwValue = property.val.ulVal;
            }
        }
    }
};

}  // namespace

void CChannelDB::CEDB_DeleteGroup(int mode, const WCHAR* group) {
    if (group == nullptr) return;
    MountOrSay();
    CEDB_OpenByGroup(kChannelDatabase);
    while (const CEOID oid = SeekText(kPropGroupName, group)) {
        // A record that cannot be deleted would be found for ever.
        if (!CeDeleteRecord(m_hDatabase, oid)) break;
    }
    if (mode == kRemoveGroup) {
        CloseHandles();
        CEDB_OpenByGroup(kGroupDatabase);
        CeDeleteRecord(m_hDatabase, SeekText(kPropGroupName, group));
    }
    CEDB_Close();
}

CEOID CChannelDB::CEDB_FindGroup(const WCHAR* group) {
    Mount(OPEN_ALWAYS);
    CEDB_OpenByGroup(kGroupDatabase);
    const CEOID oid = SeekText(kPropGroupName, group);
    CEDB_Close();
    return oid;
}

CEOID CChannelDB::CEDB_AddGroup(const WCHAR* name) {
    if (CEDB_FindGroup(name) != 0) return 0;
    MountOrSay();
    if (!CEDB_OpenIndexDB(kGroupDatabase)) NKDbgPrintfW(L"CEDB_OpenIndexDB Failed....\r\n");
    // Kept: both refusals leave the volume mounted and the handles open.
    if (!DatabaseUsable()) return 0;
    CEPROPVAL property = TextProperty(kPropGroupName, name);
    const CEOID oid = CeWriteRecordProps(m_hDatabase, 0, 1, &property);
    if (oid == 0) return 0;
    CeFlushDBVol(&m_guid);
    CEDB_Close();
    return oid;
}

int CChannelDB::CEDB_RenameGroup(const WCHAR* oldName, const WCHAR* newName) {
    const CEOID oid = CEDB_FindGroup(oldName);
    if (oid == 0) return 0;
    if (wcscmp(oldName, newName) == 0) return 1;

    MountOrSay();
    if (!CEDB_OpenIndexDB(kGroupDatabase)) NKDbgPrintfW(L"CEDB_OpenIndexDB Failed....\r\n");
    int result = 0;
    CEPROPVAL property = TextProperty(kPropGroupName, newName);
    if (DatabaseUsable() && CeWriteRecordProps(m_hDatabase, oid, 1, &property) != 0) {
        CeFlushDBVol(&m_guid);
        CloseHandles();
        result = RenameChannels(oldName, newName);
    }
    CEDB_Close();
    return result;
}

int CChannelDB::RenameChannels(const WCHAR* oldName, const WCHAR* newName) {
    CEDB_OpenByGroup(kChannelDatabase);
    SeekText(kPropGroupName, oldName);
    int result = -1;
    // Kept: the group of a record is not compared, so every record from the first of the old group to the end
    // of the database takes the new name.
    RecordReader reader(m_hDatabase);
    while (const CEOID oid = reader.Read()) {
        const KeptProperties kept(reader);
        CEPROPVAL properties[kChannelPropertyCount] = {
            TextProperty(kPropGroupName, newName),
            TextProperty(kPropChannelName, kept.szName),
            NumberProperty(kPropChannelValue, kept.dwValue),
            TextProperty(kPropChannelPGuide, kept.szPGuide),
        };
        result = static_cast<int>(CeWriteRecordProps(m_hDatabase, oid, kChannelPropertyCount, properties));
    }
    return result;
}
