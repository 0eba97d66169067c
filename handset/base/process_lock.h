// A lock between the programs of one handset. Host code only.
#pragma once

#include <windows.h>

#include <string>

#include "handset/base/owned.h"

namespace handset {

// A mutex of the system's, held for the length of a scope. One that another program does not give back is not
// waited for for ever: whoever takes the lock asks whether it has it, and answers for itself when it has not.
// What a program that ended inside has left behind is taken as it is.
class CProcessLock {
  public:
    static constexpr DWORD kPatience_ms = 10000;

    // The mutex of that name, made when it is missing.
    explicit CProcessLock(const std::wstring& name, DWORD patience_ms = kPatience_ms);
    // One that somebody else keeps open.
    explicit CProcessLock(HANDLE mutex, DWORD patience_ms = kPatience_ms);
    ~CProcessLock();
    CProcessLock(const CProcessLock&) = delete;
    CProcessLock& operator=(const CProcessLock&) = delete;

    explicit operator bool() const { return held_; }

  private:
    void Take(DWORD patience_ms);

    OwnedHandle own_;
    HANDLE mutex_;
    bool held_ = false;
};

}  // namespace handset
