// The tuner device comes and goes.
#include "tuner/device.h"

#include <atomic>
#include <thread>

#include "skin/skin_access.h"
#include "tests/unit/tuner/tuner_test.h"
#include "tuner/digit_entry.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Device : public TunerTest {
  protected:
    Device() {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        g_app.pFMDevice = nullptr;
    }
    ~Device() override { CoUninitialize(); }
};

// Answers each message box with that caption as it comes up, and keeps their texts.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(const wchar_t* caption) : m_caption(caption), m_thread([this] { Run(); }) {}
    ~BoxAnswerer() { Stop(); }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    std::vector<std::wstring> Stop() {
        m_stop = true;
        if (m_thread.joinable()) m_thread.join();
        return m_texts;
    }

  private:
    void Run() {
        while (!m_stop) {
            const HWND box = FindWindowW(L"#32770", m_caption);
            if (box == nullptr || box == m_answered) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                continue;
            }
            WCHAR text[200] = L"";
            for (HWND child = nullptr;
                 (child = FindWindowExW(box, child, L"Static", nullptr)) != nullptr && *text == 0;) {
                GetWindowTextW(child, text, 200);
            }
            if (*text == L'\0') continue;  // still being made
            m_texts.push_back(text);
            m_owners.push_back(GetParent(box));
            m_answered = box;
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    }

    const wchar_t* m_caption;
    std::atomic<bool> m_stop{false};
    HWND m_answered = nullptr;
    std::vector<std::wstring> m_texts;

  public:
    std::vector<HWND> m_owners;

  private:
    std::thread m_thread;
};

bool TakeQuit() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return true;
        DispatchMessageW(&message);
    }
    return false;
}

TEST_F(Device, StartUpPowersSilencesAndAsksInTheFixedOrder) {
    const test::RegisteredFMDevice registered(device);
    BOOL created = FALSE;
    const std::string trace = test::TraceOf([&] { created = CreateTunerDevice(window, *state); });
    ASSERT_TRUE(created);
    EXPECT_EQ(g_app.pFMDevice, &device);
    EXPECT_THAT(device.Calls(), ElementsAre("Initialize", "SetSpeaker 0", "SetMute 0", "GetVolume"));
    EXPECT_EQ(trace, "FM: SpeakerOn = 0\n");
    EXPECT_EQ(device.references, 1);
    EXPECT_FALSE(TakeQuit());
}

TEST_F(Device, StartUpGivesTheReceiver100msAfterPowerUpAndAfterTheLoudspeaker) {
    const test::RegisteredFMDevice registered(device);
    ASSERT_TRUE(CreateTunerDevice(window, *state));
    const std::vector<test::FakeFMDevice::Call> calls = device.TimedCalls();
    ASSERT_EQ(calls.size(), 4U);
    constexpr std::chrono::milliseconds kLeast(99);  // 100 less the clocks' grain
    EXPECT_GE(calls[1].at - calls[0].at, kLeast);
    EXPECT_GE(calls[2].at - calls[1].at, kLeast);
}

TEST_F(Device, TheMuteAtStartUpIsDirectAndLeavesTheLoudspeakerAlone) {
    const test::RegisteredFMDevice registered(device);
    g_app.SpeakerOn = 1;
    ASSERT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(device.Calls(), ElementsAre("Initialize", "SetSpeaker 0", "SetMute 0", "GetVolume"));
    EXPECT_EQ(g_app.SpeakerOn, 0);
}

TEST_F(Device, AScheduledStartTunesItsChannelAfterTheMuteAndBeforeTheVolume) {
    const test::RegisteredFMDevice registered(device);
    state->m_request = {1, 10230, 60};
    ASSERT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(device.Calls(),
                ElementsAre("Initialize", "SetSpeaker 0", "SetMute 0", "SetChannel 10230", "GetVolume"));
}

TEST_F(Device, AScheduledStartWithoutAChannelKeepsTheTunersOwn) {
    const test::RegisteredFMDevice registered(device);
    state->m_request = {1, 0, 60};
    ASSERT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(device.Calls(), ElementsAre("Initialize", "SetSpeaker 0", "SetMute 0", "GetVolume"));
}

TEST_F(Device, TheVolumeSliderStandsAtItsRangeTimesTheVolumeThroughAHundred) {
    const test::RegisteredFMDevice registered(device);
    const int range = GetSliderMax(state->m_skin, SKIN_VOLUME);
    ASSERT_GT(range, 0);
    for (const std::uint32_t volume : {0U, 1U, 33U, 50U, 99U, 100U}) {
        device.volume = volume;
        device.ForgetCalls();
        ASSERT_TRUE(CreateTunerDevice(window, *state));
        EXPECT_EQ(GetSliderPos(state->m_skin, SKIN_VOLUME), range * static_cast<int>(volume) / 100);
        EXPECT_EQ(device.volume, volume) << "placing the slider must not set the volume";
    }
}

TEST_F(Device, ADeviceWhoseInitializeReturnsEFailStillLetsTheWindowOpenAfterOneErrorBox) {
    const test::RegisteredFMDevice registered(device);
    device.results["Initialize"] = E_FAIL;
    BoxAnswerer answerer(L"Error");
    EXPECT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(answerer.Stop(), ElementsAre(L"FM Device Initial Error"));
    EXPECT_THAT(answerer.m_owners, ElementsAre(window));
    EXPECT_TRUE(IsWindow(window));
    EXPECT_FALSE(TakeQuit());
    EXPECT_THAT(device.Calls(), ElementsAre("Initialize", "SetSpeaker 0", "SetMute 0", "GetVolume"));
}

TEST_F(Device, AnotherFailureOfInitializeIsNotReported) {
    const test::RegisteredFMDevice registered(device);
    device.results["Initialize"] = E_OUTOFMEMORY;
    BoxAnswerer answerer(L"Error");
    EXPECT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(answerer.Stop(), IsEmpty());
}

TEST_F(Device, WithoutADeviceTheEndIsRequestedAndNothingElseHappens) {
    BoxAnswerer answerer(L"Error");
    const std::string trace = test::TraceOf([&] { EXPECT_FALSE(CreateTunerDevice(window, *state)); });
    EXPECT_EQ(g_app.pFMDevice, nullptr);
    EXPECT_TRUE(TakeQuit());
    EXPECT_EQ(trace, "");
    EXPECT_THAT(answerer.Stop(), IsEmpty());
}

TEST_F(Device, ShutDownSilencesClosesAndReleasesInTheFixedOrder) {
    g_app.pFMDevice = &device;
    g_app.SpeakerOn = 1;
    device.references = 1;
    CloseTunerDevice();
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 0", "Close", "Release"));
    EXPECT_EQ(device.references, 0);
    EXPECT_EQ(g_app.pFMDevice, nullptr);
}

TEST_F(Device, ShutDownRestoresTheVolumeOfAWeakSignalMute) {
    g_app.pFMDevice = &device;
    device.references = 1;
    g_app.bLowSignalMute = 1;
    g_app.dwSavedVolume = 63;
    CloseTunerDevice();
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 0", "SetVolume 63", "Close", "Release"));
}

TEST_F(Device, ShutDownWithoutADeviceDoesNothing) {
    g_app.bLowSignalMute = 1;
    EXPECT_EQ(test::TraceOf([] { CloseTunerDevice(); }), "");
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(Device, AfterAFailedCreationNoControlKeyOrTimerReachesADevice) {
    ASSERT_FALSE(CreateTunerDevice(window, *state));
    TakeQuit();
    for (const int id :
         {SKIN_RECORD, SKIN_OUTPUT, SKIN_MUTE, SKIN_STOP_RECORD, SKIN_AF_LIST, SKIN_RDS_INFORMATION}) {
        Click(id);
    }
    for (const int id : {SKIN_SEEK_DOWN, SKIN_SEEK_UP, SKIN_STEP_DOWN, SKIN_STEP_UP}) Repeat(id);
    SendMessageW(window, WM_SKIN_SLIDER, SKIN_VOLUME, 31);
    Type("875");
    Type("1085");
    DigitEntryTimerProc(window, WM_TIMER, TIMER_DIGIT_ENTRY, 0);
    DigitEntryTimerProc(window, WM_TIMER, TIMER_DIGIT_ENTRY, 0);
    CloseTunerDevice();
    EXPECT_THAT(device.Calls(), IsEmpty());
}

}  // namespace
