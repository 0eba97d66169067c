#include "tests/bench/reception/text_cases.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "handset/transmitter/station_texts.h"
#include "tests/bench/reception/data_cases.h"
#include "tests/bench/reception/listening.h"

namespace bench {
namespace {

constexpr double kLook_s = 0.01;
constexpr double kLongest_s = 30;

sdr::ReceiverOptions OptionsFor(const Air& air) {
    sdr::ReceiverOptions options;
    options.rate_Hz = air.stream.rate_Hz;
    return options;
}

void Run(TuningCase& tuning) {
    transmitter::StationTexts texts;
    texts.ps = {"KORA ONE"};
    texts.texts = {"Good morning from the other end of the air"};
    texts.text_s = 1e9;
    Air air = OrdinaryAir(tuning.carrierToNoise_dBHz);
    air.stations.front().multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    CAirStream stream(air);
    CListening listening(OptionsFor(air));
    const auto look = static_cast<std::size_t>(kLook_s * air.stream.rate_Hz);
    for (int i = 0; i < tuning.tunings; ++i) {
        // Somewhere else in a group each time.
        stream.Next(look + static_cast<std::size_t>(i) * 977);
        listening.Tune(0);
        double pi_s = kLongest_s, name_s = kLongest_s, text_s = kLongest_s;
        for (double passed_s = kLook_s; passed_s < kLongest_s && text_s == kLongest_s; passed_s += kLook_s) {
            listening.Process(stream.Next(look));
            listening.Sound().clear();
            const sdr::rds::Station& station = listening.Station();
            if (station.pi == texts.pi) pi_s = std::min(pi_s, passed_s);
            if (station.serviceName.whole == texts.ps[0]) name_s = std::min(name_s, passed_s);
            if (station.radioText.whole == texts.texts[0]) text_s = passed_s;
        }
        tuning.pi.each_s.push_back(pi_s);
        tuning.name.each_s.push_back(name_s);
        tuning.text.each_s.push_back(text_s);
    }
    for (Times* times : {&tuning.pi, &tuning.name, &tuning.text})
        std::sort(times->each_s.begin(), times->each_s.end());
}

// Whether each letter that is no blank stands in that place of one of the sent ones. Half of a text may be of
// the one before.
bool IsOfSentLetters(const std::string& letters, const std::vector<std::string>& sent) {
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const bool known = std::any_of(sent.begin(), sent.end(), [&](const std::string& whole) {
            return letters[i] == ' ' || (i < whole.size() && whole[i] == letters[i]);
        });
        if (!known) return false;
    }
    return true;
}

// Counts each text that is new on the screen.
class CWitness {
  public:
    explicit CWitness(const std::vector<std::string>& sent) : sent_(sent) {}
    void Look(const sdr::rds::Text& text, TruthCase* truth) {
        const bool newWhole = text.whole != whole_ && !text.whole.empty(),
                   newLetters = text.letters != letters_;
        whole_ = text.whole;
        letters_ = text.letters;
        if (!newWhole && !newLetters) return;
        ++truth->shown;
        const bool untrueWhole = newWhole && std::find(sent_.begin(), sent_.end(), whole_) == sent_.end();
        if (untrueWhole || !IsOfSentLetters(letters_, sent_)) {
            ++truth->untrue;
            std::fprintf(stderr, "   untrue at %.0f dB-Hz: \"%s\", \"%s\"\n", truth->carrierToNoise_dBHz,
                         whole_.c_str(), letters_.c_str());
        }
    }

  private:
    std::vector<std::string> sent_;
    std::string whole_, letters_;
};

void Run(TruthCase& truth) {
    transmitter::StationTexts texts;
    texts.ps = {"KORA ONE", "TUNED TO", "THE AIR!"};
    texts.ps_s = 4;
    texts.texts = {"Good morning from the other end of the air", "It is raining, and will be until tomorrow",
                   "Next: a concert for two pianos and a kettle, played by nobody"};
    texts.text_s = 12;
    Air air = OrdinaryAir(truth.carrierToNoise_dBHz);
    air.stream.seed = 99;
    air.stations.front().multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    CAirStream stream(air);
    CListening listening(OptionsFor(air));
    CWitness names(texts.ps), radioTexts(texts.texts);
    const auto look = static_cast<std::size_t>(0.05 * air.stream.rate_Hz);
    for (double passed_s = 0; passed_s < truth.length_s; passed_s += 0.05) {
        listening.Process(stream.Next(look));
        listening.Sound().clear();
        names.Look(listening.Station().serviceName, &truth);
        radioTexts.Look(listening.Station().radioText, &truth);
    }
}

std::string Named(const char* what, double carrierToNoise_dBHz) {
    char text[60];
    std::snprintf(text, sizeof text, "%s at %.0f dB-Hz", what, carrierToNoise_dBHz);
    return text;
}

template <typename Case>
std::vector<Task> TasksOf(const char* what, std::vector<Case>& cases) {
    std::vector<Task> tasks;
    for (Case& each : cases) tasks.push_back({Named(what, each.carrierToNoise_dBHz), [&each] { Run(each); }});
    return tasks;
}

}  // namespace

std::vector<TuningCase> TuningCases(bool quick) {
    std::vector<TuningCase> cases;
    for (const double cn : {80.0, 72.0, 68.0}) cases.push_back({cn, quick ? 5 : 21, {}, {}, {}});
    return cases;
}

std::vector<TruthCase> TruthCases(bool quick) {
    std::vector<TruthCase> cases;
    for (const double cn : {65.0, 66.0, 67.0, 68.0, 70.0}) {
        if (quick && cn != 66) continue;
        cases.push_back({cn, quick ? 30.0 : 120.0});
    }
    return cases;
}

std::vector<Task> Measure(std::vector<TuningCase>& cases) {
    return TasksOf("tuning", cases);
}
std::vector<Task> Measure(std::vector<TruthCase>& cases) {
    return TasksOf("changing texts", cases);
}

}  // namespace bench
