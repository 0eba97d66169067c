#include "tests/unit/recording/opened_events.h"

namespace test {
namespace {

std::vector<HANDLE> g_opened;

}  // namespace

const std::vector<HANDLE>& OpenedEvents() {
    return g_opened;
}

void CloseOpenedEvents() {
    for (const HANDLE event : g_opened) CloseHandle(event);
    g_opened.clear();
}

}  // namespace test

extern "C" {
// The linker sends the program's calls of OpenEventW here.
extern HANDLE(WINAPI* g_realOpenEvent)(DWORD, BOOL, LPCWSTR) __asm__("__real___imp_OpenEventW");
static HANDLE WINAPI NotedOpenEvent(DWORD access, BOOL inherit, LPCWSTR name) {
    const HANDLE event = g_realOpenEvent(access, inherit, name);
    if (event != nullptr) test::g_opened.push_back(event);
    return event;
}
HANDLE(WINAPI* g_notedOpenEvent)(DWORD, BOOL, LPCWSTR) __asm__("__wrap___imp_OpenEventW") = NotedOpenEvent;
}

HANDLE test::OpenForTest(const WCHAR* name) {
    return g_realOpenEvent(EVENT_ALL_ACCESS, FALSE, name);
}
