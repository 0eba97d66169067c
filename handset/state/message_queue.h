// A message queue between the programs of one handset, in memory that they share: what COREDLL's calls and
// the power manager stand on. Host code only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "handset/state/shared_memory.h"

namespace handset {

inline constexpr DWORD kQueueAllowsBroken = 2;  // MSGQUEUE_ALLOW_BROKEN
inline constexpr DWORD kQueueAlert = 1;         // MSGQUEUE_MSGALERT
// Device differs: a queue without a limit holds this many messages, or as many as this memory does.
inline constexpr DWORD kUnlimitedMessages = 4096;
inline constexpr std::size_t kUnlimitedBytes = 1 << 20;
inline constexpr std::size_t kLargestQueue = 16 << 20;  // bytes

struct QueueOptions {
    DWORD flags;
    DWORD maxMessages;  // 0 = no limit
    DWORD maxBytes;     // a message
};
struct QueueCounts {
    QueueOptions options;
    DWORD messages;
    DWORD mostMessages;  // that were in it at once
    WORD readers;
    WORD writers;
};

// One end of a queue, for reading or for writing. Results are Windows error codes, as msgqueue.h gives them.
// Any thread.
class CQueueEnd {
  public:
    // An end of the queue `id`. With options the queue is made when it is missing; null with
    // ERROR_OUTOFMEMORY when the queue is too large or has no room for another end, with ERROR_FILE_NOT_FOUND
    // when there is none and none is to be made. `*existed`, when asked for: it was there before.
    static DWORD Open(const std::wstring& id, bool reads, const QueueOptions* options,
                      std::unique_ptr<CQueueEnd>* end, bool* existed = nullptr);
    ~CQueueEnd();
    CQueueEnd(const CQueueEnd&) = delete;
    CQueueEnd& operator=(const CQueueEnd&) = delete;

    const std::wstring& id() const { return id_; }
    bool reads() const { return reads_; }
    // A handle of the caller's own, signalled while there is a message to read, or room for one to write.
    HANDLE NewWaitable() const;

    // Time-outs in real milliseconds.
    DWORD Read(void* buffer, DWORD size, DWORD* read, DWORD timeout_ms, DWORD* flags);
    DWORD Write(const void* data, DWORD size, DWORD timeout_ms, DWORD flags);
    QueueCounts Counts();

  private:
    struct Header;
    CQueueEnd(const std::wstring& id, bool reads);
    DWORD Join(const QueueOptions* options, bool* existed);
    DWORD TryRead(void* buffer, DWORD size, DWORD* read, DWORD* flags);
    DWORD TryWrite(const void* data, DWORD size, DWORD flags);
    template <typename Attempt>
    DWORD Repeat(HANDLE ready, DWORD timeout_ms, Attempt attempt);
    bool HasOther(bool reader);
    void Signal();

    std::wstring id_;
    bool reads_;
    OwnedHandle lock_;
    OwnedHandle readable_;
    OwnedHandle writable_;
    std::unique_ptr<CSharedMemory> memory_;
    Header* header_ = nullptr;
    std::size_t place_ = 0;  // in the table of ends
};

}  // namespace handset
