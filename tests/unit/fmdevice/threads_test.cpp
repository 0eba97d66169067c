// Many threads at once.
#include <atomic>
#include <thread>

#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerThreads : public test::TunerTest {};

TEST_F(TunerThreads, HammeredFromEverySideEachCallGivesASensibleAnswer) {
    WriteBand(
        "[8760]\nlevel=30\nps=LOW\naf=98.5\n[9850]\nlevel=45\nps=KORA "
        "ONE\nrt=Morning\npty=News\nprogramme=tone:440\n");
    handset::SetStateString(L"TunerLog", L"\\tuner.log");
    handset::SetStateString(L"SoundLog", L"\\heard.wav");
    PowerUp();
    constexpr int kThreads = 6;
    constexpr int kRounds = 60;
    std::atomic<int> wrong{0};
    const auto expect = [&](bool right) { wrong += right ? 0 : 1; };
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            for (int i = 0; i < kRounds; ++i) {
                std::uint32_t value = 0;
                std::int32_t level = 0, kind = 0, count = 0;
                WCHAR text[kRdsTextCapacity];
                WCHAR item[kAFTextCapacity];
                rds_inf info{};
                expect(device_->SetChannel(number % 2 == 0 ? 9850 : 8760) == S_OK);
                expect(device_->GetChannel(&value) == S_OK && (value == 9850 || value == 8760));
                expect(device_->GetSignal(&level) == S_OK && (level == 45 || level == 30));
                expect(device_->SetVolume(static_cast<std::uint32_t>(i)) == S_OK);
                expect(device_->GetVolume(&value) == S_OK && value < kRounds);
                expect(SUCCEEDED(device_->GetRDSData(text, &kind)));
                expect(SUCCEEDED(device_->GetPTYText(text)));
                expect(SUCCEEDED(device_->GetStereo()));
                expect(SUCCEEDED(device_->GetAFCount(&count)));
                device_->GetAFItem(0, item);
                expect(device_->GetRDSInfo(&info) == S_OK && info.b_RDS_PS == 1);
                expect(device_->SetMute(i % 2) == S_OK && device_->SetSpeaker(i % 2) == S_OK);
                expect(device_->SetBTAudio(0) == S_OK && device_->Reserved() == E_NOTIMPL);
                if (i % 20 == 0) {
                    const HRESULT sought = number % 2 == 0 ? device_->SeekNext() : device_->SeekPrev();
                    expect(sought == S_OK || sought == E_ABORT);
                }
                device_->AddRef();
                device_->Release();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);

    // No line of the log is torn or lost: one for Initialize, 15 a round, and the seeks.
    const std::string log = test::Bytes(handset::HostPath(L"\\tuner.log"));
    int lines = 0;
    for (std::size_t at = 0; at < log.size(); at = log.find('\n', at) + 1) {
        ++lines;
        const std::string line = log.substr(at, log.find('\n', at) - at);
        EXPECT_NE(line.find(" -> "), std::string::npos) << line;
        EXPECT_EQ(line.find(" -> "), line.rfind(" -> ")) << line;
    }
    EXPECT_EQ(lines, 1 + kThreads * (kRounds * 15 + kRounds / 20));
}

}  // namespace
