#include "tests/unit/channels/channels_test.h"

#include <windows.h>

#include <commctrl.h>

namespace test {
std::ostream& operator<<(std::ostream& out, const SentMessage& sent) {
    return out << "0x" << std::hex << sent.message << std::dec << " " << sent.wParam << " " << sent.item
               << " \"" << Narrow(sent.text) << '"';
}

PropRecord Record(const wchar_t* group, const wchar_t* name, DWORD value, const wchar_t* guide) {
    PropRecord record = {};
    wcscpy(record.szCountryName, group);
    wcscpy(record.szPropRecord_ChannelName, name);
    record.dwPropRecord_ChannelValue = value;
    wcscpy(record.szPropRecord_ChannelPGuide, guide);
    return record;
}

LRESULT RecordedList::Send(void* list, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& self = *static_cast<RecordedList*>(list);
    SentMessage sent = {message, static_cast<long long>(wParam), 0, {}};
    if (message == LVM_INSERTITEMW) {
        const auto& item = *reinterpret_cast<const LVITEMW*>(lParam);
        EXPECT_EQ(item.mask, 0x0Du);
        EXPECT_EQ(item.cchTextMax, static_cast<int>(wcslen(item.pszText)));
        sent.wParam = item.iItem;
        sent.item = item.lParam;
        sent.text = item.pszText;
    } else if (message == LVM_SETITEMTEXTW) {
        const auto& text = *reinterpret_cast<const ListItemText*>(lParam);
        sent.item = text.nColumn;
        sent.text = text.pszText;
    } else if (message == LVM_SETCOLUMNWIDTH) {
        sent.item = *reinterpret_cast<const int*>(lParam);
    } else if (message == LB_INSERTSTRING) {
        sent.wParam = static_cast<int>(wParam);
        sent.text = reinterpret_cast<const wchar_t*>(lParam);
        ++self.rows;
    } else {
        sent.item = lParam;
    }
    self.sent.push_back(sent);
    if (message == LVM_GETITEMCOUNT || message == LB_GETCOUNT) return self.rows;
    return message == LVM_GETSELECTIONMARK ? self.selectionMark : 0;
}

ChannelsTest::ChannelsTest() {
    db.SetListSender(&channelList, RecordedList::Send);
    db.SetGroupSender(&groupList, RecordedList::Send);
}

ChannelsTest::~ChannelsTest() {
    EXPECT_FALSE(VolumeIsMounted()) << "the test leaves the volume mounted";
}

CEOID ChannelsTest::PutProperties(const wchar_t* database, std::vector<CEPROPVAL> properties) {
    // Opened by a store of its own, so that it is made as the store makes it.
    MountedVolume volume;
    CChannelDB maker;
    TraceOf([&] {
        PropRecord none = {};
        if (wcscmp(database, kChannelDatabase) == 0) maker.CEDB_ReadRecord(0, &none);
    });
    OpenDatabase open(volume, database);
    return CeWriteRecordProps(open.get(), 0, static_cast<WORD>(properties.size()), properties.data());
}

CEOID ChannelsTest::Put(const wchar_t* group, const wchar_t* name, DWORD value, const wchar_t* guide) {
    CEPROPVAL properties[kChannelPropertyCount];
    const PropRecord record = Record(group, name, value, guide);
    ChannelProperties(record, properties);
    return PutProperties(kChannelDatabase, {properties, properties + kChannelPropertyCount});
}

CEOID ChannelsTest::PutGroup(const wchar_t* name) {
    CEOID oid = 0;
    TraceOf([&] { oid = db.CEDB_AddGroup(name); });
    return oid;
}

bool ChannelsTest::VolumeIsMounted() {
    CEGUID guid = {};
    // A volume that cannot be opened is not mounted.
    if (!CeMountDBVol(&guid, Mutable(L"KORA.vol"), EDB_MOUNT_FLAG | OPEN_EXISTING)) return false;
    CeUnmountDBVol(&guid);
    return CeFlushDBVol(&guid) != FALSE;
}

void ChannelsTest::SpoilVolume() const {
    const std::string noise(3000, 'x');
    const HANDLE file = CreateFileW(L"\\KORA.vol", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, noise.data(), static_cast<DWORD>(noise.size()), &written, nullptr));
    CloseHandle(file);
}

std::string ChannelsTest::VolumeBytes() const {
    const HANDLE file = CreateFileW(L"\\KORA.vol", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
    CloseHandle(file);
    return bytes;
}

}  // namespace test
