// Finding a stored channel by group and frequency.
#include <windows.h>

#include <strsafe.h>

#include <cwchar>

#include "channels/channel_db.h"
#include "channels/record_reader.h"

int CChannelDB::CEDB_FindChannelName(const WCHAR* group, DWORD value, WCHAR* name) {
    if (group == nullptr) return 0;
    Mount(OPEN_ALWAYS);
    CEDB_OpenByGroup(kChannelDatabase);
    if (SeekText(kPropGroupName, group) == 0) return 0;

    int found = 0;
    {
        // Kept: the scan runs on behind the end of the group, so a channel of a later group with the same
        // frequency also names the station.
        RecordReader reader(m_hDatabase);
        while (found == 0 && reader.Read() != 0) {
            for (const CEPROPVAL& property : reader) {
                if (property.propid == kPropChannelName) {
                    StringCchCopyW(name, kChannelTextCapacity, property.val.lpwstr);
                } else if (property.propid == kPropChannelValue && property.val.ulVal == value) {
                    found = 1;
                }
            }
            if (found == 0) name[0] = L'\0';
        }
    }
    CEDB_Close();
    return found;
}

int CChannelDB::CEDB_FindDuplicate(const PropRecord& record, CEOID* oid) {
    Mount(OPEN_ALWAYS);
    CEDB_OpenByValue(kChannelDatabase);
    CEPROPVAL value = NumberProperty(kPropChannelValue, record.dwPropRecord_ChannelValue);
    SeekValue(value);

    int found = 0;
    {
        // Kept: the frequency is not compared again, so a record of the group with a higher one counts too.
        RecordReader reader(m_hDatabase);
        for (CEOID read = reader.Read(); found == 0 && read != 0; read = found == 0 ? reader.Read() : 0) {
            for (const CEPROPVAL& property : reader) {
                if (property.propid != kPropGroupName) continue;
                if (wcscmp(property.val.lpwstr, record.szCountryName) != 0) continue;
                *oid = read;
                found = 1;
            }
        }
    }
    CEDB_Close();
    return found;
}
