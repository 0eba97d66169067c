// One round of the monitor with every setting on, against the registry reads that it makes. A program of its
// own, because it is built as the application is. It prints one row, the columns parted by tabs, in
// microseconds of processor time.
#include <windows.h>

#include <cstdio>

#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/monitor_thread.h"
#include "shell/settings_key.h"
#include "tests/support/fake_fm_device.h"

namespace {

constexpr int kRounds = 3000;

// User and kernel time of this program, which has no other thread at work.
double Cpu_us() {
    FILETIME created, exited, kernel, user;
    GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user);
    const auto value = [](const FILETIME& time) {
        return static_cast<double>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime) /
               10;
    };
    return value(kernel) + value(user);
}

template <typename Work>
double Each_us(Work work) {
    const double start = Cpu_us();
    for (int round = 0; round < kRounds; ++round) work();
    return (Cpu_us() - start) / kRounds;
}

HWND CreateScreen() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = g_app.hInstance;
    windowClass.lpszClassName = L"KoraBenchMonitor";
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr,
                           nullptr, g_app.hInstance, nullptr);
}

}  // namespace

int main() {
    g_app.hInstance = GetModuleHandleW(nullptr);
    static CMainState state(g_app.hInstance, MainScreenTables());
    static test::FakeFMDevice device;
    device.ptyText = L"News";
    g_app.pFMDevice = &device;
    g_app.bRecordingActive = 1;
    const HWND window = CreateScreen();
    state.m_skin.hWnd = window;
    const WCHAR* const kSettings[] = {kEnableMute, kEnableRDSPSPTY, kEnableAFAutoSwitch, kSaveFileType};
    for (const WCHAR* setting : kSettings) WriteSetting(setting, 1);

    const double round = Each_us([&] {
        device.ForgetCalls();
        device.rdsData = {{kRdsServiceNameWithAF, L"KORA ONE"}};
        RunMonitorRound(state, window);
    });
    const double reads = Each_us([&] {
        for (const WCHAR* setting : kSettings) (void)ReadSetting(setting);
    });
    std::fprintf(stdout, "monitor round, processor time\t%f\tfour registry reads\t%f\tunder 200 us\n", round,
                 reads);
    DestroyWindow(window);
    return 0;
}
