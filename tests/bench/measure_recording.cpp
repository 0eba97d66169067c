// What recording costs: an hour to each format, and a minute early and late in a long one.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <interf_enc.h>

#include "handset/capture/files/recording_tags.h"
#include "tests/bench/measure.h"
#include "tests/bench/process_usage.h"
#include "tests/bench/program_run.h"
#include "tests/bench/record_button.h"
#include "tests/support/wait.h"

namespace bench {
namespace {

constexpr int kClockRate = 30;
constexpr int kLongClockRate = 60;
constexpr DWORD kSpan_ms = 4000;  // of real time: two minutes of the handset's
// The hours are measured by turns, and the median counts: the machine may have other work for a while.
constexpr int kTurns = 3;
// At the pace of life nothing comes in large pieces.
constexpr int kLifesRate = 1;
constexpr DWORD kLifesSpan_ms = 15000;
constexpr WCHAR kFile[] = L"\\Measured.";

enum class Format : std::uint32_t { kAmr, kWav8, kWav22 };

// A radio on a fast clock that records from its construction to its destruction; or plays, without a format.
class RecordingRadio {
  public:
    RecordingRadio(test::HandsetUnderTest& handset, int clockRate, const Format* format)
        : m_rate(handset, clockRate, format),
          m_radio(handset, L"-Rec -Channel 9850"),
          m_records(format != nullptr) {
        m_radio.WaitUntilShown();
        if (m_records) TapRecord(m_radio);
        const bool begun = test::WaitFor([&] { return !m_records || !IsWindowVisible(m_radio.ListView()); });
        m_usage = std::make_unique<ProcessUsage>(m_radio.Process(), handset.DevicePath(kRadio));
        if (!begun || !m_radio.Runs()) throw std::runtime_error("the radio does not record");
    }
    ~RecordingRadio() {
        if (m_records) StopRecording(m_radio);
    }
    const ProcessUsage& Usage() const { return *m_usage; }

  private:
    static constexpr WCHAR kRadio[] = L"\\Windows\\UI.exe";
    // What the radio is started with.
    struct Rate {
        Rate(test::HandsetUnderTest& handset, int clockRate, const Format* format) {
            handset.SetRegistry(test::kRadioSettings, L"RecordAudioType",
                                format != nullptr ? static_cast<std::uint32_t>(*format) : 0u);
            DefineName(handset, kFile);
            for (const wchar_t* extension : {L"amr", L"wav"})
                DeleteFileW(handset.DevicePath(std::wstring(kFile) + extension).c_str());
            SetEnvironmentVariableW(L"KORA_CLOCKRATE", std::to_wstring(clockRate).c_str());
        }
        ~Rate() { SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr); }
    };

    Rate m_rate;
    test::Radio m_radio;
    const bool m_records;
    std::unique_ptr<ProcessUsage> m_usage;
};

// Seconds of processor time for an hour; no format: played, not recorded.
double HourOf(test::HandsetUnderTest& handset, const Format* format, int clockRate = kClockRate,
              DWORD span_ms = kSpan_ms) {
    const RecordingRadio radio(handset, clockRate, format);
    const double before = radio.Usage().Cpu_ms();
    Sleep(span_ms);
    const double used_ms = radio.Usage().Cpu_ms() - before;
    if (used_ms <= 0) throw std::runtime_error("the radio is gone");
    return used_ms / span_ms * 3600 / clockRate;
}

double ThreadCpu_ms() {
    FILETIME created, exited, kernel, user;
    GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user);
    const auto value = [](const FILETIME& time) {
        return static_cast<double>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
    };
    return (value(kernel) + value(user)) / 1e4;
}

// The sound that was recorded last, to WAV at 8 kHz.
std::vector<std::int16_t> RecordedSound(const test::HandsetUnderTest& handset) {
    constexpr std::size_t kHeader = 44 + capture::kWavTags_bytes;
    const std::string bytes = test::ReadWholeFile(handset.DevicePath(std::wstring(kFile) + L"wav"));
    if (bytes.size() < kHeader + 8000 * 2) throw std::runtime_error("nothing was recorded");
    std::vector<std::int16_t> sound((bytes.size() - kHeader) / 2);
    std::memcpy(sound.data(), bytes.data() + kHeader, sound.size() * 2);
    return sound;
}

// An hour of it through the encoder library alone, which writes to what it is given.
double EncoderHour_s(std::vector<std::int16_t> sound) {
    constexpr std::size_t kFrame = 160;
    void* encoder = Encoder_Interface_init(0);
    unsigned char frame[64];
    const double before = ThreadCpu_ms();
    for (std::size_t at = 0; at + kFrame <= sound.size(); at += kFrame)
        Encoder_Interface_Encode(encoder, MR122, &sound[at], frame, 0);
    const double used_ms = ThreadCpu_ms() - before;
    Encoder_Interface_exit(encoder);
    return used_ms / 1000 * 3600 / (static_cast<double>(sound.size()) / 8000);
}

// Whether a recording costs more the longer it is: what a minute of it took, and what the radio held, by the
// end of its 1st, 10th and 60th minute.
std::vector<Row> MeasureLength(test::HandsetUnderTest& handset) {
    constexpr int kMinutes[] = {1, 10, 60};
    const Format format = Format::kAmr;
    const RecordingRadio radio(handset, kLongClockRate, &format);
    const double start = Now_ms();
    double before_ms = radio.Usage().Cpu_ms();
    std::vector<Row> rows;
    int minutesBefore = 0;
    for (const int minute : kMinutes) {
        const double end = start + minute * 60000.0 / kLongClockRate;
        Sleep(static_cast<DWORD>(std::max(end - Now_ms(), 0.0)));
        const double now_ms = radio.Usage().Cpu_ms();
        const double each_ms = (now_ms - before_ms) / (minute - minutesBefore);
        const std::string until = "up to minute " + std::to_string(minute) + " of an AMR recording: ";
        const double memory_MB = radio.Usage().Private_MB();
        const double firstMemory_MB = rows.empty() ? memory_MB : rows[1].ours;
        const double first_ms = rows.empty() ? each_ms : rows[0].ours;
        rows.push_back({until + "a minute", each_ms, "the first minute", first_ms, "ms", "no growth"});
        rows.push_back({until + "memory", memory_MB, "after a minute", firstMemory_MB, "MB", "no growth"});
        before_ms = now_ms;
        minutesBefore = minute;
    }
    return rows;
}

Row TimesRealTime(const char* format, double hour_s, double played_s) {
    return {std::string("an hour to ") + format + ", times real time",
            3600 / hour_s,
            "the hour played, not recorded",
            3600 / played_s,
            "x",
            ""};
}

}  // namespace

std::vector<Row> MeasureRecording(test::HandsetUnderTest& handset) {
    constexpr Format kAmr = Format::kAmr, kWav22 = Format::kWav22, kWav8 = Format::kWav8;
    std::vector<double> playedHours, amrHours, wav22Hours, wav8Hours, encoderHours;
    for (int turn = 0; turn < kTurns; ++turn) {
        playedHours.push_back(HourOf(handset, nullptr));
        wav22Hours.push_back(HourOf(handset, &kWav22));
        wav8Hours.push_back(HourOf(handset, &kWav8));
        const std::vector<std::int16_t> sound = RecordedSound(handset);
        const double encoderBefore = EncoderHour_s(sound);
        amrHours.push_back(HourOf(handset, &kAmr));
        encoderHours.push_back((encoderBefore + EncoderHour_s(sound)) / 2);
    }
    const double played = Median(playedHours), amr = Median(amrHours), wav22 = Median(wav22Hours),
                 wav8 = Median(wav8Hours), encoder = Median(encoderHours);
    const double lifePlayed = HourOf(handset, nullptr, kLifesRate, kLifesSpan_ms);
    const double lifeAmr = HourOf(handset, &kAmr, kLifesRate, kLifesSpan_ms);
    const char* const peer = "the hour played, not recorded";
    std::vector<Row> rows = {
        {"an hour recorded to AMR, processor time", amr, peer, played, "s", ""},
        {"an hour recorded to WAV at 8 kHz", wav8, peer, played, "s", ""},
        {"an hour recorded to WAV at 22 kHz", wav22, peer, played, "s", ""},
        {"the recording's own share of the AMR hour", amr - played, "encoder library, the same sound",
         encoder, "s", "within 10 % of the encoder"},
        {"what AMR costs more than WAV at 8 kHz", amr - wav8, "encoder library, the same sound", encoder, "s",
         ""},
        {"an hour recorded to AMR at life's pace", lifeAmr, "the hour played, not recorded", lifePlayed, "s",
         ""},
        TimesRealTime("AMR", amr, played),
        TimesRealTime("WAV at 8 kHz", wav8, played),
        TimesRealTime("WAV at 22 kHz", wav22, played),
    };
    for (const Row& row : MeasureLength(handset)) rows.push_back(row);
    rows.push_back(MeasureRecordStart(handset));
    return rows;
}

}  // namespace bench
