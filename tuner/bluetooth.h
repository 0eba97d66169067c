// What the platform reports about Bluetooth links is traced; it changes no sound path.
#pragma once

#include <windows.h>

// WM_BLUETOOTH_CHANGED with the status bits.
void OnBluetoothChanged(DWORD status);
