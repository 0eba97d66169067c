#include "tests/native/skin/stand_ins/platform.h"

#include <map>

namespace {

struct Timer {
    DWORD dwPeriod_ms, dwNext_ms;
};

int g_cxScreen = 240, g_cyScreen = 320;
DWORD g_now_ms = 1000;
std::map<UINT_PTR, Timer> g_timers;
std::vector<platform::Tick> g_ticks;

}  // namespace

BOOL PtInRect(const RECT* rect, POINT point) {
    return point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
}

int GetSystemMetrics(int index) {
    return index == SM_CXSCREEN ? g_cxScreen : g_cyScreen;
}

UINT_PTR SetTimer(HWND, UINT_PTR id, UINT period_ms, void (*)()) {
    g_timers[id] = {period_ms, g_now_ms + period_ms};
    return id;
}

BOOL KillTimer(HWND, UINT_PTR id) {
    return g_timers.erase(id) != 0;
}

DWORD GetTickCount() {
    return g_now_ms;
}

namespace platform {

void UseScreen(int cx, int cy) {
    g_cxScreen = cx;
    g_cyScreen = cy;
}

std::set<UINT_PTR> Timers() {
    std::set<UINT_PTR> ids;
    for (const auto& timer : g_timers) ids.insert(timer.first);
    return ids;
}

void StopTimers() {
    g_timers.clear();
    g_ticks.clear();
}

void Elapse1ms() {
    ++g_now_ms;
    for (auto& [id, timer] : g_timers) {
        if (timer.dwNext_ms != g_now_ms) continue;
        timer.dwNext_ms += timer.dwPeriod_ms;
        g_ticks.push_back({id, g_now_ms});
    }
}

const std::vector<Tick>& Ticks() {
    return g_ticks;
}

}  // namespace platform
