// RDS at the device.
#include "handset/fmdevice/tuned_station.h"
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

struct Text {
    HRESULT result;
    std::int32_t kind;
    std::wstring text;
    bool operator==(const Text& other) const {
        return result == other.result && kind == other.kind && text == other.text;
    }
};

class TunerRds : public test::TunerTest {
  protected:
    void SetUp() override {
        WriteBand(
            "[9850]\nlevel=45\nps=KORA ONE\npty=News\npt=Morning\nrt=Grüße\naf=101.1 88.0\nct=1\n"
            "[9900]\nlevel=45\nps=PLAIN\n"
            "[9950]\nlevel=15\nps=WEAK\npty=News\naf=98.5\n"
            "[10000]\nlevel=45\n");
        PowerUp();
    }

    Text Read() {
        WCHAR text[kRdsTextCapacity] = L"x";
        std::int32_t kind = 7;
        const HRESULT result = device_->GetRDSData(text, &kind);
        return {result, kind, text};
    }
    bool Arrives(const Text& text) {
        return test::WaitFor([&] { return Read() == text; });
    }
    std::wstring TypeText(HRESULT wanted) {
        WCHAR text[kRdsTextCapacity] = L"x";
        EXPECT_EQ(device_->GetPTYText(text), wanted);
        return text;
    }
};

TEST_F(TunerRds, TheTextsComeInTurnWithTheirKinds) {
    device_->SetChannel(9850);
    const Text name{S_OK, 4, L"KORA ONE"};
    const Text radioText{S_OK, 1, L"Grüße"};
    const Text programText{S_OK, 2, L"Morning"};
    ASSERT_EQ(Read(), (Text{S_FALSE, -1, L""})) << "nothing can have arrived yet";
    EXPECT_TRUE(Arrives(name));
    EXPECT_TRUE(Arrives(radioText));
    EXPECT_TRUE(Arrives(programText));
    EXPECT_TRUE(Arrives(name));
}

TEST_F(TunerRds, TheHandsetsOtherPartsLearnStationAndChannelWithoutTakingAText) {
    TunedStation station;
    device_->SetChannel(9900);
    ASSERT_TRUE(HandsetTunedStation(&station));
    EXPECT_EQ(station.channel_10kHz, 9900u);
    EXPECT_STREQ(station.name, "") << "nothing can have arrived yet";
    EXPECT_TRUE(
        test::WaitFor([&] { return HandsetTunedStation(&station) && station.name == std::string("PLAIN"); }));
    // It is still the application's first text.
    EXPECT_EQ(Read(), (Text{S_OK, 0, L"PLAIN"}));
    device_->SetChannel(9850);
    ASSERT_TRUE(HandsetTunedStation(&station));
    EXPECT_EQ(station.channel_10kHz, 9850u);
    EXPECT_STREQ(station.name, "");
    device_->Close();
    EXPECT_FALSE(HandsetTunedStation(&station));
}

TEST_F(TunerRds, WithoutAlternativesTheNameIsOfKindZero) {
    device_->SetChannel(9900);
    EXPECT_TRUE(Arrives({S_OK, 0, L"PLAIN"}));
}

TEST_F(TunerRds, NamesAndTextsThatTheFileAddsAreSentInTurn) {
    WriteBand("[9850]\nps=ONE\nps=TWO\npstime=1\nrt=first\nrt=second\nrttime=2\n");
    device_->SetChannel(9850);
    for (const Text& text : {Text{S_OK, 0, L"ONE"}, Text{S_OK, 0, L"TWO"}, Text{S_OK, 1, L"first"},
                             Text{S_OK, 1, L"second"}, Text{S_OK, 0, L"ONE"}}) {
        EXPECT_TRUE(Arrives(text)) << text.text;
    }
}

TEST_F(TunerRds, ASignalThatDropsTakesTheDataAwayAndBringsThemBack) {
    device_->SetChannel(9900);
    ASSERT_TRUE(Arrives({S_OK, 0, L"PLAIN"}));
    handset::SetStateDword(L"SignalLimit", 15);
    EXPECT_TRUE(Arrives({S_FALSE, -1, L""}));
    handset::DeleteStateValue(L"SignalLimit");
    EXPECT_TRUE(Arrives({S_OK, 0, L"PLAIN"}));
}

TEST_F(TunerRds, NoDataIsNotZeroAndEmpty) {
    for (const std::uint32_t channel : {8750u, 9950u, 10000u}) {
        device_->SetChannel(channel);
        EXPECT_EQ(Read(), (Text{S_FALSE, -1, L""})) << channel;
        EXPECT_EQ(TypeText(S_FALSE), L"");
    }
}

TEST_F(TunerRds, TheProgrammeTypeIsItsTerm) {
    WCHAR text[kRdsTextCapacity];
    // Unless a group begins this very moment, none can have arrived yet.
    EXPECT_TRUE(test::WaitFor([&] {
        device_->SetChannel(9850);
        return device_->GetPTYText(text) == S_FALSE;
    }));
    EXPECT_STREQ(text, L"");
    EXPECT_TRUE(test::WaitFor([&] { return device_->GetPTYText(text) == S_OK; }));
    EXPECT_EQ(TypeText(S_OK), L"News");
    device_->SetChannel(9900);
    EXPECT_TRUE(Arrives({S_OK, 0, L"PLAIN"}));
    EXPECT_EQ(TypeText(S_FALSE), L"");
}

TEST_F(TunerRds, AlternativesAreTextsInMegahertzWithOneDecimal) {
    device_->SetChannel(9850);
    std::int32_t count = 0;
    ASSERT_EQ(device_->GetAFCount(&count), S_OK);
    ASSERT_EQ(count, 2);
    WCHAR text[kAFTextCapacity];
    EXPECT_EQ(device_->GetAFItem(0, text), S_OK);
    EXPECT_STREQ(text, L"101.1");
    EXPECT_EQ(device_->GetAFItem(1, text), S_OK);
    EXPECT_STREQ(text, L"88.0");
    for (const std::int32_t index : {2, -1}) {
        EXPECT_EQ(device_->GetAFItem(index, text), E_INVALIDARG);
        EXPECT_STREQ(text, L"");
    }
}

TEST_F(TunerRds, TheListIsThereAtAWeakSignalToo) {
    device_->SetChannel(9950);
    std::int32_t count = 0;
    EXPECT_EQ(device_->GetAFCount(&count), S_OK);
    EXPECT_EQ(count, 1);
}

TEST_F(TunerRds, NoListIsNotZeroAndCountsNone) {
    device_->SetChannel(9900);
    std::int32_t count = 7;
    EXPECT_EQ(device_->GetAFCount(&count), S_FALSE);
    EXPECT_EQ(count, 0);
}

TEST_F(TunerRds, TheInformationSaysWhatTheStationSends) {
    const auto words = [this](std::uint32_t channel) {
        device_->SetChannel(channel);
        rds_inf info{};
        EXPECT_EQ(device_->GetRDSInfo(&info), S_OK);
        return std::vector<std::int32_t>{info.b_RDS_RT, info.b_RDS_PS, info.b_RDS_PTY, info.b_RDS_AF,
                                         info.b_RDS_CT};
    };
    EXPECT_EQ(words(9850), (std::vector<std::int32_t>{1, 1, 1, 1, 1}));
    EXPECT_EQ(words(9900), (std::vector<std::int32_t>{0, 1, 0, 0, 0}));
    EXPECT_EQ(words(10000), (std::vector<std::int32_t>{0, 0, 0, 0, 0}));
}

}  // namespace
