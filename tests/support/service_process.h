// handset.exe as the service that starts booked programs.
#pragma once

#include <windows.h>

#include "tests/support/handset_under_test.h"

namespace test {

// Writes to the same logs as the radios; killed at the end of the scope.
class ServiceProcess {
  public:
    explicit ServiceProcess(const HandsetUnderTest& handset);
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;
    void Kill();

  private:
    PROCESS_INFORMATION m_process = {};
};

}  // namespace test
