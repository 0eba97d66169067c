// The tuner device on the antenna of the handset that the environment names: how soon a tuning is heard and
// measured, how fast a seek goes, and what many tunings leave behind. A program of its own, so that nothing
// else is in it. It prints a name and a figure a line.
//
// bench_tunings.exe retunes N | seeks N | tunings N | awaited N
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "handset/coredll/kernel/platform_call.h"
#include "handset/sound/tap.h"
#include "tests/bench/ether/tuning_stations.h"
#include "tests/bench/process_usage.h"
#include "tests/bench/program_run.h"
#include "tests/bench/table.h"
#include "tests/support/process_counts.h"
#include "tuner/fm_device.h"

namespace {

using bench::kTuningStations;
using bench::TuningStation;

constexpr double kRate_Hz = 44100;
constexpr double kLongest_s = 2;
// Of full scale: what follows upon silence.
constexpr int kHeard = 300;
constexpr std::size_t kSilence = 44100 / 100;
constexpr std::size_t kBeginning = 44100 / 20;
constexpr double kLeastTone = 0.1;
constexpr int kLeastLevel = 30;

IFMDevice* CreateDevice() {
    using Proc = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto classObject = reinterpret_cast<Proc>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"fmdevice.dll"), "DllGetClassObject")));
    void *factory = nullptr, *device = nullptr;
    if (classObject(CLSID_CFMDevice, IID_IClassFactory, &factory) != S_OK) return nullptr;
    auto* const classFactory = static_cast<IClassFactory*>(factory);
    classFactory->CreateInstance(nullptr, IID_IFMDevice, &device);
    classFactory->Release();
    return static_cast<IFMDevice*>(device);
}

void Say(const char* name, double value) {
    std::printf("%s %.4f\n", name, value);
    std::fflush(stdout);
}

bool Receives(IFMDevice* device, const TuningStation& station) {
    const double began_ms = bench::Now_ms();
    while (bench::Now_ms() - began_ms < 20000) {
        std::int32_t level = 0;
        if (device->SetChannel(station.channel_10kHz) == 0 && device->GetSignal(&level) == 0 &&
            level >= kLeastLevel)
            return true;
    }
    return false;
}

// What is heard, as a recorder takes it: by the moment at which it is to be heard.
class Ear {
  public:
    Ear() : tap_(HandsetSoundOpen(&position_)) {}
    ~Ear() { HandsetSoundClose(tap_); }
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    // After how many milliseconds from that moment of the handset's clock the tone is heard; below 0: not in
    // time, or something else first.
    double HeardAfter_ms(std::uint64_t moment_ms, double tone_Hz) {
        const std::uint64_t moment = moment_ms * 441 / 10;
        std::vector<std::int16_t> left;
        // The station before is heard until the tuning is taken, and then silence.
        std::size_t first = 0, silent = 0;
        while (static_cast<double>(left.size()) < kLongest_s * kRate_Hz) {
            std::int16_t block[2 * 441];
            const std::uint32_t count = HandsetSoundRead(tap_, &position_, block, 441, 1000);
            if (count == 0) return -1;
            for (std::uint32_t i = 0; i < count; ++i) {
                if (position_ + i >= moment) left.push_back(block[2 * i]);
            }
            position_ += count;
            for (; first < left.size() && (silent < kSilence || std::abs(left[first]) < kHeard); ++first)
                silent = std::abs(left[first]) < kHeard ? silent + 1 : 0;
            if (left.size() < first + kBeginning) continue;
            return Tone(left, first, tone_Hz) > kLeastTone ? 1000.0 * static_cast<double>(first) / kRate_Hz
                                                           : -1;
        }
        return -1;
    }
    void ListenOn(std::uint32_t frames) {
        std::vector<std::int16_t> block(2 * 441);
        for (std::uint32_t done = 0; done < frames;) {
            const std::uint32_t count = HandsetSoundRead(tap_, &position_, block.data(), 441, 1000);
            if (count == 0) return;
            position_ += count;
            done += count;
        }
    }

  private:
    static double Tone(const std::vector<std::int16_t>& left, std::size_t from, double tone_Hz) {
        std::complex<double> sum;
        for (std::size_t i = 0; i < kBeginning; ++i)
            sum += left[from + i] / 32768.0 *
                   std::polar(1.0, -6.283185307179586 * tone_Hz * static_cast<double>(i) / kRate_Hz);
        return 2.0 * std::abs(sum) / static_cast<double>(kBeginning);
    }

    std::uint64_t position_ = 0;
    std::uint32_t tap_;
};

void SaySpread(const std::string& name, const std::vector<double>& times_ms) {
    if (times_ms.empty()) return;
    Say((name + "Median_ms").c_str(), bench::Median(times_ms));
    Say((name + "Worst_ms").c_str(), *std::max_element(times_ms.begin(), times_ms.end()));
}

void MeasureRetunes(IFMDevice* device, long count) {
    Ear ear;
    std::mt19937 random(1);
    std::vector<double> sound_ms, level_ms;
    long unheard = 0;
    for (long i = 0; i < count; ++i) {
        const TuningStation& station =
            kTuningStations[static_cast<std::size_t>(i + 1) % kTuningStations.size()];
        const std::uint64_t moment_ms = HandsetMilliseconds();
        const double began_ms = bench::Now_ms();
        std::int32_t level = 0;
        device->SetChannel(station.channel_10kHz);
        device->GetSignal(&level);
        const double level_at_ms = bench::Now_ms() - began_ms;
        const double heard_ms = ear.HeardAfter_ms(moment_ms, station.tone_Hz);
        if (level >= kLeastLevel) level_ms.push_back(level_at_ms);
        if (heard_ms >= 0) sound_ms.push_back(heard_ms);
        unheard += level < kLeastLevel || heard_ms < 0 ? 1 : 0;
        // At another moment of the server's buffer each time.
        ear.ListenOn(4410 + random() % 4410);
    }
    Say("retunes", static_cast<double>(count));
    Say("unheard", static_cast<double>(unheard));
    SaySpread("sound", sound_ms);
    SaySpread("level", level_ms);
}

// From one station round the band and back, where no other is, and on to the next of two.
void MeasureSeeks(IFMDevice* device, long count) {
    std::vector<double> crossings_ms;
    double longest_ms = 0;
    long missed = 0;
    for (long i = 0; i < count; ++i) {
        if (!Receives(device, kTuningStations[0])) break;
        const double began_ms = bench::Now_ms();
        // What is alone on the air is not found from itself.
        missed += (i % 2 == 0 ? device->SeekNext() : device->SeekPrev()) == 0 ? 1 : 0;
        crossings_ms.push_back(bench::Now_ms() - began_ms);
        longest_ms = std::max(longest_ms, crossings_ms.back());
        // A station 1.2 MHz away.
        device->SetChannel(kTuningStations[0].channel_10kHz - 120);
        const double sought_ms = bench::Now_ms();
        std::uint32_t channel = 0;
        const bool found = device->SeekNext() == 0 && device->GetChannel(&channel) == 0;
        longest_ms = std::max(longest_ms, bench::Now_ms() - sought_ms);
        missed += found && channel == kTuningStations[0].channel_10kHz ? 0 : 1;
    }
    if (crossings_ms.empty()) return;
    Say("crossing_ms", bench::Median(crossings_ms));
    Say("longest_ms", longest_ms);
    Say("missed", static_cast<double>(missed));
}

void SayHeld(const char* when) {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const bench::ProcessUsage usage(GetCurrentProcess(), program);
    Say((std::string(when) + "_MB").c_str(), usage.Private_MB());
    Say((std::string(when) + "_handles").c_str(),
        static_cast<double>(test::HandlesOf(GetCurrentProcessId())));
}

void MeasureTunings(IFMDevice* device, long count, bool awaited) {
    const long early = std::max(count / 20, 1L);
    for (long i = 0; i < count; ++i) {
        if (i == early) SayHeld("before");
        std::int32_t level = 0;
        device->SetChannel(8750 + static_cast<std::uint32_t>(i * 37 % 206) * 10);
        if (awaited) device->GetSignal(&level);
    }
    Say("tunings", static_cast<double>(count));
    Say("survived", Receives(device, kTuningStations[0]) ? 1 : 0);
    SayHeld("after");
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) return 2;
    IFMDevice* const device = CreateDevice();
    if (device == nullptr || device->Initialize() != 0) return 1;
    device->SetVolume(100);
    if (!Receives(device, kTuningStations[0])) return 1;
    const long count = std::atol(arguments[2]);
    const std::string what = arguments[1];
    if (what == "retunes") MeasureRetunes(device, count);
    if (what == "seeks") MeasureSeeks(device, count);
    if (what == "tunings" || what == "awaited") MeasureTunings(device, count, what == "awaited");
    device->Close();
    device->Release();
    return 0;
}
