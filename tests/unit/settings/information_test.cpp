// The dialog that says what the radio is.
#include "shell/information_dialog.h"

#include "tests/support/modal_dialog.h"
#include "tests/unit/settings/settings_test.h"

namespace {

using test::ModalDialog;

using Information = test::SettingsTest;

INT_PTR Show() {
    ShowInformation(nullptr);
    return 0;
}

TEST_F(Information, EndsWhenItsWindowIsClosedAndWithNoOtherCommand) {
    bool stays = false, ended = false;
    ModalDialog::Run(Show, [&](HWND information) {
        SendMessageW(information, WM_COMMAND, IDCANCEL, 0);
        stays = IsWindowVisible(information) != FALSE;
        SendMessageW(information, WM_CLOSE, 0, 0);
        ended = !IsWindowVisible(information);
    });
    EXPECT_TRUE(stays);
    EXPECT_TRUE(ended);
}

}  // namespace
