// The command line of a scheduled start.
#include "schedule/command_line.h"

#include "tests/unit/tuner/tuner_test.h"
#include "tuner/device.h"

namespace {

using testing::Contains;
using testing::StartsWith;

struct Parsed {
    HRESULT result;
    CommandLineRequest request;
    std::string trace;
};

Parsed Parse(std::wstring line, CommandLineRequest before = {}) {
    Parsed parsed = {};
    parsed.request = before;
    parsed.trace = test::TraceOf([&] { parsed.result = ParseCommandLine(line.data(), &parsed.request); });
    return parsed;
}

TEST(CommandLine, ABookedLineFillsTheWholeRequestAndIsTraced) {
    const Parsed parsed = Parse(L"-Rec -Channel 8750 -Duration 60");
    EXPECT_EQ(parsed.result, 0);
    EXPECT_EQ(parsed.request.uRecord, 1U);
    EXPECT_EQ(parsed.request.uChannel, 8750U);
    EXPECT_EQ(parsed.request.uDuration_min, 60U);
    EXPECT_EQ(parsed.trace, "Channel: 8750\r\nDuration: 60\r\n");
}

TEST(CommandLine, ANullCommandLineIsRefused) {
    CommandLineRequest request = {1, 2, 3};
    EXPECT_EQ(ParseCommandLine(nullptr, &request), static_cast<HRESULT>(0x80070057));
    EXPECT_EQ(request.uRecord, 1U);
}

TEST(CommandLine, AnEmptyCommandLineGivesZeroWithNothingSet) {
    for (const wchar_t* line : {L"", L" ", L"      "}) {
        const Parsed parsed = Parse(line, {1, 9850, 7});
        EXPECT_EQ(parsed.result, 0);
        EXPECT_EQ(parsed.request.uRecord, 1U);
        EXPECT_EQ(parsed.request.uChannel, 9850U);
        EXPECT_EQ(parsed.request.uDuration_min, 7U);
        EXPECT_EQ(parsed.trace, "");
    }
}

TEST(CommandLine, ChannelAsTheLastTokenLeavesTheChannelAt0) {
    const Parsed parsed = Parse(L"-Rec -Channel");
    EXPECT_EQ(parsed.result, 0);
    EXPECT_EQ(parsed.request.uRecord, 1U);
    EXPECT_EQ(parsed.request.uChannel, 0U);
    EXPECT_EQ(parsed.trace, "");
    EXPECT_EQ(Parse(L"-Duration 3 -Duration  ").request.uDuration_min, 3U);
}

TEST(CommandLine, ALowerCaseRecIsNotRecognised) {
    EXPECT_EQ(Parse(L"-rec").request.uRecord, 0U);
    EXPECT_EQ(Parse(L"-REC -Rec1 Rec").request.uRecord, 0U);
    EXPECT_EQ(Parse(L"-channel 8750 -duration 5").trace, "");
}

TEST(CommandLine, TheOptionsInAnotherOrderGiveTheSameRequest) {
    const Parsed parsed = Parse(L"-Duration 60 -Rec -Channel 8750");
    EXPECT_EQ(parsed.request.uRecord, 1U);
    EXPECT_EQ(parsed.request.uChannel, 8750U);
    EXPECT_EQ(parsed.request.uDuration_min, 60U);
    EXPECT_EQ(parsed.trace, "Duration: 60\r\nChannel: 8750\r\n");
}

TEST(CommandLine, RunsOfBlanksCountAsOneAndNothingElseSeparates) {
    EXPECT_EQ(Parse(L"   -Channel    9850   ").request.uChannel, 9850U);
    const Parsed tabbed = Parse(L"-Rec\t-Channel 9850");
    EXPECT_EQ(tabbed.request.uRecord, 0U);
    EXPECT_EQ(tabbed.request.uChannel, 0U);
}

TEST(CommandLine, ALaterOccurrenceOverwritesAnEarlierOne) {
    EXPECT_EQ(Parse(L"-Channel 9850 -Channel 10230").request.uChannel, 10230U);
}

TEST(CommandLine, TheTokenAfterAnOptionIsItsValueWhateverItSays) {
    const Parsed parsed = Parse(L"-Channel -Rec -Duration 12x -Unknown 5");
    EXPECT_EQ(parsed.request.uRecord, 0U);
    EXPECT_EQ(parsed.request.uChannel, 0U);
    EXPECT_EQ(parsed.request.uDuration_min, 12U);
    EXPECT_EQ(parsed.trace, "Channel: -Rec\r\nDuration: 12x\r\n");
}

TEST(CommandLine, ValuesThatDoNotFitFollowThePlatformsConversion) {
    EXPECT_EQ(Parse(L"-Channel 2147483647").request.uChannel, 2147483647U);
    EXPECT_EQ(Parse(L"-Channel 99999999999").request.uChannel,
              static_cast<std::uint32_t>(std::wcstol(L"99999999999", nullptr, 10)));
    EXPECT_EQ(Parse(L"-Channel -5").request.uChannel, 4294967291U);
}

TEST(CommandLine, ATokenInAnyLanguageIsTracedInUtf8) {
    EXPECT_EQ(Parse(L"-Channel \x97f3\x00e9").trace, "Channel: \xe9\x9f\xb3\xc3\xa9\r\n");
}

class ScheduledStart : public TunerTest {};

TEST_F(ScheduledStart, ADurationOf0OrNoDurationTunesTheChannelButAsksForNoRecording) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const test::RegisteredFMDevice registered(device);
    for (const wchar_t* line : {L"-Rec -Channel 9850 -Duration 0", L"-Rec -Channel 9850"}) {
        g_app.pFMDevice = nullptr;
        device.ForgetCalls();
        state->m_request = Parse(line).request;
        EXPECT_EQ(state->m_request.uDuration_min, 0U);
        ASSERT_TRUE(CreateTunerDevice(window, *state));
        EXPECT_THAT(device.Calls(), Contains("SetChannel 9850"));
    }
    CoUninitialize();
}

TEST_F(ScheduledStart, AChannelWithoutRecTunesNothing) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const test::RegisteredFMDevice registered(device);
    g_app.pFMDevice = nullptr;
    state->m_request = Parse(L"-Channel 9850").request;
    ASSERT_TRUE(CreateTunerDevice(window, *state));
    EXPECT_THAT(device.Calls(), Not(Contains(StartsWith("SetChannel"))));
    CoUninitialize();
}

}  // namespace
