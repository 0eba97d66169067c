#include "handset/state/stored_value.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "handset/base/owned.h"
#include "handset/base/registry_watch.h"
#include "handset/state/handset_state.h"
#include "handset/state/write_count.h"

namespace handset {
namespace {

// More than a handset has; a program that asks for ever new names begins anew.
constexpr std::size_t kMostKept = 500;
// To ask the host whether anything was written costs as much as painting a small text.
constexpr std::chrono::milliseconds kUncountedIsSeen(2);

class CKeptValues {
  public:
    enum class Look { kAlways, kWhenDue };

    std::optional<RegistryValue> Get(const std::wstring& stateKey, const std::wstring& path,
                                     const wchar_t* name, Look look) {
        std::wstring place = path;
        // No key's name holds this character, so no two places are spelt alike.
        place += L'\0';
        if (name != nullptr) place += name;

        const std::lock_guard<std::mutex> lock(lock_);
        if (!watch_ || watched_ != stateKey) {
            watched_.clear();
            writes_.emplace();
            lookedAt_.reset();
            watch_ = std::make_unique<CRegistryWatch>(stateKey, CRegistryWatch::Depth::kTree,
                                                      CRegistryWatch::Missing::kLeft);
            watched_ = stateKey;
        }
        // Watched first and read then: what changes in between is told by the next look.
        const bool looks = look == Look::kAlways || IsDue();
        if ((looks && HasChanged()) || values_.size() >= kMostKept) values_.clear();
        auto found = values_.find(place);
        if (found == values_.end())
            found = values_.emplace(place, ReadRegistryValue(HKEY_CURRENT_USER, path, name)).first;
        return found->second;
    }

  private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool IsDue() const {
        return !lookedAt_ || !*writes_ || !writes_->Holds(writesEnded_) ||
               Clock::now() - *lookedAt_ >= kUncountedIsSeen;
    }
    bool HasChanged() {
        writesEnded_ = *writes_ ? writes_->Ended() : 0;
        lookedAt_ = Clock::now();
        return !watch_->Unchanged();
    }

    std::mutex lock_;  // guards all of the following
    std::wstring watched_;
    std::optional<CWriteCount> writes_;
    std::uint64_t writesEnded_ = 0;              // before the last look
    std::optional<Clock::time_point> lookedAt_;  // none: not since the watch began
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
    return KeptValues().Get(StateKeyPath(), path, name, CKeptValues::Look::kAlways);
}

std::optional<RegistryValue> ReadStateValue(const wchar_t* name) {
    const CKeptLastError kept;
    const std::wstring stateKey = StateKeyPath();
    return KeptValues().Get(stateKey, stateKey, name, CKeptValues::Look::kAlways);
}

std::optional<RegistryValue> ReadCountedValue(const wchar_t* name) {
    const CKeptLastError kept;
    const std::wstring stateKey = StateKeyPath();
    return KeptValues().Get(stateKey, stateKey, name, CKeptValues::Look::kWhenDue);
}

}  // namespace handset
