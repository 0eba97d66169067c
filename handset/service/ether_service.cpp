#include "handset/service/ether_service.h"

#include <windows.h>

#include <cmath>

#include "handset/base/calendar.h"
#include "handset/base/file_time.h"
#include "handset/base/owned.h"
#include "handset/controls/encoding.h"
#include "handset/controls/own_program.h"
#include "handset/controls/wait.h"
#include "handset/ether/server.h"
#include "handset/fmdevice/band/band_file.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

using handset::Ticks;

constexpr wchar_t kStopName[] = L"EtherStop";
constexpr wchar_t kPortValue[] = L"EtherPort";
constexpr wchar_t kAntennaValue[] = L"Antenna";
constexpr unsigned kStartTimeout_ms = 20000;
constexpr unsigned kStopTimeout_ms = 10000;
constexpr unsigned kWait_ms = 5;
constexpr wchar_t kDelaysValue[] = L"EtherDelays";
constexpr ULONGLONG kLookPeriod_ms = 200;
constexpr ULONGLONG kFaultPeriod_ms = 50;
constexpr ULONGLONG k100nsPerSecond = 10000000;
constexpr auto kFrom1601To1970_s =
    static_cast<double>(-handset::kFirstDayOfFileTimes * handset::kSecondsOfDay);

std::unique_ptr<fm::IGenerator> OpenProgramme(const std::string& devicePath) {
    const auto bytes = ReadWholeFile(handset::HostPath(Wide(devicePath).c_str()));
    sound::WavSound sound;
    if (!bytes || sound::ReadWav({bytes->begin(), bytes->end()}, &sound) != nullptr)
        return fm::MakeGenerator({});
    return fm::MakeFileGenerator(std::move(sound));
}

struct WorldTime {
    double utc_s;
    int halfHours;  // by how much local time is ahead
};
WorldTime Now() {
    FILETIME universal, local;
    SYSTEMTIME universalTime, localTime;
    GetSystemTimeAsFileTime(&universal);
    FileTimeToSystemTime(&universal, &universalTime);
    SystemTimeToTzSpecificLocalTime(nullptr, &universalTime, &localTime);
    SystemTimeToFileTime(&localTime, &local);
    const double ahead_s =
        (static_cast<double>(Ticks(local)) - static_cast<double>(Ticks(universal))) / k100nsPerSecond;
    return {static_cast<double>(Ticks(universal)) / k100nsPerSecond - kFrom1601To1970_s,
            static_cast<int>(std::lround(ahead_s / 1800))};
}

// Keeps the air as the band file and the state have it.
class CBandKeeper {
  public:
    CBandKeeper(ether::CAir* air, CConsole& console) : air_(air), console_(console) { Look(true); }

    void LookAgain() {
        const ULONGLONG now_ms = GetTickCount64();
        if (now_ms < next_ms_) return;
        next_ms_ = now_ms + kLookPeriod_ms;
        Look(false);
    }

  private:
    struct Stamp {
        ULONGLONG written = 0, size = 0;
        bool operator==(const Stamp& other) const { return written == other.written && size == other.size; }
    };
    static Stamp StampOf(const std::wstring& path) {
        WIN32_FILE_ATTRIBUTE_DATA data;
        if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return {};
        return {Ticks(data.ftLastWriteTime),
                static_cast<ULONGLONG>(data.nFileSizeHigh) << 32 | data.nFileSizeLow};
    }

    void Look(bool first) {
        air_->SetLimit(
            static_cast<int>(std::min<std::uint32_t>(handset::StateDword(L"SignalLimit", 100), 100)),
            handset::StateDword(L"SignalLimitChannel", 0));
        const std::wstring path = handset::HostPath(L"\\Windows\\band.ini");
        const Stamp stamp = StampOf(path);
        // A file that somebody is writing is left until it stays as it is for two looks.
        const bool rests = stamp == seen_;
        seen_ = stamp;
        if (!first && (!rests || stamp == read_)) return;
        const auto text = ReadWholeFile(path);
        if (!text && !first) return;
        read_ = stamp;
        std::vector<std::string> faults;
        air_->SetBand(fm::ReadBand("band.ini", text.value_or(""), &faults));
        for (const std::string& fault : faults) console_.Error(Wide(fault));
    }

    ether::CAir* air_;
    CConsole& console_;
    ULONGLONG next_ms_ = 0;
    Stamp seen_, read_;
};

ether::StreamFaults FaultsOfTheEther() {
    using ether::StreamFaults;
    constexpr struct {
        const wchar_t* name;
        bool StreamFaults::*fault;
    } kRows[] = {{L"ether-away", &StreamFaults::away},
                 {L"ether-greeting", &StreamFaults::greeting},
                 {L"ether-stall", &StreamFaults::stall},
                 {L"ether-slow", &StreamFaults::slow},
                 {L"ether-garbage", &StreamFaults::garbage}};
    StreamFaults faults;
    const std::wstring injected = handset::InjectedFaults();
    for (const auto& row : kRows) faults.*row.fault = handset::FaultIn(injected, row.name);
    return faults;
}

// What may go wrong with the stick, as the state has it, and how often samples were late, for the state.
class CStreamKeeper {
  public:
    explicit CStreamKeeper(ether::CServer* server) : server_(server) {
        handset::SetStateDword(kDelaysValue, 0);
    }

    void LookAgain() {
        const ULONGLONG now_ms = GetTickCount64();
        if (now_ms < next_ms_) return;
        next_ms_ = now_ms + kFaultPeriod_ms;
        server_->SetFaults(FaultsOfTheEther());
        const std::size_t delays = server_->Delays();
        if (delays == delays_) return;
        delays_ = delays;
        handset::SetStateDword(kDelaysValue, static_cast<std::uint32_t>(delays));
    }

  private:
    ether::CServer* server_;
    ULONGLONG next_ms_ = 0;
    std::size_t delays_ = 0;
};

handset::OwnedHandle OpenStop() {
    return handset::OwnedHandle(
        OpenEventW(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, handset::StateObjectName(kStopName).c_str()));
}

// An antenna that is still the ether of that port is the simulated band again.
void Forget(std::uint16_t port) {
    handset::DeleteStateValue(kPortValue);
    if (handset::StateString(kAntennaValue, L"") == EtherAntenna(port))
        handset::DeleteStateValue(kAntennaValue);
}

}  // namespace

std::wstring EtherAntenna(std::uint16_t port) {
    return L"rtl_tcp:127.0.0.1:" + std::to_wstring(port);
}

std::wstring RunEther(std::uint16_t port, const ether::StreamOptions& options, CConsole& console) {
    const handset::OwnedHandle stop(
        CreateEventW(nullptr, TRUE, FALSE, handset::StateObjectName(kStopName).c_str()));
    if (GetLastError() == ERROR_ALREADY_EXISTS) return L"an ether of this handset runs already";
    if (!stop) return L"the system refused";
    const WorldTime now = Now();
    ether::CAir air(OpenProgramme, now.utc_s, now.halfHours);
    ether::CServer server(&air, options);
    const auto listens = server.Listen(port);
    if (!listens) {
        return port == 0 ? L"no port could be had"
                         : L"port " + std::to_wstring(port) + L" is in use; another one is wanted, or none";
    }
    CBandKeeper band(&air, console);
    CStreamKeeper stream(&server);
    handset::SetStateDword(kPortValue, *listens);
    console.Line(L"the ether is at " + EtherAntenna(*listens));
    // A client's round never takes as long as a look at the event.
    while (WaitForSingleObject(stop.get(), 0) != WAIT_OBJECT_0) {
        band.LookAgain();
        stream.LookAgain();
        server.Serve(server.HasClient() ? kWait_ms : 10 * kWait_ms);
    }
    Forget(*listens);
    return L"";
}

std::optional<std::uint16_t> EtherPort() {
    const auto port = static_cast<std::uint16_t>(handset::StateDword(kPortValue, 0));
    if (port == 0) return std::nullopt;
    if (OpenStop()) return port;
    // One that was killed has left its values behind.
    Forget(port);
    return std::nullopt;
}

std::optional<std::uint16_t> StartEther() {
    if (const auto port = EtherPort()) return port;
    // Without the caller's output, which would stay open as long as the ether runs.
    const handset::OwnedHandle process = StartOwnProgram(L"ether", DETACHED_PROCESS);
    if (!process) return std::nullopt;
    std::optional<std::uint16_t> port;
    WaitUntil(
        [&] {
            port = EtherPort();
            return port || WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0;
        },
        kStartTimeout_ms);
    return port;
}

bool StopEther() {
    if (const handset::OwnedHandle stop = OpenStop()) SetEvent(stop.get());
    return WaitUntil([] { return !OpenStop(); }, kStopTimeout_ms);
}

}  // namespace panel
