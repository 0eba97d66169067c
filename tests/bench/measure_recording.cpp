// What recording costs, and how soon it begins.
#include <windows.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <interf_enc.h>

#include "tests/bench/measure.h"
#include "tests/bench/process_usage.h"
#include "tests/bench/program_run.h"
#include "tests/support/radio.h"
#include "tests/support/wait.h"

namespace bench {
namespace {

constexpr WCHAR kSettings[] = L"HKCR\\CLSID\\{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}";
constexpr int kClockRate = 30;
constexpr DWORD kSpan_ms = 8000;  // of real time: four minutes of the handset's
constexpr double kHours = kSpan_ms / 1000.0 * kClockRate / 3600;

void TapRecord(const test::Radio& radio) {
    radio.Tap(28, 251);
}

void StopRecording(test::Radio& radio) {
    TapRecord(radio);
    const HWND box = radio.WaitForBox(L"FM");
    test::Radio::Answer(box, IDOK);
    test::WaitFor([&] { return radio.Box(L"FM") == nullptr; });
}

// Seconds of processor time for an hour; `format` < 0: played, not recorded.
double HourOf(test::HandsetUnderTest& handset, int format) {
    handset.SetRegistry(kSettings, L"RecordAudioType", static_cast<std::uint32_t>(format < 0 ? 0 : format));
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", std::to_wstring(kClockRate).c_str());
    test::Radio radio(handset, L"-Rec -Channel 9850");
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr);
    radio.WaitUntilShown();
    const ProcessUsage usage(radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe"));
    if (format >= 0) TapRecord(radio);
    test::WaitFor([&] { return format < 0 || !IsWindowVisible(radio.ListView()); });
    const double before = usage.Cpu_ms();
    Sleep(kSpan_ms);
    const double used_ms = usage.Cpu_ms() - before;
    if (format >= 0) StopRecording(radio);
    return used_ms / 1000 / kHours;
}

// The same hour through the encoder library alone.
double EncoderHour_s() {
    constexpr int kFrame = 160, kFramesASecond = 50, kSeconds = 60;
    std::vector<std::int16_t> tone(kFrame * kFramesASecond);
    for (std::size_t at = 0; at < tone.size(); ++at) {
        tone[at] = static_cast<std::int16_t>(
            8000 * std::sin(2 * 3.14159265358979 * 440 * static_cast<double>(at) / 8000));
    }
    void* encoder = Encoder_Interface_init(0);
    unsigned char frame[64];
    const double before = Now_ms();
    for (int at = 0; at < kSeconds * kFramesASecond; ++at) {
        Encoder_Interface_Encode(encoder, MR122,
                                 &tone[static_cast<std::size_t>(at % kFramesASecond * kFrame)], frame, 0);
    }
    const double used_ms = Now_ms() - before;
    Encoder_Interface_exit(encoder);
    return used_ms / 1000 * 3600 / kSeconds;
}

// From the press to the first sample: how much shorter the file is than the time between the two presses.
double ButtonToFirstSample_ms(test::HandsetUnderTest& handset) {
    constexpr double kBytesA_ms = 22050 * 4 / 1000.0;
    constexpr DWORD kRecorded_ms = 1500;
    handset.SetRegistry(kSettings, L"RecordAudioType", 2u);
    handset.SetRegistry(kSettings, L"SaveFileType", 1u);
    handset.SetRegistry(kSettings, L"DefineFileName", std::wstring(L"\\Latency."));
    const std::wstring file = handset.DevicePath(L"\\Latency.wav");
    std::vector<double> latencies;
    test::Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    for (int round = 0; round < 5; ++round) {
        DeleteFileW(file.c_str());
        const double start = Now_ms();
        TapRecord(radio);
        test::WaitFor([&] { return Now_ms() - start >= kRecorded_ms; });
        const double pressed_ms = Now_ms() - start;
        StopRecording(radio);
        const double bytes = static_cast<double>(test::ReadWholeFile(file).size()) - 44;
        latencies.push_back(pressed_ms - bytes / kBytesA_ms);
    }
    handset.SetRegistry(kSettings, L"SaveFileType", 0u);
    return Median(latencies);
}

}  // namespace

std::vector<Row> MeasureRecording(test::HandsetUnderTest& handset) {
    const double played = HourOf(handset, -1);
    const double amr = HourOf(handset, 0);
    const double encoder = EncoderHour_s();
    const char* const peer = "the hour played, not recorded";
    return {
        {"an hour recorded to AMR, processor time", amr, peer, played, "s", ""},
        {"an hour recorded to WAV at 8 kHz", HourOf(handset, 1), peer, played, "s", ""},
        {"an hour recorded to WAV at 22 kHz", HourOf(handset, 2), peer, played, "s", ""},
        {"the recording's own share of the AMR hour", amr - played, "encoder library alone", encoder, "s",
         "within 10 % of the encoder"},
        {"an hour to AMR, times real time", 3600 / amr, peer, 3600 / played, "x", ""},
        {"record button to first sample", ButtonToFirstSample_ms(handset), "", 0, "ms", ""},
    };
}

}  // namespace bench
