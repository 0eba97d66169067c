// The start of a recording: checks, names, questions, and what the main screen looks like afterwards.
#include "tests/unit/recording/recording_test.h"

namespace {

using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr UINT kQuestion = MB_YESNO | MB_ICONQUESTION;

class StartRecording : public test::RecordingTest {
  protected:
    void ExpectIdle(bool scanGrey = false) {
        EXPECT_FALSE(state->m_bRecording);
        EXPECT_EQ(g_app.bRecordingActive, 0);
        EXPECT_EQ(state->m_pRecorder, nullptr);
        EXPECT_EQ(RecordButton(), 0);
        for (const int button : {201, 202, 215, 216}) EXPECT_FALSE(IsDisabled(button)) << button;
        EXPECT_TRUE(ListIsShown());
        EXPECT_EQ(ScanIsGrey(), scanGrey);
        EXPECT_THAT(graph.Calls(), IsEmpty());
    }
    void MakeDeviceFile(const WCHAR* path) const { MakeFile(path); }
};

// --- Free space -------------------------------------------------------------------------------------------

TEST_F(StartRecording, AMillionFreeBytesAreEnough) {
    SetFreeSpace(L"1000000");
    EXPECT_THAT(PressRecord(), StartsWith("[FM_EnCoder]iIndex : 2\nFM: disk space = 1000000\n"));
    EXPECT_NE(state->m_pRecorder, nullptr);
    EXPECT_THAT(boxes.Shown(), IsEmpty());
}

TEST_F(StartRecording, OneByteLessIsRefusedWithABox) {
    SetFreeSpace(L"999999");
    EXPECT_EQ(PressRecord(), "[FM_EnCoder]iIndex : 2\nFM: disk space = 999999\n");
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Shown()[0].text, L"Not enough free storage space for a recording.");
    EXPECT_EQ(boxes.Shown()[0].caption, L"FM");
    EXPECT_EQ(boxes.Shown()[0].style, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(boxes.Shown()[0].owner, window);
    ExpectIdle();
}

TEST_F(StartRecording, TheTraceShowsTheLowHalfOfTheFreeSpace) {
    SetFreeSpace(L"4296000000");
    EXPECT_THAT(PressRecord(), HasSubstr("FM: disk space = 1032704\n"));
    EXPECT_NE(state->m_pRecorder, nullptr);
}

TEST_F(StartRecording, WithoutTheTextTheBoxHasOneOfItsOwn) {
    SetFreeSpace(L"0");
    g_app.hInstance = GetModuleHandleW(L"COREDLL.dll");
    PressRecord();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Shown()[0].text, L"Insufficient Storage Space !");
}

TEST_F(StartRecording, ANameOfTheUsersOwnIsMeasuredOnTheStorageCard) {
    SetState(L"KORA_STORAGECARDFREE", L"999999");
    DefineName(L"\\Mine.");
    PressRecord();
    EXPECT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(state->m_pRecorder, nullptr);
}

// --- The main screen --------------------------------------------------------------------------------------

TEST_F(StartRecording, LocksKeysTuningListAndScan) {
    PressRecord();
    EXPECT_TRUE(state->m_bRecording);
    EXPECT_EQ(g_app.bRecordingActive, 1);
    for (const int button : {201, 202, 215, 216}) EXPECT_TRUE(IsDisabled(button)) << button;
    for (const int button : {200, 207, 208, 224, 225}) EXPECT_FALSE(IsDisabled(button)) << button;
    EXPECT_FALSE(ListIsShown());
    EXPECT_TRUE(ScanIsGrey());
    EXPECT_EQ(RecordButton(), 2);
}

TEST_F(StartRecording, BuildsTheGraphTwiceThenTheChainThenStarts) {
    PressRecord();
    std::vector<std::string> calls;
    for (const std::string& call : graph.Calls()) {
        for (const char* of : {"builder.Create", "encoder.Create", "control.Run", "builder.RenderStream"}) {
            if (call.rfind(of, 0) == 0) calls.push_back(of);
        }
    }
    EXPECT_THAT(calls, ElementsAre("builder.Create", "builder.Create", "encoder.Create",
                                   "builder.RenderStream", "control.Run"));
}

TEST_F(StartRecording, ARecorderThatIsThereAlreadyIsUsedAgain) {
    PressRecord();
    CaptureRecorder* first = state->m_pRecorder;
    graph.ForgetCalls();
    PressRecord();
    EXPECT_EQ(state->m_pRecorder, first);
    const auto calls = graph.Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "builder.Create"), 1);
}

TEST_F(StartRecording, ARecordingThatRunsIsEndedBeforeItsRecorderIsUsedAgain) {
    PressRecord();
    graph.ForgetCalls();
    PressRecord();
    const auto calls = graph.Calls();
    const auto built = std::find(calls.begin(), calls.end(), "builder.Create");
    EXPECT_EQ(std::count(calls.begin(), built, "control.Stop"), 1);
    EXPECT_EQ(std::count(calls.begin(), built, "event.FreeEventParams 257"), 1);
    ReleaseRecord(test::kSilent);
    EXPECT_EQ(graph.References().count("event"), 0u) << "an event thread is left";
}

TEST_F(StartRecording, AGraphThatCannotBeBuiltStillShowsARecordingInProgress) {
    graph.results["captureFilter.Create"] = E_FAIL;
    const std::string trace = PressRecord();
    EXPECT_THAT(trace, HasSubstr("CoCreateInstance() failed \n"));
    EXPECT_TRUE(state->m_bRecording);
    EXPECT_EQ(RecordButton(), 2);
    EXPECT_THAT(boxes.Shown(), IsEmpty());
}

// --- Format -----------------------------------------------------------------------------------------------

TEST_F(StartRecording, TheSettingChoosesFormatAndExtension) {
    const struct {
        DWORD setting;
        const char* format;
        const WCHAR* extension;
    } rows[] = {{0, "streamConfig.SetFormat 8000 1 16", L".amr"},
                {1, "streamConfig.SetFormat 8000 1 0", L".wav"},
                {2, "streamConfig.SetFormat 22050 2 16", L".wav"},
                {3, "streamConfig.SetFormat 8000 1 16", L".amr"},
                {0xFFFFFFFF, "streamConfig.SetFormat 8000 1 16", L".amr"}};
    for (const auto& row : rows) {
        WriteSetting(kRecordAudioType, row.setting);
        graph.ForgetCalls();
        PressRecord(test::kSilent);
        EXPECT_THAT(graph.Calls(), Contains(StartsWith(row.format))) << row.setting;
        EXPECT_THAT(RecordPathText(), testing::EndsWith(row.extension)) << row.setting;
        ReleaseRecord(test::kSilent);
    }
}

// --- Automatic names --------------------------------------------------------------------------------------

TEST_F(StartRecording, AnUnknownStationIsRecordedUnderItsFrequencyInTheMusicFolderWhichIsMade) {
    PressRecord();
    EXPECT_EQ(RecordPathText(), L"\\My Documents\\My Music\\98.5-0000.amr");
    EXPECT_TRUE(HostFileExists(L"\\My Documents\\My Music"));
    EXPECT_THAT(graph.Calls(),
                Contains(StartsWith("sink2.SetFileName \\My Documents\\My Music\\98.5-0000.amr")));
}

TEST_F(StartRecording, AStoredStationIsRecordedUnderItsName) {
    StoreChannel(L"KORA ONE", 9850);
    PressRecord();
    EXPECT_EQ(RecordPathText(), L"\\My Documents\\My Music\\KORA ONE-0000.amr");
}

TEST_F(StartRecording, TheNumberIsTheFirstThatIsFree) {
    PressRecord();
    ReleaseRecord(test::kSilent);
    for (const WCHAR* number : {L"0000", L"0001", L"0003"}) {
        MakeDeviceFile((std::wstring(L"\\My Documents\\My Music\\98.5-") + number + L".amr").c_str());
    }
    PressRecord();
    EXPECT_EQ(RecordPathText(), L"\\My Documents\\My Music\\98.5-0002.amr");
}

TEST_F(StartRecording, AnAutomaticNameIsNeverAskedAbout) {
    for (int recording = 0; recording < 3; ++recording) {
        PressRecord();
        MakeDeviceFile(state->m_szRecordPath);
        ReleaseRecord(test::kSilent);
    }
    EXPECT_THAT(boxes.Shown(), IsEmpty());
}

// --- Names of the user's own ------------------------------------------------------------------------------

TEST_F(StartRecording, AChosenNameGetsTheExtensionsLettersWithoutAPoint) {
    DefineName(L"\\Music\\Today");
    EXPECT_THAT(PressRecord(), HasSubstr("Path OK(\\Music\\Todayamr) can Record! \r\n"));
    EXPECT_EQ(RecordPathText(), L"\\Music\\Todayamr");
    ReleaseRecord(test::kSilent);
    DefineName(L"\\Music\\Today.");
    WriteSetting(kRecordAudioType, 2);
    PressRecord();
    EXPECT_EQ(RecordPathText(), L"\\Music\\Today.wav");
}

TEST_F(StartRecording, WithoutTheCardANameOnItIsRefused) {
    SetState(L"KORA_STORAGECARD", L"0");
    DefineName(L"\\Storage Card\\Today.");
    EXPECT_THAT(PressRecord(), HasSubstr("Path error(\\Storage Card\\Today.amr) ! Can't RECORD \r\n"));
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_THAT(boxes.Shown()[0].text, HasSubstr(L"\\Storage Card\\Today.amr"));
    EXPECT_EQ(boxes.Shown()[0].caption, L"Warning");
    EXPECT_EQ(boxes.Shown()[0].style, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(LastShown(TEXT_RECORD_TIME), L"");
    ExpectIdle();
}

TEST_F(StartRecording, WithoutItsTextThePathErrorHasOneOfItsOwn) {
    SetState(L"KORA_STORAGECARD", L"0");
    DefineName(L"\\Storage Card\\Today.");
    g_app.hInstance = GetModuleHandleW(L"COREDLL.dll");
    PressRecord();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Shown()[0].text, L"Path error(\\Storage Card\\Today.amr)!");
}

TEST_F(StartRecording, WithoutTheCardANameElsewhereIsAllRight) {
    SetState(L"KORA_STORAGECARD", L"0");
    DefineName(L"\\Today.");
    EXPECT_THAT(PressRecord(), HasSubstr("Path OK(\\Today.amr) can Record! \r\n"));
    EXPECT_NE(state->m_pRecorder, nullptr);
}

TEST_F(StartRecording, WithTheCardInNoPathIsChecked) {
    DefineName(L"\\Storage Card\\no such folder\\???");
    EXPECT_THAT(PressRecord(), HasSubstr("Path OK(\\Storage Card\\no such folder\\???amr) can Record! \r\n"));
    EXPECT_THAT(boxes.Shown(), IsEmpty());
    EXPECT_NE(state->m_pRecorder, nullptr);
}

TEST_F(StartRecording, AnExistingFileIsAskedAboutEachTime) {
    DefineName(L"\\Today.");
    MakeDeviceFile(L"\\Today.amr");
    boxes.answer = IDYES;
    for (int recording = 0; recording < 2; ++recording) {
        PressRecord();
        EXPECT_NE(state->m_pRecorder, nullptr);
        ReleaseRecord(test::kSilent);
    }
    ASSERT_EQ(boxes.Shown().size(), 2u);
    EXPECT_THAT(boxes.Shown()[0].text, HasSubstr(L"\\Today.amr"));
    EXPECT_EQ(boxes.Shown()[0].caption, L"FM");
    EXPECT_EQ(boxes.Shown()[0].style, kQuestion);
}

TEST_F(StartRecording, AnyAnswerButYesUndoesTheScreenExceptThatTheScanStaysGrey) {
    DefineName(L"\\Today.");
    MakeDeviceFile(L"\\Today.amr");
    for (const int answer : {IDNO, IDCANCEL, 0}) {
        boxes.answer = answer;
        PressRecord();
        ExpectIdle(true);
        EXPECT_EQ(LastShown(TEXT_RECORD_TIME), L"");
    }
}

TEST_F(StartRecording, ASilentStartOverwritesWithoutAsking) {
    DefineName(L"\\Today.");
    MakeDeviceFile(L"\\Today.amr");
    PressRecord(test::kSilent);
    EXPECT_THAT(boxes.Shown(), IsEmpty());
    EXPECT_NE(state->m_pRecorder, nullptr);
}

TEST_F(StartRecording, WhileTheQuestionIsOpenTheScreenIsLockedAlready) {
    DefineName(L"\\Today.");
    MakeDeviceFile(L"\\Today.amr");
    boxes.answer = IDNO;
    bool locked = false;
    boxes.whileShown = [&] { locked = state->m_bRecording && IsDisabled(202) && ScanIsGrey(); };
    PressRecord();
    EXPECT_TRUE(locked);
}

TEST_F(StartRecording, ANameOf260CharactersIsTakenWholeWithItsExtension) {
    const std::wstring name = L"\\" + std::wstring(259, L'n');
    DefineName(name);
    PressRecord();
    EXPECT_EQ(RecordPathText(), name + L"amr");
}

}  // namespace
