// Message queues in shared memory: a header, the order of the messages, and a place for each.
#include "handset/state/message_queue.h"

#include "handset/base/process_lock.h"
#include "handset/state/handset_state.h"

#include <algorithm>
#include <cstring>

namespace handset {
namespace {

constexpr std::size_t kMostEnds = 64;
// How soon a call that waits notices that the other side has ended.
constexpr DWORD kLookForOthers_ms = 100;

struct EndMark {
    ProgramMark program;
    std::uint64_t reads;
};

struct Place {
    DWORD size;
    DWORD flags;
};

}  // namespace

struct CQueueEnd::Header {
    QueueOptions options;
    DWORD places;
    DWORD count;
    DWORD alerts;  // they come first
    DWORD most;
    EndMark ends[kMostEnds];

    std::size_t PlaceSize() const { return PlaceSize(options.maxBytes); }
    static std::size_t PlaceSize(DWORD maxBytes) {
        return sizeof(Place) + (std::size_t{maxBytes} + 7) / 8 * 8;
    }
    static std::size_t Size(DWORD places, DWORD maxBytes) {
        return sizeof(Header) + (std::size_t{places} + 1) / 2 * 8 + places * PlaceSize(maxBytes);
    }
    // The numbers of all places: first those of the messages in their order, then the free ones.
    DWORD* Order() { return reinterpret_cast<DWORD*>(this + 1); }
    Place* At(DWORD number) {
        auto* first = reinterpret_cast<std::uint8_t*>(this + 1) + (std::size_t{places} + 1) / 2 * 8;
        return reinterpret_cast<Place*>(first + number * PlaceSize());
    }
};

CQueueEnd::CQueueEnd(const std::wstring& id, bool reads)
    : id_(id),
      reads_(reads),
      lock_(CreateMutexW(nullptr, FALSE, StateObjectName(id + L".lock").c_str())),
      readable_(CreateEventW(nullptr, TRUE, FALSE, StateObjectName(id + L".readable").c_str())),
      writable_(CreateEventW(nullptr, TRUE, FALSE, StateObjectName(id + L".writable").c_str())) {}

DWORD CQueueEnd::Open(const std::wstring& id, bool reads, const QueueOptions* options,
                      std::unique_ptr<CQueueEnd>* end, bool* existed) {
    std::unique_ptr<CQueueEnd> made(new CQueueEnd(id, reads));
    if (!made->lock_ || !made->readable_ || !made->writable_) return ERROR_OUTOFMEMORY;
    const DWORD error = made->Join(options, existed);
    if (error != ERROR_SUCCESS) return error;
    *end = std::move(made);
    return ERROR_SUCCESS;
}

DWORD CQueueEnd::Join(const QueueOptions* options, bool* existed) {
    std::size_t size = 0;
    DWORD places = 0;
    if (options != nullptr) {
        const auto fitting = static_cast<DWORD>(kUnlimitedBytes / Header::PlaceSize(options->maxBytes));
        places = options->maxMessages != 0 ? options->maxMessages
                                           : std::clamp<DWORD>(fitting, 1, kUnlimitedMessages);
        if (places > kLargestQueue || options->maxBytes > kLargestQueue) return ERROR_OUTOFMEMORY;
        size = Header::Size(places, options->maxBytes);
        if (size > kLargestQueue) return ERROR_OUTOFMEMORY;
    }
    const CProcessLock lock(lock_.get());
    if (!lock) return ERROR_BUSY;
    auto memory = std::make_unique<CSharedMemory>(id_ + L".messages", size);
    if (!*memory) return options == nullptr ? ERROR_FILE_NOT_FOUND : ERROR_OUTOFMEMORY;
    auto* header = static_cast<Header*>(memory->data());
    if (existed != nullptr) *existed = memory->existed();
    if (!memory->existed()) {
        header->options = *options;
        header->places = places;
        for (DWORD i = 0; i < places; ++i) header->Order()[i] = i;
    }
    const auto free = std::find_if(std::begin(header->ends), std::end(header->ends),
                                   [](const EndMark& mark) { return !Runs(mark.program); });
    if (free == std::end(header->ends)) return ERROR_OUTOFMEMORY;
    *free = {ThisProgram(), reads_};
    place_ = static_cast<std::size_t>(free - std::begin(header->ends));
    memory_ = std::move(memory);
    header_ = header;
    Signal();
    return ERROR_SUCCESS;
}

CQueueEnd::~CQueueEnd() {
    if (header_ == nullptr) return;
    const CProcessLock lock(lock_.get());
    header_->ends[place_] = {};  // nobody else writes there, with or without the lock
}

HANDLE CQueueEnd::NewWaitable() const {
    const HANDLE process = GetCurrentProcess();
    HANDLE made = nullptr;
    DuplicateHandle(process, reads_ ? readable_.get() : writable_.get(), process, &made, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return made;
}

// With the lock held.
void CQueueEnd::Signal() {
    const auto show = [](const OwnedHandle& event, bool set) {
        set ? SetEvent(event.get()) : ResetEvent(event.get());
    };
    show(readable_, header_->count > 0);
    show(writable_, header_->count < header_->places);
}

bool CQueueEnd::HasOther(bool reader) {
    return std::any_of(std::begin(header_->ends), std::end(header_->ends), [reader](const EndMark& mark) {
        return (mark.reads != 0) == reader && Runs(mark.program);
    });
}

DWORD CQueueEnd::TryRead(void* buffer, DWORD size, DWORD* read, DWORD* flags) {
    const CProcessLock lock(lock_.get());
    if (!lock) return ERROR_BUSY;
    if (header_->count == 0) {
        const bool whole = (header_->options.flags & kQueueAllowsBroken) != 0 || HasOther(false);
        return whole ? ERROR_TIMEOUT : ERROR_PIPE_NOT_CONNECTED;
    }
    DWORD* const order = header_->Order();
    const Place* const place = header_->At(order[0]);
    *read = std::min(place->size, size);
    std::memcpy(buffer, place + 1, *read);
    if (flags != nullptr) *flags = place->flags;
    const bool cut = place->size > size;
    if ((place->flags & kQueueAlert) != 0) --header_->alerts;
    std::rotate(order, order + 1, order + header_->count);
    --header_->count;
    Signal();
    return cut ? ERROR_INSUFFICIENT_BUFFER : ERROR_SUCCESS;
}

DWORD CQueueEnd::TryWrite(const void* data, DWORD size, DWORD flags) {
    const CProcessLock lock(lock_.get());
    if (!lock) return ERROR_BUSY;
    if (size > header_->options.maxBytes) return ERROR_INSUFFICIENT_BUFFER;
    if ((header_->options.flags & kQueueAllowsBroken) == 0 && !HasOther(true)) {
        return ERROR_PIPE_NOT_CONNECTED;
    }
    if (header_->count == header_->places) {
        return header_->options.maxMessages == 0 ? ERROR_OUTOFMEMORY : ERROR_TIMEOUT;
    }
    const bool alert = (flags & kQueueAlert) != 0;
    DWORD* const order = header_->Order();
    Place* const place = header_->At(order[header_->count]);
    *place = {size, flags & kQueueAlert};
    std::memcpy(place + 1, data, size);
    const DWORD position = alert ? header_->alerts : header_->count;
    std::rotate(order + position, order + header_->count, order + header_->count + 1);
    if (alert) ++header_->alerts;
    header_->most = std::max(header_->most, ++header_->count);
    Signal();
    return ERROR_SUCCESS;
}

// Attempts until the result is another than ERROR_TIMEOUT or the time is over.
template <typename Attempt>
DWORD CQueueEnd::Repeat(HANDLE ready, DWORD timeout_ms, Attempt attempt) {
    const ULONGLONG began = GetTickCount64();
    for (;;) {
        const DWORD result = attempt();
        if (result != ERROR_TIMEOUT) return result;
        DWORD slice_ms = kLookForOthers_ms;
        if (timeout_ms != INFINITE) {
            const ULONGLONG passed = GetTickCount64() - began;
            if (passed >= timeout_ms) return ERROR_TIMEOUT;
            slice_ms = std::min(slice_ms, static_cast<DWORD>(timeout_ms - passed));
        }
        WaitForSingleObject(ready, slice_ms);
    }
}

DWORD CQueueEnd::Read(void* buffer, DWORD size, DWORD* read, DWORD timeout_ms, DWORD* flags) {
    return Repeat(readable_.get(), timeout_ms, [&] { return TryRead(buffer, size, read, flags); });
}

DWORD CQueueEnd::Write(const void* data, DWORD size, DWORD timeout_ms, DWORD flags) {
    return Repeat(writable_.get(), timeout_ms, [&] { return TryWrite(data, size, flags); });
}

QueueCounts CQueueEnd::Counts() {
    const CProcessLock lock(lock_.get());  // without it the counts are those of a moment in between
    QueueCounts counts{header_->options, header_->count, header_->most, 0, 0};
    for (const EndMark& mark : header_->ends) {
        if (Runs(mark.program)) ++(mark.reads != 0 ? counts.readers : counts.writers);
    }
    return counts;
}

}  // namespace handset
