// Filling the channel list from the volume against the same rows put into a bare list view.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>

#include "channels/channel_db.h"
#include "channels/list_senders.h"
#include "tests/support/stored_channels.h"

namespace {

constexpr int kRounds = 3;
constexpr WCHAR kGroup[] = L"Bench";

double Now_us() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

HWND CreateList() {
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT | LVS_NOCOLUMNHEADER, 0, 0,
                                      240, 105, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    for (int column = 0; column < 2; ++column) {
        LVCOLUMNW info = {};
        info.mask = LVCF_WIDTH;
        info.cx = 120;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&info));
    }
    return list;
}

void Store(int first, int last) {
    test::MountedVolume volume;
    CChannelDB maker;
    PropRecord record = {};
    maker.CEDB_ReadRecord(0, &record);  // makes the database
    test::OpenDatabase database(volume, kChannelDatabase);
    wcscpy(record.szCountryName, kGroup);
    for (int i = first; i < last; ++i) {
        std::swprintf(record.szPropRecord_ChannelName, kChannelTextCapacity, L"Station %05d", i);
        record.dwPropRecord_ChannelValue = 8750 + static_cast<DWORD>(i % 2050);
        CEPROPVAL properties[kChannelPropertyCount];
        ChannelProperties(record, properties);
        CeWriteRecordProps(database.get(), 0, kChannelPropertyCount, properties);
    }
}

void FillBare(HWND list, int rows) {
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (int row = 0; row < rows; ++row) {
        WCHAR text[40];
        std::swprintf(text, 40, L"Station %05d", row);
        LVITEMW item = {};
        item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_STATE;
        item.iItem = row;
        item.pszText = text;
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        std::swprintf(text, 40, L"%d.%d MHz ", 87 + row % 20, row % 10);
        item.iSubItem = 1;
        SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        SendMessageW(list, LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE_USEHEADER);
    }
}

template <typename Work>
double Best(Work work) {
    double best = 1e18;
    for (int round = 0; round < kRounds; ++round) {
        const double start = Now_us();
        work();
        const double took = Now_us() - start;
        if (took < best) best = took;
    }
    return best;
}

}  // namespace

int main() {
    WCHAR folder[MAX_PATH] = L"";
    ::GetEnvironmentVariableW(L"TEMP", folder, MAX_PATH);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", folder);
    DeleteFileW(L"\\KORA.vol");
    const HWND list = CreateList();
    CChannelDB database;
    database.SetListSender(list, SendToChannelList);
    int stored = 0;
    for (const int rows : {100, 1000, 10000}) {
        Store(stored, rows);
        stored = rows;
        const double ours = Best([&] { database.CEDB_ShowGroup(kChannelDatabase, kGroup); });
        const double bare = Best([&] { FillBare(list, rows); });
        std::fprintf(stdout, "fill the list, %d channels\t%f\tbare list view\t%f\t%s\n", rows, ours, bare,
                     rows == 10000 ? "1.5 x" : "");
        std::fflush(stdout);
    }
    DeleteFileW(L"\\KORA.vol");
    return 0;
}
