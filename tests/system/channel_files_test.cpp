// Channel lists that come in from a file while the radio runs, and go out to programs that are not ours.
#include "tests/support/host_tool.h"
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
    // The machine's own path of a file with all lists.
    std::string Exported(const wchar_t* name) const {
        const std::wstring file = handset.DevicePath(std::wstring(L"\\") + name);
        std::string said;
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"channels export \"" + file + L"\"", &said), 0u) << said;
        return test::HostPath(file);
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

// The scan empties its list and stores what it finds, station after station, all the while.
TEST_F(ChannelFiles, ThatComeInWhileAScanRunsAreTakenWholeOrNotAtAllAndTheScanLosesNothing) {
    std::string band = "[band]\nwrap=1\n";
    std::vector<std::string> found = {"G Test"};
    for (int i = 1; i <= 9; ++i) {
        const std::string channel = std::to_string(8800 + 200 * i);
        band += "[" + channel + "]\nlevel=50\n";
        found.push_back("C Test|FM  " + std::to_string(i) + "|" + channel + "|");
    }
    handset.WriteBand(band);
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    Radio::Answer(radio.WaitForBox(L"Stored channels"), IDOK);
    ASSERT_TRUE(WaitForTrace("FM: Scanning Channel: 9000\n"));
    int meanwhile = 0;
    std::vector<std::string> imported, refused;
    for (int i = 0; radio.Box(L"FM") == nullptr && i < 40; ++i) {
        const std::string name = "N" + std::to_string(i), list = "Other" + std::to_string(i);
        std::string said;
        const DWORD code = Import("Frequency,Name,List\r\n89000000," + name + "," + list + "\r\n90000000," +
                                      name + "b," + list + "\r\n",
                                  L"", &said);
        (code == 0 ? imported : refused).push_back(list);
        EXPECT_THAT(said, HasSubstr(code == 0 ? "taken: 1 new list, 2 new channels" : "nothing was stored"));
        meanwhile += radio.Box(L"FM") == nullptr ? 1 : 0;
    }
    EXPECT_GT(meanwhile, 0) << "the scan was over too soon";
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr; }, 120000));
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitForRows(radio, 9));
    const auto stored = Stored();
    EXPECT_THAT(stored, testing::IsSupersetOf(found));
    for (const std::string& list : imported) {
        const std::string name = "N" + list.substr(5);
        EXPECT_THAT(stored, testing::IsSupersetOf({"G " + list, "C " + list + "|" + name + "|8900|",
                                                   "C " + list + "|" + name + "b|9000|"}));
    }
    for (const std::string& list : refused) EXPECT_THAT(stored, testing::Not(Contains(HasSubstr(list))));
    EXPECT_EQ(stored.size(), found.size() + 3 * imported.size());
}

// jq and Python's reader of CSV look at the very files that the command line writes.
TEST_F(ChannelFiles, ThatGoOutAreReadByProgramsThatAreNotOurs) {
    std::string said;
    ASSERT_EQ(Import("Frequency,Name,List,Guide\r\n"
                     "101200000,\"Z\xC3\xBCri, \"\"Jazz\"\"\",\"a;b\",http://x?y=1\r\n"
                     "98550000,\xF0\x9F\x93\xBB,\"a;b\",\r\n",
                     L"", &said),
              0u)
        << said;
    const std::vector<std::string> expected = {"Test",  "Alpha",
                                               "8760",  "",
                                               "Test",  "Beta",
                                               "9850",  "http://beta",
                                               "Test",  "Gamma",
                                               "10790", "",
                                               "a;b",   "Z\xC3\xBCri, \"Jazz\"",
                                               "10120", "http://x?y=1",
                                               "a;b",   "\xF0\x9F\x93\xBB",
                                               "9855",  ""};
    const std::string json = Exported(L"lists.json");
    EXPECT_EQ(test::Lines(test::RunOnHost("jq -r '.lists[] | .name as $list | .channels[] | $list, .name, "
                                          "(.frequency * 100 | round), .guide' " +
                                          json)),
              expected);
    const std::wstring script = handset.DevicePath(L"\\read.py");
    test::WriteWholeFile(script,
                         "import csv, sys\n"
                         "for row in csv.DictReader(open(sys.argv[1], encoding='utf-8', newline='')):\n"
                         "    for text in (row['List'], row['Name'], int(row['Frequency']) // 10000, "
                         "row['Guide']):\n"
                         "        sys.stdout.buffer.write((str(text) + '\\n').encode('utf-8'))\n");
    const std::string csv = Exported(L"lists.csv");
    EXPECT_EQ(test::Lines(test::RunOnHost("python3 " + test::HostPath(script) + " " + csv)), expected);
}

}  // namespace
