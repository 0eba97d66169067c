// The tests' window: paints nothing by itself, notes what reaches it.
#include "tests/unit/skin/skin_on_screen.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

#include "shell/messages.h"
#include "skin/skin_window.h"

namespace {

constexpr const WCHAR* kClassName = L"SkinOnScreen";

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSW window = {};
    window.lpfnWndProc = procedure;
    window.hInstance = GetModuleHandleW(nullptr);
    window.lpszClassName = kClassName;
    RegisterClassW(&window);
}

bool IsNoted(UINT message) {
    return message == WM_TIMER || message == WM_SKIN_SLIDER || message == WM_SKIN_REPEAT ||
           message == WM_SKIN_CLICK;
}

bool IsForSkin(UINT message) {
    return message == WM_PAINT || message == WM_TIMER || message == WM_MOUSEMOVE ||
           message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_SKIN_SETPOS ||
           message == WM_SKIN_GETPOS;
}

}  // namespace

SkinOnScreen::SkinOnScreen() = default;

SkinOnScreen::~SkinOnScreen() {
    if (m_skin.hWnd != nullptr) DestroyWindow(m_skin.hWnd);
    SetEnvironmentVariableW(L"KORA_SCREENWIDTH", nullptr);
    SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", nullptr);
}

void SkinOnScreen::SetUp() {
    UseScreen(GetParam());
}

void SkinOnScreen::UseScreen(const Screen& screen) {
    m_screen = screen;
    SetEnvironmentVariableW(L"KORA_SCREENWIDTH", std::to_wstring(screen.cx).c_str());
    SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", std::to_wstring(screen.cy).c_str());
    ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), screen.cx) << "the handset has not the screen of the test";
    ASSERT_EQ(GetSystemMetrics(SM_CYSCREEN), screen.cy) << "the handset has not the screen of the test";

    const SkinTables tables = MainScreenTables();
    m_bitmaps.assign(tables.pBitmaps, tables.pBitmaps + tables.nBitmaps);
    m_buttons.assign(tables.pButtons, tables.pButtons + tables.nButtons);
    m_sliders.assign(tables.pSliders, tables.pSliders + tables.nSliders);
    m_texts.assign(tables.pTexts, tables.pTexts + tables.nTexts);
    static_cast<SkinTables&>(m_skin) = {m_bitmaps.data(), tables.nBitmaps, m_buttons.data(), tables.nButtons,
                                        m_sliders.data(), tables.nSliders, m_texts.data(),   tables.nTexts};
    m_skin.hInstance = GetModuleHandleW(nullptr);
    MakeImages();

    if (m_skin.hWnd != nullptr) DestroyWindow(m_skin.hWnd);
    RegisterWindowClass(WindowProc);
    m_skin.hWnd = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, kClassName, L"", WS_POPUP, 0, 0,
                                  screen.cx, screen.cy, nullptr, nullptr, GetModuleHandleW(nullptr), this);
    ASSERT_NE(m_skin.hWnd, nullptr);
    // Not activated: on a display without a window manager Wine would wait two seconds for one.
    ShowWindow(m_skin.hWnd, SW_SHOWNOACTIVATE);
    UpdateWindow(m_skin.hWnd);
    BlankScreen();
}

// The strips are as long as their last source needs, the thumb has magenta corners, the rest is plain
// pattern.
void SkinOnScreen::MakeImages() {
    m_handles.clear();
    for (int orientation = 0; orientation < 2; ++orientation) {
        std::vector<Picture>& images = m_images[orientation];
        images.clear();
        const int seed = orientation * 8;
        images.push_back(
            Picture::Pattern(std::max(m_screen.cx, m_screen.cy), std::max(m_screen.cx, m_screen.cy), seed));
        images.push_back(Picture::Pattern(212, 30, seed + 1));
        images.push_back(Picture::Pattern(212, 30, seed + 2));
        images.push_back(Picture::Pattern(36, 13, seed + 3));
        images.back().Fill({0, 0, 4, 4}, kMagenta);
        images.back().Fill({30, 9, 6, 4}, kMagenta);
        for (int index = 4; index < 7; ++index) images.push_back(Picture::Pattern(140, 30, seed + index));
        for (std::size_t index = 0; index < images.size(); ++index) {
            m_handles.push_back(images[index].ToBitmap());
            SkinBitmap& row = m_bitmaps[index];
            (orientation == 0 ? row.hPortrait : row.hLandscape) = m_handles.back().get();
        }
    }
}

const Picture& SkinOnScreen::Image(int index) const {
    return m_images[m_screen.portrait ? 0 : 1].at(static_cast<std::size_t>(index));
}

SkinButton& SkinOnScreen::Button(int id) {
    const auto row = std::find_if(m_buttons.begin(), m_buttons.end(),
                                  [id](const SkinButton& button) { return button.nId == id; });
    if (row == m_buttons.end()) throw std::out_of_range("no such button");
    return *row;
}

void SkinOnScreen::BlankScreen() {
    const WindowDC dc(m_skin.hWnd);
    const RECT all = {0, 0, m_screen.cx, m_screen.cy};
    const OwnedBrush brush(
        CreateSolidBrush(RGB((kUntouched >> 16) & 0xFF, (kUntouched >> 8) & 0xFF, kUntouched & 0xFF)));
    FillRect(dc.get(), &all, brush.get());
}

void SkinOnScreen::Paint(const std::function<void(HDC)>& paint) {
    const WindowDC dc(m_skin.hWnd);
    paint(dc.get());
}

LRESULT SkinOnScreen::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return SkinWindowProc(m_skin, m_skin.hWnd, message, wParam, lParam);
}

std::vector<SentMessage> SkinOnScreen::Sent(UINT message) const {
    std::vector<SentMessage> found;
    std::copy_if(m_sent.begin(), m_sent.end(), std::back_inserter(found),
                 [message](const SentMessage& sent) { return sent.message == message; });
    return found;
}

LRESULT CALLBACK SkinOnScreen::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<SkinOnScreen*>(GetWindowLongW(window, GWL_USERDATA));
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    if (IsNoted(message)) self->m_sent.push_back({message, wParam, lParam, GetTickCount()});
    if (self->m_dispatching && IsForSkin(message)) {
        return SkinWindowProc(self->m_skin, window, message, wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

std::string NameOfScreen(const ::testing::TestParamInfo<Screen>& info) {
    return info.param.name;
}
