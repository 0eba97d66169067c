#include "tests/support/remote_list.h"

#include <commctrl.h>

namespace test {
namespace {

constexpr int kCapacity = 300;

// What the list reads and fills must lie in its own process.
struct Exchange {
    LVITEMW item;
    wchar_t text[kCapacity];
};

}  // namespace

int RowCount(HWND list) {
    return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

int SelectedRow(HWND list) {
    return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::wstring RowText(HWND list, int row, int column) {
    DWORD process = 0;
    GetWindowThreadProcessId(list, &process);
    const HANDLE owner =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    auto* remote =
        static_cast<Exchange*>(VirtualAllocEx(owner, nullptr, sizeof(Exchange), MEM_COMMIT, PAGE_READWRITE));
    Exchange exchange = {};
    exchange.item.iSubItem = column;
    exchange.item.pszText = remote->text;
    exchange.item.cchTextMax = kCapacity;
    WriteProcessMemory(owner, remote, &exchange, sizeof exchange, nullptr);
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&remote->item));
    ReadProcessMemory(owner, remote, &exchange, sizeof exchange, nullptr);
    VirtualFreeEx(owner, remote, 0, MEM_RELEASE);
    CloseHandle(owner);
    return exchange.text;
}

}  // namespace test
