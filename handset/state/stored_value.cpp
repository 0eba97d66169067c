#include "handset/state/stored_value.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "handset/base/owned.h"
#include "handset/base/registry_watch.h"
#include "handset/state/handset_state.h"
#include "handset/state/state_changes.h"

namespace handset {
namespace {

// More than a handset has; a program that asks for ever new names begins anew.
constexpr std::size_t kMostKept = 500;
// The handset's programs count what they write. Others do not, and to ask the host whether they did costs as
// much as painting a small text.
constexpr std::chrono::milliseconds kLookPeriod(2);

class CKeptValues {
  public:
    std::optional<RegistryValue> Get(const std::wstring& stateKey, const std::wstring& path,
                                     const wchar_t* name) {
        std::wstring place = path;
        // No key's name holds this character, so no two places are spelt alike.
        place += L'\0';
        if (name != nullptr) place += name;

        const std::lock_guard<std::mutex> lock(lock_);
        if (!watch_ || watched_ != stateKey) {
            watched_.clear();
            changes_ = std::make_unique<CStateChanges>();
            watch_ = std::make_unique<CRegistryWatch>(stateKey, CRegistryWatch::Depth::kTree,
                                                      CRegistryWatch::Missing::kLeft);
            watched_ = stateKey;
            looked_.reset();
        }
        // Watched first and read then: what changes in between is told by the next look.
        if ((LookIsDue() && !watch_->Unchanged()) || values_.size() >= kMostKept) values_.clear();
        auto found = values_.find(place);
        if (found == values_.end())
            found = values_.emplace(place, ReadRegistryValue(HKEY_CURRENT_USER, path, name)).first;
        return found->second;
    }

  private:
    using Clock = std::chrono::steady_clock;

    bool LookIsDue() {
        const std::uint64_t count = *changes_ ? changes_->Count() : 0;
        const Clock::time_point now = Clock::now();
        if (looked_ && *changes_ && count == counted_ && now - *looked_ < kLookPeriod) return false;
        counted_ = count;
        looked_ = now;
        return true;
    }

    std::mutex lock_;  // guards all of the following
    std::wstring watched_;
    std::unique_ptr<CStateChanges> changes_;
    std::uint64_t counted_ = 0;                // at the last look
    std::optional<Clock::time_point> looked_;  // none: not since the watch began
    std::unique_ptr<CRegistryWatch> watch_;
    std::unordered_map<std::wstring, std::optional<RegistryValue>> values_;
};

// Never destroyed: threads still ask while the process ends.
CKeptValues& KeptValues() {
    static auto* const values = new CKeptValues;
    return *values;
}

}  // namespace

std::optional<RegistryValue> ReadStoredValue(const std::wstring& path, const wchar_t* name) {
    const CKeptLastError kept;
    return KeptValues().Get(StateKeyPath(), path, name);
}

std::optional<RegistryValue> ReadStateValue(const wchar_t* name) {
    const CKeptLastError kept;
    const std::wstring stateKey = StateKeyPath();
    return KeptValues().Get(stateKey, stateKey, name);
}

}  // namespace handset
