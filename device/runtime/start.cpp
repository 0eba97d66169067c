// Where the program begins on the phone: the system's loader calls it on the first thread with what WinMain
// takes.
#include <windows.h>

extern "C" int wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show);

namespace {

using Constructor = void (*)();

// On the device GetCurrentProcess is an inline call that gives a fixed handle: the second of the system's
// own, which begin at 64.
const HANDLE kThisProcess = reinterpret_cast<HANDLE>(64 + 2);

}  // namespace

// The rows of constructors of static objects, as the linker lays them.
extern "C" const Constructor __init_array_start[];
extern "C" const Constructor __init_array_end[];

extern "C" void WinMainCRTStartup(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show) {
    for (const Constructor* row = __init_array_start; row != __init_array_end; ++row) (*row)();
    const int code = wWinMain(instance, previous, commandLine, show);
    // Nothing runs after this: what a static object holds goes with the process, as it does with every other
    // program.
    TerminateProcess(kThisProcess, static_cast<UINT>(code));
}
