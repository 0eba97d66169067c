// Recordings that end in no good way: the process is killed, the disk is full, the card is pulled.
#include "handset/capture/graph/class_ids.h"
#include "handset/capture/graph/graph_events.h"
#include "handset/state/handset_state.h"
#include "handset/state/process_start.h"
#include "tests/support/host_tool.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recorded_sound.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRecordingRig;

constexpr wchar_t kWav[] = L"\\take.wav";
constexpr wchar_t kAmr[] = L"\\take.amr";
constexpr wchar_t kEnding[] = L"KORA_TEST_KILLED_AT_MS";

class CutOff : public test::CaptureTest {};

// The process that is killed: this same program, which records for so long and then ends without a word.
TEST_F(CutOff, ChildThatIsKilled) {
    wchar_t value[16] = L"";
    if (GetEnvironmentVariableW(kEnding, value, 16) == 0) GTEST_SKIP() << "is run by the tests below";
    wchar_t file[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"KORA_TEST_FILE", file, MAX_PATH);
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    const bool amr = std::wstring(file).find(L".amr") != std::wstring::npos;
    ASSERT_EQ(amr ? rig.AttachAmr(file) : rig.AttachWav(file), S_OK);
    ASSERT_EQ(rig.Start(), S_OK);
    test::LetPass(static_cast<std::uint64_t>(_wtoi(value)));
    TerminateProcess(GetCurrentProcess(), 9);
}

// Runs the child; the file is the host's.
void KillAfter(int ms, const std::wstring& file) {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring line = L"\"" + std::wstring(program) + L"\" --gtest_filter=CutOff.ChildThatIsKilled";
    SetEnvironmentVariableW(kEnding, std::to_wstring(ms).c_str());
    SetEnvironmentVariableW(L"KORA_TEST_FILE", file.c_str());
    SetEnvironmentVariableW(L"GTEST_OUTPUT", nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(handset::StartProcess(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                      &startup, &process));
    ASSERT_EQ(WaitForSingleObject(process.hProcess, test::kDeadline_ms), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    EXPECT_EQ(code, 9u);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    SetEnvironmentVariableW(kEnding, nullptr);
    test::ForgetHandsetOf(process.dwProcessId);
}

TEST_F(CutOff, AWavFilePlaysUpToLessThanASecondBeforeTheProcessWasKilled) {
    if (!test::HostToolsAvailable()) GTEST_SKIP() << "ffprobe is looked for around Wine only";
    for (const int ms : {150, 730, 1310, 2070}) {
        KillAfter(ms, Host(kWav));
        const test::SoundFile sound = test::ProbeSound(Host(kWav));
        EXPECT_EQ(sound.codec, "pcm_s16le");
        EXPECT_GT(sound.length_s, ms / 1000.0 - 1);
        EXPECT_LT(sound.length_s, ms / 1000.0 + 0.5);
    }
}

TEST_F(CutOff, AnAmrFilePlaysUpToLessThanASecondBeforeTheProcessWasKilled) {
    if (!test::HostToolsAvailable()) GTEST_SKIP() << "ffprobe is looked for around Wine only";
    for (const int ms : {150, 730, 1310, 2070}) {
        KillAfter(ms, Host(kAmr));
        const test::SoundFile sound = test::ProbeSound(Host(kAmr));
        EXPECT_EQ(sound.codec, "amr_nb");
        EXPECT_EQ(sound.complaints, "");
        const double seconds = static_cast<double>(test::DecodeSound(Host(kAmr)).size()) / 8000;
        EXPECT_GT(seconds, ms / 1000.0 - 1);
        EXPECT_LT(seconds, ms / 1000.0 + 0.5);
    }
}

TEST_F(CutOff, AFullDiskEndsTheFileWithWhatThereIsAndTellsTheGraph) {
    PlayTone();
    for (const bool amr : {false, true}) {
        CRecordingRig rig;
        ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
        const wchar_t* const path = amr ? kAmr : kWav;
        ASSERT_EQ(amr ? rig.AttachAmr(path) : rig.AttachWav(path), S_OK);
        ASSERT_EQ(rig.Start(), S_OK);
        test::LetPass(1200);
        handset::SetStateQword(L"ObjectStoreFree", 10);
        EXPECT_TRUE(test::WaitFor([&] { return rig.Ended(); }));
        EXPECT_TRUE(rig.SawEvent(capture::kEventWriteFailed));
        const auto events = rig.Events();
        EXPECT_EQ(static_cast<HRESULT>(events.back().first), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
        const std::size_t size = test::Bytes(Host(path)).size();
        EXPECT_EQ(rig.Stop(), S_OK);
        EXPECT_EQ(test::Bytes(Host(path)).size(), size);
        handset::DeleteStateValue(L"ObjectStoreFree");
        EXPECT_TRUE(amr || test::ReadWav(test::Bytes(Host(path))).whole);
        if (!test::HostToolsAvailable()) continue;
        EXPECT_GT(test::DecodeSound(Host(path)).size(), 4000u);
        EXPECT_EQ(test::ProbeSound(Host(path)).complaints, "");
    }
}

TEST_F(CutOff, ACardThatIsPulledEndsTheFileAndTellsTheGraph) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachWav(L"\\Storage Card\\take.wav"), S_OK);
    ASSERT_EQ(rig.Start(), S_OK);
    test::LetPass(700);
    handset::SetStateDword(L"StorageCard", 0);
    EXPECT_TRUE(test::WaitFor([&] { return rig.Ended(); }));
    EXPECT_TRUE(rig.SawEvent(capture::kEventWriteFailed));
    EXPECT_EQ(rig.Stop(), S_OK);
    // The radio plays on.
    std::int32_t level = 0;
    EXPECT_EQ(radio_->GetSignal(&level), S_OK);
}

TEST_F(CutOff, ADiskThatIsFullFromTheStartTellsTheGraph) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    handset::SetStateQword(L"ObjectStoreFree", 0);
    EXPECT_EQ(rig.Start(), S_OK);
    EXPECT_TRUE(test::WaitFor([&] { return rig.Ended(); }));
    EXPECT_TRUE(rig.SawEvent(capture::kEventWriteFailed));
    rig.StopGraph();
}

// The graph's loop of events ends even when nothing could be built behind the capture filter.
TEST_F(CutOff, ASinkWithoutAFileTellsTheGraph) {
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    EXPECT_NE(rig.AttachWav(L"\\no such folder\\take.wav"), S_OK);
    rig.Start();
    EXPECT_TRUE(test::WaitFor([&] { return rig.Ended(); }));
    EXPECT_TRUE(rig.SawEvent(capture::kEventWriteFailed));
    rig.StopGraph();
}

}  // namespace
