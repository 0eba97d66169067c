// Reading, writing and deleting stored channels.
#include <windows.h>

#include <commctrl.h>
#include <strsafe.h>

#include <cwchar>

#include "channels/channel_db.h"
#include "channels/record_reader.h"
#include "tuner/frequency.h"

namespace {

void TakeGroupName(PropRecord& record, const CEPROPVAL& property) {
    StringCchCopyW(record.szCountryName, kChannelTextCapacity, property.val.lpwstr);
}

void TakeChannelName(PropRecord& record, const CEPROPVAL& property) {
    StringCchCopyW(record.szPropRecord_ChannelName, kChannelTextCapacity, property.val.lpwstr);
    NKDbgPrintfW(L"lpPropRecord->szPropRecord_ChannelName: %.80s", record.szPropRecord_ChannelName);
}

void TakeChannelValue(PropRecord& record, const CEPROPVAL& property) {
    record.dwPropRecord_ChannelValue = property.val.ulVal;
    NKDbgPrintfW(L"lpPropRecord->dwPropRecord_ChannelValue: %d", record.dwPropRecord_ChannelValue);
}

void TakeChannelPGuide(PropRecord& record, const CEPROPVAL& property) {
    StringCchCopyW(record.szPropRecord_ChannelPGuide, kChannelTextCapacity, property.val.lpwstr);
    NKDbgPrintfW(L"lpPropRecord->szPropRecord_ChannelPGuide: %.80s", record.szPropRecord_ChannelPGuide);
}

struct PropertyRow {
    CEPROPID id;
    void (*take)(PropRecord&, const CEPROPVAL&);
};

constexpr PropertyRow kProperties[] = {
    {kPropGroupName, TakeGroupName},
    {kPropChannelName, TakeChannelName},
    {kPropChannelValue, TakeChannelValue},
    {kPropChannelPGuide, TakeChannelPGuide},
};

}  // namespace

BOOL CChannelDB::CEDB_ReadRecord(CEOID oid, PropRecord* record) {
    MountOrSay();
    CEDB_OpenDB(kChannelDatabase);
    SeekRecord(oid);
    record->oid = oid;
    {
        RecordReader reader(m_hDatabase);
        reader.Read();
        for (const CEPROPVAL& property : reader) {
            for (const PropertyRow& row : kProperties) {
                if (row.id == property.propid) row.take(*record, property);
            }
        }
    }
    return CEDB_Close();
}

BOOL CChannelDB::CEDB_DeleteRecord(CEOID oid) {
    MountOrSay();
    // Kept: a database that does not open leaves the volume mounted; the next mount succeeds all the same.
    if (!CEDB_OpenDB(kChannelDatabase)) return FALSE;
    const BOOL deleted = CeDeleteRecord(m_hDatabase, oid);
    CEDB_Close();
    return deleted;
}

CEOID CChannelDB::CEDB_InsertRecord(const PropRecord& record) {
    CEOID duplicate = 0;
    if (CEDB_FindDuplicate(record, &duplicate) == 1) return 0;
    Mount(OPEN_ALWAYS);
    CEDB_OpenDB(kChannelDatabase);
    CEPROPVAL properties[kChannelPropertyCount];
    ChannelProperties(record, properties);
    const CEOID oid = CeWriteRecordProps(m_hDatabase, 0, kChannelPropertyCount, properties);
    if (oid != 0) {
        const auto row = static_cast<int>(m_channelList.Send(LVM_GETITEMCOUNT, 0, 0));
        ShowRow(row, oid, record.szPropRecord_ChannelName, record.dwPropRecord_ChannelValue);
    }
    CEDB_Close();
    return oid;
}

CEOID CChannelDB::CEDB_UpdateRecord(CEOID oid, const PropRecord& record) {
    // Kept: the duplicate is compared with the record's own identifier, not with the one that is overwritten.
    CEOID duplicate = 0;
    if (CEDB_FindDuplicate(record, &duplicate) == 1 && duplicate != record.oid) return 0;
    Mount(OPEN_ALWAYS);
    CEDB_OpenDB(kChannelDatabase);
    CEPROPVAL properties[kChannelPropertyCount];
    ChannelProperties(record, properties);
    const CEOID written = CeWriteRecordProps(m_hDatabase, oid, kChannelPropertyCount, properties);
    if (written != 0) {
        const auto row = static_cast<int>(m_channelList.Send(LVM_GETSELECTIONMARK, 0, 0));
        if (row >= 0) {
            SetRowText(row, 0, record.szPropRecord_ChannelName);
            SetRowFrequency(row, record.dwPropRecord_ChannelValue);
        }
    }
    CEDB_Close();
    return written;
}

void CChannelDB::SetRowText(int row, int column, const WCHAR* text) {
    ListItemText item = {column, text};
    m_channelList.Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void CChannelDB::SetRowFrequency(int row, DWORD value) {
    SetRowText(row, 1, ListFrequencyText(value).sz);
}

void CChannelDB::ShowRow(int row, CEOID oid, const WCHAR* name, DWORD value) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_STATE;
    item.iItem = row;
    item.pszText = const_cast<WCHAR*>(name);
    item.cchTextMax = static_cast<int>(wcslen(name));
    item.lParam = static_cast<LPARAM>(oid);
    m_channelList.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SetRowFrequency(row, value);
}
