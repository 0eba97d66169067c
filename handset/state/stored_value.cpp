#include "handset/state/stored_value.h"

#include <memory>
#include <mutex>
#include <unordered_map>

#include "handset/base/owned.h"
#include "handset/base/registry_watch.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

// More than a handset has; a program that asks for ever new names begins anew.
constexpr std::size_t kMostKept = 500;

class CKeptValues {
  public:
    std::optional<RegistryValue> Get(const std::wstring& path, const wchar_t* name) {
        const std::wstring stateKey = StateKeyPath();
        std::wstring place = path;
        // No key's name holds this character, so no two places are spelt alike.
        place += L'\0';
        if (name != nullptr) place += name;

        const std::lock_guard<std::mutex> lock(lock_);
        if (!watch_ || watched_ != stateKey) {
            watched_.clear();
            watch_ = std::make_unique<CRegistryWatch>(stateKey, CRegistryWatch::Depth::kTree,
                                                      CRegistryWatch::Missing::kLeft);
            watched_ = stateKey;
        }
        // Watched first and read then: what changes in between is told by the next look.
        if (!watch_->Unchanged() || values_.size() >= kMostKept) values_.clear();
        auto found = values_.find(place);
        if (found == values_.end())
            found = values_.emplace(place, ReadRegistryValue(HKEY_CURRENT_USER, path, name)).first;
        return found->second;
    }

  private:
    std::mutex lock_;  // guards all of the following
    std::wstring watched_;
    std::unique_ptr<CRegistryWatch> watch_;
    std::unordered_map<std::wstring, std::optional<RegistryValue>> values_;
};

}  // namespace

std::optional<RegistryValue> ReadStoredValue(const std::wstring& path, const wchar_t* name) {
    // Never destroyed: threads still ask while the process ends.
    static auto* const values = new CKeptValues;
    const CKeptLastError kept;
    return values->Get(path, name);
}

}  // namespace handset
