// The records of the process's threads: entering and leaving platform calls, parking, suspend counts.
#include "handset/coredll/kernel/thread_record.h"

#include <mutex>
#include <new>
#include <unordered_map>

#include "handset/base/module_edge.h"

// Of the host's loader: NTDLL exports it, no header declares it.
extern "C" __declspec(dllimport) BOOLEAN NTAPI RtlDllShutdownInProgress(void);

namespace coredll {
namespace {

using handset::CKeptLastError;

constexpr int kMaximumSuspendCount = 127;
constexpr std::size_t kUsualCallDepth = 32;

std::mutex g_recordsLock;  // guards g_records
std::unordered_map<DWORD, std::shared_ptr<CThreadRecord>>& Records() {
    // Never destroyed: threads still end while the process does.
    static auto* const records = new std::unordered_map<DWORD, std::shared_ptr<CThreadRecord>>;
    return *records;
}

// When a process ends, its other threads are gone, with the locks that they held; the host calls this once
// more for the last one.
void WINAPI OnThreadEnd(void* record) try {
    if (record == nullptr || RtlDllShutdownInProgress()) return;
    const std::lock_guard<std::mutex> lock(g_recordsLock);
    const auto found = Records().find(GetCurrentThreadId());
    if (found != Records().end() && found->second.get() == record) Records().erase(found);
} catch (...) {
    handset::EdgeAnswer<void>();
}

DWORD RecordSlot() {
    static const DWORD slot = FlsAlloc(OnThreadEnd);
    return slot;
}

class CFreezeLock {
  public:
    explicit CFreezeLock(SRWLOCK* lock) : lock_(lock) { AcquireSRWLockExclusive(lock_); }
    ~CFreezeLock() { ReleaseSRWLockExclusive(lock_); }
    CFreezeLock(const CFreezeLock&) = delete;
    CFreezeLock& operator=(const CFreezeLock&) = delete;

  private:
    SRWLOCK* lock_;
};

Whereabouts WhereaboutsIn(CallKind kind) {
    return kind == CallKind::Plain ? Whereabouts::InCall : Whereabouts::InWait;
}

}  // namespace

CThreadRecord::CThreadRecord(int suspendCount)
    : suspendCount_(suspendCount),
      parked_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    frames_.reserve(kUsualCallDepth);
}

// A call that an exception guard of the application jumped out of never leaves; it is known by its place on
// the stack, which the caller of this one has by now given up. A call that another DLL marks within one of
// its functions may be followed by calls from the same place on the stack, but not by itself.
bool CThreadRecord::IsAbandoned(const Frame& frame, std::uintptr_t stack, std::uintptr_t site) {
    return frame.stack < stack || (frame.stack == stack && (frame.site == 0 || frame.site == site));
}

// A call inside another does not park, because the outer one may hold a lock; but the application's own code
// that a call runs is as free to be suspended as any other.
void CThreadRecord::Enter(CallKind kind, std::uintptr_t stack, std::uintptr_t site) noexcept {
    while (!frames_.empty() && IsAbandoned(frames_.back(), stack, site)) {
        frames_.pop_back();
        unnoted_ = 0;
    }
    const bool outermost = frames_.empty() || frames_.back().kind == CallKind::CallsBack;
    if (!Note({stack, site, kind, outermost}) || !outermost) return;
    where_.store(WhereaboutsIn(kind));
    ParkIfSuspended(WhereaboutsIn(kind));
}

bool CThreadRecord::Note(const Frame& frame) noexcept {
    try {
        if (unnoted_ == 0) frames_.push_back(frame);
    } catch (const std::bad_alloc&) {
        unnoted_ = 1;
        return false;
    }
    if (unnoted_ != 0) ++unnoted_;
    return unnoted_ == 0;
}

void CThreadRecord::Leave() noexcept {
    if (unnoted_ > 0) {
        --unnoted_;
        return;
    }
    if (frames_.empty()) return;
    const Frame frame = frames_.back();
    frames_.pop_back();
    if (!frame.outermost) return;
    if (frame.kind != CallKind::Plain) where_.store(Whereabouts::InCall);
    ParkIfSuspended(Whereabouts::InCall);
    // Inside a call that runs the application's code nobody can tell when that code comes back.
    where_.store(frames_.empty() ? Whereabouts::OwnCode : Whereabouts::InWait);
}

bool CThreadRecord::LeaveUnlessSuspended() noexcept {
    if (unnoted_ > 0) {
        --unnoted_;
    } else if (!frames_.empty() && frames_.back().outermost) {
        where_.store(Whereabouts::InCall);
        if (Suspended()) return false;
        frames_.pop_back();
        where_.store(frames_.empty() ? Whereabouts::OwnCode : Whereabouts::InWait);
    } else if (!frames_.empty()) {
        frames_.pop_back();
    }
    return true;
}

// Each side first stores its own word and then reads the other's, in one order for all threads: either the
// thread sees the count and parks, or the one that suspends sees where the thread is and waits for it.
void CThreadRecord::ParkIfSuspended(Whereabouts next) {
    if (Suspended()) Park(next);
}

void CThreadRecord::Park(Whereabouts next) {
    const CKeptLastError kept;
    do {
        where_.store(Whereabouts::Parked);
        SetEvent(parked_.get());
        while (Suspended()) WaitForSingleObject(wake_.get(), INFINITE);
        where_.store(next);
    } while (Suspended());
}

DWORD CThreadRecord::AddSuspension() {
    int count = suspendCount_.load();
    do {
        if (count >= kMaximumSuspendCount) {
            SetLastError(ERROR_SIGNAL_REFUSED);
            return kRefused;
        }
    } while (!suspendCount_.compare_exchange_weak(count, count + 1));
    return static_cast<DWORD>(count);
}

DWORD CThreadRecord::RemoveSuspension() {
    const CFreezeLock lock(&freezing_);
    int count = suspendCount_.load();
    do {
        if (count == 0) return 0;
    } while (!suspendCount_.compare_exchange_weak(count, count - 1));
    if (count > 1) return static_cast<DWORD>(count);
    SetEvent(wake_.get());
    if (frozen_) {
        where_.store(Whereabouts::OwnCode);
        ResumeThread(frozen_.get());
        frozen_.reset();
    }
    return static_cast<DWORD>(count);
}

bool CThreadRecord::Freeze(HANDLE thread) {
    const CFreezeLock lock(&freezing_);
    if (frozen_ || !Suspended() || Where() != Whereabouts::OwnCode) return false;
    const HANDLE process = GetCurrentProcess();
    if (!DuplicateHandle(process, thread, process, handset::Put(frozen_), 0, FALSE, DUPLICATE_SAME_ACCESS))
        return false;
    where_.store(Whereabouts::Frozen);
    return true;
}

CThreadRecord* CurrentThreadRecord() noexcept try {
    const CKeptLastError kept;
    auto* record = static_cast<CThreadRecord*>(FlsGetValue(RecordSlot()));
    if (record == nullptr) {
        // The table of records keeps it alive until the thread ends.
        record = ThreadRecordOf(GetCurrentThreadId()).get();
        FollowPhone();
        FlsSetValue(RecordSlot(), record);
    }
    return record;
} catch (...) {
    return nullptr;
}

std::shared_ptr<CThreadRecord> ThreadRecordOf(DWORD threadId) {
    const std::lock_guard<std::mutex> lock(g_recordsLock);
    const auto found = Records().find(threadId);
    if (found != Records().end()) return found->second;
    return Records()[threadId] = std::make_shared<CThreadRecord>();
}

// A program's own work at the end of a thread may make platform calls after the thread's record was given
// back, and so leave another one behind. Under g_recordsLock.
static void ForgetEndedThreads() {
    for (auto at = Records().begin(); at != Records().end();) {
        const handset::OwnedHandle thread(OpenThread(SYNCHRONIZE, FALSE, at->first));
        const bool ended = thread ? WaitForSingleObject(thread.get(), 0) == WAIT_OBJECT_0
                                  : GetLastError() == ERROR_INVALID_PARAMETER;
        at = ended ? Records().erase(at) : std::next(at);
    }
}

void RegisterThread(DWORD threadId, std::shared_ptr<CThreadRecord> record) {
    const CKeptLastError kept;
    const std::lock_guard<std::mutex> lock(g_recordsLock);
    ForgetEndedThreads();
    Records()[threadId] = std::move(record);
}

void ForgetThread(DWORD threadId) {
    const std::lock_guard<std::mutex> lock(g_recordsLock);
    Records().erase(threadId);
}

void WakeHeldThreads() {
    const std::lock_guard<std::mutex> lock(g_recordsLock);
    for (const auto& [id, record] : Records()) record->Wake();
}

}  // namespace coredll
