// The structured exception guard in the phone's program. The emulation has no system that unwinds; what that
// system reads is looked at, and its last step, going on behind the guard, is made by hand.
#include <gmock/gmock.h>

#include "tests/device/phone.h"

namespace {

using device::Phone;
using device::UnwindRow;

constexpr std::uint32_t kAction = 0x900;  // a trap: the guarded function

// The words before a guarded function, and the one row of its scope table (four addresses).
struct Guard {
    std::uint32_t function = 0, handler = 0, begin = 0, end = 0, filter = 0, raised = 0, rows = 0;
};

class GuardOnAPhone : public ::testing::Test {
  protected:
    Phone phone{KORA_DEVICE_PROGRAM};

    Guard Read() {
        Guard guard;
        for (const UnwindRow& row : phone.Program().functions) {
            if (!row.handler) continue;
            EXPECT_EQ(guard.function, 0u) << "one function is guarded";
            guard.function = row.begin;
        }
        if (guard.function == 0) return guard;
        device::Machine& cpu = phone.Cpu();
        guard.handler = cpu.Read32(guard.function - 8);
        const std::uint32_t scope = cpu.Read32(guard.function - 4);
        guard.rows = cpu.Read32(scope);
        guard.begin = cpu.Read32(scope + 4);
        guard.end = cpu.Read32(scope + 8);
        guard.filter = cpu.Read32(scope + 12);
        guard.raised = cpu.Read32(scope + 16);
        return guard;
    }
};

TEST_F(GuardOnAPhone, ItsRowSaysThatItHasAHandlerAndTheHandlerIsTheSystems) {
    const Guard guard = Read();
    ASSERT_NE(guard.function, 0u);
    std::vector<std::string> called;
    phone.otherTraps = nullptr;
    EXPECT_THROW(phone.Cpu().Call(guard.handler, {}), std::runtime_error);
    EXPECT_THAT(phone.calls, ::testing::ElementsAre("__C_specific_handler"));
}

TEST_F(GuardOnAPhone, ItsScopeCoversTheCallAndNothingOfAnotherFunction) {
    const Guard guard = Read();
    EXPECT_EQ(guard.rows, 1u);
    EXPECT_GT(guard.begin, guard.function);
    EXPECT_GT(guard.end, guard.begin);
    EXPECT_LE(guard.end, guard.raised);
    EXPECT_LT(guard.raised, guard.function + 64);
}

TEST_F(GuardOnAPhone, ItsFilterTakesEveryException) {
    EXPECT_EQ(phone.Cpu().Call(Read().filter, {}), 1u);
}

TEST_F(GuardOnAPhone, WithoutAFaultItSaysSoAndHandsTheArgumentOn) {
    std::uint32_t got = 0;
    phone.otherTraps = [&](Phone& p, std::uint32_t) { return got = p.Argument(0); };
    EXPECT_EQ(phone.Cpu().Call(Read().function, {device::Machine::TrapAddress(kAction), 0x1234}), 1u);
    EXPECT_EQ(got, 0x1234u);
}

TEST_F(GuardOnAPhone, AfterAFaultItGoesOnBehindTheCallAndSaysSo) {
    const Guard guard = Read();
    // The system unwinds to the guard's own frame: its stack pointer is the one at the call.
    phone.otherTraps = [&](Phone& p, std::uint32_t) {
        p.Cpu().GoOnAt(guard.raised, p.Cpu().StackPointer());
        return 77U;
    };
    EXPECT_EQ(phone.Cpu().Call(guard.function, {device::Machine::TrapAddress(kAction), 0}), 0u);
}

}  // namespace
