#include "handset/state/state_changes.h"

#include <memory>
#include <mutex>

#include "handset/base/owned.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

class CToldChanges {
  public:
    void Add() {
        const std::wstring stateKey = StateKeyPath();
        const std::lock_guard<std::mutex> lock(lock_);
        if (!changes_ || stateKey_ != stateKey) {
            changes_ = std::make_unique<CStateChanges>();
            stateKey_ = stateKey;
        }
        if (*changes_) changes_->Add();
    }

  private:
    std::mutex lock_;  // guards all of the following
    std::wstring stateKey_;
    std::unique_ptr<CStateChanges> changes_;
};

}  // namespace

CStateChanges::CStateChanges() : memory_(L"Changes", sizeof(Counter)) {}

void TellOfStateChange() noexcept try {
    // Never destroyed: threads still write while the process ends.
    static auto* const told = new CToldChanges;
    const CKeptLastError kept;
    told->Add();
} catch (...) {
    // Without memory nobody is told; whoever keeps values looks without it before long.
    return;
}

}  // namespace handset
