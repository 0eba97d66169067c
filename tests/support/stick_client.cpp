#include "tests/support/stick_client.h"

namespace test {

StickClient::StickClient() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
}

StickClient::~StickClient() {
    Close();
    WSACleanup();
}

void StickClient::Close() {
    if (m_socket != INVALID_SOCKET) closesocket(m_socket);
    m_socket = INVALID_SOCKET;
}

bool StickClient::Connect(std::uint16_t port) {
    Close();
    m_socket = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool StickClient::Send(std::uint8_t command, std::uint32_t argument) const {
    const char bytes[] = {static_cast<char>(command), static_cast<char>(argument >> 24),
                          static_cast<char>(argument >> 16), static_cast<char>(argument >> 8),
                          static_cast<char>(argument)};
    return send(m_socket, bytes, sizeof bytes, 0) == static_cast<int>(sizeof bytes);
}

std::vector<std::uint8_t> StickClient::Read(std::size_t count, unsigned patience_ms) const {
    DWORD timeout = patience_ms;
    setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&timeout), sizeof timeout);
    std::vector<std::uint8_t> bytes(count);
    std::size_t done = 0;
    while (done < count) {
        const int got =
            recv(m_socket, reinterpret_cast<char*>(bytes.data()) + done, static_cast<int>(count - done), 0);
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

}  // namespace test
