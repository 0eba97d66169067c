// Every record that goes to the platform or comes from it has the device's size, and what is read of it lies
// where the device puts it. The sizes are those of a 32-bit platform whose 64-bit members are aligned to 8.
#include <windows.h>

#include <aygshell.h>
#include <cedb.h>
#include <commctrl.h>
#include <commdlg.h>
#include <dshow.h>
#include <msgqueue.h>
#include <pm.h>

#include <cstddef>

#define SIZE(record, bytes) static_assert(sizeof(record) == (bytes), #record)
#define PLACE(record, member, byte) static_assert(offsetof(record, member) == (byte), #record "." #member)

// clang-format off
SIZE(WCHAR, 2);
SIZE(void*, 4);
SIZE(GUID, 16);
SIZE(FILETIME, 8);
SIZE(SYSTEMTIME, 16);
SIZE(POINT, 8);
SIZE(RECT, 16);
SIZE(MSG, 28);
SIZE(WNDCLASSW, 40);
SIZE(CREATESTRUCTW, 48);
SIZE(PAINTSTRUCT, 64);
SIZE(LOGFONTW, 92);
SIZE(NMHDR, 12);
SIZE(OPENFILENAMEW, 76);
SIZE(SHELLEXECUTEINFOW, 60);
SIZE(INITCOMMONCONTROLSEX, 8);
SIZE(TBBUTTONINFOW, 32);
SIZE(MENUITEMINFOW, 44);
SIZE(LVBKIMAGEW, 24);
SIZE(NMLISTVIEW, 44);
SIZE(DRAWITEMSTRUCT, 48);
SIZE(CRITICAL_SECTION, 24);
SIZE(ULARGE_INTEGER, 8);
SIZE(DLGTEMPLATE, 18);
SIZE(DLGITEMTEMPLATE, 18);
SIZE(AM_MEDIA_TYPE, 72);
SIZE(AUDIO_STREAM_CONFIG_CAPS, 52);
SIZE(WAVEFORMATEX, 18);
SIZE(SHMENUBARINFO, 36);
SIZE(SHINITDLGINFO, 12);
SIZE(SHACTIVATEINFO, 12);
SIZE(MSGQUEUEOPTIONS, 20);
SIZE(CEGUID, 16);
SIZE(CEPROPVAL, 16);
SIZE(SORTORDERSPECEX, 136);
SIZE(CEDBASEINFOEX, 2460);

PLACE(TBBUTTONINFOW, lParam, 20);
PLACE(SHMENUBARINFO, hwndMB, 28);
PLACE(SHELLEXECUTEINFOW, hInstApp, 32);
PLACE(OPENFILENAMEW, lpstrFile, 28);
PLACE(POWER_BROADCAST, SystemPowerState, 12);
PLACE(CEPROPVAL, val, 8);
PLACE(CEDBASEINFOEX, szDbaseName, 8);
PLACE(CEDBASEINFOEX, rgSortSpecs, 284);
PLACE(MENUITEMINFOW, fState, 12);
PLACE(AM_MEDIA_TYPE, pbFormat, 68);

// These have members on the desktop that the device's have not, behind all that is read or written here.
PLACE(LVITEMW, lParam, 32);
PLACE(LVCOLUMNW, cx, 8);
PLACE(NMLVCUSTOMDRAW, clrText, 48);
PLACE(NMLVCUSTOMDRAW, iSubItem, 56);
// clang-format on
