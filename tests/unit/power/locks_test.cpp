// What programs share is changed by one of them at a time; one that does not let go is told of, not waited
// for for ever.
#include "handset/base/process_lock.h"

#include <thread>

#include "handset/state/handset_state.h"
#include "handset/state/message_queue.h"
#include "handset/state/power_manager.h"
#include "tests/unit/power/phone_under_test.h"

namespace {

using handset::CProcessLock;

constexpr DWORD kShort_ms = 50;

class Locks : public test::PhoneTest {
  protected:
    // What a thread of its own, which stands for another program, is told.
    template <typename Call>
    static auto Elsewhere(Call call) {
        decltype(call()) result{};
        std::thread([&] { result = call(); }).join();
        return result;
    }
};

TEST_F(Locks, ALockIsHeldByOneAtATimeAndTheOtherIsTold) {
    const std::wstring name = handset::StateObjectName(L"lock of a test");
    {
        const CProcessLock lock(name);
        ASSERT_TRUE(lock);
        EXPECT_FALSE(Elsewhere([&] { return static_cast<bool>(CProcessLock(name, kShort_ms)); }));
    }
    EXPECT_TRUE(Elsewhere([&] { return static_cast<bool>(CProcessLock(name, kShort_ms)); }));
}

TEST_F(Locks, WhatCannotBeALockIsNotHeld) {
    EXPECT_FALSE(CProcessLock(static_cast<HANDLE>(nullptr)));
    const std::wstring name = handset::StateObjectName(L"no lock");
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
    EXPECT_FALSE(CProcessLock(name, kShort_ms));
    CloseHandle(event);
}

TEST_F(Locks, ALockWhoseHolderEndedInsideIsTaken) {
    const std::wstring name = handset::StateObjectName(L"abandoned lock");
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, name.c_str());
    EXPECT_EQ(Elsewhere([&] { return WaitForSingleObject(mutex, 0); }), WAIT_OBJECT_0);
    EXPECT_TRUE(CProcessLock(name, kShort_ms));
    CloseHandle(mutex);
}

TEST_F(Locks, ThePowerManagerAnswersWhileAnotherProgramKeepsItsLock) {
    const CProcessLock lock(handset::StateObjectName(L"power.lock"));
    ASSERT_TRUE(lock);
    EXPECT_EQ(Elsewhere([] { return handset::PressPowerKey(); }), static_cast<DWORD>(ERROR_BUSY));
}

TEST_F(Locks, AQueueAnswersWhileAnotherProgramKeepsItsLock) {
    const handset::QueueOptions options = {1, 4, 16};
    std::unique_ptr<handset::CQueueEnd> reader;
    ASSERT_EQ(handset::CQueueEnd::Open(L"queue.kept", true, &options, &reader),
              static_cast<DWORD>(ERROR_SUCCESS));
    const CProcessLock lock(handset::StateObjectName(L"queue.kept.lock"));
    ASSERT_TRUE(lock);
    EXPECT_EQ(Elsewhere([&] {
                  char buffer[16];
                  DWORD size = 0;
                  return reader->Read(buffer, sizeof buffer, &size, 0, nullptr);
              }),
              static_cast<DWORD>(ERROR_BUSY));
}

}  // namespace
