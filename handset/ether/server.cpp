#include "handset/ether/server.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <chrono>

namespace ether {
namespace {

constexpr int kMostAtOnce = 1 << 16;

double Now_s() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class COwnedSocket {
  public:
    ~COwnedSocket() { Reset(); }
    COwnedSocket() = default;
    COwnedSocket(const COwnedSocket&) = delete;
    COwnedSocket& operator=(const COwnedSocket&) = delete;
    void Reset(SOCKET socket = INVALID_SOCKET) {
        if (socket_ != INVALID_SOCKET) closesocket(socket_);
        socket_ = socket;
    }
    [[nodiscard]] SOCKET Get() const { return socket_; }
    explicit operator bool() const { return socket_ != INVALID_SOCKET; }

  private:
    SOCKET socket_ = INVALID_SOCKET;
};

bool NotNow() {
    return WSAGetLastError() == WSAEWOULDBLOCK;
}

}  // namespace

struct CServer::Sockets {
    Sockets() { started = WSAStartup(MAKEWORD(2, 2), &data) == 0; }
    ~Sockets() {
        client.Reset();
        listener.Reset();
        if (started) WSACleanup();
    }
    Sockets(const Sockets&) = delete;
    Sockets& operator=(const Sockets&) = delete;

    WSADATA data = {};
    bool started = false;
    COwnedSocket listener;
    COwnedSocket client;
};

CServer::CServer(CAir* air, const StreamOptions& options)
    : air_(air), options_(options), sockets_(std::make_unique<Sockets>()), left_s_(Now_s()) {}

CServer::~CServer() = default;

std::optional<std::uint16_t> CServer::Listen(std::uint16_t port) {
    sockets_->listener.Reset(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!sockets_->listener) return std::nullopt;
    const SOCKET listener = sockets_->listener.Get();
    // Without it a second server would share the port on Windows.
    BOOL alone = TRUE;
    setsockopt(listener, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&alone),
               sizeof alone);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    int size = sizeof address;
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
        listen(listener, SOMAXCONN) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        sockets_->listener.Reset();
        return std::nullopt;
    }
    return ntohs(address.sin_port);
}

void CServer::Accept() {
    sockets_->client.Reset(accept(sockets_->listener.Get(), nullptr, nullptr));
    if (!sockets_->client) return;
    if (faults_.away) return Drop();
    u_long unblocked = 1;
    ioctlsocket(sockets_->client.Get(), FIONBIO, &unblocked);
    const double now_s = Now_s();
    air_->Pass(now_s - left_s_);
    stream_ = std::make_unique<CStream>(air_, options_, faults_, now_s);
}

void CServer::SetFaults(const StreamFaults& faults) {
    faults_ = faults;
    if (HasClient() && faults.away) Drop();
    if (HasClient()) stream_->SetFaults(faults);
}

void CServer::Drop() {
    delays_ = Delays();
    sockets_->client.Reset();
    stream_.reset();
    left_s_ = Now_s();
}

void CServer::Receive() {
    char bytes[1024];
    const int count = recv(sockets_->client.Get(), bytes, sizeof bytes, 0);
    if (count > 0) {
        stream_->Take(reinterpret_cast<const std::uint8_t*>(bytes), static_cast<std::size_t>(count), Now_s());
    } else if (count == 0 || !NotNow()) {
        Drop();
    }
}

void CServer::Send() {
    if (faults_.stall) return;
    while (stream_ && stream_->FrontSize() > 0) {
        const int wanted = static_cast<int>(std::min<std::size_t>(stream_->FrontSize(), kMostAtOnce));
        const int count =
            send(sockets_->client.Get(), reinterpret_cast<const char*>(stream_->Front()), wanted, 0);
        if (count > 0) {
            stream_->Sent(static_cast<std::size_t>(count));
            continue;
        }
        if (!NotNow()) Drop();
        return;
    }
}

void CServer::Serve(unsigned wait_ms) {
    fd_set readable, writable;
    FD_ZERO(&readable);
    FD_ZERO(&writable);
    // While there is a client the next one waits in the listener's row.
    const SOCKET waitsFor = HasClient() ? sockets_->client.Get() : sockets_->listener.Get();
    FD_SET(waitsFor, &readable);
    if (HasClient() && stream_->FrontSize() > 0 && !faults_.stall) FD_SET(waitsFor, &writable);
    timeval wait = {static_cast<long>(wait_ms / 1000), static_cast<long>(wait_ms % 1000 * 1000)};
    const bool came = select(0, &readable, &writable, nullptr, &wait) > 0 && FD_ISSET(waitsFor, &readable);
    if (!HasClient()) {
        if (came) Accept();
        return;
    }
    if (came) Receive();
    if (!HasClient()) return;
    stream_->Advance(Now_s());
    Send();
}

}  // namespace ether
