// UI.exe could run on the device: it takes nothing but what the device's DLLs offer, and the handset's DLLs
// offer the application nothing else.
#include <gtest/gtest.h>
#include <windows.h>

#include <map>
#include <set>
#include <string>

#include "tests/support/handset_under_test.h"

namespace {

using Names = std::set<std::string>;

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(toupper(c));
    return text;
}

// DLL (upper case) → functions, read from the program's import table.
std::map<std::string, Names> Imports(const std::wstring& program) {
    std::map<std::string, Names> imports;
    const HMODULE module = LoadLibraryExW(program.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    EXPECT_NE(module, nullptr);
    if (module == nullptr) return imports;
    const auto* base = reinterpret_cast<const BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const DWORD table = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* row = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); row->Name != 0; ++row) {
        Names& names = imports[Upper(reinterpret_cast<const char*>(base + row->Name))];
        const auto* thunk = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + row->OriginalFirstThunk);
        for (; thunk->u1.AddressOfData != 0; ++thunk) {
            const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + thunk->u1.AddressOfData);
            names.insert(reinterpret_cast<const char*>(name->Name));
        }
    }
    FreeLibrary(module);
    return imports;
}

Names Listed(const std::string& file) {
    const std::string folder = KORA_TEST_DATA;
    Names names;
    for (const std::string& line :
         test::Lines(test::ReadWholeFile(std::wstring(folder.begin(), folder.end()) + L"/device-exports/" +
                                         std::wstring(file.begin(), file.end())))) {
        if (!line.empty()) names.insert(line);
    }
    EXPECT_FALSE(names.empty()) << file;
    return names;
}

Names DeviceFunctions(const std::string& dll) {
    Names names = Listed(dll + ".txt");
    if (dll == "aygshell") names.merge(Listed("shell-helpers.txt"));
    return names;
}

Names Missing(const Names& wanted, const Names& offered) {
    Names missing;
    for (const std::string& name : wanted) {
        if (offered.count(name) == 0) missing.insert(name);
    }
    return missing;
}

constexpr const char* kDeviceDlls[] = {"coredll", "aygshell", "commctrl", "commdlg", "ole32", "oleaut32"};

TEST(Imports, UiTakesNothingButTheHandsetsDllsAndTheRuntime) {
    Names allowed = {"MSVCRT.DLL", "KERNEL32.DLL"};
    for (const char* dll : kDeviceDlls) allowed.insert(Upper(dll) + ".DLL");
    Names used;
    for (const auto& [dll, names] : Imports(test::BuildFolder() + L"\\UI.exe")) used.insert(dll);
    EXPECT_EQ(Missing(used, allowed), Names());
}

TEST(Imports, EveryFunctionThatUiTakesFromTheHandsetIsOneOfTheDevices) {
    auto imports = Imports(test::BuildFolder() + L"\\UI.exe");
    for (const char* dll : kDeviceDlls) {
        EXPECT_EQ(Missing(imports[Upper(dll) + ".DLL"], DeviceFunctions(dll)), Names()) << dll;
    }
    EXPECT_GT(imports["COREDLL.DLL"].size(), 50u);
}

// Start-up, exceptions and thread-local storage of the compiler's runtime; nothing that draws, reads files or
// talks to anyone.
TEST(Imports, TheRuntimeTakesNothingFromTheDesktopThatTheApplicationCouldMiss) {
    const Names runtime = {"AddVectoredExceptionHandler",
                           "CreateEventA",
                           "CreateSemaphoreA",
                           "GetCurrentProcess",
                           "GetCurrentProcessId",
                           "GetCurrentThread",
                           "GetCurrentThreadId",
                           "GetHandleInformation",
                           "GetLastError",
                           "GetProcAddress",
                           "GetProcessAffinityMask",
                           "GetStartupInfoW",
                           "GetSystemTimeAsFileTime",
                           "GetThreadContext",
                           "GetTickCount64",
                           "IsDebuggerPresent",
                           "OutputDebugStringA",
                           "RemoveVectoredExceptionHandler",
                           "ResetEvent",
                           "RtlCaptureContext",
                           "RtlLookupFunctionEntry",
                           "RtlUnwindEx",
                           "RtlVirtualUnwind",
                           "SetEvent",
                           "SetProcessAffinityMask",
                           "SetThreadContext",
                           "SetUnhandledExceptionFilter",
                           "TlsAlloc"};
    EXPECT_EQ(Missing(Imports(test::BuildFolder() + L"\\UI.exe")["KERNEL32.DLL"], runtime), Names());
}

}  // namespace
