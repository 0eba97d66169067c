// SHLoadImageResource: a bitmap resource as a bitmap of the program's own.
#include "handset/coredll/platform_call.h"
#include "handset/include/aygshell.h"

extern "C" HBITMAP WINAPI SHLoadImageResource(HINSTANCE module, UINT id) {
    const PlatformCall call;
    // Without a module LoadImageW would answer with pictures of the desktop's own.
    if (module == nullptr || !IS_INTRESOURCE(static_cast<ULONG_PTR>(id))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    // In the display's own format: a copy to the screen then needs no conversion of each pixel.
    return static_cast<HBITMAP>(
        LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
}
