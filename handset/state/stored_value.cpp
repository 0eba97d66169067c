#include "handset/state/stored_value.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "handset/state/handset_state.h"
#include "handset/state/state_watch.h"

namespace handset {
namespace {

// More than a handset has; a program that asks for ever new names begins anew.
constexpr std::size_t kMostKept = 500;

std::optional<StoredValue> ReadFromHost(const std::wstring& path, const wchar_t* name) {
    StoredValue value;
    // Nearly every value fits at the first try.
    value.data.resize(256);
    for (;;) {
        auto size = static_cast<DWORD>(value.data.size());
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name, RRF_RT_ANY | RRF_NOEXPAND,
                                            &value.type, value.data.data(), &size);
        if (status == ERROR_MORE_DATA) {
            value.data.resize(std::max<std::size_t>(size, 2 * value.data.size()));
            continue;
        }
        if (status != ERROR_SUCCESS) return std::nullopt;
        value.data.resize(size);
        return value;
    }
}

class KeptValues {
  public:
    std::optional<StoredValue> Get(const std::wstring& path, const wchar_t* name) {
        const std::wstring stateKey = StateKeyPath();
        std::wstring place = path;
        // No key's name holds this character, so no two places are spelt alike.
        place += L'\0';
        if (name != nullptr) place += name;

        const std::lock_guard<std::mutex> lock(lock_);
        if (!watch_ || watched_ != stateKey) {
            watched_.clear();
            watch_ = std::make_unique<StateWatch>(stateKey);
            watched_ = stateKey;
        }
        // Watched first and read then: what changes in between is told by the next look.
        if (!watch_->Unchanged() || values_.size() >= kMostKept) values_.clear();
        auto found = values_.find(place);
        if (found == values_.end()) found = values_.emplace(place, ReadFromHost(path, name)).first;
        return found->second;
    }

  private:
    std::mutex lock_;  // guards all of the following
    std::wstring watched_;
    std::unique_ptr<StateWatch> watch_;
    std::unordered_map<std::wstring, std::optional<StoredValue>> values_;
};

}  // namespace

std::optional<StoredValue> ReadStoredValue(const std::wstring& path, const wchar_t* name) {
    // Never destroyed: threads still ask while the process ends.
    static auto* const values = new KeptValues;
    const DWORD error = GetLastError();
    std::optional<StoredValue> value = values->Get(path, name);
    SetLastError(error);
    return value;
}

}  // namespace handset
