// Conditions of registry notifications.
#include <gtest/gtest.h>

#include <cwchar>

#include "tests/unit/aygshell/registry_notify_fixture.h"

namespace {

using RegistryCondition = RegistryNotify;

struct ConditionRow {
    REGISTRYCOMPARISONTYPE comparison;
    DWORD mask;
    DWORD target;
    DWORD value;  // written over 0x100
    bool reported;
};

TEST_F(RegistryCondition, ReportsANumberOnlyWhenTheConditionHolds) {
    // clang-format off
    const ConditionRow rows[] = {
        {REG_CT_EQUAL,            0xFFFFFFFF, 5,      5,          true},
        {REG_CT_EQUAL,            0xFFFFFFFF, 5,      6,          false},
        {REG_CT_EQUAL,            0x0000FFFF, 5,      0x70005,    true},
        {REG_CT_NOT_EQUAL,        0xFFFFFFFF, 5,      6,          true},
        {REG_CT_NOT_EQUAL,        0xFFFFFFFF, 5,      5,          false},
        {REG_CT_GREATER,          0xFFFFFFFF, 5,      6,          true},
        {REG_CT_GREATER,          0xFFFFFFFF, 5,      5,          false},
        {REG_CT_GREATER,          0xFFFFFFFF, 5,      0xFFFFFFFF, true},  // unsigned
        {REG_CT_GREATER_OR_EQUAL, 0xFFFFFFFF, 5,      5,          true},
        {REG_CT_GREATER_OR_EQUAL, 0xFFFFFFFF, 5,      4,          false},
        {REG_CT_LESS,             0xFFFFFFFF, 5,      4,          true},
        {REG_CT_LESS,             0xFFFFFFFF, 5,      5,          false},
        {REG_CT_LESS_OR_EQUAL,    0xFFFFFFFF, 5,      5,          true},
        {REG_CT_LESS_OR_EQUAL,    0xFFFFFFFF, 5,      6,          false},
        {REG_CT_ANYCHANGE,        0xFFFFFFFF, 0,      6,          true},
        {REG_CT_ANYCHANGE,        0x00000100, 0,      0x101,      false},  // the masked bit stayed
        {REG_CT_ANYCHANGE,        0x00000100, 0,      0x001,      true},
        {REG_CT_ANYCHANGE,        0,          0,      0x101,      true},   // no mask
        {REG_CT_STARTS_WITH,      0,          0,      6,          false},  // a number is no text
    };
    // clang-format on
    for (const ConditionRow& row : rows) {
        SCOPED_TRACE(testing::Message() << row.comparison << " mask " << row.mask << " value " << row.value);
        Set(0x100);
        NOTIFICATIONCONDITION condition = {};
        condition.ctComparisonType = row.comparison;
        condition.dwMask = row.mask;
        condition.TargetValue.dw = row.target;
        if (row.comparison == REG_CT_STARTS_WITH) condition.TargetValue.psz = L"6";
        Watch(&condition);
        Set(row.value);
        EXPECT_EQ(Reported(), row.reported ? Numbers{row.value} : Numbers{});
        EXPECT_EQ(RegistryCloseNotification(m_notify), S_OK);
        m_notify = nullptr;
    }
}

TEST_F(RegistryCondition, ReportsATextOnlyWhenTheConditionHolds) {
    struct Row {
        REGISTRYCOMPARISONTYPE comparison;
        const wchar_t* text;
        bool reported;
    };
    const Row rows[] = {
        {REG_CT_CONTAINS, L"one two three", true}, {REG_CT_CONTAINS, L"one three", false},
        {REG_CT_STARTS_WITH, L"two three", true},  {REG_CT_STARTS_WITH, L"one two", false},
        {REG_CT_ENDS_WITH, L"one two", true},      {REG_CT_ENDS_WITH, L"two one", false},
        {REG_CT_ENDS_WITH, L"o", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.comparison << ' ' << std::string(row.text, row.text + wcslen(row.text)));
        RegistrySetString(HKEY_LOCAL_MACHINE, kKey, kValue, L"before");
        wchar_t target[] = L"two";
        NOTIFICATIONCONDITION condition = {};
        condition.ctComparisonType = row.comparison;
        condition.TargetValue.psz = target;
        Watch(&condition);
        // The condition is the caller's again.
        target[0] = L'?';
        RegistrySetString(HKEY_LOCAL_MACHINE, kKey, kValue, row.text);
        EXPECT_EQ(Reported(), row.reported ? Numbers{0} : Numbers{});
        EXPECT_EQ(RegistryCloseNotification(m_notify), S_OK);
        m_notify = nullptr;
    }
}

}  // namespace
