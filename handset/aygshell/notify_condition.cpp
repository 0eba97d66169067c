// Conditions of registry notifications.
#include "handset/aygshell/notify_condition.h"

namespace handset {
namespace {

bool ComparesTexts(REGISTRYCOMPARISONTYPE type) {
    return type == REG_CT_CONTAINS || type == REG_CT_STARTS_WITH || type == REG_CT_ENDS_WITH;
}

bool NumberHolds(REGISTRYCOMPARISONTYPE type, DWORD value, DWORD target) {
    switch (type) {
        case REG_CT_EQUAL:
            return value == target;
        case REG_CT_NOT_EQUAL:
            return value != target;
        case REG_CT_GREATER:
            return value > target;
        case REG_CT_GREATER_OR_EQUAL:
            return value >= target;
        case REG_CT_LESS:
            return value < target;
        case REG_CT_LESS_OR_EQUAL:
            return value <= target;
        case REG_CT_ANYCHANGE:
            return true;
        case REG_CT_CONTAINS:
        case REG_CT_STARTS_WITH:
        case REG_CT_ENDS_WITH:
            break;
    }
    return false;
}

bool TextHolds(REGISTRYCOMPARISONTYPE type, const std::wstring& value, const std::wstring& target) {
    if (type == REG_CT_CONTAINS) return value.find(target) != std::wstring::npos;
    if (value.size() < target.size()) return false;
    const std::size_t offset = type == REG_CT_STARTS_WITH ? 0 : value.size() - target.size();
    return value.compare(offset, target.size(), target) == 0;
}

}  // namespace

CNotifyCondition::CNotifyCondition(const NOTIFICATIONCONDITION& condition)
    : type_(condition.ctComparisonType) {
    if (ComparesTexts(type_)) {
        text_ = condition.TargetValue.psz;
        return;
    }
    // A mask of 0 would leave nothing to compare: it means the whole value.
    if (condition.dwMask != 0) mask_ = condition.dwMask;
    number_ = condition.TargetValue.dw;
}

bool CNotifyCondition::IsValid(const NOTIFICATIONCONDITION& condition) {
    const auto type = static_cast<unsigned>(condition.ctComparisonType);
    if (type > REG_CT_ANYCHANGE) return false;
    return !ComparesTexts(condition.ctComparisonType) || condition.TargetValue.psz != nullptr;
}

bool CNotifyCondition::Holds(const RegistryValue& value) const {
    if (type_ == REG_CT_ANYCHANGE) return true;
    if (ComparesTexts(type_)) {
        const auto text = AsText(value);
        return text && TextHolds(type_, *text, text_);
    }
    const auto number = AsDword(value);
    return number && NumberHolds(type_, Masked(*number), Masked(number_));
}

bool CNotifyCondition::Reports(const std::optional<RegistryValue>& before,
                               const std::optional<RegistryValue>& after) const {
    if (before == after) return false;
    if (before && after) {
        const auto was = AsDword(*before);
        const auto is = AsDword(*after);
        // Bits outside the mask are nobody's business.
        if (was && is && Masked(*was) == Masked(*is)) return false;
    }
    return after ? Holds(*after) : type_ == REG_CT_ANYCHANGE;
}

}  // namespace handset
