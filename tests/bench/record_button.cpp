// How soon a recording begins.
#include "tests/bench/record_button.h"

#include <stdexcept>

#include "handset/capture/files/recording_tags.h"
#include "tests/bench/program_run.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recording_rig.h"

namespace bench {
namespace {

constexpr WCHAR kFile[] = L"\\Latency.";
constexpr int kRounds = 5;
constexpr double kWavHeader = 44 + capture::kWavTags_bytes;
constexpr double kBytesA_ms = 22050 * 4 / 1000.0;

// The handset's classes, found as the radio finds them: by its manifest.
class HandsetClassesHere {
  public:
    explicit HandsetClassesHere(const std::wstring& manifest) {
        ACTCTXW context = {};
        context.cbSize = sizeof context;
        context.lpSource = manifest.c_str();
        m_context = CreateActCtxW(&context);
        if (m_context == INVALID_HANDLE_VALUE) throw std::runtime_error("the manifest cannot be read");
        ActivateActCtx(m_context, &m_cookie);
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    }
    ~HandsetClassesHere() {
        CoUninitialize();
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_context);
    }
    HandsetClassesHere(const HandsetClassesHere&) = delete;
    HandsetClassesHere& operator=(const HandsetClassesHere&) = delete;

  private:
    HANDLE m_context;
    ULONG_PTR m_cookie = 0;
};

double BareGraph_ms(const test::HandsetUnderTest& handset) {
    const HandsetClassesHere classes(handset.DevicePath(L"\\Windows\\UI.exe.manifest"));
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        test::CRecordingRig rig;
        const double start = Now_ms();
        if (rig.Build({22050, 2, 16}) != S_OK || rig.AttachWav(L"\\Bare.wav") != S_OK || rig.Start() != S_OK)
            throw std::runtime_error("no graph can be built");
        times.push_back(Now_ms() - start);
        rig.Stop();
    }
    return Median(times);
}

// How much shorter the file is than the time between the two presses.
double Button_ms(test::HandsetUnderTest& handset) {
    constexpr DWORD kRecorded_ms = 1500;
    handset.SetRegistry(test::kRadioSettings, L"RecordAudioType", 2u);
    DefineName(handset, kFile);
    const std::wstring file = handset.DevicePath(std::wstring(kFile) + L"wav");
    std::vector<double> latencies;
    test::Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    for (int round = 0; round < kRounds; ++round) {
        DeleteFileW(file.c_str());
        const double start = Now_ms();
        TapRecord(radio);
        test::WaitFor([&] { return Now_ms() - start >= kRecorded_ms; });
        const double pressed_ms = Now_ms() - start;
        StopRecording(radio);
        const double bytes = static_cast<double>(test::ReadWholeFile(file).size()) - kWavHeader;
        latencies.push_back(pressed_ms - bytes / kBytesA_ms);
    }
    return Median(latencies);
}

}  // namespace

void DefineName(const test::HandsetUnderTest& handset, const std::wstring& name) {
    handset.SetRegistry(test::kRadioSettings, L"SaveFileType", 1u);
    handset.SetRegistry(test::kRadioSettings, L"DefineFileName", name);
}

void TapRecord(const test::Radio& radio) {
    radio.Tap(28, 251);
}

void StopRecording(const test::Radio& radio) {
    TapRecord(radio);
    const HWND box = radio.WaitForBox(L"FM");
    test::Radio::Answer(box, IDOK);
    test::WaitFor([&] { return radio.Box(L"FM") == nullptr; });
}

Row MeasureRecordStart(test::HandsetUnderTest& handset) {
    const double button = Button_ms(handset);
    return {"record button to first sample", button, "the graph alone, built and started",
            BareGraph_ms(handset),           "ms",   ""};
}

}  // namespace bench
