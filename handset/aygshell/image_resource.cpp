// SHLoadImageResource: an image resource as a bitmap of the program's own.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "handset/base/com_reference.h"
#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/aygshell.h"

namespace {

// The device takes no other type, whatever form the image has.
constexpr wchar_t kType[] = L"GIF";

struct Bytes {
    const BYTE* data = nullptr;
    DWORD size = 0;
};

Bytes Resource(HINSTANCE module, UINT id) {
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), kType);
    if (found == nullptr) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return {};
    }
    return {static_cast<const BYTE*>(LockResource(LoadResource(module, found))),
            SizeofResource(module, found)};
}

bool IsBitmapFile(const Bytes& bytes) {
    return bytes.size > 2 && bytes.data[0] == 'B' && bytes.data[1] == 'M';
}

// In the display's own format: a copy to the screen then needs no conversion of each pixel.
HBITMAP FromBitmapFile(const Bytes& bytes) {
    BITMAPFILEHEADER file;
    BITMAPINFOHEADER info;
    constexpr DWORD kHeaders = sizeof file + sizeof info;
    if (bytes.size < kHeaders) return nullptr;
    std::memcpy(&file, bytes.data, sizeof file);
    std::memcpy(&info, bytes.data + sizeof file, sizeof info);
    const ULONGLONG rows = static_cast<ULONGLONG>(std::abs(static_cast<LONGLONG>(info.biHeight)));
    const ULONGLONG row = (static_cast<ULONGLONG>(info.biWidth) * info.biBitCount + 31) / 32 * 4;
    if (info.biSize < sizeof info || info.biWidth <= 0 || info.biCompression != BI_RGB ||
        file.bfOffBits < kHeaders || file.bfOffBits > bytes.size || row * rows > bytes.size - file.bfOffBits)
        return nullptr;
    // In the file it begins at an odd place; its colours follow it.
    std::vector<DWORD> copy((file.bfOffBits - sizeof file + sizeof(DWORD) - 1) / sizeof(DWORD));
    std::memcpy(copy.data(), bytes.data + sizeof file, file.bfOffBits - sizeof file);
    const auto* header = reinterpret_cast<const BITMAPINFO*>(copy.data());
    const handset::CWindowDC screen(nullptr);
    return CreateDIBitmap(screen.get(), &header->bmiHeader, CBM_INIT, bytes.data + file.bfOffBits, header,
                          DIB_RGB_COLORS);
}

// The host knows the other forms.
HBITMAP FromPicture(const Bytes& bytes) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size);
    if (memory == nullptr) return nullptr;
    std::memcpy(GlobalLock(memory), bytes.data, bytes.size);
    GlobalUnlock(memory);
    handset::CRef<IStream> stream;
    handset::CRef<IPicture> picture;
    if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.Put()))) {
        GlobalFree(memory);
        return nullptr;
    }
    OleLoadPicture(stream.Get(), static_cast<LONG>(bytes.size), FALSE, IID_IPicture,
                   reinterpret_cast<void**>(picture.Put()));
    if (!picture) return nullptr;
    OLE_HANDLE handle = 0;
    SHORT type = PICTYPE_NONE;
    if (SUCCEEDED(picture->get_Type(&type)) && type == PICTYPE_BITMAP &&
        SUCCEEDED(picture->get_Handle(&handle)))
        return static_cast<HBITMAP>(CopyImage(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(handle)),
                                              IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
    return nullptr;
}

}  // namespace

extern "C" HBITMAP WINAPI SHLoadImageResource(HINSTANCE module, UINT id) try {
    const CPlatformCall call;
    // Without a module the host would answer with pictures of its own.
    if (module == nullptr || !IS_INTRESOURCE(static_cast<ULONG_PTR>(id))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const Bytes bytes = Resource(module, id);
    if (bytes.data == nullptr) return nullptr;
    const HBITMAP bitmap = IsBitmapFile(bytes) ? FromBitmapFile(bytes) : FromPicture(bytes);
    if (bitmap == nullptr) {
        SetLastError(ERROR_INVALID_DATA);
        return nullptr;
    }
    HandsetGdiObjectMade(bitmap);
    return bitmap;
} catch (...) {
    return handset::EdgeAnswer<HBITMAP>();
}
