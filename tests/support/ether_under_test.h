// The simulated ether as the antenna of a handset under test, and as something that fails.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace test {

class EtherUnderTest {
  public:
    // With small buffers a retune is heard at once, also where the machine has other things to do; a stick's
    // server has larger ones.
    static constexpr std::size_t kSmallBuffer_bytes = 32768, kSticksBuffer_bytes = 262144;
    // Chooses it as the antenna of the handset that this process's environment names.
    explicit EtherUnderTest(std::size_t buffer_bytes = kSmallBuffer_bytes);
    ~EtherUnderTest();
    EtherUnderTest(const EtherUnderTest&) = delete;
    EtherUnderTest& operator=(const EtherUnderTest&) = delete;

    // Its process is gone at once, without a word.
    void Kill();
    // It comes back where it was.
    void ComeBack();
    // How often this machine was late with its samples so far; in a moment, what it was late with just now.
    [[nodiscard]] static std::uint32_t Delays();

  private:
    void Start(const std::wstring& arguments);

    const std::wstring m_words;  // by which it is started
    std::uint16_t m_port = 0;
    PROCESS_INFORMATION m_process = {};
};

}  // namespace test
