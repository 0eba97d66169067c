#include "tests/support/ether_under_test.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "handset/state/handset_state.h"
#include "handset/state/process_start.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/wait.h"

namespace test {

EtherUnderTest::EtherUnderTest(std::size_t buffer_bytes)
    : m_words(L"ether buffer " + std::to_wstring(buffer_bytes)) {
    Start(m_words);
    EXPECT_TRUE(WaitFor([this] {
        m_port = static_cast<std::uint16_t>(handset::StateDword(L"EtherPort", 0));
        return m_port != 0;
    })) << "the ether did not start";
    std::string said;
    // The one that runs is taken.
    EXPECT_EQ(RunProgram(L"handset.exe", L"antenna ether", &said), 0u) << said;
}

EtherUnderTest::~EtherUnderTest() {
    if (testing::Test::HasFailure() && Delays() > 0) {
        std::printf("this machine was late with the samples of the ether %u times\n",
                    static_cast<unsigned>(Delays()));
    }
    RunProgram(L"handset.exe", L"ether stop");
    Kill();
}

void EtherUnderTest::Start(const std::wstring& arguments) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    std::wstring line = L"\"" + BuildFolder() + L"\\handset.exe\" " + arguments;
    EXPECT_TRUE(handset::StartProcess(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                                      nullptr, nullptr, &startup, &m_process));
}

void EtherUnderTest::Kill() {
    if (m_process.hProcess == nullptr) return;
    TerminateProcess(m_process.hProcess, 99);
    WaitForSingleObject(m_process.hProcess, 5000);
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
    m_process = {};
}

std::uint32_t EtherUnderTest::Delays() {
    return handset::StateDword(L"EtherDelays", 0);
}

void EtherUnderTest::ComeBack() {
    Start(m_words + L" port " + std::to_wstring(m_port));
}

}  // namespace test
