#include "handset/base/process_lock.h"

namespace handset {

CProcessLock::CProcessLock(const std::wstring& name, DWORD patience_ms)
    : own_(CreateMutexW(nullptr, FALSE, name.c_str())), mutex_(own_.get()) {
    Take(patience_ms);
}

CProcessLock::CProcessLock(HANDLE mutex, DWORD patience_ms) : mutex_(mutex) {
    Take(patience_ms);
}

void CProcessLock::Take(DWORD patience_ms) {
    if (mutex_ == nullptr) return;
    const DWORD result = WaitForSingleObject(mutex_, patience_ms);
    held_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

CProcessLock::~CProcessLock() {
    if (held_) ReleaseMutex(mutex_);
}

}  // namespace handset
