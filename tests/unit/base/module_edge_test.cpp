// What the edge of a module answers, and the threads that begin at one.
#include "handset/base/module_edge.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {

struct Answers {
    DWORD code, lastError;
    HRESULT result;
    BOOL failure;
};

template <typename Thrown>
Answers AnswersTo(Thrown thrown) try {
    throw thrown;
} catch (...) {
    Answers answers{};
    answers.code = handset::EdgeError();
    answers.result = handset::EdgeResult();
    SetLastError(ERROR_SUCCESS);
    answers.failure = handset::EdgeAnswer(FALSE);
    answers.lastError = GetLastError();
    return answers;
}

TEST(ModuleEdge, WantOfMemoryIsAnErrorOfItsOwn) {
    for (const Answers& answers :
         {AnswersTo(std::bad_alloc()), AnswersTo(std::length_error("too long")),
          AnswersTo(std::system_error(std::make_error_code(std::errc::not_enough_memory)))}) {
        EXPECT_EQ(answers.code, static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY));
        EXPECT_EQ(answers.lastError, static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY));
        EXPECT_EQ(answers.result, E_OUTOFMEMORY);
        EXPECT_EQ(answers.failure, FALSE);
    }
}

TEST(ModuleEdge, AnythingElseIsAGeneralFailure) {
    for (const Answers& answers : {AnswersTo(std::runtime_error("odd")), AnswersTo(7)}) {
        EXPECT_EQ(answers.code, static_cast<DWORD>(ERROR_GEN_FAILURE));
        EXPECT_EQ(answers.lastError, static_cast<DWORD>(ERROR_GEN_FAILURE));
        EXPECT_EQ(answers.result, E_UNEXPECTED);
    }
}

int Failing(int failure) try { throw std::string("what"); } catch (...) {
    return failure == 0 ? handset::EdgeAnswer<int>() : handset::EdgeAnswer(failure);
}

TEST(ModuleEdge, AnswersWhatTheCallAnswersWhenItFails) {
    EXPECT_EQ(Failing(0), 0);
    EXPECT_EQ(Failing(-1), -1);
}

TEST(WorkerThread, WorkThatThrowsIsBegunAgainUntilItReturns) {
    std::atomic<int> begun{0};
    handset::WorkerThread(
        [&] {
            if (++begun < 3) throw std::bad_alloc();
        },
        [] { return true; })
        .join();
    EXPECT_EQ(begun, 3);
}

TEST(WorkerThread, WorkThatNobodyWantsAnyMoreIsNotBegunAgain) {
    std::atomic<int> begun{0};
    handset::WorkerThread(
        [&] {
            ++begun;
            throw 1;
        },
        [&] { return begun < 2; })
        .join();
    EXPECT_EQ(begun, 2);
}

}  // namespace
