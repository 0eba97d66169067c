#include "tests/bench/reception/demands.h"

#include <algorithm>
#include <tuple>

namespace bench {
namespace {

const DataCase* At(const std::vector<DataCase>& cases, double carrierToNoise_dBHz) {
    for (const DataCase& data : cases) {
        if (data.CarrierToNoise_dBHz() == carrierToNoise_dBHz) return &data;
    }
    return nullptr;
}

Demand NotMeasured(const std::string& what, const std::string& asked) {
    return {what, asked, "not measured", false};
}

Demand Errors(const std::string& what, const DataCase* data, double most) {
    const std::string asked = Text("<= %.0f %%", 100 * most);
    if (data == nullptr || data->ours.sent == 0) return NotMeasured(what, asked);
    return {what, asked, Share(data->ours.ErrorRate(), data->ours.sent), data->ours.ErrorRate() <= most};
}

Demand WrongBlocks(const Results& results) {
    const DataCase* worst = nullptr;
    bool all = true;
    for (const auto* cases : {&results.weak, &results.fallback, &results.odd}) {
        all = all && !cases->empty();
        for (const DataCase& data : *cases) {
            all = all && data.ours.sent > 0;
            if (worst == nullptr || data.ours.WrongRate() > worst->ours.WrongRate()) worst = &data;
        }
    }
    if (!all) return NotMeasured("wrong blocks, the most of any signal", "<= 0.5 %");
    const Score& score = worst->ours;
    return {"wrong blocks, the most of any signal (" + worst->what + ")", "<= 0.5 %",
            Share(score.WrongRate(), score.sent), score.WrongRate() <= 0.005};
}

void DemandData(const Results& results, std::vector<Demand>* demands) {
    demands->push_back(Errors("block errors at 70 dB-Hz", At(results.weak, 70), 0.01));
    demands->push_back(Errors("block errors at 68 dB-Hz", At(results.weak, 68), 0.10));
    demands->push_back(Errors("block errors at 66 dB-Hz", At(results.weak, 66), 0.50));
    demands->push_back(WrongBlocks(results));
    const DataCase* groups = At(results.weak, 68);
    if (groups == nullptr || groups->ours.sentGroups == 0) {
        demands->push_back(NotMeasured("whole groups at 68 dB-Hz", ">= 70 %"));
    } else {
        demands->push_back({"whole groups at 68 dB-Hz", ">= 70 %",
                            Text("%.0f %%", 100 * groups->ours.WholeRate()),
                            groups->ours.WholeRate() >= 0.70});
    }
    if (At(results.fallback, 69) == nullptr)
        demands->push_back(NotMeasured("block errors without a pilot or beside it", "<= 10 %"));
    for (const DataCase& data : results.fallback) {
        if (data.CarrierToNoise_dBHz() == 69)
            demands->push_back(Errors("block errors, " + data.what, &data, 0.10));
    }
    const bool any = std::any_of(results.odd.begin(), results.odd.end(),
                                 [](const DataCase& data) { return data.most >= 0; });
    if (!any) demands->push_back(NotMeasured("block errors in other situations", "<= 1 %"));
    for (const DataCase& data : results.odd) {
        if (data.most >= 0) demands->push_back(Errors("block errors, " + data.what, &data, data.most));
    }
}

Demand FirstCode(const Results& results, double carrierToNoise_dBHz, double most_s) {
    const std::string what = Text("station code after tuning at %.0f dB-Hz, median", carrierToNoise_dBHz);
    const std::string asked = Text("<= %.1f s", most_s);
    for (const TuningCase& tuning : results.tunings) {
        if (tuning.carrierToNoise_dBHz != carrierToNoise_dBHz || tuning.pi.each_s.empty()) continue;
        return {what, asked, Text("%.2f s", tuning.pi.Median()), tuning.pi.Median() <= most_s};
    }
    return NotMeasured(what, asked);
}

void DemandTexts(const Results& results, std::vector<Demand>* demands) {
    long untrue = 0, shown = 0;
    for (const TruthCase& truth : results.truths) untrue += truth.untrue, shown += truth.shown;
    demands->push_back(
        shown == 0 ? NotMeasured("texts shown that were not sent", "none")
                   : Demand{"texts shown that were not sent", "none", std::to_string(untrue), untrue == 0});
    demands->push_back(FirstCode(results, 72, 0.3));
    demands->push_back(FirstCode(results, 68, 1.5));
}

// The slowest look and the slowest band.
void DemandBands(const Results& results, std::vector<Demand>* demands) {
    double hop_s = 0, whole_s = 0;
    long faults = 0;
    for (const BandCase& band : results.bands) {
        hop_s = std::max(hop_s, band.Hop_s());
        whole_s = std::max(whole_s, band.Whole_s());
        faults += band.missed + band.untrue;
    }
    const bool measured = !results.bands.empty() && whole_s > 0;
    const auto add = [&](const char* what, const char* asked, const std::string& reached, bool met) {
        demands->push_back(measured ? Demand{what, asked, reached, met} : NotMeasured(what, asked));
    };
    add("a look at the band, what is stale included", "<= 0.2 s", Text("%.3f s", hop_s), hop_s <= 0.2);
    add("the whole band, what is stale included", "<= 2.5 s", Text("%.2f s", whole_s), whole_s <= 2.5);
    add("stations missed or made up in the band", "none", std::to_string(faults), faults == 0);
}

void DemandNoise(const Results& results, std::vector<Demand>* demands) {
    const NoiseCase* edge = nullptr;
    const NoiseCase* worst = nullptr;
    const auto below_dB = [](const NoiseCase& row) { return row.limit_dB - row.reached_dB; };
    for (const NoiseCase& row : results.noise) {
        if (row.carrierToNoise_dBHz == 63) edge = &row;
        if (row.carrierToNoise_dBHz < 66) continue;
        if (worst == nullptr || below_dB(row) > below_dB(*worst)) worst = &row;
    }
    demands->push_back(edge == nullptr ? NotMeasured("stereo SINAD at 63 dB-Hz", ">= 23.5 dB")
                                       : Demand{"stereo SINAD at 63 dB-Hz", ">= 23.5 dB",
                                                Text("%.1f dB", edge->reached_dB), edge->reached_dB >= 23.5});
    const char* const kBelow = "stereo SINAD below the limit, 66 to 90 dB-Hz";
    demands->push_back(worst == nullptr ? NotMeasured(kBelow, "<= 0.3 dB")
                                        : Demand{kBelow, "<= 0.3 dB", Text("%.2f dB", below_dB(*worst)),
                                                 below_dB(*worst) <= 0.3});
}

// The least separation of a stretch of frequencies.
Demand Separation(const Results& results, double from_Hz, double to_Hz, double least_dB) {
    const std::string what = Text("separation to %.0f kHz", to_Hz / 1000);
    const std::string asked = Text(">= %.0f dB", least_dB);
    const SeparationCase* worst = nullptr;
    for (const SeparationCase& row : results.separation) {
        if (row.frequency_Hz <= from_Hz || row.frequency_Hz > to_Hz) continue;
        if (worst == nullptr || row.reached_dB < worst->reached_dB) worst = &row;
    }
    if (worst == nullptr) return NotMeasured(what, asked);
    return {what, asked, Text("%.1f dB", worst->reached_dB), worst->reached_dB >= least_dB};
}

void DemandSound(const Results& results, std::vector<Demand>* demands) {
    DemandNoise(results, demands);
    const CleanSound& clean = results.clean;
    demands->push_back(
        {"clean SINAD at 1 kHz", ">= 90 dB", Text("%.1f dB", clean.sinad_dB), clean.sinad_dB >= 90});
    demands->push_back(Separation(results, 0, 10000, 70));
    demands->push_back(Separation(results, 10000, 14000, 60));
    for (const auto& [lowest, highest, name] : {std::tuple{clean.lowest_dB, clean.highest_dB, "50 us"},
                                                std::tuple{clean.lowest75_dB, clean.highest75_dB, "75 us"}}) {
        demands->push_back({std::string("response 30 Hz to 14 kHz, ") + name, "+-0.1 dB",
                            Text("%+.3f to ", lowest) + Text("%+.3f dB", highest),
                            lowest >= -0.1 && highest <= 0.1});
    }
    demands->push_back(
        {"19 kHz in the sound", "<= -80 dB", Text("%.1f dB", clean.pilot_dB), clean.pilot_dB <= -80});
}

Demand Processor(const std::string& stage, const char* form, const std::vector<Cost>& costs, double most) {
    const std::string what = "processor, " + stage + ", " + form;
    const std::string asked = Text("<= %.0f %%", 100 * most);
    for (const Cost& cost : costs) {
        if (cost.what == stage)
            return {what, asked, Text("%.2f %%", 100 * cost.share), cost.share > 0 && cost.share <= most};
    }
    return NotMeasured(what, asked);
}

}  // namespace

std::vector<Demand> Demands(const Results& results) {
    std::vector<Demand> demands;
    DemandData(results, &demands);
    DemandTexts(results, &demands);
    DemandBands(results, &demands);
    DemandSound(results, &demands);
    for (const char* stage : {"all, with RDS", "all, with RDS, at 68 dB-Hz"}) {
        demands.push_back(Processor(stage, "plain", results.plain, 0.04));
        demands.push_back(Processor(stage, "AVX2", results.fast, 0.03));
    }
    return demands;
}

}  // namespace bench
