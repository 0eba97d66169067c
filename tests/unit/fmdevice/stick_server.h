// A server of a receiver stick on a port of this machine, with a transmitter for its aerial, and the faults
// that such a server has.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "handset/transmitter/transmitter.h"

namespace test {

struct AirStation {
    double at_MHz;
    double carrierToNoise_dBHz;
    std::string name;
    double tone_Hz;
    std::vector<double> alternatives_MHz;
    std::string text;
};

class StickServer {
  public:
    // `port` 0: any; `ppm`: how much too fast its crystal is.
    explicit StickServer(const std::vector<AirStation>& stations, std::uint16_t port = 0, double ppm = 0);
    ~StickServer();
    StickServer(const StickServer&) = delete;
    StickServer& operator=(const StickServer&) = delete;

    std::uint16_t Port() const { return port_; }
    std::wstring Antenna() const { return L"rtl_tcp:127.0.0.1:" + std::to_wstring(port_); }

    std::atomic<bool> stalled{false};  // connected, but sends nothing; what is due meanwhile is lost
    std::atomic<bool> repeats{false};  // sends its last piece again and again, which takes no time to make
    std::atomic<bool> garbage{false};  // greets with something else
    std::atomic<int> pace_percent{100};
    std::atomic<int> clients{0};  // that have come so far
    // Commands of a kind that have come, and the last argument.
    int Commands(int id) const { return commands_[id & 15]; }
    std::uint32_t Argument(int id) const { return arguments_[id & 15]; }

  private:
    void Run();
    void Serve(SOCKET client);
    void TakeCommands(SOCKET client);
    void Point(double centre_Hz);

    std::vector<AirStation> stations_;
    const double ppm_;
    std::unique_ptr<transmitter::CTransmitter> transmitter_;
    SOCKET listener_ = INVALID_SOCKET;
    std::uint16_t port_ = 0;
    std::atomic<bool> stop_{false};
    std::atomic<int> commands_[16] = {};
    std::atomic<std::uint32_t> arguments_[16] = {};
    std::vector<std::uint8_t> begun_;  // of a command
    std::thread thread_;
};

}  // namespace test
