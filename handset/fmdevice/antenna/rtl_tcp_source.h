// Samples of a receiver stick, by the server that it has here or elsewhere. It is connected to whenever it
// can be; a server that is gone, says nothing or something else is tried again and again, within half a
// second each time.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "handset/base/antenna_text.h"
#include "handset/fmdevice/antenna/gain_hold.h"
#include "handset/fmdevice/antenna/sample_clock.h"
#include "handset/fmdevice/antenna/sample_stream.h"
#include "handset/fmdevice/sdr/rtl_tcp_protocol.h"

namespace fm {

class CRtlTcpSource : public ISampleSource {
  public:
    CRtlTcpSource(const handset::Antenna& antenna, CSampleStream* stream);
    ~CRtlTcpSource() override;

    double SetCentre(double centre_Hz) override;
    void SetGain(std::uint32_t step, std::int32_t correction_ppm, bool bias) override;

  private:
    void Run();
    // On the source's thread; each gives what ended it, or an empty text when it was told to stop.
    std::string Serve();
    std::string Connect(SOCKET* socket);
    std::string Greet(SOCKET socket, sdr::rtl_tcp::Header* header);
    std::string Receive(SOCKET socket);

    enum class Arrival { kBytes, kNothing, kEnd };
    Arrival Await(SOCKET socket, DWORD timeout_ms, int* received);
    void Open(SOCKET socket, const sdr::rtl_tcp::Header& header);
    void Send(sdr::rtl_tcp::Command command, std::uint32_t argument);
    std::uint32_t GainStep() const;
    void Pause(DWORD milliseconds);
    void Take(std::size_t count);

    const std::string host_;
    const std::uint16_t port_;
    const std::string name_;  // of the server, as it is said
    CSampleStream* const stream_;
    std::atomic<bool> stop_{false};
    std::vector<std::uint8_t> bytes_;

    // Guards the following; held while something is sent, which never waits, and while what came is written.
    handset::CLock lock_;
    SOCKET socket_ = INVALID_SOCKET;
    std::uint32_t centre_Hz_ = 98'000'000;
    std::uint32_t gain_;
    std::int32_t correction_ppm_ = 0;
    bool bias_ = false;
    std::uint32_t gains_ = 0;
    std::unique_ptr<CGainHold> hold_;
    std::optional<CSampleClock> clock_;  // of what has come since the connection
    double roundTrip_s_ = 0.0;

    std::thread thread_;
};

}  // namespace fm
