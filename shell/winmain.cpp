// The program's entry.
#include <windows.h>

#include <aygshell.h>
#include <cstdio>
#include <string>
#include <vector>
#include <stdexcept>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPWSTR commandLine, int) {
    SHInitExtraControls();
    std::vector<std::wstring> v;
    try { v.push_back(commandLine); if (v[0].size() > 3) throw std::runtime_error("x"); } catch (const std::exception& e) { std::printf("%s\n", e.what()); }
    NKDbgPrintfW(L"FM: %s\n", commandLine);
    std::printf("x%d\n", 5);
    return 0;
}
