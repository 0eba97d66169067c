// Threads: creation, suspension between platform calls, end.
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using coredll::CThreadRecord;
using coredll::Whereabouts;

// A thread that is computing is given this long to make a platform call; then the system suspends it, if it
// is in code of the program itself, where it holds no lock of the system.
constexpr ULONGLONG kOwnCodeLimit_ms = 2000;
constexpr DWORD kPoll_ms = 20;
// A message that the thread sends is answered only after this time: most calls are over sooner, and the
// caller of SuspendThread does not expect to handle messages there.
constexpr ULONGLONG kMessagesHeldBack_ms = 30;

struct Launch {
    LPTHREAD_START_ROUTINE start;
    void* parameter;
};

// What the program's own procedure throws ends its thread.
DWORD WINAPI RunThread(void* data) try {
    const Launch launch = *static_cast<Launch*>(data);
    delete static_cast<Launch*>(data);
    { const CCallGuard parksWhenCreatedSuspended; }
    const DWORD code = launch.start(launch.parameter);
    { const CCallGuard parksBeforeTheEnd; }
    return code;
} catch (...) {
    return handset::EdgeError();
}

// A thread that the host has made and that has not run yet; unless it is started, it never does.
class CUnstartedThread {
  public:
    explicit CUnstartedThread(HANDLE thread) : thread_(thread) {}
    ~CUnstartedThread() {
        if (thread_ == nullptr) return;
        TerminateThread(thread_, 0);
        CloseHandle(thread_);
    }
    CUnstartedThread(const CUnstartedThread&) = delete;
    CUnstartedThread& operator=(const CUnstartedThread&) = delete;

    explicit operator bool() const { return thread_ != nullptr; }
    // The handle is the caller's from then on.
    HANDLE Start() {
        ResumeThread(thread_);
        return std::exchange(thread_, nullptr);
    }

  private:
    HANDLE thread_;
};

// The identifier of a live thread of this process; 0 for any other thread, which is left to the system.
DWORD OwnLiveThread(HANDLE thread) {
    const DWORD id = GetThreadId(thread);
    if (id == 0 || id == GetCurrentThreadId()) return id;
    if (GetProcessIdOfThread(thread) != GetCurrentProcessId()) return 0;
    return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0 ? 0 : id;
}

bool InProgram(DWORD64 address) {
    const auto* base = reinterpret_cast<const BYTE*>(GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    return address - reinterpret_cast<DWORD64>(base) < nt->OptionalHeader.SizeOfImage;
}

bool FreezeInOwnCode(CThreadRecord& target, HANDLE thread) {
    if (SuspendThread(thread) == CThreadRecord::kRefused) return false;
    CONTEXT context{};
    context.ContextFlags = CONTEXT_CONTROL;
    if (GetThreadContext(thread, &context) && InProgram(context.Rip) && target.Freeze(thread)) return true;
    ResumeThread(thread);
    return false;
}

// The fault "suspend:N": the next N attempts fail, as they do on the device while the thread is in a call of
// its kernel. Counted anew when it has changed.
bool IsRefusedByFault() {
    static std::atomic<std::uint32_t> before{0}, refused{0};
    const std::uint32_t wanted = handset::FaultCount(L"suspend");
    if (before.exchange(wanted) != wanted) refused = 0;
    return wanted > 0 && refused++ < wanted;
}

bool HasStopped(const CThreadRecord& target) {
    const Whereabouts where = target.Where();
    return where == Whereabouts::Parked || where == Whereabouts::InWait || where == Whereabouts::Frozen;
}

// Until the thread is parked, in a wait after which it parks, frozen, resumed by somebody else, or gone. The
// caller goes on handling the messages that other threads send it: the thread may be sending one.
void AwaitStop(CThreadRecord& target, HANDLE thread) {
    const HANDLE events[] = {target.ParkedEvent(), thread};
    const ULONGLONG began = GetTickCount64();
    while (target.Suspended() && !HasStopped(target)) {
        const ULONGLONG waited = GetTickCount64() - began;
        const DWORD messages = waited < kMessagesHeldBack_ms ? 0 : QS_SENDMESSAGE;
        const DWORD result =
            MsgWaitForMultipleObjectsEx(std::size(events), events, kPoll_ms, messages, MWMO_INPUTAVAILABLE);
        if (result == WAIT_OBJECT_0 + 1 || result == WAIT_FAILED) return;
        if (result == WAIT_OBJECT_0 + std::size(events)) {
            MSG message;
            PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        }
        const bool silent = waited >= kOwnCodeLimit_ms && target.Where() == Whereabouts::OwnCode;
        if (silent && FreezeInOwnCode(target, thread)) return;
    }
}

}  // namespace

// CREATE_SUSPENDED: the thread runs, but parks before its first instruction of the program.
COREDLL_EXPORT HANDLE WINAPI DeviceCreateThread(SECURITY_ATTRIBUTES* security, SIZE_T stackSize,
                                                LPTHREAD_START_ROUTINE start, void* parameter, DWORD flags,
                                                DWORD* threadId) try {
    const CCallGuard guard;
    auto launch = std::make_unique<Launch>(Launch{start, parameter});
    auto record = std::make_shared<CThreadRecord>((flags & CREATE_SUSPENDED) != 0 ? 1 : 0);
    DWORD id = 0;
    CUnstartedThread thread(
        CreateThread(security, stackSize, RunThread, launch.get(), flags | CREATE_SUSPENDED, &id));
    if (!thread) return nullptr;
    coredll::RegisterThread(id, std::move(record));
    if (threadId != nullptr) *threadId = id;
    launch.release();  // it is the thread's now
    return thread.Start();
} catch (...) {
    return handset::EdgeAnswer<HANDLE>();
}

// Device differs: a thread that waits for an object when it is suspended still takes the object.
COREDLL_EXPORT DWORD WINAPI DeviceSuspendThread(HANDLE thread) try {
    // A thread that suspends itself parks when this guard ends.
    const CCallGuard guard(CallKind::CallsBack);
    const DWORD id = OwnLiveThread(thread);
    if (id == 0) return SuspendThread(thread);
    if (IsRefusedByFault()) {
        SetLastError(ERROR_SIGNAL_REFUSED);
        return CThreadRecord::kRefused;
    }
    const auto target = coredll::ThreadRecordOf(id);
    const DWORD previous = target->AddSuspension();
    if (previous == CThreadRecord::kRefused || id == GetCurrentThreadId()) return previous;
    AwaitStop(*target, thread);
    const bool ended = WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
    return ended ? SuspendThread(thread) : previous;
} catch (...) {
    return handset::EdgeAnswer(CThreadRecord::kRefused);
}

COREDLL_EXPORT DWORD WINAPI DeviceResumeThread(HANDLE thread) try {
    const CCallGuard guard;
    const DWORD id = OwnLiveThread(thread);
    if (id == 0) return ResumeThread(thread);
    const DWORD previous = coredll::ThreadRecordOf(id)->RemoveSuspension();
    // A thread that nobody suspended here may have been made suspended by the host: the C++ runtime does so.
    return previous == 0 ? ResumeThread(thread) : previous;
} catch (...) {
    return handset::EdgeAnswer(CThreadRecord::kRefused);
}

COREDLL_EXPORT void WINAPI DeviceExitThread(DWORD code) try {
    { const CCallGuard parksBeforeTheEnd; }
    ExitThread(code);
} catch (...) {
    handset::EdgeAnswer<void>();
}

// The thread is stopped between two platform calls first, so that it takes no lock with it.
COREDLL_EXPORT BOOL WINAPI DeviceTerminateThread(HANDLE thread, DWORD code) try {
    const CCallGuard guard(CallKind::CallsBack);
    const DWORD id = OwnLiveThread(thread);
    if (id == 0 || id == GetCurrentThreadId()) return TerminateThread(thread, code);
    const auto target = coredll::ThreadRecordOf(id);
    const bool counted = target->AddSuspension() != CThreadRecord::kRefused;
    AwaitStop(*target, thread);
    const BOOL done = TerminateThread(thread, code);
    if (done) {
        coredll::ForgetThread(id);
    } else if (counted) {
        target->RemoveSuspension();
    }
    return done;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

GUARDED(BOOL, GetExitCodeThread, (HANDLE thread, DWORD* code), (thread, code), Plain)
