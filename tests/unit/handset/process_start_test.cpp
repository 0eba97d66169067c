// Programs whose start the host loses.
#include "handset/state/process_start.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A host that answers the starts one after the other: 0 for a start, else the error.
class Host {
  public:
    explicit Host(std::vector<DWORD> errors) : m_errors(std::move(errors)) {}
    BOOL Start() {
        return handset::StartAgainWhenLost([this] { return Answer(); });
    }
    std::size_t Asked() const { return m_asked; }

  private:
    BOOL Answer() {
        const DWORD error = m_errors.at(m_asked++);
        if (error != 0) SetLastError(error);
        return error == 0;
    }

    std::vector<DWORD> m_errors;
    std::size_t m_asked = 0;
};

TEST(ProcessStart, AStartThatTheHostLosesIsMadeAgain) {
    Host host({ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR, 0, 0});
    EXPECT_TRUE(host.Start());
    EXPECT_EQ(host.Asked(), 3u);
}

TEST(ProcessStart, AStartThatSucceedsIsMadeOnce) {
    Host host({0, 0});
    EXPECT_TRUE(host.Start());
    EXPECT_EQ(host.Asked(), 1u);
}

TEST(ProcessStart, AProgramThatCannotBeStartedIsNotTriedAgain) {
    Host host({ERROR_FILE_NOT_FOUND, 0});
    EXPECT_FALSE(host.Start());
    EXPECT_EQ(host.Asked(), 1u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST(ProcessStart, AfterThreeLostStartsTheErrorIsGiven) {
    Host host({ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR, 0});
    EXPECT_FALSE(host.Start());
    EXPECT_EQ(host.Asked(), 3u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNAL_ERROR));
}

}  // namespace
