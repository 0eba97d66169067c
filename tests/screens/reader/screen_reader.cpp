// A DLL that a program of the device has for a companion: from inside, where its fonts are, it writes down
// what the program shows.
#include <cwchar>
#include <iterator>

#include "tests/screens/reader/control_texts.h"
#include "tests/screens/reader/drawn_texts.h"

namespace screens {
namespace {

HMODULE g_self = nullptr;

RECT OnScreen(HWND window, RECT box) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&box), 2);
    return box;
}

void AddWindow(HWND window, std::vector<Item>& items) {
    Item item;
    wchar_t text[256] = L"";
    item.window = reinterpret_cast<std::uint64_t>(window);
    item.parent = reinterpret_cast<std::uint64_t>(GetAncestor(window, GA_PARENT));
    GetClassNameW(window, text, static_cast<int>(std::size(text)));
    item.className = ToUtf8(text);
    item.id = GetDlgCtrlID(window);
    item.style = static_cast<std::uint32_t>(GetWindowLongW(window, GWL_STYLE));
    GetWindowRect(window, &item.place);
    RECT client = {};
    GetClientRect(window, &client);
    item.room = OnScreen(window, client);
    GetWindowTextW(window, text, static_cast<int>(std::size(text)));
    item.text = ToUtf8(text);
    items.push_back(std::move(item));
    AddTexts(window, items);
}

// A message box without a picture keeps an empty place for one.
bool IsMissingPicture(HWND window) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wcscmp(name, L"Static") == 0 &&
           (GetWindowLongW(window, GWL_STYLE) & SS_TYPEMASK) == SS_ICON && Ask(window, STM_GETICON) == 0;
}

BOOL CALLBACK AddVisible(HWND window, LPARAM items) {
    if (IsWindowVisible(window) && !IsMissingPicture(window))
        AddWindow(window, *reinterpret_cast<std::vector<Item>*>(items));
    return TRUE;
}

BOOL CALLBACK AddOwn(HWND window, LPARAM items) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() || !IsWindowVisible(window)) return TRUE;
    AddVisible(window, items);
    EnumChildWindows(window, AddVisible, items);
    return TRUE;
}

LRESULT WriteReport() {
    wchar_t file[MAX_PATH] = L"";
    GetEnvironmentVariableW(kReportFileName, file, MAX_PATH);
    std::vector<Item> items;
    EnumWindows(AddOwn, reinterpret_cast<LPARAM>(&items));
    for (Item& drawn : TakeDrawnTexts()) items.push_back(std::move(drawn));
    std::string lines;
    for (const Item& item : items) lines += ToLine(item);
    const HANDLE report = CreateFileW(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(report, lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
    CloseHandle(report);
    return written == lines.size();
}

LRESULT CALLBACK ReaderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == kWriteReport ? WriteReport() : DefWindowProcW(window, message, wParam, lParam);
}

DWORD WINAPI ReaderThread(void*) {
    WNDCLASSW description = {};
    description.lpfnWndProc = ReaderProc;
    description.hInstance = g_self;
    description.lpszClassName = kReaderClass;
    RegisterClassW(&description);
    CreateWindowExW(0, kReaderClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, g_self, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

}  // namespace
}  // namespace screens

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID /*reserved*/) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    screens::g_self = self;
    wchar_t other[MAX_PATH] = L"";
    if (GetEnvironmentVariableW(screens::kOtherCompanion, other, MAX_PATH) != 0) LoadLibraryW(other);
    screens::WatchDrawnTexts(self);
    CloseHandle(CreateThread(nullptr, 0, screens::ReaderThread, nullptr, 0, nullptr));
    return TRUE;
}
