// Filling the group list and the channel list from the volume.
#include <windows.h>

#include <commctrl.h>
#include <strsafe.h>

#include <cwchar>

#include "channels/channel_db.h"
#include "channels/record_reader.h"

namespace {

constexpr int kFrequencyColumnWidth = LVSCW_AUTOSIZE_USEHEADER;

struct ListedChannel {
    const WCHAR* pszGroup = nullptr;
    const WCHAR* pszName = L"";
    DWORD dwValue = 0;

    explicit ListedChannel(const RecordReader& reader) {
        for (const CEPROPVAL& property : reader) {
            if (property.propid == kPropGroupName) {
                pszGroup = property.val.lpwstr;
            } else if (property.propid == kPropChannelName) {
                pszName = property.val.lpwstr;
            } else if (property.propid == kPropChannelValue) {
                dwValue = property.val.ulVal;
            } else if (property.propid != kPropChannelPGuide) {
                ReportUnknownProperty();
            }
        }
    }
};

}  // namespace

void ReportUnknownProperty() {
    NKDbgPrintfW(L"Unknown propid !!!!\r\n");
    DebugBreak();
}

int CChannelDB::CEDB_LoadGroups(const WCHAR* database) {
    Mount(OPEN_ALWAYS);
    CeChangeDatabaseLCID(&m_guid, GetSystemDefaultLCID());
    CEDB_OpenByGroup(database);
    if (!SeekBeginning()) return 0;
    {
        RecordReader reader(m_hDatabase);
        while (const CEOID oid = reader.Read()) {
            for (const CEPROPVAL& property : reader) {
                if (property.propid != kPropGroupName) {
                    ReportUnknownProperty();
                    continue;
                }
                m_groupList.Send(LB_INSERTSTRING, static_cast<WPARAM>(-1),
                                 reinterpret_cast<LPARAM>(property.val.lpwstr));
                // Kept: the identifier goes to the index one past the new row.
                const LRESULT count = m_groupList.Send(LB_GETCOUNT, 0, 0);
                m_groupList.Send(LB_SETITEMDATA, static_cast<WPARAM>(count), static_cast<LPARAM>(oid));
            }
        }
    }
    CEDB_Close();
    return 1;
}

int CChannelDB::CEDB_ShowGroup(const WCHAR* database, const WCHAR* group) {
    Mount(OPEN_ALWAYS);
    CeChangeDatabaseLCID(&m_guid, GetSystemDefaultLCID());
    CEDB_OpenByName(database);
    if (!DumPDB(group)) {
        // Kept: the volume stays mounted and the handles open.
        NKDbgPrintfW(L"ERROR: could not dump the database!!\n");
        return 0;
    }
    CEDB_Close();
    return 1;
}

int CChannelDB::DumPDB(const WCHAR* group) {
    m_channelList.Send(LVM_DELETEALLITEMS, 0, 0);
    if (!SeekBeginning()) return 0;
    int row = 0;
    RecordReader reader(m_hDatabase);
    while (const CEOID oid = reader.Read()) {
        const ListedChannel channel(reader);
        if (channel.pszGroup == nullptr || wcscmp(channel.pszGroup, group) != 0) continue;
        ShowRow(row, oid, channel.pszName, channel.dwValue);
        int width = kFrequencyColumnWidth;
        m_channelList.Send(LVM_SETCOLUMNWIDTH, 1, reinterpret_cast<LPARAM>(&width));
        ++row;
    }
    return 1;
}

bool CChannelDB::SeekBeginning() {
    DWORD index = 0;
    if (CeSeekDatabaseEx(m_hDatabase, CEDB_SEEK_BEGINNING, 0, 0, &index) != 0) return true;
    NKDbgPrintfW(L"DumPDB: Couldn't seek to beginning of DB!\r\n");
    return false;
}
