#include "tests/unit/tuner/tuner_test.h"

#include <algorithm>
#include <ostream>

#include "skin/screen.h"
#include "skin/skin_access.h"
#include "skin/skin_window.h"
#include "tests/support/skin_window.h"
#include "tests/unit/tuner/monitor_test.h"
#include "tuner/digit_entry.h"

namespace {

std::vector<ShownText> g_shown;

}  // namespace

void RealDrawSkinText(CSkin& skin, int field,
                      const WCHAR* text) __asm__("__real__Z12DrawSkinTextR5CSkiniPKw");
void NotedDrawSkinText(CSkin& skin, int field,
                       const WCHAR* text) __asm__("__wrap__Z12DrawSkinTextR5CSkiniPKw");
void NotedDrawSkinText(CSkin& skin, int field, const WCHAR* text) {
    g_shown.push_back({field, text});
    RealDrawSkinText(skin, field, text);
}

void RealShowSkinText(CSkin& skin, int field,
                      const WCHAR* text) __asm__("__real__Z12ShowSkinTextR5CSkiniPKw");
void NotedShowSkinText(CSkin& skin, int field,
                       const WCHAR* text) __asm__("__wrap__Z12ShowSkinTextR5CSkiniPKw");
void NotedShowSkinText(CSkin& skin, int field, const WCHAR* text) {
    g_shown.push_back({field, text});
    RealShowSkinText(skin, field, text);
}

static int g_registryReads = 0;
HRESULT RealGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD* data) __asm__("__real_RegistryGetDWORD");
HRESULT CountedGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value,
                        DWORD* data) __asm__("__wrap_RegistryGetDWORD");
HRESULT CountedGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD* data) {
    ++g_registryReads;
    return RealGetDWORD(root, key, value, data);
}
int RegistryReads() {
    return g_registryReads;
}

std::ostream& operator<<(std::ostream& out, const ShownText& shown) {
    return out << shown.field << " \"" << std::string(shown.text.begin(), shown.text.end()) << '"';
}

TunerTest::TunerTest() {
    SetEnvironmentVariableA("KORA_SCREENWIDTH", "240");
    SetEnvironmentVariableA("KORA_SCREENHEIGHT", "320");
    // Where the names of stations are looked for.
    WCHAR folder[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"TEMP", folder, MAX_PATH);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", folder);
    g_app = {};
    g_app.hInstance = GetModuleHandleW(nullptr);
    g_app.pFMDevice = &device;
    state = std::make_unique<CMainState>(g_app.hInstance, test::FreshSkinTables());
    g_app.pMainState = state.get();
    window = test::CreateSkinWindow(*state);
    EXPECT_NE(window, nullptr) << "no window: is there a display?";
    ForgetShown();
}

TunerTest::~TunerTest() {
    DestroyWindow(window);
    CloseHandle(state->m_hStopRecordEvent);
    g_app = {};
}

void TunerTest::ClickToggle(int id, int frame) {
    SetButtonFrame(state->m_skin, id, frame);
    Click(id);
}

void TunerTest::Click(int id) {
    SendMessageW(window, WM_SKIN_CLICK, static_cast<WPARAM>(id | kResultButton), 0);
}
void TunerTest::Repeat(int id) {
    SendMessageW(window, WM_SKIN_REPEAT, static_cast<WPARAM>(id), 0);
}
void TunerTest::Key(WPARAM virtualKey) {
    OnDigitKey(*state, window, virtualKey);
}

void TunerTest::Type(const char* digits) {
    for (; *digits != '\0'; ++digits) Key(static_cast<WPARAM>(*digits));
}

LPARAM TunerTest::MiddleOf(int buttonId) const {
    for (int i = 0; i < state->m_skin.nButtons; ++i) {
        const SkinButton& button = state->m_skin.pButtons[i];
        if (button.nId != buttonId) continue;
        const SkinRect& rect = IsPortraitScreen() ? button.portrait.rect : button.landscape.rect;
        return MAKELPARAM(rect.x + rect.cx / 2, rect.y + rect.cy / 2);
    }
    ADD_FAILURE() << "the skin has no button " << buttonId;
    return 0;
}

void TunerTest::Press(int buttonId) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(buttonId));
}
void TunerTest::Lift(int buttonId) {
    SendMessageW(window, WM_LBUTTONUP, 0, MiddleOf(buttonId));
}

std::vector<ShownText> TunerTest::Shown() {
    return g_shown;
}

std::wstring TunerTest::LastShown(int field) {
    const auto found = std::find_if(g_shown.rbegin(), g_shown.rend(),
                                    [&](const ShownText& shown) { return shown.field == field; });
    return found == g_shown.rend() ? L"(never shown)" : found->text;
}

void TunerTest::ForgetShown() {
    g_shown.clear();
}
