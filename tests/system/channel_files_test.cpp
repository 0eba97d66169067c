// Channel lists that come in from a file while the radio runs.
#include "tests/system/channels_on_radio.h"

namespace {

using test::PressSoftKey;
using test::Radio;
using test::RowCount;
using test::SoftKey;
using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class ChannelFiles : public test::ThreeChannelsOnRadio {
  protected:
    // Runs `handset channels import`; its exit code, and what it says.
    DWORD Import(const std::string& bytes, const std::wstring& option, std::string* said) const {
        const std::wstring file = handset.DevicePath(L"\\lists.csv");
        test::WriteWholeFile(file, bytes);
        return test::RunProgram(L"handset.exe", L"channels import " + option + L" \"" + file + L"\"", said);
    }
};

TEST_F(ChannelFiles, TheRadioShowsThemWhenAListIsChosen) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForRows(radio, 3));
    std::string said;
    ASSERT_EQ(Import("Frequency,Name,List,Guide\r\n101200000,Delta,Test,\r\n90000000,Epsilon,Other,\r\n", L"",
                     &said),
              0u);
    EXPECT_THAT(said, HasSubstr("taken: 1 new list, 2 new channels"));
    EXPECT_THAT(said, HasSubstr("the radio is running"));
    EXPECT_EQ(RowCount(radio.ListView()), 3);
    const HWND dialog = OpenDialog(radio, IDC_CHANNEL_LISTS);
    EXPECT_TRUE(
        WaitFor([&] { return SendMessageW(GetDlgItem(dialog, IDC_GROUP_LIST), LB_GETCOUNT, 0, 0) == 2; }));
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForRows(radio, 4));
    EXPECT_THAT(Names(radio), ElementsAre(L"Alpha", L"Beta", L"Delta", L"Gamma"));
    EXPECT_THAT(Stored(), Contains("C Other|Epsilon|9000|"));
}

// Both write to one volume: the radio asks for it with every name that it shows.
TEST_F(ChannelFiles, ComeInOneAfterTheOtherWhileTheRadioLooksNamesUp) {
    Radio radio(handset);
    radio.WaitUntilShown();
    for (int i = 0; i < 6; ++i) {
        radio.Type("985");
        std::string said;
        const std::string channel =
            std::to_string(90'000'000 + i * 100'000) + ",N" + std::to_string(i) + ",Test\r\n";
        ASSERT_EQ(Import("Frequency,Name,List\r\n" + channel, L"", &said), 0u) << said;
    }
    const auto stored = Stored();
    for (int i = 0; i < 6; ++i) {
        EXPECT_THAT(stored,
                    Contains("C Test|N" + std::to_string(i) + "|" + std::to_string(9000 + i * 10) + "|"));
    }
    EXPECT_THAT(stored, Contains("C Test|Beta|9850|http://beta"));
}

TEST_F(ChannelFiles, ReplaceNothingUnderARunningRadio) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const auto before = Stored();
    std::string said;
    EXPECT_EQ(Import("Frequency,Name,List\r\n101200000,Delta,New\r\n", L"--replace", &said), 1u);
    EXPECT_EQ(Stored(), before);
}

}  // namespace
