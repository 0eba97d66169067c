// The dialog that says which RDS services the station sends.
#include "tuner/rds_dialog.h"

#include "shell/settings_key.h"
#include "tests/support/device_settings.h"
#include "tests/support/modal_dialog.h"
#include "tests/support/unused_root.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using test::ControlText;
using test::ModalDialog;
using testing::ElementsAre;

class RDSDialog : public TunerTest {
  protected:
    // Opened by its button, as the user does.
    void Open(const std::function<void(HWND)>& work) {
        ModalDialog::Run(
            [this]() -> INT_PTR {
                Click(SKIN_RDS_INFORMATION);
                return 0;
            },
            [&](HWND dialog) {
                work(dialog);
                SendMessageW(dialog, WM_COMMAND, IDOK, 0);
            });
    }
    static std::vector<std::wstring> Answers(HWND dialog) {
        std::vector<std::wstring> answers;
        for (const int id : {IDC_RDS_AF, IDC_RDS_CT, IDC_RDS_PS, IDC_RDS_PTY, IDC_RDS_RT}) {
            answers.push_back(ControlText(dialog, id));
        }
        return answers;
    }
    test::DeviceSettings settings;
};

TEST_F(RDSDialog, EachServiceThatTheStationSendsIsAnsweredByYesAndTracedInItsOrder) {
    device.rdsInfo = {1, 0, 1, 0, 1};  // RT, PS, PTY, AF, CT
    std::vector<std::wstring> answers;
    const std::string trace = test::TraceOf([&] { Open([&](HWND dialog) { answers = Answers(dialog); }); });
    EXPECT_THAT(answers, ElementsAre(L"No", L"Yes", L"No", L"Yes", L"Yes"));
    EXPECT_EQ(trace,
              "rds_inf.b_RDS_AF: 0\nrds_inf.b_RDS_CT: 1\nrds_inf.b_RDS_PS: 0\nrds_inf.b_RDS_PTY: 1\n"
              "rds_inf.b_RDS_RT: 1\n");
}

TEST_F(RDSDialog, AStationWithoutRDSHasNoService) {
    device.results["GetRDSInfo"] = E_FAIL;
    std::vector<std::wstring> answers;
    Open([&](HWND dialog) { answers = Answers(dialog); });
    EXPECT_THAT(answers, ElementsAre(L"No", L"No", L"No", L"No", L"No"));
}

TEST_F(RDSDialog, ItNamesTheFrequencyAndAChannelThatIsNotStored) {
    device.channel = 10235;
    std::wstring frequency, name;
    Open([&](HWND dialog) {
        frequency = ControlText(dialog, IDC_RDS_FREQUENCY);
        name = ControlText(dialog, IDC_RDS_CHANNEL_NAME);
    });
    EXPECT_EQ(frequency, L"FM 102.3 MHz");
    EXPECT_EQ(name, L"Unknown");
}

TEST_F(RDSDialog, ItNamesAChannelOfTheSelectedGroup) {
    const test::UnusedRoot root;
    WriteSelectedGroup(L"Mine");
    PropRecord record = {};
    wcscpy(record.szCountryName, L"Mine");
    wcscpy(record.szPropRecord_ChannelName, L"One");
    record.dwPropRecord_ChannelValue = 9850;
    ASSERT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0u);
    device.channel = 9850;
    std::wstring name;
    Open([&](HWND dialog) { name = ControlText(dialog, IDC_RDS_CHANNEL_NAME); });
    EXPECT_EQ(name, L"One");
}

TEST_F(RDSDialog, OKEndsItWith1AndNothingElseDoes) {
    const INT_PTR result = ModalDialog::Run([this] { return ShowRDSInformation(window); },
                                            [](HWND dialog) {
                                                SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                                                SendMessageW(dialog, WM_CLOSE, 0, 0);
                                                EXPECT_TRUE(IsWindowVisible(dialog));
                                                SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                                            });
    EXPECT_EQ(result, 1);
}

}  // namespace
