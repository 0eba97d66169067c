// The keys of the computer, before any window gets them: the panel never has the focus, so it would not hear
// of them otherwise.
#pragma once

#include <windows.h>

#include <atomic>
#include <bitset>
#include <thread>

#include "handset/base/owned.h"

namespace panel {

struct ComputerKey {
    WORD virtualKey;  // below 256
    bool down;
    bool shift, control;
    bool other;  // Alt or the system's own key is held
};

// There is one to a process. The host asks a thread of its own for each key, for all windows wait for the
// answer and the panel may be drawing; a system that lets nobody watch leaves the keys to the windows.
class CKeyboardWatch {
  public:
    // `taken` answers at once whether a key is to be kept from the windows, on that thread.
    using Taken = bool (*)(const ComputerKey& key, void* of);
    CKeyboardWatch(Taken taken, void* of);
    ~CKeyboardWatch();
    CKeyboardWatch(const CKeyboardWatch&) = delete;
    CKeyboardWatch& operator=(const CKeyboardWatch&) = delete;

  private:
    static LRESULT CALLBACK KeyProc(int code, WPARAM message, LPARAM lParam);
    bool Take(const KBDLLHOOKSTRUCT& key, bool down);
    void Watch();

    const Taken taken_;
    void* const of_;
    std::bitset<256> held_;  // of the keys that change others; the watching thread's
    std::atomic<bool> ends_ = false;
    std::atomic<DWORD> threadId_ = 0;
    handset::OwnedHandle watches_;  // an event: the thread can be told to end
    std::thread thread_;
};

}  // namespace panel
