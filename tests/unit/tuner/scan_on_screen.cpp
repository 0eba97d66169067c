#include "tests/unit/tuner/scan_on_screen.h"

#include <algorithm>

#include "shell/settings_key.h"
#include "tuner/auto_scan.h"

namespace {

constexpr WCHAR kGroup[] = L"Mine";
bool g_finished = false;
WNDPROC g_windowProc = nullptr;

LRESULT CALLBACK NoteEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_AUTOSCAN_FINISHED) g_finished = true;
    return CallWindowProcW(g_windowProc, window, message, wParam, lParam);
}

}  // namespace

ScanOnScreen::ScanOnScreen() {
    WriteSelectedGroup(kGroup);
    // An earlier test's volume may still be open, and then outlives its file's deletion.
    CChannelDB().CEDB_DeleteGroup(kEmptyGroup, kGroup);
    g_finished = false;
    g_windowProc =
        reinterpret_cast<WNDPROC>(SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteEnd)));
}

ScanOnScreen::~ScanOnScreen() {
    // A test that failed in between leaves its scan running, which uses what is about to go.
    EndAutoScan(*state);
}

void ScanOnScreen::ThreeShortWalks() {
    for (int walk = 0; walk < 3; ++walk)
        device.stations.insert(device.stations.end(), {8760, 9850, 10790, 8760});
}

HWND ScanOnScreen::Box(const WCHAR* caption) {
    const HWND box = FindWindowW(L"#32770", caption);
    return box != nullptr && IsWindowVisible(box) ? box : nullptr;
}

void ScanOnScreen::Begin() {
    StartAutoScan(*state, window);
    HWND box = nullptr;
    ASSERT_TRUE(test::WaitFor([&] { return (box = Box(L"Stored channels")) != nullptr; }));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

void ScanOnScreen::Scan() {
    StartAutoScan(*state, window);
    ASSERT_TRUE(test::WaitFor([] {
        for (const WCHAR* caption : {L"Stored channels", L"FM"}) {
            const HWND box = Box(caption);
            if (box != nullptr) PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
        return g_finished;
    }));
    EnableWindow(window, TRUE);
}

bool ScanOnScreen::Finished() {
    return g_finished;
}

std::wstring ScanOnScreen::StoredName(DWORD channel) {
    CChannelDB store;
    WCHAR name[kChannelTextCapacity] = L"";
    return store.CEDB_FindChannelName(kGroup, channel, name) != 0 ? name : L"";
}

int ScanOnScreen::Asked(const std::string& call) const {
    const auto calls = device.Calls();
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}
