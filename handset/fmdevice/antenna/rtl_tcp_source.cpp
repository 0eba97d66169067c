// The client of a stick's server.
#include "handset/fmdevice/antenna/rtl_tcp_source.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <mutex>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/fmdevice/antenna/server_name.h"
#include "handset/state/reception_state.h"

namespace fm {
namespace {

using sdr::rtl_tcp::CHeaderReader;
using sdr::rtl_tcp::Command;

constexpr std::uint32_t kRate_Hz = 1'920'000;
constexpr double kBytesPerSecond = 2.0 * kRate_Hz;
constexpr int kReceiveBuffer = 256 * 1024;
constexpr std::size_t kPiece = 64 * 1024;
constexpr DWORD kLook_ms = 50;
constexpr std::uint64_t kConnect_ms = 800;
// A server that serves somebody else takes the connection and does not greet.
constexpr std::uint64_t kGreeting_ms = 5000;
constexpr std::uint64_t kQuiet_ms = 500;
constexpr std::uint64_t kStalled_ms = 1500;
constexpr DWORD kFirstPause_ms = 100;
constexpr DWORD kLongestPause_ms = 500;
// By which a server's pace is judged.
constexpr std::uint64_t kPace_ms = 2000;
constexpr double kTooSlow = 0.95;

double Now_s() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class CWinsock {
  public:
    CWinsock() {
        WSADATA data;
        good_ = WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }
    ~CWinsock() {
        if (good_) WSACleanup();
    }
    CWinsock(const CWinsock&) = delete;
    CWinsock& operator=(const CWinsock&) = delete;

  private:
    bool good_ = false;
};

class CSocket {
  public:
    explicit CSocket(SOCKET socket) : socket_(socket) {}
    ~CSocket() {
        if (socket_ != INVALID_SOCKET) closesocket(socket_);
    }
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;
    SOCKET Get() const { return socket_; }
    SOCKET Release() { return std::exchange(socket_, INVALID_SOCKET); }

  private:
    SOCKET socket_;
};

std::string WhyNot(int error) {
    switch (error) {
        case WSAECONNREFUSED:
            return "no server listens there";
        case WSAETIMEDOUT:
            return "nobody answers";
        case WSAEHOSTUNREACH:
        case WSAENETUNREACH:
            return "there is no way to it";
        case WSAECONNRESET:
        case WSAECONNABORTED:
            return "the connection broke";
        default:
            return "socket error " + std::to_string(error);
    }
}

// Gives 0, or the error.
int ConnectTo(SOCKET socket, const ServerAddress& server, const std::atomic<bool>& stop) {
    u_long yes = 1;
    ioctlsocket(socket, FIONBIO, &yes);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&server.address), server.length) == 0) return 0;
    if (WSAGetLastError() != WSAEWOULDBLOCK) return WSAGetLastError();
    const std::uint64_t began_ms = GetTickCount64();
    while (!stop && GetTickCount64() - began_ms < kConnect_ms) {
        fd_set done, failed;
        FD_ZERO(&done);
        FD_ZERO(&failed);
        FD_SET(socket, &done);
        FD_SET(socket, &failed);
        timeval look = {0, static_cast<long>(kLook_ms * 1000)};
        if (select(0, nullptr, &done, &failed, &look) <= 0) continue;
        int error = 0;
        int length = sizeof error;
        getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &length);
        if (error != 0) return error;
        return FD_ISSET(socket, &done) ? 0 : WSAECONNREFUSED;
    }
    return WSAETIMEDOUT;
}

}  // namespace

CRtlTcpSource::CRtlTcpSource(const handset::Antenna& antenna, CSampleStream* stream)
    : host_(antenna.host),
      port_(antenna.port),
      name_(antenna.host + ":" + std::to_string(antenna.port)),
      stream_(stream),
      bytes_(kPiece),
      gain_(handset::kAutomaticGain) {
    stream_->Say("connects to " + name_);
    thread_ = handset::WorkerThread([this] { Run(); }, [this] { return !stop_; });
}

CRtlTcpSource::~CRtlTcpSource() {
    stop_ = true;
    thread_.join();
}

void CRtlTcpSource::Run() {
    const CWinsock winsock;
    bytes_.resize(kPiece);
    DWORD pause_ms = kFirstPause_ms;
    while (!stop_) {
        const std::uint64_t began_ms = GetTickCount64();
        const std::string fault = Serve();
        stream_->End();
        if (stop_) return;
        stream_->Say("no connection to " + name_ + ": " + fault);
        // What played for a while is probably back at once.
        if (GetTickCount64() - began_ms > 10 * kLongestPause_ms) pause_ms = kFirstPause_ms;
        Pause(pause_ms);
        pause_ms = std::min(2 * pause_ms, kLongestPause_ms);
    }
}

void CRtlTcpSource::Pause(DWORD milliseconds) {
    for (DWORD waited = 0; waited < milliseconds && !stop_; waited += kLook_ms) ::Sleep(kLook_ms);
}

std::string CRtlTcpSource::Serve() {
    SOCKET opened = INVALID_SOCKET;
    std::string fault = Connect(&opened);
    if (!fault.empty() || stop_) return fault;
    const CSocket socket(opened);
    sdr::rtl_tcp::Header header;
    fault = Greet(socket.Get(), &header);
    if (!fault.empty() || stop_) return fault;
    // However it ends, nothing is sent to the socket any more.
    struct Forget {
        CRtlTcpSource& source;
        ~Forget() {
            const std::lock_guard<handset::CLock> guard(source.lock_);
            source.socket_ = INVALID_SOCKET;
        }
    } const forget{*this};
    Open(socket.Get(), header);
    return Receive(socket.Get());
}

std::string CRtlTcpSource::Connect(SOCKET* opened) {
    const auto addresses = AddressesOf(host_, port_, [this] { return stop_.load(); });
    if (addresses.empty()) return "there is no host of that name";
    int error = WSAECONNREFUSED;
    for (const ServerAddress& server : addresses) {
        if (stop_) return {};
        CSocket socket(::socket(server.address.ss_family, SOCK_STREAM, IPPROTO_TCP));
        if (socket.Get() == INVALID_SOCKET) return WhyNot(WSAGetLastError());
        // What the system holds is as old as what the server holds: little of it.
        setsockopt(socket.Get(), SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&kReceiveBuffer),
                   sizeof kReceiveBuffer);
        const int yes = 1;
        setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&yes), sizeof yes);
        const double began_s = Now_s();
        error = ConnectTo(socket.Get(), server, stop_);
        if (error != 0) continue;
        const std::lock_guard<handset::CLock> guard(lock_);
        roundTrip_s_ = Now_s() - began_s;
        *opened = socket.Release();
        return {};
    }
    return WhyNot(error);
}

CRtlTcpSource::Arrival CRtlTcpSource::Await(SOCKET socket, DWORD timeout_ms, int* received) {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(socket, &ready);
    timeval look = {0, static_cast<long>(timeout_ms * 1000)};
    if (select(0, &ready, nullptr, nullptr, &look) <= 0) return Arrival::kNothing;
    *received = recv(socket, reinterpret_cast<char*>(bytes_.data()), static_cast<int>(bytes_.size()), 0);
    if (*received > 0) return Arrival::kBytes;
    return *received < 0 && WSAGetLastError() == WSAEWOULDBLOCK ? Arrival::kNothing : Arrival::kEnd;
}

std::string CRtlTcpSource::Greet(SOCKET socket, sdr::rtl_tcp::Header* header) {
    // Byte by byte up to the samples, so that none of these is taken.
    CHeaderReader reader;
    std::vector<std::uint8_t> all(kPiece);
    bytes_.resize(1);
    std::string fault;
    const std::uint64_t began_ms = GetTickCount64();
    while (!stop_ && fault.empty() && reader.Where() == CHeaderReader::State::kMore) {
        int received = 0;
        const Arrival arrival = Await(socket, kLook_ms, &received);
        if (arrival == Arrival::kEnd) fault = "it closes the connection";
        if (arrival == Arrival::kBytes) reader.Feed(bytes_.data(), 1);
        if (reader.Where() == CHeaderReader::State::kWrong) fault = "it is no server of a stick";
        if (GetTickCount64() - began_ms > kGreeting_ms)
            fault = "it does not greet; it may serve somebody else";
    }
    bytes_.swap(all);
    *header = reader.Result();
    return fault;
}

std::uint32_t CRtlTcpSource::GainStep() const {
    if (gain_ == handset::kAutomaticGain) return hold_ ? hold_->Step() : 0;
    return std::min(gain_, std::max<std::uint32_t>(gains_, 1) - 1);
}

void CRtlTcpSource::Open(SOCKET socket, const sdr::rtl_tcp::Header& header) {
    const std::lock_guard<handset::CLock> guard(lock_);
    gains_ = header.gains;
    hold_ = gains_ > 1 ? std::make_unique<CGainHold>(gains_) : nullptr;
    sdr::rtl_tcp::Settings settings;
    settings.frequency_Hz = centre_Hz_;
    settings.rate_Hz = kRate_Hz;
    if (gains_ > 0) settings.gainIndex = GainStep();
    settings.correction_ppm = correction_ppm_;
    settings.biasTee = bias_;
    const std::vector<std::uint8_t> opening = sdr::rtl_tcp::Opening(settings);
    send(socket, reinterpret_cast<const char*>(opening.data()), static_cast<int>(opening.size()), 0);
    socket_ = socket;
    clock_.emplace(kBytesPerSecond, roundTrip_s_);
    StreamForm form;
    form.form = sdr::SampleForm::kCu8;
    form.rate_Hz = kRate_Hz;
    form.tunable = true;
    stream_->Begin(form);
    stream_->Say(kPlays);
}

std::string CRtlTcpSource::Receive(SOCKET socket) {
    std::uint64_t quietSince_ms = GetTickCount64();
    std::uint64_t paceSince_ms = quietSince_ms;
    double paced = 0.0;
    bool slow = false, quiet = false;
    while (!stop_) {
        int received = 0;
        const Arrival arrival = Await(socket, kLook_ms, &received);
        const std::uint64_t now_ms = GetTickCount64();
        if (arrival == Arrival::kEnd) return "the connection broke";
        if (arrival == Arrival::kNothing) {
            if (now_ms - quietSince_ms >= kStalled_ms) return "it sends nothing any more";
            if (now_ms - quietSince_ms >= kQuiet_ms && !quiet) {
                quiet = true;
                stream_->Say("no samples from " + name_);
            }
            continue;
        }
        quietSince_ms = now_ms;
        Take(static_cast<std::size_t>(received));
        paced += received;
        if (now_ms - paceSince_ms >= kPace_ms) {
            const double wanted = kBytesPerSecond * static_cast<double>(now_ms - paceSince_ms) / 1000.0;
            slow = paced < kTooSlow * wanted;
            stream_->Say(slow ? "samples come too slowly from " + name_ : kPlays);
            paceSince_ms = now_ms;
            paced = 0.0;
        } else if (quiet) {
            stream_->Say(kPlays);
        }
        quiet = false;
    }
    return {};
}

// The clock and the stream go on together, or SetCentre would count twice what is between them.
void CRtlTcpSource::Take(std::size_t count) {
    const std::lock_guard<handset::CLock> guard(lock_);
    clock_->Arrived(count, Now_s());
    stream_->Write(bytes_.data(), count);
    if (hold_ && hold_->Add(bytes_.data(), count, kRate_Hz) && gain_ == handset::kAutomaticGain)
        Send(Command::kGainIndex, hold_->Step());
}

void CRtlTcpSource::Send(Command command, std::uint32_t argument) {
    if (socket_ == INVALID_SOCKET) return;
    if (clock_ && command != Command::kFrequency_Hz) clock_->SendOther(Now_s());
    const sdr::rtl_tcp::CommandBytes bytes = sdr::rtl_tcp::Encode(command, argument);
    // One that cannot be sent is noticed by who receives.
    send(socket_, reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
}

double CRtlTcpSource::SetCentre(double centre_Hz) {
    const std::lock_guard<handset::CLock> guard(lock_);
    centre_Hz_ = static_cast<std::uint32_t>(std::lround(centre_Hz));
    Send(Command::kFrequency_Hz, centre_Hz_);
    return (clock_ ? clock_->SendElsewhere(Now_s()) : 0.0) + stream_->Held_s();
}

void CRtlTcpSource::SetGain(std::uint32_t step, std::int32_t correction_ppm, bool bias) {
    const std::lock_guard<handset::CLock> guard(lock_);
    gain_ = step;
    correction_ppm_ = correction_ppm;
    bias_ = bias;
    if (gains_ > 0) Send(Command::kGainIndex, GainStep());
    Send(Command::kCorrection_ppm, static_cast<std::uint32_t>(correction_ppm));
    Send(Command::kBiasTee, bias ? 1 : 0);
}

}  // namespace fm
