// The server of the simulated ether: one client after the other on a port of this machine. Host code only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "handset/ether/stream.h"

namespace ether {

class CServer {
  public:
    // The air is not owned.
    CServer(CAir* air, const StreamOptions& options);
    ~CServer();
    CServer(const CServer&) = delete;
    CServer& operator=(const CServer&) = delete;

    // Port 0: any that is free. The port that it became; nothing when it cannot be had.
    std::optional<std::uint16_t> Listen(std::uint16_t port);

    // Waits up to so long for anything to do, and does it: takes a client when there is none, reads its
    // commands, makes what samples are due and sends what it takes. One thread.
    void Serve(unsigned wait_ms);
    // What goes wrong from now on.
    void SetFaults(const StreamFaults& faults);
    [[nodiscard]] bool HasClient() const { return stream_ != nullptr; }
    // How often this machine was late with samples, for all clients so far.
    [[nodiscard]] std::size_t Delays() const { return delays_ + (stream_ ? stream_->Delays() : 0); }

  private:
    void Accept();
    void Receive();
    void Send();
    void Drop();

    struct Sockets;
    CAir* air_;
    StreamOptions options_;
    StreamFaults faults_;
    std::unique_ptr<Sockets> sockets_;
    std::unique_ptr<CStream> stream_;
    double left_s_ = 0;       // when the last client went
    std::size_t delays_ = 0;  // of the clients before
};

}  // namespace ether
