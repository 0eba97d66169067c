// Injected faults.
#include <atomic>

#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerFaults : public test::TunerTest {
  protected:
    void SetUp() override { WriteBand("[9850]\nlevel=45\n"); }
    void Inject(const wchar_t* faults) { handset::SetStateString(L"Fault", faults); }
};

TEST_F(TunerFaults, InitializeFailsAndTheDeviceStaysOff) {
    Inject(L"database-write initialize");
    device_ = test::CreateDevice();
    EXPECT_EQ(device_->Initialize(), E_FAIL);
    EXPECT_EQ(device_->SetChannel(9850), test::kNotReady);
    Inject(L"");
    EXPECT_EQ(device_->Initialize(), S_OK);
}

TEST_F(TunerFaults, CreationFailsAndLeavesNull) {
    Inject(L"create");
    HRESULT result = S_OK;
    EXPECT_EQ(test::CreateDevice(&result), nullptr);
    EXPECT_EQ(result, E_FAIL);
    EXPECT_EQ(test::CanUnloadNow()(), S_OK);
}

TEST_F(TunerFaults, EverySeekFailsAndTheChannelStays) {
    PowerUp();
    Inject(L"seek");
    EXPECT_EQ(device_->SeekNext(), E_FAIL);
    EXPECT_EQ(device_->SeekPrev(), E_FAIL);
    EXPECT_EQ(Channel(), 8750u);
    Inject(L"");
    EXPECT_EQ(device_->SeekNext(), S_OK);
}

std::atomic<int> g_violations{0};

LONG CALLBACK CountViolations(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION)
        return EXCEPTION_CONTINUE_SEARCH;
    ++g_violations;
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST_F(TunerFaults, TheSignalRaisesAnAccessViolationOnceInAProcess) {
    PowerUp();
    Inject(L"monitor");
    void* const handler = AddVectoredExceptionHandler(1, CountViolations);
    std::int32_t level = 0;
    device_->GetSignal(&level);
    EXPECT_EQ(g_violations, 1);
    EXPECT_EQ(device_->GetSignal(&level), S_OK);
    EXPECT_EQ(g_violations, 1);
    RemoveVectoredExceptionHandler(handler);
}

}  // namespace
