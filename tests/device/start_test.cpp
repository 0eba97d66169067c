// The phone's own program in an emulated processor of the phone's kind: what a start, a few keys and an end
// ask of the system and of the tuner, and what they say.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "resources/resource_ids.h"
#include "tests/device/phone.h"

namespace {

using device::Phone;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Not;
using Lines = std::vector<std::string>;

constexpr std::uint32_t kRepeat = 0x8002, kCommand = 0x111, kClose = 0x10;
constexpr std::uint32_t kOtherBase = 0x02340000;

void Close(Phone& phone) {
    phone.Post({phone.MainWindow(), kClose, 0, 0});
}

// Three digits and a fourth, a seek upwards, and the end by the menu.
void LiveAShortLife(Phone& phone) {
    phone.script = {[](Phone& p) {
                        for (const char digit : std::string("1012")) p.Key(static_cast<std::uint32_t>(digit));
                    },
                    [](Phone& p) {
                        p.Post({p.MainWindow(), kRepeat, SKIN_SEEK_UP, 0});
                    },
                    [](Phone& p) {
                        p.Post({p.MainWindow(), kCommand, static_cast<std::uint16_t>(IDC_EXIT), 0});
                    }};
}

// The last place of each of these in `all` comes behind the one of the name before it.
::testing::AssertionResult InOrder(const Lines& all, const Lines& wanted) {
    auto at = all.begin();
    for (const std::string& one : wanted) {
        at = std::find(at, all.end(), one);
        if (at == all.end()) return ::testing::AssertionFailure() << one << " is missing, or comes too early";
        ++at;
    }
    return ::testing::AssertionSuccess();
}

Lines FileLines(const std::string& name) {
    std::ifstream file(std::string(KORA_SOURCE_DIR "/tests/data/device-script/") + name);
    Lines lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

Lines Without(const Lines& lines, const Lines& beginnings) {
    Lines left;
    for (const std::string& line : lines) {
        const bool out = std::any_of(beginnings.begin(), beginnings.end(),
                                     [&](const std::string& begin) { return line.rfind(begin, 0) == 0; });
        if (!out) left.push_back(line);
    }
    return left;
}

// What the tuner was told to do, without what it was only asked.
Lines Orders(const Lines& calls) {
    return Without(calls, {"GetVolume", "GetChannel", "GetSignal", "GetStereo"});
}

class OnAPhone : public ::testing::Test {
  protected:
    Phone phone{KORA_DEVICE_PROGRAM};
};

TEST_F(OnAPhone, WithoutAHeadsetTheRadioWarnsAndEndsWithZero) {
    phone.numbers["HKLM\\System\\State\\Hardware:Headset"] = 0;
    EXPECT_EQ(phone.Start(""), 0u);
    ASSERT_EQ(phone.boxes.size(), 1u);
    EXPECT_EQ(phone.boxes[0].rfind("WARNING: ", 0), 0u) << phone.boxes[0];
    EXPECT_THAT(phone.calls, Not(Contains("RegisterClassW")));
    EXPECT_TRUE(phone.tuner.empty());
}

TEST_F(OnAPhone, AStartMakesClassWindowMenuTunerWatchesAndThreadsInThisOrder) {
    phone.script = {Close};
    EXPECT_EQ(phone.Start(""), 0u);
    EXPECT_TRUE(InOrder(phone.calls, {"FindWindowW", "RegisterClassW", "CreateWindowExW", "SHCreateMenuBar",
                                      "CoCreateInstance", "RegistryNotifyWindow", "RegistryNotifyWindow",
                                      "CreateThread", "CreateThread", "CreateWindowExW", "CeMountDBVol",
                                      "ShowWindow", "UpdateWindow", "GetMessageW"}));
    EXPECT_TRUE(phone.boxes.empty());
}

TEST_F(OnAPhone, TheFirstPaintShowsTheFrequencyAndThatItHasNoName) {
    phone.script = {Close};
    phone.Start("");
    EXPECT_TRUE(InOrder(phone.calls, {"UpdateWindow", "BeginPaint", "CreateCompatibleDC", "BitBlt",
                                      "EndPaint", "DrawTextW", "DrawTextW", "GetMessageW"}));
    EXPECT_THAT(phone.drawn, ElementsAre("87.5 MHz", "Unknown"));
}

TEST_F(OnAPhone, TheTunerIsPoweredUpAndReleasedInItsOrder) {
    phone.script = {Close};
    phone.Start("");
    EXPECT_THAT(Orders(phone.tuner),
                ElementsAre("Initialize -> 0", "SetSpeaker 0 -> 0", "SetMute 0 -> 0", "SetSpeaker 0 -> 0",
                            "SetMute 0 -> 0", "Close -> 0", "Release -> 0"));
}

TEST_F(OnAPhone, WithoutAReceiverTheRadioMakesNoWindowAndEnds) {
    phone.receiver = false;
    EXPECT_EQ(phone.Start(""), 0u);
    EXPECT_THAT(phone.calls, Not(Contains("GetMessageW")));
    EXPECT_THAT(phone.calls, Not(Contains("CreateThread")));
}

TEST_F(OnAPhone, DigitsAreEchoedAndTune) {
    LiveAShortLife(phone);
    phone.Start("");
    EXPECT_TRUE(InOrder(phone.drawn, {"1_._", "10._", "101._", "101.2 MHz"}));
    EXPECT_THAT(phone.tuner, Contains("SetChannel 10120 -> 0"));
}

TEST_F(OnAPhone, TheTraceOfAShortLifeIsTheDesktopsLineByLine) {
    LiveAShortLife(phone);
    EXPECT_EQ(phone.Start(""), 0u);
    EXPECT_THAT(Without(phone.trace, {"===WA_ACTIVE"}), ElementsAreArray(FileLines("trace.txt")));
    EXPECT_THAT(phone.console, ElementsAreArray(FileLines("console.txt")));
    EXPECT_THAT(Orders(phone.tuner), ElementsAreArray(FileLines("tuner.txt")));
}

TEST_F(OnAPhone, LoadedElsewhereTheProgramDoesTheSame) {
    Phone moved(KORA_DEVICE_PROGRAM, kOtherBase);
    LiveAShortLife(phone);
    LiveAShortLife(moved);
    phone.Start("");
    EXPECT_EQ(moved.Start(""), 0u);
    EXPECT_EQ(moved.calls, phone.calls);
    EXPECT_EQ(moved.trace, phone.trace);
    EXPECT_EQ(moved.tuner, phone.tuner);
}

TEST_F(OnAPhone, ABookedStartTunesAndStartsTheThreadThatRecords) {
    phone.script = {Close};
    phone.Start("-Rec -Channel 10120 -Duration 5");
    EXPECT_THAT(phone.tuner, Contains("SetChannel 10120 -> 0"));
    EXPECT_THAT(phone.trace, Contains("Channel: 10120"));
    EXPECT_THAT(phone.trace, Contains("Duration: 5"));
    EXPECT_EQ(phone.threads.size(), 3u);
}

TEST_F(OnAPhone, ARoundOfTheMonitorReadsTheSignalAndShowsStereo) {
    constexpr std::size_t kMonitor = 1;
    phone.script = {[](Phone& p) { p.RunThread(p.threads.at(kMonitor), 1); }, Close};
    phone.Start("");
    EXPECT_THAT(phone.tuner, Contains("GetSignal -> 0: 45"));
    EXPECT_THAT(phone.trace, Contains("FM: Signal = 45 "));
    EXPECT_THAT(phone.drawn, Contains("Stereo"));
}

TEST_F(OnAPhone, EveryImageOfTheSkinIsFoundByTheDevicesImageLoader) {
    LiveAShortLife(phone);
    phone.Start("");
    EXPECT_THAT(phone.calls, Contains("SHLoadImageResource"));
    EXPECT_THAT(phone.imagesMissed, ::testing::IsEmpty());
}

// The emulated phone refuses a call of 128 characters or more.
TEST_F(OnAPhone, ACommandLineOfAnyLengthKeepsTheTraceBelowTheDevicesBound) {
    phone.script = {Close};
    const std::string digits = std::string(150, '0') + "10120";
    EXPECT_EQ(phone.Start("-Rec -Channel " + digits + " -Duration " + digits), 0u);
    EXPECT_THAT(phone.trace, Contains("Channel: " + digits.substr(0, 100)));
    EXPECT_THAT(phone.tuner, Contains("SetChannel 10120 -> 0"));
}

TEST_F(OnAPhone, AShortLifeGivesBackEveryDeviceContextBrushAndFont) {
    LiveAShortLife(phone);
    phone.Start("");
    // The skin's bitmaps stay for the program's whole life.
    const auto loaded =
        static_cast<std::size_t>(std::count(phone.calls.begin(), phone.calls.end(), "SHLoadImageResource"));
    EXPECT_LE(phone.drawingObjects.size(), loaded);
    EXPECT_GT(loaded, 10u);
}

}  // namespace
