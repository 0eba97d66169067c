// Message queues: the device's calls over the queues that the handset's programs share.
#include "handset/coredll/power/message_queues.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/clock.h"
#include "handset/include/msgqueue.h"
#include "handset/state/handset_state.h"
#include "handset/state/message_queue.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using handset::CQueueEnd;

constexpr DWORD kKnownFlags = MSGQUEUE_NOPRECOMMIT | MSGQUEUE_ALLOW_BROKEN;
constexpr std::size_t kLongestId = 300;  // characters

// An end and the card on which other processes find the queue by the handle.
struct OpenEnd {
    std::unique_ptr<CQueueEnd> end;
    std::unique_ptr<handset::CSharedMemory> card;
};
using SharedEnd = std::shared_ptr<OpenEnd>;

std::mutex g_lock;  // guards Ends()
std::map<HANDLE, SharedEnd>& Ends() {
    // Never destroyed: threads still call while the process ends.
    static auto* const ends = new std::map<HANDLE, SharedEnd>;
    return *ends;
}

SharedEnd EndOf(HANDLE queue) {
    const std::lock_guard<std::mutex> guard(g_lock);
    const auto found = Ends().find(queue);
    return found == Ends().end() ? nullptr : found->second;
}

SharedEnd TakeEnd(HANDLE queue) {
    const std::lock_guard<std::mutex> guard(g_lock);
    const auto found = Ends().find(queue);
    if (found == Ends().end()) return nullptr;
    SharedEnd end = found->second;
    Ends().erase(found);
    return end;
}

std::wstring CardName(DWORD process, HANDLE queue) {
    return L"queuehandle." + std::to_wstring(process) + L"." +
           std::to_wstring(reinterpret_cast<std::uintptr_t>(queue));
}

HANDLE Register(std::unique_ptr<CQueueEnd> end) {
    const HANDLE handle = end->NewWaitable();
    if (handle == nullptr) return nullptr;
    auto card = std::make_unique<handset::CSharedMemory>(CardName(GetCurrentProcessId(), handle),
                                                         (kLongestId + 1) * sizeof(wchar_t));
    if (*card) end->id().copy(static_cast<wchar_t*>(card->data()), kLongestId);
    const std::lock_guard<std::mutex> guard(g_lock);
    Ends()[handle] = std::make_shared<OpenEnd>(OpenEnd{std::move(end), std::move(card)});
    return handle;
}

HANDLE Failed(DWORD error) {
    SetLastError(error);
    return nullptr;
}

BOOL Result(DWORD error) {
    if (error == ERROR_SUCCESS) return TRUE;
    SetLastError(error);
    return FALSE;
}

bool Understood(const MSGQUEUEOPTIONS* options) {
    return options != nullptr && options->dwSize == sizeof *options;
}

// `attempt(real milliseconds)` until it has another result than a time-out, or the time is over on the
// handset's clock. Its rate is looked at as often as the other end is.
template <typename Attempt>
DWORD InTime(DWORD milliseconds, Attempt attempt) {
    if (milliseconds == 0 || milliseconds == INFINITE) return attempt(milliseconds);
    coredll::CDeadline deadline(milliseconds);
    for (;;) {
        const DWORD error = attempt(std::min(deadline.Left_ms(), coredll::CDeadline::kLook_ms));
        if (error != ERROR_TIMEOUT || deadline.Left_ms() == 0) return error;
    }
}

std::wstring NewId(const wchar_t* name) {
    static std::atomic<unsigned> count{0};
    if (name != nullptr) return L"queue.named." + std::wstring(name);
    return L"queue." + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
}

// The queue of a handle in another process, or in this one; empty when there is none.
std::wstring QueueOfForeignHandle(HANDLE process, HANDLE queue) {
    const DWORD id = GetProcessId(process);
    if (id == 0) return L"";
    const handset::CSharedMemory card(CardName(id, queue), 0);
    return card ? static_cast<const wchar_t*>(card.data()) : L"";
}

}  // namespace

std::wstring coredll::QueueOfHandle(HANDLE queue, bool* reads) {
    const SharedEnd end = EndOf(queue);
    if (!end) return L"";
    *reads = end->end->reads();
    return end->end->id();
}

bool coredll::CloseQueueHandle(HANDLE queue) {
    const SharedEnd end = TakeEnd(queue);
    return end != nullptr && CloseHandle(queue);
}

COREDLL_EXPORT HANDLE WINAPI CreateMsgQueue(const wchar_t* name, MSGQUEUEOPTIONS* options) try {
    const CCallGuard guard;
    if (handset::FaultInjected(L"msgqueue")) return Failed(ERROR_OUTOFMEMORY);
    if (!Understood(options) || options->cbMaxMessage == 0 || (options->dwFlags & ~kKnownFlags) != 0) {
        return Failed(ERROR_INVALID_PARAMETER);
    }
    const std::wstring id = NewId(name);
    if (id.size() > kLongestId || (name != nullptr && std::wcslen(name) >= MAX_PATH)) {
        return Failed(ERROR_FILENAME_EXCED_RANGE);
    }
    const handset::QueueOptions wanted{options->dwFlags, options->dwMaxMessages, options->cbMaxMessage};
    std::unique_ptr<CQueueEnd> end;
    bool existed = false;
    const DWORD error = CQueueEnd::Open(id, options->bReadAccess != FALSE, &wanted, &end, &existed);
    if (error != ERROR_SUCCESS) return Failed(error);
    const HANDLE handle = Register(std::move(end));
    SetLastError(existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
} catch (...) {
    return handset::EdgeAnswer<HANDLE>();
}

COREDLL_EXPORT HANDLE WINAPI OpenMsgQueue(HANDLE process, HANDLE queue, MSGQUEUEOPTIONS* options) try {
    const CCallGuard guard;
    if (!Understood(options)) return Failed(ERROR_INVALID_PARAMETER);
    const std::wstring id = QueueOfForeignHandle(process, queue);
    if (id.empty()) return Failed(ERROR_INVALID_HANDLE);
    std::unique_ptr<CQueueEnd> end;
    const DWORD error = CQueueEnd::Open(id, options->bReadAccess != FALSE, nullptr, &end);
    if (error == ERROR_FILE_NOT_FOUND) return Failed(ERROR_INVALID_HANDLE);
    return error == ERROR_SUCCESS ? Register(std::move(end)) : Failed(error);
} catch (...) {
    return handset::EdgeAnswer<HANDLE>();
}

COREDLL_EXPORT BOOL WINAPI ReadMsgQueue(HANDLE queue, void* buffer, DWORD size, DWORD* read,
                                        DWORD milliseconds, DWORD* flags) try {
    const CCallGuard guard(CallKind::Waits);
    if (read != nullptr) *read = 0;
    if (buffer == nullptr || size == 0 || read == nullptr) return Result(ERROR_INVALID_PARAMETER);
    const SharedEnd end = EndOf(queue);
    if (!end || !end->end->reads()) return Result(ERROR_INVALID_HANDLE);
    return Result(InTime(milliseconds,
                         [&](DWORD real_ms) { return end->end->Read(buffer, size, read, real_ms, flags); }));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI WriteMsgQueue(HANDLE queue, void* data, DWORD size, DWORD milliseconds,
                                         DWORD flags) try {
    const CCallGuard guard(CallKind::Waits);
    if (data == nullptr || size == 0 || (flags & ~DWORD{MSGQUEUE_MSGALERT}) != 0) {
        return Result(ERROR_INVALID_PARAMETER);
    }
    const SharedEnd end = EndOf(queue);
    if (!end || end->end->reads()) return Result(ERROR_INVALID_HANDLE);
    return Result(
        InTime(milliseconds, [&](DWORD real_ms) { return end->end->Write(data, size, real_ms, flags); }));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI GetMsgQueueInfo(HANDLE queue, MSGQUEUEINFO* info) try {
    const CCallGuard guard;
    if (info == nullptr || info->dwSize != sizeof *info) return Result(ERROR_INVALID_PARAMETER);
    const SharedEnd end = EndOf(queue);
    if (!end) return Result(ERROR_INVALID_HANDLE);
    const handset::QueueCounts counts = end->end->Counts();
    *info = {sizeof *info,
             counts.options.flags,
             counts.options.maxMessages,
             counts.options.maxBytes,
             counts.messages,
             counts.mostMessages,
             counts.readers,
             counts.writers};
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI CloseMsgQueue(HANDLE queue) try {
    const CCallGuard guard;
    return coredll::CloseQueueHandle(queue) ? TRUE : Result(ERROR_INVALID_HANDLE);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
