// Private messages of the main window. The numbers are fixed: other programs and older parts rely on them.
#pragma once

#include <windows.h>

inline constexpr UINT WM_AUTOSCAN_FINISHED = WM_USER + 9999;  // scan thread (posted), shut-down (sent)
inline constexpr UINT WM_SKIN_SLIDER = WM_APP + 1;            // skin → window: slider id, position
inline constexpr UINT WM_SKIN_REPEAT = WM_APP + 2;            // skin → window: button id, timer data
inline constexpr UINT WM_SKIN_CLICK = WM_APP + 3;             // skin → window: control id, data
inline constexpr UINT WM_SKIN_SETPOS = WM_APP + 4;            // window → skin: slider id, position
inline constexpr UINT WM_SKIN_GETPOS = WM_APP + 5;            // window → skin: slider id; result = position
inline constexpr UINT WM_HEADSET_CHANGED = 0xA401;            // wParam = new value of "Headset"
inline constexpr UINT WM_BLUETOOTH_CHANGED = 0xA402;          // wParam = status bits
inline constexpr UINT WM_PHONE_CHANGED = 0xA403;              // wParam = new value of "Status"
inline constexpr UINT WM_AF_SWITCHED = 0xA404;                // monitor thread, after a switch

static_assert(WM_AUTOSCAN_FINISHED == 0x2B0F && WM_SKIN_SLIDER == 0x8001 && WM_SKIN_GETPOS == 0x8005);
