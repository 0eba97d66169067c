// What the radio begins with: the station and the volume of the last time, however that ended.
#include "tests/system/radio_test.h"

namespace {

using test::Radio;

class PowerUp : public test::RadioTest {
  protected:
    // The argument of the last call of that kind which succeeded; empty when there was none.
    std::string LastArgument(const std::string& call) const {
        std::string last;
        for (const std::string& line : handset.TunerCalls()) {
            if (line.rfind(call + " ", 0) != 0) continue;
            const std::size_t end = line.find(" -> 0");
            if (end != std::string::npos) last = line.substr(call.size() + 1, end - call.size() - 1);
        }
        return last;
    }
    // Tuned to 98.5 and made louder by one step; the volume that this gave.
    std::string TuneAndTurnUp(Radio& radio) const {
        radio.WaitUntilShown();
        radio.Type("985");
        EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
        radio.Key(VK_RIGHT);
        EXPECT_TRUE(test::WaitFor([this] { return !LastArgument("SetVolume").empty(); }));
        return LastArgument("SetVolume");
    }
    // A radio that is started now shows that station and that volume, and was given neither.
    void ExpectToBeginWith(const std::string& channel, const std::string& volume) {
        handset.ClearTunerLog();
        Radio radio(handset);
        radio.WaitUntilShown();
        EXPECT_TRUE(WaitForCall("GetVolume -> 0: " + volume));
        EXPECT_TRUE(WaitForCall("GetChannel -> 0: " + channel));
        EXPECT_EQ(LastArgument("SetChannel"), "");
        EXPECT_EQ(LastArgument("SetVolume"), "");
        PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(radio.WaitUntilGone());
    }
};

TEST_F(PowerUp, ARadioThatWasClosedComesBackWithItsStationAndItsVolume) {
    std::string volume;
    {
        Radio radio(handset);
        volume = TuneAndTurnUp(radio);
        PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
        ASSERT_TRUE(radio.WaitUntilGone());
    }
    EXPECT_NE(volume, "50");
    ExpectToBeginWith("9850", volume);
}

TEST_F(PowerUp, ARadioThatWasKilledComesBackWithItsStationAndItsVolume) {
    std::string volume;
    {
        Radio radio(handset);
        volume = TuneAndTurnUp(radio);
        TerminateProcess(radio.Process(), 1);
        ASSERT_TRUE(radio.WaitUntilGone());
    }
    EXPECT_NE(volume, "50");
    ExpectToBeginWith("9850", volume);
}

TEST_F(PowerUp, ARadioThatWasKilledWhileItWasMutedForAWeakSignalIsHeardAgain) {
    {
        Set(L"EnableMute", 1);
        handset.SetState(L"SignalLimit", 5u);
        Radio radio(handset);
        radio.WaitUntilShown();
        ASSERT_TRUE(WaitForCall("SetVolume 0 -> 0"));
        TerminateProcess(radio.Process(), 1);
        ASSERT_TRUE(radio.WaitUntilGone());
    }
    Set(L"EnableMute", 0);
    ExpectToBeginWith("8750", "50");
}

TEST_F(PowerUp, ABookedRadioWithoutAChannelKeepsTheStationOfTheLastTime) {
    handset.SetState(L"TunedChannel", 10790u);
    Radio radio(handset, L"-Rec -Duration 1");
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForCall("GetChannel -> 0: 10790"));
}

TEST_F(PowerUp, ADamagedStationAndADamagedVolumeAreTheBottomOfTheBandAndHalfVolume) {
    handset.SetState(L"TunedChannel", std::wstring(L"one-o-one"));
    handset.SetState(L"TunerVolume", 101u);
    ExpectToBeginWith("8750", "50");
}

TEST_F(PowerUp, ANewPhoneBeginsOnTheFirstPresetStation) {
    handset.DeleteState(L"TunedChannel");
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"install \"" + handset.Root() + L"\""), 0u);
    EXPECT_EQ(handset.RegistryNumber(L"HKCU\\Software\\Quillon\\Kora\\My Favorite\\Group1", L"ChannelValue1"),
              9850u);
    ExpectToBeginWith("9850", "50");
}

}  // namespace
