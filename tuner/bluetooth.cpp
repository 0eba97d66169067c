#include "tuner/bluetooth.h"

namespace {

constexpr DWORD kRadioOn = 0x1 | 0x8;  // both of them
constexpr DWORD kLinked = 0x4;
constexpr DWORD kConnecting = 0x10;

}  // namespace

void OnBluetoothChanged(DWORD status) {
    NKDbgPrintfW(L"FM: *****BlueToothStatusNotify\n");
    const bool on = (status & kRadioOn) == kRadioOn;
    if (on && (status & kLinked) != 0) return;
    const bool connecting = on && (status & kConnecting) != 0;
    NKDbgPrintfW(connecting ? L"FM: BT Connecting.............." : L"FM: BT UnConnected..............");
}
