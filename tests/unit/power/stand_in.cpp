// A program of the device for the tests of the power manager. Its arguments are things to do at the start:
//   hold     asks for unattended mode
//   keys     asks for every hardware key
//   listen   writes each notification to \notices.txt: kind, flags in hexadecimal, name
//   reset    resets the idle timer all the time
//   write    writes "hello" into the queue "calls"
//   wait     keeps its main thread in a wait that nothing ends
// Once it has done so it works until it is ended: a letter into \work.txt every millisecond or so.
#include <windows.h>

#include <cstdio>
#include <cstring>
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

}  // namespace

int main(int count, char** arguments) {
    bool waits = false;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "hold") == 0) PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
        if (std::strcmp(arguments[i], "keys") == 0) AllKeys(TRUE);
        if (std::strcmp(arguments[i], "listen") == 0) Listen();
        if (std::strcmp(arguments[i], "write") == 0) Write();
        if (std::strcmp(arguments[i], "reset") == 0) CreateThread(nullptr, 0, ResetProc, nullptr, 0, nullptr);
        waits = waits || std::strcmp(arguments[i], "wait") == 0;
    }
    if (!waits) return static_cast<int>(WorkProc(nullptr));
    CreateThread(nullptr, 0, WorkProc, nullptr, 0, nullptr);
    Sleep(INFINITE);
    return 0;
}
