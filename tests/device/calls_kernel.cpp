// The kernel: time, events, threads, thread values, power.
#include <stdexcept>
#include <utility>

#include "tests/device/phone.h"

namespace device {
namespace {

constexpr std::uint32_t kTimedOut = 258, kForEver = 0xFFFFFFFF;

std::uint32_t NewEvent(Phone& phone) {
    const std::uint32_t handle = phone.NewHandle();
    phone.objects[handle] = {phone.Argument(2) != 0, phone.Argument(1) != 0, 0, 0};
    return handle;
}

std::uint32_t ModifyEvent(Phone& phone) {
    constexpr std::uint32_t kSet = 3;
    phone.objects.at(phone.Argument(0)).signalled = phone.Argument(1) == kSet;
    return 1;
}

std::uint32_t NewThread(Phone& phone) {
    const std::uint32_t handle = phone.NewHandle();
    phone.objects[handle] = {false, true, phone.Argument(2), phone.Argument(3)};
    phone.threads.push_back(handle);
    return handle;
}

// Whether a wait for this object is over. A thread that has not run yet runs now.
bool IsOver(Phone& phone, std::uint32_t handle) {
    WaitObject& object = phone.objects.at(handle);
    if (object.threadProcedure != 0) {
        const std::uint32_t procedure = object.threadProcedure;
        object.threadProcedure = 0;
        // It has thread values of its own.
        const auto waiting = std::exchange(phone.threadValues, {});
        phone.Cpu().CallAsThread(procedure, object.threadArgument);
        phone.threadValues = waiting;
        object.signalled = true;
    }
    if (!object.signalled) return false;
    if (!object.manualReset) object.signalled = false;
    return true;
}

// What a wait without its object gives: its time-out, or an end of the thread's turn.
std::uint32_t OutOfPatience(Phone& phone, std::uint32_t timeout_ms) {
    if (timeout_ms == kForEver || phone.roundsLeft-- <= 0) throw Phone::Blocked();
    phone.ticks += timeout_ms;
    return kTimedOut;
}

std::uint32_t WaitForOne(Phone& phone) {
    if (IsOver(phone, phone.Argument(0))) return 0;
    return phone.Argument(1) == 0 ? kTimedOut : OutOfPatience(phone, phone.Argument(1));
}

std::uint32_t WaitForSeveral(Phone& phone, std::uint32_t timeout_ms) {
    const std::uint32_t count = phone.Argument(0), handles = phone.Argument(1);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (IsOver(phone, phone.Cpu().Read32(handles + 4 * i))) return i;
    }
    return OutOfPatience(phone, timeout_ms);
}

std::uint32_t ChangeWord(Phone& phone, std::uint32_t value) {
    const std::uint32_t before = phone.Cpu().Read32(phone.Argument(0));
    phone.Cpu().Write32(phone.Argument(0), value);
    return before;
}

std::uint32_t CompareExchange(Phone& phone) {
    const std::uint32_t before = phone.Cpu().Read32(phone.Argument(0));
    if (before == phone.Argument(2)) phone.Cpu().Write32(phone.Argument(0), phone.Argument(1));
    return before;
}

std::uint32_t PowerState(Phone& phone) {
    constexpr std::uint32_t kOn = 0x10000;
    phone.Cpu().WriteWide(phone.Argument(0), "on");
    phone.Cpu().Write32(phone.Argument(2), kOn);
    return 0;
}

std::uint32_t Handle(Phone& phone) {
    const std::uint32_t handle = phone.NewHandle();
    phone.objects[handle] = {};
    return handle;
}

}  // namespace

void AddKernelCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"GetTickCount", [](Phone& p) { return p.ticks; }},
        {"Sleep",
         [](Phone& p) {
             p.ticks += p.Argument(0);
             return 0U;
         }},
        {"GetLastError", [](Phone& p) { return p.lastError; }},
        {"SetLastError",
         [](Phone& p) {
             p.lastError = p.Argument(0);
             return 0U;
         }},
        {"CreateEventW", NewEvent},
        {"EventModify", ModifyEvent},
        {"CreateThread", NewThread},
        {"CloseHandle", One},
        {"SuspendThread", Nothing},
        {"ResumeThread", Nothing},
        {"WaitForSingleObject", WaitForOne},
        {"WaitForMultipleObjects", [](Phone& p) { return WaitForSeveral(p, p.Argument(3)); }},
        {"MsgWaitForMultipleObjectsEx", [](Phone& p) { return WaitForSeveral(p, p.Argument(2)); }},
        {"CreateMutexW", Handle},
        {"ReleaseMutex", One},
        {"InitializeCriticalSection", Nothing},
        {"EnterCriticalSection", Nothing},
        {"LeaveCriticalSection", Nothing},
        {"InterlockedExchange", [](Phone& p) { return ChangeWord(p, p.Argument(1)); }},
        {"InterlockedExchangeAdd",
         [](Phone& p) { return ChangeWord(p, p.Cpu().Read32(p.Argument(0)) + p.Argument(1)); }},
        {"InterlockedCompareExchange", CompareExchange},
        {"TlsCall", [](Phone&) { return 4U; }},
        {"TlsGetValue", [](Phone& p) { return p.threadValues[p.Argument(0)]; }},
        {"TlsSetValue",
         [](Phone& p) {
             p.threadValues[p.Argument(0)] = p.Argument(1);
             return 1U;
         }},
        {"TerminateProcess", [](Phone& p) -> std::uint32_t { throw Phone::Ended{p.Argument(1)}; }},
        {"CreateMsgQueue", Handle},
        {"ReadMsgQueue", Nothing},
        {"CloseMsgQueue", One},
        {"RequestPowerNotifications", Handle},
        {"StopPowerNotifications", Nothing},
        {"PowerPolicyNotify", One},
        {"GetSystemPowerState", PowerState},
        {"SetSystemPowerState", Nothing},
        {"SystemIdleTimerReset", Nothing},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
