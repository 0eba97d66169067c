// TransparentImage: a copy that leaves one colour out. The device takes a bitmap or a device context as the
// source; the desktop's TransparentBlt takes only the latter.
#include <windows.h>

#include "handset/coredll/call_guard.h"

COREDLL_EXPORT BOOL WINAPI TransparentImage(HDC destination, LONG x, LONG y, LONG width, LONG height,
                                            HANDLE source, LONG sourceX, LONG sourceY, LONG sourceWidth,
                                            LONG sourceHeight, COLORREF transparent) {
    const coredll::CallGuard guard;
    const auto object = static_cast<HGDIOBJ>(source);
    const DWORD type = GetObjectType(object);
    if (type == OBJ_DC || type == OBJ_MEMDC) {
        return TransparentBlt(destination, x, y, width, height, static_cast<HDC>(object), sourceX, sourceY,
                              sourceWidth, sourceHeight, transparent);
    }
    if (type != OBJ_BITMAP) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    const HDC memory = CreateCompatibleDC(destination);
    const HGDIOBJ previous = SelectObject(memory, object);
    const BOOL done = TransparentBlt(destination, x, y, width, height, memory, sourceX, sourceY, sourceWidth,
                                     sourceHeight, transparent);
    SelectObject(memory, previous);
    DeleteDC(memory);
    return done;
}
