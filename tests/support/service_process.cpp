#include "tests/support/service_process.h"

#include <gtest/gtest.h>

#include "handset/state/process_start.h"

namespace test {

ServiceProcess::ServiceProcess(const HandsetUnderTest& handset) {
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    const auto log = [&inherit](const std::wstring& path) {
        return CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                           OPEN_ALWAYS, 0, nullptr);
    };
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = log(handset.TraceFile());
    startup.hStdOutput = log(handset.ConsoleFile());
    std::wstring line = L"\"" + BuildFolder() + L"\\handset.exe\" service";
    EXPECT_TRUE(handset::StartProcess(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                      &startup, &m_process));
    CloseHandle(startup.hStdError);
    CloseHandle(startup.hStdOutput);
}

ServiceProcess::~ServiceProcess() {
    Kill();
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

void ServiceProcess::Kill() {
    TerminateProcess(m_process.hProcess, 99);
    WaitForSingleObject(m_process.hProcess, 5000);
}

}  // namespace test
