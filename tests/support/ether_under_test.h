// The simulated ether as the antenna of a handset under test, and as something that fails.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace test {

class EtherUnderTest {
  public:
    // Chooses it as the antenna of the handset that this process's environment names.
    EtherUnderTest();
    ~EtherUnderTest();
    EtherUnderTest(const EtherUnderTest&) = delete;
    EtherUnderTest& operator=(const EtherUnderTest&) = delete;

    // Its process is gone at once, without a word.
    void Kill();
    // It comes back where it was.
    void ComeBack();

  private:
    void Start(const std::wstring& arguments);

    std::uint16_t m_port = 0;
    PROCESS_INFORMATION m_process = {};
};

}  // namespace test
