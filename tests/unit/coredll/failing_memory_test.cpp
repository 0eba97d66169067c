// COREDLL's calls when there is no memory for them, and when what they run throws: none lets an exception
// out.
#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <new>
#include <stdexcept>
#include <string>

#include "handset_fixture.h"

namespace {

using test::Answer;
using test::LastErrorOf;

constexpr int kMyDocuments = 5;  // CSIDL_PERSONAL
constexpr wchar_t kCoredll[] = L"COREDLL.dll";
constexpr wchar_t kLongName[] = L"\\A name that no small text has room for.txt";
constexpr wchar_t kKey[] = L"Software\\A key that no small text has room for";

template <typename Call>
void ExpectNotEnoughMemory(Call call) {
    test::ExpectFailureForWantOfMemory(kCoredll, ERROR_NOT_ENOUGH_MEMORY, [&] { return LastErrorOf(call); });
}

// For calls that answer with an error code.
template <typename Call>
void ExpectCodeOfNoMemory(Call call) {
    test::ExpectFailureForWantOfMemory(kCoredll, ERROR_NOT_ENOUGH_MEMORY, [&] {
        const auto error = static_cast<DWORD>(call());
        return Answer{error == ERROR_SUCCESS, error};
    });
}

bool CloseIfValid(HANDLE handle) {
    return handle != INVALID_HANDLE_VALUE && handle != nullptr && CloseHandle(handle);
}

class FailingMemory : public HandsetTest {
  protected:
    FailingMemory() { MakeFile(kLongName); }
};

TEST_F(FailingMemory, FilesAreNotFoundForWantOfMemory) {
    ExpectNotEnoughMemory([] {
        return CloseIfValid(CreateFileW(kLongName, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    });
    ExpectNotEnoughMemory([] { return GetFileAttributesW(kLongName) != INVALID_FILE_ATTRIBUTES; });
    ExpectNotEnoughMemory(
        [] { return CopyFileW(kLongName, L"\\Another name that is long enough.txt", FALSE) != FALSE; });
    ExpectNotEnoughMemory([] { return SetFileAttributesW(kLongName, FILE_ATTRIBUTE_NORMAL) != FALSE; });
    ExpectNotEnoughMemory([] {
        WIN32_FIND_DATAW found;
        const HANDLE search = FindFirstFileW(L"\\*.txt", &found);
        return search != INVALID_HANDLE_VALUE && FindClose(search);
    });
    ExpectNotEnoughMemory([] {
        ULARGE_INTEGER free;
        return GetDiskFreeSpaceExW(L"\\", &free, nullptr, nullptr) != FALSE;
    });
    ExpectNotEnoughMemory([] {
        WCHAR path[MAX_PATH];
        return SHGetSpecialFolderPath(nullptr, path, kMyDocuments, TRUE) != FALSE;
    });
    ExpectNotEnoughMemory([] {
        WCHAR name[MAX_PATH];
        return GetModuleFileNameW(nullptr, name, MAX_PATH) != 0;
    });
}

TEST_F(FailingMemory, TheRegistryAnswersWithTheCode) {
    ExpectCodeOfNoMemory([] {
        HKEY key = nullptr;
        const LONG error =
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, 0, nullptr, &key, nullptr);
        return error == ERROR_SUCCESS ? RegCloseKey(key) : error;
    });
    ExpectCodeOfNoMemory([] {
        HKEY key = nullptr;
        const LONG error = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, 0, &key);
        return error == ERROR_SUCCESS ? RegCloseKey(key) : error;
    });
    ExpectCodeOfNoMemory([] {
        const DWORD value = 1;
        return RegSetValueExW(HKEY_LOCAL_MACHINE, L"Value", 0, REG_DWORD,
                              reinterpret_cast<const BYTE*>(&value), sizeof value);
    });
    ExpectCodeOfNoMemory([] {
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Gone", 0, nullptr, 0, 0, nullptr, nullptr, nullptr);
        const LONG error = RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
        return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
    });
}

TEST_F(FailingMemory, PowerAndQueuesFailAsForAnyOtherReason) {
    ExpectCodeOfNoMemory([] {
        WCHAR name[64];
        DWORD flags = 0;
        return GetSystemPowerState(name, 64, &flags);
    });
    ExpectNotEnoughMemory([] {
        MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, 4, 16, TRUE};
        const HANDLE queue = CreateMsgQueue(L"A queue of a name that is long enough", &options);
        return queue != nullptr && CloseMsgQueue(queue);
    });
}

TEST_F(FailingMemory, AThreadThatCannotBeNotedIsNotStarted) {
    static LONG ran;
    ran = 0;
    LONG started = 0;
    ExpectNotEnoughMemory([&] {
        const auto procedure = [](void*) -> DWORD {
            ++ran;
            return 0;
        };
        const HANDLE thread = CreateThread(nullptr, 0, procedure, nullptr, 0, nullptr);
        if (thread == nullptr) return false;
        ++started;
        WaitForSingleObject(thread, 10000);
        return CloseHandle(thread) != FALSE;
    });
    EXPECT_EQ(ran, started);
}

TEST_F(FailingMemory, ATimerWithAProcedureThatCannotBeKeptFails) {
    ExpectNotEnoughMemory([] {
        static UINT_PTR timer;
        timer = SetTimer(nullptr, 0, 100000, [](HWND, UINT, UINT_PTR, DWORD) {});
        return timer != 0 && KillTimer(nullptr, timer);
    });
}

// What cannot fail on the device does not fail here either.
TEST_F(FailingMemory, TimeAndDrawingGoOn) {
    for (std::size_t number = 0; number < 4; ++number) {
        const test::FailingMemory failing(kCoredll, number);
        const DWORD before = GetTickCount();
        Sleep(20);
        EXPECT_GE(GetTickCount() - before, 10u);
        CRITICAL_SECTION section;
        InitializeCriticalSection(&section);
        EnterCriticalSection(&section);
        LeaveCriticalSection(&section);
        DeleteCriticalSection(&section);
        const HDC dc = CreateCompatibleDC(nullptr);
        EXPECT_NE(dc, nullptr);
        EXPECT_TRUE(DeleteDC(dc));
        NKDbgPrintfW(L"A line of the trace takes no memory\n");
    }
}

TEST_F(FailingMemory, AVolumeTakesNoRecordAndLosesNone) {
    CEGUID volume;
    WCHAR name[] = L"\\memory.vol", database[] = L"Channels of a long name";
    ASSERT_TRUE(CeMountDBVol(&volume, name, CREATE_ALWAYS | EDB_MOUNT_FLAG));
    CEDBASEINFOEX info = {};
    info.wVersion = 2;
    info.dwFlags = CEDB_VALIDNAME;
    wcscpy(info.szDbaseName, database);
    CEOID oid = CeCreateDatabaseWithProps(&volume, &info, 0, nullptr);
    ASSERT_NE(oid, 0u);
    const auto open = [&] {
        return CeOpenDatabaseInSession(nullptr, &volume, &oid, nullptr, nullptr, CEDB_AUTOINCREMENT, nullptr);
    };
    ExpectNotEnoughMemory([&] { return CloseIfValid(open()); });

    const HANDLE handle = open();
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    int written = 0;
    ExpectNotEnoughMemory([&] {
        WCHAR text[] = L"A name that no small text has room for";
        CEPROPVAL value = {};
        value.propid = 0x0066001F;
        value.val.lpwstr = text;
        const bool done = CeWriteRecordProps(handle, 0, 1, &value) != 0;
        written += done ? 1 : 0;
        return done;
    });
    ExpectNotEnoughMemory([&] {
        DWORD index = 0;
        return CeSeekDatabaseEx(handle, CEDB_SEEK_BEGINNING, 0, 0, &index) != 0;
    });
    LPBYTE buffer = nullptr;
    DWORD size = 0;
    WORD count = 0;
    ExpectNotEnoughMemory([&] {
        DWORD index = 0;
        CeSeekDatabaseEx(handle, CEDB_SEEK_BEGINNING, 0, 0, &index);
        return CeReadRecordPropsEx(handle, CEDB_ALLOWREALLOC, &count, nullptr, &buffer, &size, nullptr) != 0;
    });

    int kept = 0;
    DWORD index = 0;
    CeSeekDatabaseEx(handle, CEDB_SEEK_BEGINNING, 0, 0, &index);
    while (CeReadRecordPropsEx(handle, CEDB_ALLOWREALLOC, &count, nullptr, &buffer, &size, nullptr) != 0)
        ++kept;
    EXPECT_EQ(kept, written);
    LocalFree(buffer);
    EXPECT_TRUE(CloseHandle(handle));
    EXPECT_TRUE(CeUnmountDBVol(&volume));
}

DWORD WINAPI ThrowsForWantOfMemory(void*) {
    throw std::bad_alloc();
}
DWORD WINAPI ThrowsSomethingElse(void*) {
    throw 1;
}

class ThrownByTheProgram : public HandsetTest {};

TEST_F(ThrownByTheProgram, AThreadsProcedureEndsItsThreadWithTheErrorAsItsCode) {
    const struct {
        LPTHREAD_START_ROUTINE procedure;
        DWORD code;
    } kRows[] = {{ThrowsForWantOfMemory, ERROR_NOT_ENOUGH_MEMORY}, {ThrowsSomethingElse, ERROR_GEN_FAILURE}};
    for (const auto& row : kRows) {
        const HANDLE thread = CreateThread(nullptr, 0, row.procedure, nullptr, 0, nullptr);
        ASSERT_EQ(WaitForSingleObject(thread, 20000), static_cast<DWORD>(WAIT_OBJECT_0));
        DWORD code = 0;
        EXPECT_TRUE(GetExitCodeThread(thread, &code));
        EXPECT_EQ(code, row.code);
        CloseHandle(thread);
    }
}

LRESULT CALLBACK ThrowingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_USER) throw std::runtime_error("from a window procedure");
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(ThrownByTheProgram, AWindowProcedureEndsTheCallThatRunsIt) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    EXPECT_EQ(LastErrorOf([&] { return CallWindowProcW(ThrowingProc, window, WM_USER, 0, 0) != 0; }).error,
              static_cast<DWORD>(ERROR_GEN_FAILURE));
    DestroyWindow(window);
}

}  // namespace
