#include "tests/support/remote_list.h"

#include <commctrl.h>

namespace test {
namespace {

constexpr int kCapacity = 300;

// What the list reads and fills must lie in its own process.
struct Exchange {
    LVITEMW item;
    wchar_t text[kCapacity];
    POINT position;
};

// Asks the list something about a row; `prepare` fills in what the list is given and where it writes.
template <typename Prepare>
Exchange AskOf(HWND list, int row, UINT message, Prepare prepare) {
    DWORD process = 0;
    GetWindowThreadProcessId(list, &process);
    const HANDLE owner =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    auto* remote =
        static_cast<Exchange*>(VirtualAllocEx(owner, nullptr, sizeof(Exchange), MEM_COMMIT, PAGE_READWRITE));
    Exchange exchange = {};
    const void* asked = prepare(exchange, remote);
    WriteProcessMemory(owner, remote, &exchange, sizeof exchange, nullptr);
    SendMessageW(list, message, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(asked));
    ReadProcessMemory(owner, remote, &exchange, sizeof exchange, nullptr);
    VirtualFreeEx(owner, remote, 0, MEM_RELEASE);
    CloseHandle(owner);
    return exchange;
}

}  // namespace

int RowCount(HWND list) {
    return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

int SelectedRow(HWND list) {
    return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

int RowTop(HWND list, int row) {
    const auto position = [](Exchange&, Exchange* remote) { return &remote->position; };
    return AskOf(list, row, LVM_GETITEMPOSITION, position).position.y;
}

std::wstring RowText(HWND list, int row, int column) {
    const auto text = [column](Exchange& exchange, Exchange* remote) {
        exchange.item.iSubItem = column;
        exchange.item.pszText = remote->text;
        exchange.item.cchTextMax = kCapacity;
        return &remote->item;
    };
    return AskOf(list, row, LVM_GETITEMTEXTW, text).text;
}

}  // namespace test
