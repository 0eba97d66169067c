// Adding the tuned frequency and editing a channel, as a hand does it; the volume is read back.
#include <optional>

#include "tests/system/channels_on_radio.h"

namespace {

using test::PressSoftKey;
using test::Radio;
using test::SoftKey;
using test::TextOf;
using test::TypeInto;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// The radio on a frequency that nobody stored, with the dialog open.
class ChannelDialog : public test::ThreeChannelsOnRadio {
  protected:
    void SetUp() override {
        ThreeChannelsOnRadio::SetUp();
        radio.emplace(handset, L"-Rec -Channel 10050");
        radio->WaitUntilShown();
        dialog = OpenDialog(*radio, IDC_ADD_CURRENT);
    }
    std::optional<Radio> radio;
    HWND dialog = nullptr;
};

TEST_F(ChannelDialog, TheCurrentFrequencyIsProposedWithAnUnknownName) {
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_NAME), L"Unknown");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_FREQUENCY), L"100.5");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_GUIDE), L"");
}

TEST_F(ChannelDialog, WhatIsTypedIsStoredInTheSelectedGroupAndShownAtTheEndOfTheList) {
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Aardvark");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"98.25");
    TypeInto(dialog, IDC_CHANNEL_GUIDE, L"http://aardvark");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitForRows(*radio, 4));
    EXPECT_THAT(Names(*radio), ElementsAre(L"Alpha", L"Beta", L"Gamma", L"Aardvark"));
    EXPECT_EQ(test::RowText(radio->ListView(), 3, 1), L"98.2 MHz ");
    EXPECT_THAT(Stored(), Contains("C Test|Aardvark|9825|http://aardvark"));
}

TEST_F(ChannelDialog, CancelStoresNothing) {
    PressSoftKey(dialog, SoftKey::kRight);
    EXPECT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(test::RowCount(radio->ListView()), 3);
    EXPECT_EQ(Stored().size(), 4u);
}

TEST_F(ChannelDialog, AnEmptyNameIsRefusedAndTheDialogStays) {
    TypeInto(dialog, IDC_CHANNEL_NAME, L"");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"Channel"), L"Please enter a name.");
    EXPECT_TRUE(IsWindow(dialog));
}

TEST_F(ChannelDialog, AFrequencyThatIsEmptyOrBeginsWithAPointIsRefused) {
    for (const wchar_t* text : {L"", L".95"}) {
        TypeInto(dialog, IDC_CHANNEL_FREQUENCY, text);
        PressSoftKey(dialog, SoftKey::kLeft);
        EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"Channel"), L"Please enter a frequency.");
    }
    EXPECT_TRUE(IsWindow(dialog));
}

TEST_F(ChannelDialog, AFrequencyOutsideTheBandIsRefused) {
    for (const wchar_t* text : {L"87.4", L"108.1", L"9", L"98."}) {
        TypeInto(dialog, IDC_CHANNEL_FREQUENCY, text);
        PressSoftKey(dialog, SoftKey::kLeft);
        EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"FM"), L"Please enter a frequency from 87.5 to 108 MHz.");
    }
    EXPECT_EQ(Stored().size(), 4u);
}

TEST_F(ChannelDialog, TheFrequencyTakesDigitsOnePointAndFiveCharacters) {
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"a9-8.2.5,55");
    EXPECT_TRUE(test::WaitFor([&] { return TextOf(dialog, IDC_CHANNEL_FREQUENCY) == L"98.25"; }))
        << testing::PrintToString(TextOf(dialog, IDC_CHANNEL_FREQUENCY));
}

TEST_F(ChannelDialog, AFrequencyThatTheGroupHasIsRefusedWithAnError) {
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"98.5");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"Error"),
              L"The channel could not be added. It may already be in the list.");
    EXPECT_EQ(test::RowCount(radio->ListView()), 3);
    EXPECT_THAT(Stored(), Not(Contains("C Test|Unknown|9850|")));
}

}  // namespace
