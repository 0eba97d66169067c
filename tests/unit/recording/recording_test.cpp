#include "tests/unit/recording/recording_test.h"

#include <regext.h>

#include <algorithm>
#include <mutex>

#include "skin/skin_access.h"
#include "skin/skin_rows.h"
#include "skin/skin_window.h"
#include "tests/support/skin_window.h"
#include "tests/unit/recording/opened_events.h"
#include "tests/unit/recording/tick_count.h"

namespace test {
namespace {

std::mutex g_mutex;  // guards g_shownTexts
std::vector<std::pair<int, std::wstring>> g_shownTexts;

}  // namespace

RecordingTest::RecordingTest() {
    SetState(L"KORA_SCREENWIDTH", L"240");
    SetState(L"KORA_SCREENHEIGHT", L"320");
    SetFreeSpace(L"50000000");
    CreateDirectoryW(OnHost(L"\\Storage Card").c_str(), nullptr);
    CreateDirectoryW(OnHost(L"\\Windows").c_str(), nullptr);
    g_app = {};
    g_app.hInstance = GetModuleHandleW(nullptr);
    g_app.pFMDevice = &device;
    device.channel = 9850;
    state = new CMainState(g_app.hInstance, FreshSkinTables());
    g_app.pMainState = state;
    g_app.hLeftSoftKeyMenu = CreatePopupMenu();
    g_app.hRightSoftKeyMenu = CreatePopupMenu();
    AppendMenuW(g_app.hLeftSoftKeyMenu, MF_STRING, IDC_AUTOSCAN, L"scan");
    window = CreateSkinWindow(*state);
    state->m_hListView = CreateWindowExW(0, L"SysListView32", L"", WS_CHILD | WS_VISIBLE, 0, 105, 240, 65,
                                         window, nullptr, GetModuleHandleW(nullptr), nullptr);
    const std::lock_guard<std::mutex> lock(g_mutex);
    g_shownTexts.clear();
}

RecordingTest::~RecordingTest() {
    boxes.whileShown = nullptr;
    boxes.answer = IDOK;
    if (state->m_pRecorder != nullptr) stop_record(*state, window, TRUE);
    g_tickOffset = 0;
    CloseOpenedEvents();
    DestroyMenu(g_app.hLeftSoftKeyMenu);
    DestroyMenu(g_app.hRightSoftKeyMenu);
    DestroyWindow(window);
    // Neither the state nor its event is deleted: a thread of the recording may still be on its way out.
    g_app = {};
}

std::string RecordingTest::Click(int frame, LPARAM lParam) {
    SetButtonFrame(state->m_skin, SKIN_RECORD, frame);
    return TraceOf([&] {
        SendMessageW(window, WM_SKIN_CLICK, static_cast<WPARAM>(SKIN_RECORD | kResultButton), lParam);
    });
}

std::string RecordingTest::PressRecord(LPARAM lParam) {
    return Click(2, lParam);
}
std::string RecordingTest::ReleaseRecord(LPARAM lParam) {
    return Click(0, lParam);
}

void RecordingTest::DefineName(const std::wstring& name) {
    WriteSetting(kSaveFileType, 1);
    RegistrySetString(HKEY_CLASSES_ROOT, kSettingsKey, kDefineFileName, name.c_str());
}

bool RecordingTest::IsDisabled(int button) const {
    return (FindButton(state->m_skin, button)->dwLook & kLookDisabled) != 0;
}

int RecordingTest::RecordButton() const {
    int frame = -1;
    GetButtonFrame(state->m_skin, SKIN_RECORD, &frame);
    return frame;
}

bool RecordingTest::ScanIsGrey() const {
    MENUITEMINFOW item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STATE;
    GetMenuItemInfoW(g_app.hLeftSoftKeyMenu, IDC_AUTOSCAN, FALSE, &item);
    return (item.fState & MFS_GRAYED) != 0;
}

bool RecordingTest::ListIsShown() const {
    return IsWindowVisible(state->m_hListView);
}

void RecordingTest::StoreChannel(const WCHAR* name, DWORD channel) {
    WriteSelectedGroup(L"Mine");
    PropRecord record = {};
    wcscpy(record.szCountryName, L"Mine");
    wcscpy(record.szPropRecord_ChannelName, name);
    record.dwPropRecord_ChannelValue = channel;
    ASSERT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0u);
}

std::vector<std::wstring> RecordingTest::ShownIn(int field) {
    const std::lock_guard<std::mutex> lock(g_mutex);
    std::vector<std::wstring> texts;
    for (const auto& [shownIn, text] : g_shownTexts) {
        if (shownIn == field) texts.push_back(text);
    }
    return texts;
}

std::wstring RecordingTest::LastShown(int field) {
    const std::lock_guard<std::mutex> lock(g_mutex);
    const auto found = std::find_if(g_shownTexts.rbegin(), g_shownTexts.rend(),
                                    [&](const auto& shown) { return shown.first == field; });
    return found == g_shownTexts.rend() ? L"(never shown)" : found->second;
}

static void NoteShown(int field, const WCHAR* text) {
    const std::lock_guard<std::mutex> lock(g_mutex);
    g_shownTexts.push_back({field, text});
}

}  // namespace test

// The text fields' painting goes through here.
void RealDrawSkinText(CSkin& skin, int field,
                      const WCHAR* text) __asm__("__real__Z12DrawSkinTextR5CSkiniPKw");
void RealShowSkinText(CSkin& skin, int field,
                      const WCHAR* text) __asm__("__real__Z12ShowSkinTextR5CSkiniPKw");
void NotedDrawSkinText(CSkin& skin, int field,
                       const WCHAR* text) __asm__("__wrap__Z12DrawSkinTextR5CSkiniPKw");
void NotedShowSkinText(CSkin& skin, int field,
                       const WCHAR* text) __asm__("__wrap__Z12ShowSkinTextR5CSkiniPKw");
void NotedDrawSkinText(CSkin& skin, int field, const WCHAR* text) {
    test::NoteShown(field, text);
    RealDrawSkinText(skin, field, text);
}
void NotedShowSkinText(CSkin& skin, int field, const WCHAR* text) {
    test::NoteShown(field, text);
    RealShowSkinText(skin, field, text);
}
