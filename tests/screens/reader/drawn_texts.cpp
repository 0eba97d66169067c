#include "tests/screens/reader/drawn_texts.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <map>

#include "tests/support/import_watch.h"

namespace screens {
namespace {

// What a measurement leaves out: it asks for all of the text, from the top.
constexpr UINT kEndsInDots = DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS;
constexpr UINT kNotMeasured = kEndsInDots | DT_MODIFYSTRING | DT_VCENTER | DT_BOTTOM;

// How far beside its place what a text loses there is looked for.
constexpr LONG kBeside = 64;

using DrawTextCall = int(WINAPI*)(HDC dc, const wchar_t* text, int count, RECT* place, UINT format);

HMODULE g_self = nullptr;
void* g_deviceDrawText = nullptr;  // COREDLL's
// The thread is in COREDLL's call, which calls the system's in its turn.
thread_local bool g_noted = false;
CRITICAL_SECTION g_lock;  // guards the two below
std::vector<Item> g_drawn;
// Composed out of sight, and not yet copied to a window: which of the drawn ones.
std::map<HDC, std::vector<std::size_t>> g_hidden;

class Locked {
  public:
    Locked() { EnterCriticalSection(&g_lock); }
    ~Locked() { LeaveCriticalSection(&g_lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

SIZE Measured(HDC dc, const std::wstring& text, UINT format, LONG width) {
    RECT box = {0, 0, width, 0};
    if (text.empty()) return {};
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &box, (format & ~kNotMeasured) | DT_CALCRECT);
    return {box.right, box.bottom};
}

std::wstring WithoutBlanksBehind(std::wstring text) {
    text.erase(text.find_last_not_of(L' ') + 1);
    return text;
}

// Where the letters stand when `need` is laid into the place, in which a text that may end in dots stays;
// blanks at the end take their room and cover nothing.
RECT InkOf(const RECT& place, SIZE need, LONG letters, UINT format) {
    if ((format & kEndsInDots) != 0) need.cx = std::min(need.cx, place.right - place.left);
    LONG left = place.left;
    if ((format & DT_RIGHT) != 0) left = place.right - need.cx;
    if ((format & DT_CENTER) != 0) left = (place.left + place.right - need.cx) / 2;
    LONG top = place.top;
    const bool single = (format & DT_SINGLELINE) != 0;
    if (single && (format & DT_VCENTER) != 0) top = (place.top + place.bottom - need.cy) / 2;
    if (single && (format & DT_BOTTOM) != 0) top = place.bottom - need.cy;
    return {left, top, left + std::min(letters, need.cx), top + need.cy};
}

// A bitmap of its own, with white letters on black.
class LetterPicture {
  public:
    LetterPicture(HDC like, LONG width, LONG height)
        : width_(width), height_(height), dc_(CreateCompatibleDC(like)) {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* pixels = nullptr;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        pixels_ = static_cast<const DWORD*>(pixels);
        SelectObject(dc_, bitmap_);
        SelectObject(dc_, GetCurrentObject(like, OBJ_FONT));
        SetTextColor(dc_, RGB(255, 255, 255));
        SetBkMode(dc_, TRANSPARENT);
    }
    ~LetterPicture() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    LetterPicture(const LetterPicture&) = delete;
    LetterPicture& operator=(const LetterPicture&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] bool HasInk(LONG column) const {
        for (LONG row = 0; pixels_ != nullptr && row < height_; ++row) {
            if ((pixels_[row * width_ + column] & 0xFFFFFF) != 0) return true;
        }
        return false;
    }

  private:
    LONG width_, height_;
    HDC dc_;
    HBITMAP bitmap_ = nullptr;
    const DWORD* pixels_ = nullptr;
};

// Columns of the text that stand beside its place when nothing cuts it. What a text measures does not say it:
// letters may be wider than they are counted.
int Lost(HDC dc, const std::wstring& text, UINT format, const RECT& place, DrawTextCall draw) {
    const LONG width = place.right - place.left, height = place.bottom - place.top;
    if (width <= 0 || height <= 0) return 0;
    const LetterPicture picture(dc, width + 2 * kBeside, height);
    RECT inner = {kBeside, 0, kBeside + width, height};
    draw(picture.dc(), text.c_str(), static_cast<int>(text.size()), &inner,
         (format & ~UINT{DT_MODIFYSTRING}) | DT_NOCLIP);
    GdiFlush();
    int lost = 0;
    for (LONG column = 0; column < kBeside; ++column) {
        if (picture.HasInk(column)) ++lost;
        if (picture.HasInk(kBeside + width + column)) ++lost;
    }
    return lost;
}

std::string NameOf(void* caller) {
    HMODULE module = nullptr;
    wchar_t file[MAX_PATH] = L"";
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t*>(caller), &module);
    GetModuleFileNameW(module, file, MAX_PATH);
    const std::wstring path = file;
    return ToUtf8(path.substr(path.find_last_of(L'\\') + 1));
}

void SetWindow(Item& item, HWND window) {
    RECT ground = {};
    GetClientRect(window, &ground);
    item.window = reinterpret_cast<std::uint64_t>(window);
    item.ground = {ground.right, ground.bottom};
}

void Note(HDC dc, const wchar_t* text, int count, const RECT& place, UINT format, void* caller,
          DrawTextCall draw) {
    const std::wstring whole =
        count < 0 ? std::wstring(text) : std::wstring(text, static_cast<std::size_t>(count));
    const LONG width = place.right - place.left;
    Item item;
    item.kind = Kind::kDrawn;
    item.className = NameOf(caller);
    item.style = format;
    item.place = place;
    item.room = {0, 0, width, place.bottom - place.top};
    item.need = Measured(dc, whole, format, width);
    // In the middle of its place a text has the gap above its letters outside.
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc, &metrics);
    if ((format & DT_SINGLELINE) != 0 && (format & DT_VCENTER) != 0 && !whole.empty())
        item.need.cy -= metrics.tmInternalLeading;
    item.ink = InkOf(place, item.need, Measured(dc, WithoutBlanksBehind(whole), format, width).cx, format);
    item.lost = Lost(dc, whole, format, place, draw);
    item.text = ToUtf8(whole);
    SetWindow(item, WindowFromDC(dc));
    const Locked locked;
    if (item.window == 0) g_hidden[dc].push_back(g_drawn.size());
    g_drawn.push_back(std::move(item));
}

void NoteCopied(HDC to, int x, int y, HDC from, int xFrom, int yFrom) {
    const Locked locked;
    const auto hidden = g_hidden.find(from);
    if (hidden == g_hidden.end()) return;
    for (const std::size_t at : hidden->second) {
        if (at >= g_drawn.size()) continue;
        SetWindow(g_drawn[at], WindowFromDC(to));
        OffsetRect(&g_drawn[at].place, x - xFrom, y - yFrom);
        OffsetRect(&g_drawn[at].ink, x - xFrom, y - yFrom);
    }
    g_hidden.erase(hidden);
}

int Watched(HDC dc, const wchar_t* text, int count, RECT* place, UINT format, void* caller,
            DrawTextCall draw) {
    if ((format & DT_CALCRECT) == 0 && text != nullptr && place != nullptr && !g_noted) {
        Note(dc, text, count, *place, format, caller, draw);
    }
    return draw(dc, text, count, place, format);
}

int WINAPI WatchedDrawText(HDC dc, const wchar_t* text, int count, RECT* place, UINT format) {
    return Watched(dc, text, count, place, format, __builtin_return_address(0), DrawTextW);
}

int WINAPI DrawAsDevice(HDC dc, const wchar_t* text, int count, RECT* place, UINT format) {
    g_noted = true;
    const int height = reinterpret_cast<DrawTextCall>(g_deviceDrawText)(dc, text, count, place, format);
    g_noted = false;
    return height;
}

int WINAPI WatchedDeviceDrawText(HDC dc, const wchar_t* text, int count, RECT* place, UINT format) {
    return Watched(dc, text, count, place, format, __builtin_return_address(0), DrawAsDevice);
}

BOOL WINAPI WatchedBitBlt(HDC to, int x, int y, int width, int height, HDC from, int xFrom, int yFrom,
                          DWORD operation) {
    if (from != nullptr) NoteCopied(to, x, y, from, xFrom, yFrom);
    return BitBlt(to, x, y, width, height, from, xFrom, yFrom, operation);
}

const test::InsteadRow kRows[] = {
    {L"COREDLL.dll", "DrawTextW", reinterpret_cast<void*>(WatchedDeviceDrawText), &g_deviceDrawText},
    {L"user32.dll", "DrawTextW", reinterpret_cast<void*>(WatchedDrawText)},
    {L"gdi32.dll", "BitBlt", reinterpret_cast<void*>(WatchedBitBlt)},
};

bool IsAnother(HMODULE module) {
    return module != g_self;
}

}  // namespace

void WatchDrawnTexts(HMODULE self) {
    g_self = self;
    InitializeCriticalSection(&g_lock);
    test::WatchImports(IsAnother, kRows, static_cast<int>(std::size(kRows)));
}

std::vector<Item> TakeDrawnTexts() {
    const Locked locked;
    g_hidden.clear();
    std::vector<Item> taken;
    taken.swap(g_drawn);
    return taken;
}

}  // namespace screens
