// Memory that a DLL of the handset does not get: one of its allocations on the calling thread fails. (All of
// them cannot: the runtime takes memory to throw.)
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace test {

// What of a module's allocations fails: one of them, or all from it on. Counted on the calling thread, from
// 0.
enum class Shortage { Passing, Lasting };

// For the length of a scope, on one thread at a time.
class FailingMemory {
  public:
    // `number`: which allocation of the module, from 0.
    FailingMemory(const wchar_t* module, std::size_t number);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    // Whether it has failed.
    bool Struck() const;
};

// What a call has answered.
struct Answer {
    bool succeeded;
    DWORD error;  // how it failed
};

// Makes the call again and again, each time with a later allocation of the module failing, until it needs no
// more of them: no exception comes out, and it either succeeds or fails with `error`. At least one attempt
// fails. `call` begins anew each time, and gives back what it got.
template <typename Call>
void ExpectFailureForWantOfMemory(const wchar_t* module, DWORD error, Call call) {
    constexpr std::size_t kMost = 5000;
    std::size_t failures = 0;
    for (std::size_t number = 0;; ++number) {
        ASSERT_LT(number, kMost);
        Answer answer{};
        bool struck = false;
        try {
            const FailingMemory failing(module, number);
            answer = call();
            struck = failing.Struck();
        } catch (...) {
            FAIL() << "an exception came out when allocation " << number << " failed";
        }
        if (!struck) {
            EXPECT_TRUE(answer.succeeded) << "with all its memory: error " << answer.error;
            break;
        }
        if (answer.succeeded) continue;
        ++failures;
        ASSERT_EQ(answer.error, error) << "when allocation " << number << " failed";
    }
    EXPECT_GT(failures, 0u);
}

// The answer of a call that sets the last error.
template <typename Call>
Answer LastErrorOf(Call call) {
    SetLastError(ERROR_SUCCESS);
    const bool succeeded = call();
    return {succeeded, succeeded ? ERROR_SUCCESS : GetLastError()};
}

}  // namespace test
