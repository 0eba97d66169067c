// ./kora bench --reception: the receiver in software against demands, limits and other decoders, in one
// table.
//
//   reception_bench [--quick] [--curves FOLDER]
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "tests/bench/reception/curve.h"
#include "tests/bench/reception/demands.h"
#include "tests/bench/reception/peer_decoder.h"
#include "tests/bench/reception/report.h"
#include "tests/bench/reception/results.h"

namespace {

using bench::CTable;
using bench::DataCase;
using bench::Results;
using bench::Share;
using bench::Text;

struct Options {
    bool quick = false;
    std::string curves;
};

Options ReadOptions(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--quick") {
            options.quick = true;
        } else if (argument == "--curves" && i + 1 < count) {
            options.curves = arguments[++i];
        } else {
            std::fprintf(stderr, "\"%s\" is not known; there are --quick and --curves FOLDER\n",
                         argument.c_str());
            std::exit(2);
        }
    }
    return options;
}

// By a program beside this one, for each form of the kernels another.
std::vector<bench::Cost> Costs(const char* program) {
    char self[4096] = {};
    std::vector<bench::Cost> costs;
    if (readlink("/proc/self/exe", self, sizeof self - 1) <= 0) return costs;
    const std::string folder(self, std::strrchr(self, '/') + 1);
    FILE* lines = popen(("'" + folder + program + "'").c_str(), "r");
    if (lines == nullptr) return costs;
    char line[200];
    while (std::fgets(line, sizeof line, lines) != nullptr) {
        char* tab = std::strchr(line, '\t');
        if (tab != nullptr) costs.push_back({std::string(line, tab), std::atof(tab)});
    }
    pclose(lines);
    return costs;
}

Results MeasureAll(bool quick) {
    Results results;
    results.redsea = bench::FindRedsea();
    results.weak = bench::WeakCases(quick);
    results.fallback = bench::FallbackCases(quick);
    results.odd = bench::OddCases(quick);
    results.tunings = bench::TuningCases(quick);
    results.truths = bench::TruthCases(quick);
    results.bands = bench::BandCases();
    results.noise = bench::NoiseCases(quick);
    results.separation = bench::SeparationCases(quick);
    std::vector<bench::Task> tasks;
    const auto add = [&](const std::vector<bench::Task>& more) {
        tasks.insert(tasks.end(), more.begin(), more.end());
    };
    add(Measure(results.noise));
    add(Measure(results.truths));
    add(Measure(results.tunings));
    add(Measure(results.weak, results.redsea));
    add(Measure(results.fallback, results.redsea));
    add(Measure(results.odd, results.redsea));
    add(Measure(results.bands));
    add(Measure(results.separation));
    add(Measure(results.clean));
    bench::RunAll(tasks);
    std::fprintf(stderr, "   processor time, with nothing beside it\n");
    results.fast = Costs("reception_cost");
    results.plain = Costs("reception_cost_plain");
    return results;
}

void PrintData(const char* title, const std::vector<DataCase>& cases, const std::string& redsea,
               bool limits) {
    std::printf("%s\n\n", title);
    std::vector<std::string> heads = {"Signal", "Block errors", "Wrong blocks", "Whole groups"};
    if (limits) heads.insert(heads.end(), {"Best possible: errors", "whole groups"});
    heads.insert(heads.end(), {"redsea: errors", "wrong", "whole groups"});
    CTable table(heads);
    for (const DataCase& data : cases) {
        std::vector<std::string> cells = {data.what, Share(data.ours.ErrorRate(), data.ours.sent),
                                          Share(data.ours.WrongRate(), data.ours.sent),
                                          Text("%.0f %%", 100 * data.ours.WholeRate())};
        if (limits) {
            cells.push_back(Share(data.limit, data.limitBlocks));
            cells.push_back(Text("%.0f %%", 100 * std::pow(1 - data.limit, 4)));
        }
        if (data.redsea) {
            cells.push_back(Share(data.redsea->ErrorRate(), data.redsea->sent));
            cells.push_back(Share(data.redsea->WrongRate(), data.redsea->sent));
            cells.push_back(Text("%.0f %%", 100 * data.redsea->WholeRate()));
        } else {
            cells.insert(cells.end(), {redsea.empty() ? "absent" : "-", "", ""});
        }
        table.Add(cells);
    }
    table.Print();
}

void PrintTexts(const Results& results) {
    std::printf("From tuning to what is shown, median and slowest\n\n");
    CTable table({"Signal", "Tunings", "Station code", "Whole name", "Whole text of 42 letters"});
    const auto both = [](const bench::Times& times) {
        return Text("%.2f s", times.Median()) + Text(", %.2f s", times.Slowest());
    };
    for (const auto& tuning : results.tunings) {
        table.Add({Text("%.0f dB-Hz", tuning.carrierToNoise_dBHz), std::to_string(tuning.tunings),
                   both(tuning.pi), both(tuning.name), both(tuning.text)});
    }
    table.Print();
    CTable truths({"Names and texts that change", "Time", "Shown one after another", "Not sent"});
    for (const auto& truth : results.truths) {
        truths.Add({Text("%.0f dB-Hz", truth.carrierToNoise_dBHz), Text("%.0f s", truth.length_s),
                    std::to_string(truth.shown), std::to_string(truth.untrue)});
    }
    truths.Print();
}

void PrintBands(const Results& results) {
    std::printf("The band from 87.5 to 108 MHz, looked at\n\n");
    CTable table({"Band", "Looks", "Air for a look", "Processor for a look", "Whole band", "Found", "Missed",
                  "Made up"});
    for (const bench::BandCase& band : results.bands) {
        table.Add({band.what, std::to_string(band.looks), Text("%.0f ms", 1000 * band.air_s),
                   Text("%.2f ms", 1000 * band.processor_s), Text("%.2f s", band.Whole_s()),
                   std::to_string(band.found), std::to_string(band.missed), std::to_string(band.untrue)});
    }
    table.Print();
}

void PrintSound(const Results& results) {
    std::printf("Sound: 1 kHz on the left, 57 kHz of deviation, 50 us\n\n");
    CTable noise({"C/N0", "SINAD", "Limit of FM stereo", "Below it"});
    for (const auto& row : results.noise) {
        noise.Add({Text("%.0f dB-Hz", row.carrierToNoise_dBHz), Text("%.1f dB", row.reached_dB),
                   Text("%.1f dB", row.limit_dB), Text("%.2f dB", row.limit_dB - row.reached_dB)});
    }
    noise.Print();
    CTable clean({"Without noise", ""});
    clean.Add({"SINAD", Text("%.1f dB", results.clean.sinad_dB)});
    clean.Add({"harmonics", Text("%.1f dB", results.clean.distortion_dB)});
    for (const auto& row : results.separation) {
        clean.Add({Text("separation at %.0f Hz", row.frequency_Hz), Text("%.1f dB", row.reached_dB)});
    }
    clean.Add({"response 30 Hz to 14 kHz, 50 us",
               Text("%+.3f to ", results.clean.lowest_dB) + Text("%+.3f dB", results.clean.highest_dB)});
    clean.Add({"response 30 Hz to 14 kHz, 75 us",
               Text("%+.3f to ", results.clean.lowest75_dB) + Text("%+.3f dB", results.clean.highest75_dB)});
    clean.Add({"19 kHz", Text("%.1f dB", results.clean.pilot_dB)});
    clean.Print();
}

void PrintCosts(const Results& results) {
    std::printf("Processor time of one core, from 1.92 MHz of bytes\n\n");
    CTable table({"Stage", "AVX2", "plain"});
    for (std::size_t i = 0; i < results.fast.size() && i < results.plain.size(); ++i) {
        table.Add({results.fast[i].what, Text("%.2f %%", 100 * results.fast[i].share),
                   Text("%.2f %%", 100 * results.plain[i].share)});
    }
    if (!results.weak.empty() && results.weak.back().redsea) {
        const std::string share = Text("%.2f %%", 100 * results.weak.back().redseaProcessor);
        table.Add({"redsea, RDS alone, from a multiplex at 171 kHz", share, share});
    }
    table.Print();
}

void Write(const std::string& file, const bench::Drawing& drawing) {
    std::ofstream(file) << bench::ToSvg(drawing);
    std::fprintf(stderr, "   %s\n", file.c_str());
}

void DrawCurves(const Results& results, const std::string& folder) {
    bench::Curve ours{"Kora", "#1b6ca8", {}}, limit{"best possible", "#888888", {}},
        redsea{"redsea", "#c0392b", {}};
    for (const DataCase& data : results.weak) {
        const double cn = data.CarrierToNoise_dBHz();
        ours.points.emplace_back(cn, std::max(100 * data.ours.ErrorRate(), 0.01));
        limit.points.emplace_back(cn, std::max(100 * data.limit, 0.01));
        if (data.redsea) redsea.points.emplace_back(cn, std::max(100 * data.redsea->ErrorRate(), 0.01));
    }
    bench::Drawing errors{
        "RDS block errors", "C/N0, dB-Hz", "block errors, %", 63, 80, 0.05, 100, 1, 1, false, true,
        {limit, ours}};
    if (!redsea.points.empty()) errors.curves.push_back(redsea);
    Write(folder + "/block-errors.svg", errors);
    bench::Curve apart{"Kora", "#1b6ca8", {}};
    for (const auto& row : results.separation) apart.points.emplace_back(row.frequency_Hz, row.reached_dB);
    Write(folder + "/separation.svg", {"Stereo separation",
                                       "frequency, Hz",
                                       "separation, dB",
                                       30,
                                       15000,
                                       0,
                                       140,
                                       0,
                                       20,
                                       true,
                                       false,
                                       {apart}});
    bench::Curve sinad{"Kora", "#1b6ca8", {}}, best{"limit of FM stereo", "#888888", {}};
    for (const auto& row : results.noise) {
        sinad.points.emplace_back(row.carrierToNoise_dBHz, row.reached_dB);
        best.points.emplace_back(row.carrierToNoise_dBHz, row.limit_dB);
    }
    Write(folder + "/sinad.svg",
          {"Stereo sound", "C/N0, dB-Hz", "SINAD, dB", 62, 90, 15, 55, 4, 5, false, false, {best, sinad}});
}

}  // namespace

int main(int count, char** arguments) {
    const Options options = ReadOptions(count, arguments);
    const Results results = MeasureAll(options.quick);
    if (results.redsea.empty())
        std::printf("redsea was not found (in the path, or where REDSEA says): its columns are absent.\n\n");
    PrintData("RDS at 240 kHz and 8 bits, deviation 2 kHz", results.weak, results.redsea, true);
    PrintData("RDS without a pilot or beside it", results.fallback, results.redsea, false);
    PrintData("RDS in other situations", results.odd, results.redsea, false);
    PrintTexts(results);
    PrintBands(results);
    PrintSound(results);
    PrintCosts(results);
    if (!options.curves.empty()) DrawCurves(results, options.curves);
    std::printf("Demand and result\n\n");
    return bench::PrintDemands(bench::Demands(results)) ? 0 : 1;
}
