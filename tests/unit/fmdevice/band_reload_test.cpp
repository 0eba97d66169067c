// The band file while the radio plays.
#include <filesystem>

#include "tests/support/trace_capture.h"
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class BandReload : public test::TunerTest {
  protected:
    bool SignalBecomes(std::int32_t level) {
        return test::WaitFor([&] { return Signal() == level; }, 5000);
    }
};

std::string BandFileName() {
    return std::filesystem::path(handset::HostPath(L"\\Windows\\band.ini")).u8string();
}

// The one report of a trace; a long one has several lines.
std::string Reported(std::string trace) {
    static const std::string kBegin = "FM device: ";
    if (trace.rfind(kBegin, 0) != 0 || trace.back() != '\n') return "no report: " + trace;
    trace = trace.substr(kBegin.size(), trace.size() - kBegin.size() - 1);
    for (std::size_t at; (at = trace.find("\n" + kBegin)) != std::string::npos;)
        trace.erase(at, kBegin.size() + 1);
    return trace;
}

TEST_F(BandReload, LevelsFollowTheFile) {
    WriteBand("[8750]\nlevel=45\n");
    PowerUp();
    EXPECT_EQ(Signal(), 45);
    WriteBand("[8750]\nlevel=12\n");
    EXPECT_TRUE(SignalBecomes(12));
    // Of the same size, and perhaps within the resolution of the file's time.
    WriteBand("[8750]\nlevel=13\n");
    EXPECT_TRUE(SignalBecomes(13));
}

TEST_F(BandReload, TextsFollowTheFile) {
    WriteBand("[8750]\nlevel=45\nps=ONE\n");
    PowerUp();
    WCHAR text[kRdsTextCapacity];
    std::int32_t kind = 0;
    const auto becomes = [&](const std::wstring& name) {
        return test::WaitFor([&] { return device_->GetRDSData(text, &kind) == S_OK && text == name; }, 5000);
    };
    EXPECT_TRUE(becomes(L"ONE"));
    WriteBand("[8750]\nlevel=45\nps=TWO\n");
    EXPECT_TRUE(becomes(L"TWO"));
}

// A band file that a test writes as an editor may: emptied, piece by piece, and not to be read by others.
class BandFileInWork {
  public:
    explicit BandFileInWork(DWORD sharing)
        : file_(CreateFileW(handset::HostPath(L"\\Windows\\band.ini").c_str(), GENERIC_WRITE, sharing,
                            nullptr, CREATE_ALWAYS, 0, nullptr)) {}
    ~BandFileInWork() { CloseHandle(file_); }
    BandFileInWork(const BandFileInWork&) = delete;
    BandFileInWork& operator=(const BandFileInWork&) = delete;
    void Write(const std::string& text) {
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(file_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
    }

  private:
    HANDLE file_;
};

TEST_F(BandReload, AFileThatIsBeingWrittenLeavesTheBandAsItWas) {
    WriteBand("[8750]\nlevel=45\n");
    PowerUp();
    int looks = 0;
    for (int round = 0; round < 500 && looks < 20; ++round) {
        // After a round that was too slow to count, what it left half written may be the band until now.
        ASSERT_TRUE(SignalBecomes(45));
        const ULONGLONG begun = GetTickCount64();
        BandFileInWork file(FILE_SHARE_READ);
        const int empty = Signal();
        Sleep(25);  // it looks at the file at most every 20 ms
        const int stillEmpty = Signal();
        file.Write("[8750]\n");
        const int half = Signal();
        file.Write("level=45\n");
        // On a machine that was busy meanwhile it may rightly have been taken for whole.
        if (GetTickCount64() - begun > 150) continue;
        ++looks;
        ASSERT_EQ(empty, 45);
        ASSERT_EQ(stillEmpty, 45);
        ASSERT_EQ(half, 45);
    }
    EXPECT_EQ(looks, 20);
}

TEST_F(BandReload, AFileThatCannotBeReadLeavesTheBandAsItWasUntilItCan) {
    WriteBand("[8750]\nlevel=45\n");
    PowerUp();
    const std::string trace = test::TraceOf([&] {
        BandFileInWork file(0);
        file.Write("[8750]\nlevel=12\n");
        const ULONGLONG end = GetTickCount64() + 600;
        while (GetTickCount64() < end && Signal() == 45) Sleep(5);
    });
    EXPECT_EQ(
        Reported(trace),
        BandFileName() + ": the band file cannot be read or is larger than 1 MiB; the band stays as it was");
    EXPECT_TRUE(SignalBecomes(12));
}

TEST_F(BandReload, AFileThatIsTakenAwayLeavesNoise) {
    WriteBand("[8750]\nlevel=45\n");
    PowerUp();
    ASSERT_TRUE(DeleteFileW(handset::HostPath(L"\\Windows\\band.ini").c_str()));
    EXPECT_TRUE(SignalBecomes(3));
}

TEST_F(BandReload, WithoutAFileTheBandIsNoiseUntilThereIsOne) {
    std::string trace;
    {
        test::StreamCapture capture(STD_ERROR_HANDLE);
        PowerUp();
        for (int i = 0; i < 20; ++i) Signal();
        trace = capture.Text();
    }
    EXPECT_EQ(Reported(trace), BandFileName() + ": there is no band file; the band is nothing but noise");
    EXPECT_EQ(Signal(), 3);
    WriteBand("[8750]\nlevel=45\n");
    EXPECT_TRUE(SignalBecomes(45));
}

TEST_F(BandReload, AFaultIsALineInTheDebugOutputOnceAndTheRestWorks) {
    WriteBand("[8750]\nlevel=45\nstereo=perhaps\n");
    std::string trace;
    {
        test::StreamCapture capture(STD_ERROR_HANDLE);
        PowerUp();
        for (int i = 0; i < 20; ++i) Signal();
        trace = capture.Text();
    }
    EXPECT_EQ(trace, "FM device: band.ini:3: \"stereo\" wants 0 or 1, not \"perhaps\"\n");
    EXPECT_EQ(Signal(), 45);
}

}  // namespace
