// Samples of a receiver stick, by the server that it has here or elsewhere. It is connected to whenever it
// can be; a server that is gone, says nothing or something else is tried again and again, within half a
// second each time.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "handset/base/antenna_text.h"
#include "handset/fmdevice/antenna/gain_hold.h"
#include "handset/fmdevice/antenna/sample_stream.h"
#include "handset/fmdevice/sdr/rtl_tcp_protocol.h"

namespace fm {

class CRtlTcpSource : public ISampleSource {
  public:
    CRtlTcpSource(const handset::Antenna& antenna, CSampleStream* stream);
    ~CRtlTcpSource() override;

    void SetCentre(double centre_Hz) override;
    double Stale_s() override;
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
    void NoteArrival(std::uint64_t now_ms);

    const std::string host_;
    const std::uint16_t port_;
    const std::string name_;  // of the server, as it is said
    CSampleStream* const stream_;
    std::atomic<bool> stop_{false};
    std::vector<std::uint8_t> bytes_;
    std::uint64_t lastArrival_ms_ = 0;

    handset::CLock lock_;  // guards the following; held while something is sent, which never waits
    SOCKET socket_ = INVALID_SOCKET;
    std::uint32_t centre_Hz_ = 98'000'000;
    std::uint32_t gain_;
    std::int32_t correction_ppm_ = 0;
    bool bias_ = false;
    std::uint32_t gains_ = 0;
    std::unique_ptr<CGainHold> hold_;
    double longestGap_s_;

    std::thread thread_;
};

}  // namespace fm
