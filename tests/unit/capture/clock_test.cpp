// The handset's clock, as the capture filter gives it to a graph.
#include "handset/capture/graph/class_ids.h"
#include "handset/coredll/kernel/platform_call.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/fixture.h"

namespace {

constexpr REFERENCE_TIME kMillisecond = 10'000;

class Clock : public test::CaptureTest {
  protected:
    Clock() : clock_(test::CreateAs<IReferenceClock>(capture::kClassAudioCapture, IID_IReferenceClock)) {}

    REFERENCE_TIME Now() {
        REFERENCE_TIME now = 0;
        EXPECT_EQ(clock_->GetTime(&now), S_OK);
        return now;
    }

    test::CRef<IReferenceClock> clock_;
};

TEST_F(Clock, ShowsTheHandsetsTime) {
    const auto before = static_cast<REFERENCE_TIME>(HandsetMilliseconds()) * kMillisecond;
    const REFERENCE_TIME now = Now();
    EXPECT_GE(now, before);
    EXPECT_LE(now, static_cast<REFERENCE_TIME>(HandsetMilliseconds()) * kMillisecond);
    EXPECT_EQ(clock_->GetTime(nullptr), E_POINTER);
}

TEST_F(Clock, AnAlarmComesNotBeforeItsTime) {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD_PTR cookie = 0;
    const REFERENCE_TIME base = Now();
    ASSERT_EQ(clock_->AdviseTime(base, 100 * kMillisecond, reinterpret_cast<HEVENT>(event), &cookie), S_OK);
    EXPECT_NE(cookie, 0u);
    EXPECT_EQ(WaitForSingleObject(event, test::kDeadline_ms), WAIT_OBJECT_0);
    EXPECT_GE(Now(), base + 95 * kMillisecond);
    clock_->Unadvise(cookie);
    CloseHandle(event);
}

TEST_F(Clock, ASemaphoreIsReleasedAgainAndAgain) {
    const HANDLE semaphore = CreateSemaphoreW(nullptr, 0, 100, nullptr);
    DWORD_PTR cookie = 0;
    ASSERT_EQ(
        clock_->AdvisePeriodic(Now(), 20 * kMillisecond, reinterpret_cast<HSEMAPHORE>(semaphore), &cookie),
        S_OK);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(WaitForSingleObject(semaphore, test::kDeadline_ms), WAIT_OBJECT_0);
    EXPECT_EQ(clock_->Unadvise(cookie), S_OK);
    EXPECT_EQ(clock_->Unadvise(cookie), S_FALSE);
    CloseHandle(semaphore);
}

TEST_F(Clock, AnAlarmThatIsTakenBackDoesNotCome) {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD_PTR cookie = 0;
    ASSERT_EQ(clock_->AdviseTime(Now(), 150 * kMillisecond, reinterpret_cast<HEVENT>(event), &cookie), S_OK);
    ASSERT_EQ(clock_->Unadvise(cookie), S_OK);
    EXPECT_EQ(WaitForSingleObject(event, 400), static_cast<DWORD>(WAIT_TIMEOUT));
    CloseHandle(event);
}

TEST_F(Clock, RefusesAlarmsWithoutATimeOrAnEvent) {
    DWORD_PTR cookie = 0;
    EXPECT_EQ(clock_->AdviseTime(-1, 0, 1, &cookie), E_INVALIDARG);
    EXPECT_EQ(clock_->AdviseTime(0, 0, 1, &cookie), E_INVALIDARG);
    EXPECT_EQ(clock_->AdviseTime(1, 1, 0, &cookie), E_INVALIDARG);
    EXPECT_EQ(clock_->AdviseTime(1, 1, 1, nullptr), E_POINTER);
    EXPECT_EQ(clock_->AdvisePeriodic(0, 0, 1, &cookie), E_INVALIDARG);
    EXPECT_EQ(clock_->AdvisePeriodic(0, 1, 0, &cookie), E_INVALIDARG);
}

}  // namespace
