#include "tests/unit/fmdevice/stick_server.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <cmath>

#include "handset/transmitter/station_texts.h"
#include "handset/transmitter/stream_format.h"

namespace test {
namespace {

constexpr double kRate_Hz = 1920000.0;
constexpr double kStrongest_dBHz = 100.0;
// What one transfer over the USB holds.
constexpr DWORD kPiece_ms = 68;

void SendAll(SOCKET client, const std::vector<std::uint8_t>& bytes, const std::atomic<bool>& stop) {
    std::size_t sent = 0;
    while (sent < bytes.size() && !stop) {
        const int count = send(client, reinterpret_cast<const char*>(bytes.data() + sent),
                               static_cast<int>(bytes.size() - sent), 0);
        if (count > 0)
            sent += static_cast<std::size_t>(count);
        else if (WSAGetLastError() == WSAEWOULDBLOCK)
            Sleep(2);
        else
            return;
    }
}

}  // namespace

StickServer::StickServer(const std::vector<AirStation>& stations, std::uint16_t port, double ppm)
    : stations_(stations), ppm_(ppm) {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    std::vector<transmitter::StationSettings> settings;
    for (const AirStation& air : stations) {
        transmitter::StationSettings station;
        station.offset_Hz = 1e8;
        station.level_dB = air.carrierToNoise_dBHz - kStrongest_dBHz;
        station.multiplex.programme = std::make_shared<transmitter::CTones>(
            std::vector<transmitter::Tone>{{air.tone_Hz, 0.5, 0.5}}, 50e-6);
        transmitter::StationTexts texts;
        texts.pi = static_cast<std::uint16_t>(0xD300 + settings.size());
        texts.pty = 1;
        texts.ps = {air.name};
        if (!air.text.empty()) texts.texts = {air.text};
        texts.alternatives_MHz = air.alternatives_MHz;
        station.multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
        settings.push_back(station);
    }
    transmitter::StreamSettings stream;
    stream.rate_Hz = kRate_Hz;
    stream.ppm = ppm;
    stream.carrier = 0.25;
    stream.carrierToNoise_dBHz = kStrongest_dBHz;
    transmitter_ = std::make_unique<transmitter::CTransmitter>(stream, settings);

    listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const int yes = 1;
    setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&yes), sizeof yes);
    bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(listener_, 4);
    int length = sizeof address;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Run(); });
}

StickServer::~StickServer() {
    stop_ = true;
    thread_.join();
    closesocket(listener_);
    WSACleanup();
}

void StickServer::Run() {
    while (!stop_) {
        fd_set ready;
        FD_ZERO(&ready);
        FD_SET(listener_, &ready);
        timeval look = {0, 20000};
        if (select(0, &ready, nullptr, nullptr, &look) <= 0) continue;
        const SOCKET client = accept(listener_, nullptr, nullptr);
        if (client == INVALID_SOCKET) continue;
        ++clients;
        Serve(client);
        closesocket(client);
    }
}

void StickServer::Point(double centre_Hz) {
    // The same crystal makes the tuner's frequency.
    const double real_Hz = centre_Hz * (1.0 + ppm_ * 1e-6);
    for (std::size_t i = 0; i < stations_.size(); ++i)
        transmitter_->Move(i, stations_[i].at_MHz * 1e6 - real_Hz);
}

void StickServer::TakeCommands(SOCKET client) {
    char bytes[256];
    const int count = recv(client, bytes, sizeof bytes, 0);
    for (int i = 0; i < count; ++i) begun_.push_back(static_cast<std::uint8_t>(bytes[i]));
    while (begun_.size() >= 5) {
        const int id = begun_[0] & 15;
        const std::uint32_t argument = std::uint32_t{begun_[1]} << 24 | std::uint32_t{begun_[2]} << 16 |
                                       std::uint32_t{begun_[3]} << 8 | begun_[4];
        begun_.erase(begun_.begin(), begun_.begin() + 5);
        arguments_[id] = argument;
        ++commands_[id];
        if (id == 1) Point(argument);
    }
}

void StickServer::Serve(SOCKET client) {
    u_long yes = 1;
    ioctlsocket(client, FIONBIO, &yes);
    begun_.clear();
    const std::string greeting = garbage ? "HTTP/1.1 400" : std::string("RTL0\0\0\0\5\0\0\0\35", 12);
    SendAll(client, {greeting.begin(), greeting.end()}, stop_);
    ULONGLONG due_ms = GetTickCount64();
    const auto piece = static_cast<std::size_t>(kRate_Hz * kPiece_ms / 1000.0);
    std::vector<std::complex<float>> samples(piece);
    std::vector<std::uint8_t> bytes;
    while (!stop_) {
        TakeCommands(client);
        char one;
        if (recv(client, &one, 1, MSG_PEEK) == 0) return;
        const ULONGLONG now_ms = GetTickCount64();
        if (now_ms < due_ms) {
            Sleep(static_cast<DWORD>(std::min<ULONGLONG>(due_ms - now_ms, 5)));
            continue;
        }
        // A machine that was busy does not make up for it: what a stick sends then is lost.
        if (now_ms > due_ms + 300 || stalled) due_ms = now_ms;
        due_ms += kPiece_ms * 100 / static_cast<ULONGLONG>(pace_percent.load());
        if (stalled) {
            Sleep(kPiece_ms);
            continue;
        }
        if (!repeats || bytes.empty()) {
            transmitter_->Read(samples.data(), piece);
            bytes.clear();
            transmitter::Append(samples.data(), piece, transmitter::StreamFormat::kCu8, &bytes);
        }
        SendAll(client, bytes, stop_);
    }
}

}  // namespace test
