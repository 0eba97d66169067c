// When a change of a registry value is to be reported.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "handset/base/registry_value.h"
#include "handset/include/regext.h"

namespace handset {

class CNotifyCondition {
  public:
    // Reports every change.
    CNotifyCondition() = default;
    // Keeps a copy of what `condition` points to.
    explicit CNotifyCondition(const NOTIFICATIONCONDITION& condition);

    // False for an unknown comparison, or one of texts without a text to compare with.
    static bool IsValid(const NOTIFICATIONCONDITION& condition);

    // True when the step from one stored value to the next (nothing = not there) is to be reported.
    bool Reports(const std::optional<RegistryValue>& before, const std::optional<RegistryValue>& after) const;

  private:
    DWORD Masked(DWORD number) const { return number & mask_; }
    bool Holds(const RegistryValue& value) const;

    REGISTRYCOMPARISONTYPE type_ = REG_CT_ANYCHANGE;
    DWORD mask_ = 0xFFFFFFFF;
    DWORD number_ = 0;
    std::wstring text_;
};

}  // namespace handset
