// A program of the device for the tests of the power manager. Its arguments are things to do at the start:
//   hold     asks for unattended mode
//   keys     asks for every hardware key
//   listen   writes each notification to \notices.txt: kind, flags in hexadecimal, name
//   leave    works on its main thread and ends once there is a file \leave.txt; beside it a crowd of threads
//            sleeps in short naps
//   reset    resets the idle timer all the time
//   write    writes "hello" into the queue "calls"
//   wait     keeps its main thread in a wait that nothing ends
//   hours    waits for four hours in every way that there is; each writes its name and how long it took, in
//            the handset's seconds, into \hours.txt when they are over
// Once it has done so it works until it is ended: a letter into \work.txt every millisecond or so.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>

namespace {

void Append(const wchar_t* path, const std::string& text) {
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    SetFilePointer(file, 0, nullptr, FILE_END);
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
}

DWORD WINAPI ListenProc(void* queue) {
    alignas(POWER_BROADCAST) unsigned char buffer[536];
    DWORD size = 0;
    DWORD flags = 0;
    while (ReadMsgQueue(queue, buffer, sizeof buffer, &size, INFINITE, &flags)) {
        const auto* notice = reinterpret_cast<const POWER_BROADCAST*>(buffer);
        const std::wstring name = notice->SystemPowerState;
        char line[64];
        snprintf(line, sizeof line, "%lu %08lx %s\n", notice->Message, notice->Flags,
                 std::string(name.begin(), name.end()).c_str());
        Append(L"\\notices.txt", line);
    }
    return 0;
}

DWORD WINAPI ResetProc(void* /*parameter*/) {
    for (;;) {
        SystemIdleTimerReset();
        Sleep(100);
    }
}

DWORD WINAPI WorkProc(void* /*parameter*/) {
    for (;;) {
        Append(L"\\work.txt", "x");
        Sleep(1);
    }
}

constexpr int kCrowd = 200;

DWORD WINAPI NapProc(void* /*parameter*/) {
    for (;;) Sleep(500);
}

int WorkUntilToldToLeave() {
    for (int i = 0; i < kCrowd; ++i) CloseHandle(CreateThread(nullptr, 0, NapProc, nullptr, 0, nullptr));
    while (GetFileAttributesW(L"\\leave.txt") == INVALID_FILE_ATTRIBUTES) Append(L"\\work.txt", "x");
    return 0;
}

void Listen() {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, 16, 536, TRUE};
    const HANDLE queue = CreateMsgQueue(nullptr, &options);
    RequestPowerNotifications(queue, PBT_TRANSITION | PBT_RESUME);
    CreateThread(nullptr, 0, ListenProc, queue, 0, nullptr);
}

void Write() {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, 4, 16, FALSE};
    char text[] = "hello";
    WriteMsgQueue(CreateMsgQueue(L"calls", &options), text, 5, INFINITE, 0);
}

constexpr DWORD kHours_ms = 4 * 3600 * 1000;

void WaitAsleep() {
    Sleep(kHours_ms);
}
void WaitForObject() {
    WaitForSingleObject(CreateEventW(nullptr, TRUE, FALSE, nullptr), kHours_ms);
}
// As many as there may be.
void WaitForObjects() {
    HANDLE events[MAXIMUM_WAIT_OBJECTS];
    for (HANDLE& event : events) event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    WaitForMultipleObjects(MAXIMUM_WAIT_OBJECTS, events, FALSE, kHours_ms);
}
void WaitForInput() {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    MsgWaitForMultipleObjectsEx(1, &event, kHours_ms, QS_ALLINPUT, 0);
}
void WaitForQueue() {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_ALLOW_BROKEN, 1, 4, TRUE};
    char buffer[4];
    DWORD size = 0;
    ReadMsgQueue(CreateMsgQueue(nullptr, &options), buffer, sizeof buffer, &size, kHours_ms, nullptr);
}
void WaitForTimer() {
    const UINT_PTR timer = SetTimer(nullptr, 0, kHours_ms, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.wParam == timer) return;
        DispatchMessageW(&message);
    }
}
bool g_called = false;
void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    g_called = true;
}
void WaitForTimerProcedure() {
    SetTimer(nullptr, 0, kHours_ms, OnTimer);
    MSG message;
    while (!g_called && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

struct Way {
    const char* name;
    void (*wait)();
};
constexpr Way kWays[] = {
    {"sleep", WaitAsleep},           {"object", WaitForObject}, {"objects", WaitForObjects},
    {"input", WaitForInput},         {"queue", WaitForQueue},   {"timer", WaitForTimer},
    {"call", WaitForTimerProcedure},
};

std::mutex g_hours;  // one line of \\hours.txt at a time

DWORD WINAPI WayProc(void* parameter) {
    const auto* way = static_cast<const Way*>(parameter);
    const DWORD began = GetTickCount();
    way->wait();
    const DWORD seconds = (GetTickCount() - began) / 1000;
    // All end at once, and a line begins where the file ended before the other was written.
    const std::lock_guard<std::mutex> lock(g_hours);
    Append(L"\\hours.txt", std::string(way->name) + " " + std::to_string(seconds) + "\n");
    return 0;
}

void WaitForHours() {
    for (const Way& way : kWays) CreateThread(nullptr, 0, WayProc, const_cast<Way*>(&way), 0, nullptr);
}

}  // namespace

int main(int count, char** arguments) {
    bool waits = false;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "hold") == 0) PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
        if (std::strcmp(arguments[i], "keys") == 0) AllKeys(TRUE);
        if (std::strcmp(arguments[i], "listen") == 0) Listen();
        if (std::strcmp(arguments[i], "write") == 0) Write();
        if (std::strcmp(arguments[i], "hours") == 0) WaitForHours();
        if (std::strcmp(arguments[i], "reset") == 0) CreateThread(nullptr, 0, ResetProc, nullptr, 0, nullptr);
        if (std::strcmp(arguments[i], "leave") == 0) return WorkUntilToldToLeave();
        waits = waits || std::strcmp(arguments[i], "wait") == 0;
    }
    if (!waits) return static_cast<int>(WorkProc(nullptr));
    CreateThread(nullptr, 0, WorkProc, nullptr, 0, nullptr);
    Sleep(INFINITE);
    return 0;
}
