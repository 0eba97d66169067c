// How the handset's parts talk to one another across processes: window classes and registered messages.
// Each name is given to RegisterWindowMessageW. Host code only.
#pragma once

namespace handset {

// Window class of the panel (handset.exe), the phone drawn around the display.
inline constexpr wchar_t kPanelClass[] = L"KoraHandsetPanel";
// Window class of a soft-key menu bar, a child of the window that it belongs to; its toolbar is its child.
inline constexpr wchar_t kMenuBarClass[] = L"menu_worker";
// Window class of the shell's bar at the top of the display; its text is the title that it shows.
inline constexpr wchar_t kTopBarClass[] = L"HHTaskBar";

// To the panel: where is the display? Result: 0x100000000 | MAKELONG(x, y), screen coordinates of the upper
// left corner of the display; 0 from a window that does not know. No parameters.
inline constexpr wchar_t kDisplayOriginMessage[] = L"KoraHandset.DisplayOrigin";
// To a menu bar: a soft key was pressed. wParam 0 = left, 1 = right.
inline constexpr wchar_t kSoftKeyMessage[] = L"KoraHandset.SoftKey";
// Broadcast after the state's ScreenWidth and ScreenHeight changed: WM_SETTINGCHANGE with this wParam (the
// device's SETTINGCHANGE_RESET); each full-screen window and dialog of the application fits itself again.
inline constexpr unsigned kSettingChangeReset = 0x3002;

}  // namespace handset
