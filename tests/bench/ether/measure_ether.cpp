#include "tests/bench/ether/measure_ether.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "resources/resource_ids.h"
#include "tests/bench/ether/ether_demands.h"
#include "tests/bench/ether/tone_file.h"
#include "tests/bench/ether/tuning_stations.h"
#include "tests/bench/process_usage.h"
#include "tests/bench/program_run.h"
#include "tests/bench/record_button.h"
#include "tests/bench/table.h"
#include "tests/support/ether_under_test.h"
#include "tests/support/object_counts.h"
#include "tests/support/remote_list.h"
#include "tests/support/wait.h"

namespace bench {
namespace {

constexpr long kRetunes = 120;
constexpr long kSeeks = 10;
constexpr long kTunings = 100'000;
constexpr long kAwaitedTunings = 300;
constexpr DWORD kSpan_ms = 10'000;
constexpr int kTurns = 3;
constexpr DWORD kWarmUp_ms = 30'000;
constexpr DWORD kLife_ms = 120'000;
constexpr DWORD kHour_ms = 3'600'000;
constexpr double kTone_Hz = 1000;
// A look at 1.92 MHz sees 16 channels; 206 of them round the band, those of the tuned station's being known.
constexpr double kLooks = 13;
constexpr long kScanned = 20;
constexpr WCHAR kFile[] = L"\\Tone.";
constexpr WCHAR kRadio[] = L"\\Windows\\UI.exe";

void SayStep(const char* what) {
    std::fprintf(stderr, "%s ...\n", what);
}

// What bench_tunings.exe found: its names and figures.
std::map<std::string, double> Tunings(const std::wstring& arguments) {
    std::string said;
    test::RunProgram(L"bench_tunings.exe", arguments, &said, INFINITE);
    std::map<std::string, double> figures;
    for (const std::string& line : test::Lines(said)) {
        std::istringstream words(line);
        std::string name;
        double value = 0;
        if (words >> name >> value) figures[name] = value;
    }
    return figures;
}

std::optional<double> Figure(const std::map<std::string, double>& figures, const std::string& name) {
    const auto found = figures.find(name);
    return found == figures.end() ? std::nullopt : std::optional(found->second);
}

std::optional<Spread> SpreadOf(const std::map<std::string, double>& figures, const std::string& name) {
    const auto median = Figure(figures, name + "Median_ms"), worst = Figure(figures, name + "Worst_ms");
    if (!median || !worst) return std::nullopt;
    return Spread{*median, *worst};
}

std::string Section(std::uint32_t channel_10kHz, int level, const std::string& more) {
    return "[" + std::to_string(channel_10kHz) + "]\nlevel=" + std::to_string(level) + "\n" + more + "\n";
}

std::string Tone(double tone_Hz) {
    return "programme=tone:" + std::to_string(std::lround(tone_Hz));
}

void MeasureRetunes(const test::HandsetUnderTest& handset, EtherResults* results) {
    std::string band;
    for (const TuningStation& station : kTuningStations)
        band += Section(station.channel_10kHz, 45, Tone(station.tone_Hz));
    handset.WriteBand(band);
    const auto figures = Tunings(L"retunes " + std::to_wstring(kRetunes));
    const auto retunes = Figure(figures, "retunes"), unheard = Figure(figures, "unheard");
    if (!retunes || !unheard) return;
    results->retunes = RetuneCase{static_cast<long>(*retunes), static_cast<long>(*unheard),
                                  SpreadOf(figures, "sound"), SpreadOf(figures, "level")};
}

void MeasureSeeks(const test::HandsetUnderTest& handset, EtherResults* results) {
    handset.WriteBand("[band]\nwrap=1\n" + Section(kTuningStations[0].channel_10kHz, 45, Tone(kTone_Hz)));
    const auto figures = Tunings(L"seeks " + std::to_wstring(kSeeks));
    const auto crossing_ms = Figure(figures, "crossing_ms");
    if (!crossing_ms) return;
    results->seeks = SeekCase{*crossing_ms / kLooks, crossing_ms, Figure(figures, "longest_ms"),
                              static_cast<long>(Figure(figures, "missed").value_or(1))};
}

std::optional<Growth> MeasureGrowth(const wchar_t* what, long count) {
    const auto figures = Tunings(what + (L" " + std::to_wstring(count)));
    if (figures.count("after_MB") == 0 || figures.count("before_MB") == 0) return std::nullopt;
    Growth growth;
    growth.count = figures.at("tunings");
    growth.before_MB = figures.at("before_MB");
    growth.after_MB = figures.at("after_MB");
    growth.before_handles = static_cast<long>(figures.at("before_handles"));
    growth.after_handles = static_cast<long>(figures.at("after_handles"));
    growth.survived = figures.at("survived") != 0;
    return growth;
}

// Of one processor, by a radio that plays 98.5 MHz with stereo and RDS.
std::optional<double> PlayingShare(test::HandsetUnderTest& handset, const wchar_t* antenna) {
    test::RunProgram(L"handset.exe", std::wstring(L"antenna ") + antenna);
    handset.ClearTunerLog();
    test::Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const bool plays = test::WaitFor([&] {
        const auto calls = handset.TunerCalls();
        const auto is = [&](const char* call) {
            return std::find(calls.begin(), calls.end(), call) != calls.end();
        };
        return is("GetStereo -> 0") && is("GetRDSData -> 0: 1 Good morning");
    });
    if (!plays) return std::nullopt;
    const ProcessUsage usage(radio.Process(), handset.DevicePath(kRadio));
    const double before_ms = usage.Cpu_ms();
    Sleep(kSpan_ms);
    const double used_ms = usage.Cpu_ms() - before_ms;
    return used_ms > 0 ? std::optional(used_ms / kSpan_ms) : std::nullopt;
}

void MeasureShares(test::HandsetUnderTest& handset, EtherResults* results) {
    handset.WriteBand(
        Section(9850, 45, "stereo=1\nps=KORA ONE\npty=News\nrt=Good morning\n" + Tone(kTone_Hz)));
    std::vector<double> air, band;
    for (int turn = 0; turn < kTurns; ++turn) {
        const auto onBand = PlayingShare(handset, L"band");
        const auto onAir = PlayingShare(handset, L"ether");
        if (onBand) band.push_back(*onBand);
        if (onAir) air.push_back(*onAir);
    }
    if (!air.empty()) results->air_share = Median(air);
    if (!band.empty()) results->band_share = Median(band);
}

std::uint32_t ScannedChannel(long number) {
    // A megahertz from each to the next, and some less and more.
    return 8780 + static_cast<std::uint32_t>(number * 100 + number * 7 % 5 * 10);
}

void MeasureScan(test::HandsetUnderTest& handset, EtherResults* results) {
    std::string band = "[band]\nwrap=1\n";
    for (long number = 0; number < kScanned; ++number)
        band += Section(ScannedChannel(number), 30 + static_cast<int>(number * 3 % 15), Tone(kTone_Hz));
    handset.WriteBand(band);
    test::Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    Sleep(1000);  // the ether has the band
    radio.Command(IDC_AUTOSCAN);
    HWND box = radio.WaitForBox(L"Stored channels");
    if (box == nullptr) return;
    const double began_ms = Now_ms();
    test::Radio::Answer(box, IDOK);
    if (!test::WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr; }, 120'000)) return;
    ScanCase scan;
    scan.stations = kScanned;
    scan.total_s = (Now_ms() - began_ms) / 1000;
    test::Radio::Answer(box, IDOK);
    test::WaitFor([&] { return radio.Box(L"FM") == nullptr && IsWindowVisible(radio.ListView()); });
    std::vector<std::wstring> wanted;
    for (long number = 0; number < kScanned; ++number) {
        const std::uint32_t channel = ScannedChannel(number);
        wanted.push_back(std::to_wstring(channel / 100) + L"." + std::to_wstring(channel % 100 / 10) +
                         L" MHz ");
    }
    for (int row = 0; row < test::RowCount(radio.ListView()); ++row) {
        const bool right =
            std::count(wanted.begin(), wanted.end(), test::RowText(radio.ListView(), row, 1)) > 0;
        ++(right ? scan.right : scan.wrong);
    }
    const std::string elapsed = "FM: Auto Scan Elapsed = ";
    for (const std::string& line : test::Lines(handset.Trace())) {
        if (line.rfind(elapsed, 0) == 0)
            scan.runs_s.push_back(std::atof(line.c_str() + elapsed.size()) / 1000);
    }
    results->scan = scan;
}

// One long recording serves both: what the radio holds while it goes on, and the tone in it.
void MeasureLife(test::HandsetUnderTest& handset, DWORD life_ms, EtherResults* results) {
    // Loud for the air, without the noise of stereo.
    handset.WriteBand(Section(9850, 58, "ps=KORA ONE\nrt=Good morning\n" + Tone(kTone_Hz)));
    handset.SetRegistry(test::kRadioSettings, L"RecordAudioType", 2u);
    DefineName(handset, kFile);
    const std::wstring file = handset.DevicePath(std::wstring(kFile) + L"wav");
    DeleteFileW(file.c_str());
    test::Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    // The sound has settled, and what is made once is made.
    Sleep(kWarmUp_ms);
    TapRecord(radio);
    const double began_ms = Now_ms();
    if (!test::WaitFor([&] { return !IsWindowVisible(radio.ListView()); })) return;
    Sleep(kWarmUp_ms);
    const ProcessUsage usage(radio.Process(), handset.DevicePath(kRadio));
    Growth growth;
    growth.count = life_ms / 60'000.0;
    growth.before_MB = usage.Private_MB();
    growth.before_handles = static_cast<long>(test::CountObjects(radio).handles);
    Sleep(life_ms);
    growth.after_MB = usage.Private_MB();
    growth.after_handles = static_cast<long>(test::CountObjects(radio).handles);
    growth.survived = radio.Runs();
    results->recorded_s = (Now_ms() - began_ms) / 1000;
    StopRecording(radio);
    results->life = growth;
    std::ifstream wav(std::filesystem::path(file), std::ios::binary);
    results->tone = WatchFile(&wav, kTone_Hz);
    wav.close();
    DeleteFileW(file.c_str());
}

void AddFlaws(const char* what, const std::vector<ToneFlaw>& flaws, const char* size, double unit,
              CTable* table) {
    for (const ToneFlaw& flaw : flaws)
        table->Add({what, Text("at %.2f s, ", flaw.at_s) + Text(size, flaw.size * unit)});
}

std::string Percent(const std::optional<double>& share) {
    return share ? Text("%.1f %%", 100 * *share) : "not measured";
}

void PrintFigures(const EtherResults& results) {
    CTable table({"On the ether", "Figure"});
    table.Add({"processor time of the radio, stereo and RDS from the ether", Percent(results.air_share)});
    table.Add({"the same from the simulated band", Percent(results.band_share)});
    if (results.retunes) table.Add({"tunings", std::to_string(results.retunes->retunes)});
    if (results.seeks && results.seeks->crossing_ms)
        table.Add({"a seek round the whole band, median", Text("%.0f ms", *results.seeks->crossing_ms)});
    if (results.scan) {
        std::string runs;
        for (const double run_s : results.scan->runs_s) runs += Text("%.2f s ", run_s);
        table.Add({"each run of the scan", runs});
    }
    if (results.tone) {
        table.Add({"length of the tone in the recording", Text("%.2f s", results.tone->seconds)});
        table.Add({"its pitch",
                   Text("%+.1f to ", results.tone->least_ppm) + Text("%+.1f ppm", results.tone->most_ppm)});
        AddFlaws("a click in it", results.tone->clicksAt, "%.0f %% of the tone", 100, &table);
        AddFlaws("a break in it", results.tone->breaksAt, "%+.1f samples missing", 1, &table);
    }
    table.Print();
}

}  // namespace

bool MeasureEther(test::HandsetUnderTest& handset, const EtherOptions& options) {
    EtherResults results;
    {
        const test::EtherUnderTest ether(test::EtherUnderTest::kSticksBuffer_bytes);
        // Its lines take longer than what they tell of.
        handset.DeleteState(L"TunerLog");
        SayStep("tunings");
        MeasureRetunes(handset, &results);
        SayStep("seeks");
        MeasureSeeks(handset, &results);
        SayStep("a scan");
        MeasureScan(handset, &results);
        SayStep("many tunings");
        handset.WriteBand(Section(kTuningStations[0].channel_10kHz, 45, Tone(kTone_Hz)));
        results.tunings = MeasureGrowth(L"tunings", kTunings);
        results.awaitedTunings = MeasureGrowth(L"awaited", options.retunes ? kTunings : kAwaitedTunings);
        handset.SetState(L"TunerLog", L"\\tuner.log");
        SayStep(options.hour ? "an hour of tone" : "two minutes of tone");
        MeasureLife(handset, options.hour ? kHour_ms : kLife_ms, &results);
    }
    SayStep("processor time");
    MeasureShares(handset, &results);
    test::RunProgram(L"handset.exe", L"antenna band");
    PrintFigures(results);
    return PrintDemands(EtherDemands(results));
}

}  // namespace bench
