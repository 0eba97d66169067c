// The device's record of a menu's item ends where that of the desktop's first version did, and the calls look
// at its size, 44 bytes on the device. Included twice by <windows.h>: before the desktop's header, which then
// declares its own under other names, and behind it.
#ifndef KORA_DEVICE_MENU_ITEM_INFO
#define KORA_DEVICE_MENU_ITEM_INFO

#define tagMENUITEMINFOW tagDesktopMENUITEMINFOW
#define MENUITEMINFOW DesktopMENUITEMINFOW
#define LPMENUITEMINFOW DesktopLPMENUITEMINFOW
#define LPCMENUITEMINFOW DesktopLPCMENUITEMINFOW
#define InsertMenuItemW DesktopInsertMenuItemW
#define GetMenuItemInfoW DesktopGetMenuItemInfoW
#define SetMenuItemInfoW DesktopSetMenuItemInfoW

#elif defined(MENUITEMINFOW)

#undef tagMENUITEMINFOW
#undef MENUITEMINFOW
#undef LPMENUITEMINFOW
#undef LPCMENUITEMINFOW
#undef InsertMenuItemW
#undef GetMenuItemInfoW
#undef SetMenuItemInfoW

#ifdef __cplusplus
extern "C" {
#endif

typedef struct tagMENUITEMINFOW {
    UINT cbSize;
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    LPWSTR dwTypeData;
    UINT cch;
} MENUITEMINFOW, *LPMENUITEMINFOW;
typedef const MENUITEMINFOW* LPCMENUITEMINFOW;

BOOL WINAPI InsertMenuItemW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info);
BOOL WINAPI GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOW info);
BOOL WINAPI SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW info);

#ifdef __cplusplus
}
#endif

#endif
