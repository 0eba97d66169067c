// A client of a receiver stick's server, as far as tests need one.
#pragma once

#include <winsock2.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace test {

class StickClient {
  public:
    StickClient();
    ~StickClient();
    StickClient(const StickClient&) = delete;
    StickClient& operator=(const StickClient&) = delete;

    bool Connect(std::uint16_t port);
    bool Send(std::uint8_t command, std::uint32_t argument) const;
    // Exactly so many bytes; fewer when the server goes or nothing comes for that long.
    std::vector<std::uint8_t> Read(std::size_t count, unsigned patience_ms = 5000) const;
    void Close();

  private:
    SOCKET m_socket = INVALID_SOCKET;
};

}  // namespace test
