// The panel's window: handset.exe in a process of its own, with the stand-in on its display.
#include <commctrl.h>

#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/phone/band_strip.h"
#include "handset/phone/panel_window.h"
#include "handset/phone/switch_column.h"
#include "handset/service/booking_service.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/handset_state.h"
#include "handset/state/own_windows.h"
#include "tests/unit/handset/open_panel.h"

namespace panel {
namespace {

// In which a service that was started would be seen.
constexpr unsigned kTimeToCome_ms = 5000;

using PanelWindowTest = OpenPanelTest;

TEST_F(PanelWindowTest, SaysWhereTheDisplayIs) {
    const LRESULT answer =
        SendMessageW(window_, RegisterWindowMessageW(handset::kDisplayOriginMessage), 0, 0);
    EXPECT_EQ(static_cast<std::uint64_t>(answer) >> 32, 1u);
    POINT corner = {upright_.display.x, upright_.display.y};
    ClientToScreen(window_, &corner);
    EXPECT_EQ(Origin().x, corner.x);
    EXPECT_EQ(Origin().y, corner.y);
}

TEST_F(PanelWindowTest, TheRadioStandsInTheDisplayAboveThePanelAndMovesWithIt) {
    StartStandIn();
    ASSERT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
    RECT before = {};
    GetWindowRect(RadioMainWindow(), &before);
    SetWindowPos(window_, nullptr, 200, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
    RECT after = {};
    GetWindowRect(RadioMainWindow(), &after);
    EXPECT_FALSE(EqualRect(&before, &after));
    EXPECT_EQ(after.right - after.left, 240);
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    const auto isAbove = [&] {
        for (HWND below = GetWindow(RadioMainWindow(), GW_HWNDNEXT); below != nullptr;
             below = GetWindow(below, GW_HWNDNEXT)) {
            if (below == window_) return true;
        }
        return false;
    };
    EXPECT_TRUE(WaitUntil(isAbove, kDeadline_ms));
}

TEST_F(PanelWindowTest, ARadioThatRanBeforeIsFetchedIntoTheDisplay) {
    StartStandIn();
    SetWindowPos(RadioMainWindow(), nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(window_, nullptr, 60, 70, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
}

TEST_F(PanelWindowTest, ARadioThatIsShownAfterThePanelHasSeenItIsFetchedIntoTheDisplay) {
    StartStandIn();
    ASSERT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
    const HWND radio = RadioMainWindow();
    // The panel is open where the display is while a radio is shown there.
    const auto displayIsOpen = [&] {
        const handset::OwnedRegion region(CreateRectRgn(0, 0, 0, 0));
        return GetWindowRgn(window_, region.get()) != ERROR;
    };
    ASSERT_TRUE(WaitUntil(displayIsOpen, kDeadline_ms));
    ShowWindow(radio, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !displayIsOpen(); }, kDeadline_ms));
    SetWindowPos(radio, nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(radio, SW_SHOWNOACTIVATE);
    EXPECT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
}

TEST_F(PanelWindowTest, PressingAKeyReachesTheRadioAndLeavesItActive) {
    StartStandIn();
    Click(*PlaceOf(upright_, PhoneKey::k7));
    EXPECT_TRUE(WaitForNote("child keydown 55\nchild keyup 55\n")) << Notes();
    Click(*PlaceOf(upright_, PhoneKey::kSoftLeft));
    EXPECT_TRUE(WaitForNote("softkey 0\n")) << Notes();
    EXPECT_EQ(Notes().find("activate 0"), std::string::npos) << Notes();
    EXPECT_EQ(SendMessageW(window_, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
}

TEST_F(PanelWindowTest, ATouchOfTheBandTypesTheStationsDigits) {
    WriteWholeFile(Device(L"\\Windows\\band.ini"), "[9850]\nlevel=45\n[10120]\nlevel=30\n");
    StartStandIn();
    const auto touch = [&](std::uint32_t channel) {
        const int x = static_cast<int>(BandPlace(upright_.band, channel));
        Click({x, BandBars(upright_.band).y, 1, 4});
    };
    // The panel follows the file within a moment; until then the place is that of a channel beside.
    ASSERT_TRUE(WaitUntil(
        [&] {
            touch(9850);
            return WaitUntil([&] { return Notes().find("child keyup 53\n") != std::string::npos; }, 1000);
        },
        kDeadline_ms));
    EXPECT_NE(Notes().find("child keydown 57\nchild keyup 57\nchild keydown 56\nchild keyup 56\n"
                           "child keydown 53\nchild keyup 53\n"),
              std::string::npos)
        << Notes();
    touch(10120);
    EXPECT_TRUE(
        WaitForNote("child keydown 49\nchild keyup 49\nchild keydown 48\nchild keyup 48\n"
                    "child keydown 49\nchild keyup 49\nchild keydown 50\nchild keyup 50\n"))
        << Notes();
}

TEST_F(PanelWindowTest, ATouchThatTheStylusTakesOffTheBandTunesNothing) {
    StartStandIn();
    const Box bars = BandBars(upright_.band);
    const LPARAM inside = MAKELPARAM(bars.x + 20, bars.y + 5);
    const LPARAM outside = MAKELPARAM(bars.x + 20, upright_.body.y + 3);
    RECT before = {}, after = {};
    GetWindowRect(window_, &before);
    PostMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, inside);
    PostMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, outside);
    PostMessageW(window_, WM_LBUTTONUP, 0, outside);
    Click(*PlaceOf(upright_, PhoneKey::k7));
    EXPECT_TRUE(WaitForNote("child keydown 55\nchild keyup 55\n")) << Notes();
    EXPECT_EQ(Notes().find("child keydown"), Notes().find("child keydown 55")) << Notes();
    GetWindowRect(window_, &after);
    EXPECT_EQ(before.left, after.left);
    EXPECT_EQ(before.top, after.top);
}

TEST_F(PanelWindowTest, AHeldArrowKeyRepeatsUntilItIsLetGo) {
    StartStandIn();
    const Box& key = *PlaceOf(upright_, PhoneKey::kRight);
    const LPARAM place = MAKELPARAM(key.x + 3, key.y + 3);
    PostMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, place);
    EXPECT_TRUE(WaitForNote("child keydown 39\nchild keydown 39\nchild keydown 39\n")) << Notes();
    PostMessageW(window_, WM_LBUTTONUP, 0, place);
    EXPECT_TRUE(WaitForNote("child keyup 39\n")) << Notes();
}

TEST_F(PanelWindowTest, SwitchesDoWhatTheCommandLineDoes) {
    EXPECT_TRUE(HeadsetPlugged());
    ClickSwitch(upright_, L"Headset");
    EXPECT_TRUE(WaitUntil([] { return !HeadsetPlugged(); }, kDeadline_ms));
    ClickSwitch(upright_, L"Storage card");
    EXPECT_TRUE(WaitUntil([] { return !handset::StorageCardPresent(); }, kDeadline_ms));
    ClickSwitch(upright_, L"Incoming call");
    EXPECT_TRUE(WaitUntil(
        [] { return DeviceDword(L"HKLM\\System\\State\\Phone", L"Status", 0) == 0x00010000; }, kDeadline_ms));
    for (const auto& [label, bits] : {std::pair(L"link", 0xDu), std::pair(L"pair", 0x19u),
                                      std::pair(L"on", 0x9u), std::pair(L"off", 0u)}) {
        ClickSwitch(upright_, label);
        EXPECT_TRUE(WaitUntil([bits = bits] { return BluetoothBits() == bits; }, kDeadline_ms)) << bits;
    }
    handset::SetStateDword(L"TunedChannel", 9850);
    ClickSwitch(upright_, L"Signal");
    EXPECT_TRUE(WaitUntil([] { return SignalLimit().has_value(); }, kDeadline_ms));
    EXPECT_EQ(SignalLimit()->level, 50u);
    EXPECT_EQ(SignalLimit()->channel, 9850u);
    ClickSwitch(upright_, L"600");
    EXPECT_TRUE(WaitUntil([] { return ShownRate() == 600; }, kDeadline_ms));
    ClickSwitch(upright_, L"Display");
    EXPECT_TRUE(WaitUntil([] { return PhoneSleeps(); }, kDeadline_ms));
    ClickSwitch(upright_, L"Display");
    EXPECT_TRUE(WaitUntil([] { return PowerState() == L"on"; }, kDeadline_ms));
}

TEST_F(PanelWindowTest, ASleepingPhoneTakesNoKeysAndWakesToBeClosed) {
    StartStandIn();
    Run({L"power", L"suspend"});
    EXPECT_EQ(Run({L"key", L"7"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"the phone sleeps"), std::wstring::npos);
    EXPECT_EQ(Notes().find("keydown 55"), std::string::npos);
    EXPECT_EQ(Run({L"stop"}), kDone);
    EXPECT_EQ(PowerState(), L"on");
}

TEST_F(PanelWindowTest, ASwitchThatTheStylusHasLeftDoesNothing) {
    int pressed = 0;
    for (const SwitchPlace& place : LayOutColumn(upright_.column).switches) {
        if (std::wstring(place.row->label) != L"Headset") continue;
        SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(place.box.x + 5, place.box.y + 5));
        SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
        ++pressed;
    }
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(HeadsetPlugged());
}

TEST_F(PanelWindowTest, ThePhoneTurnsWithTheScreen) {
    StartStandIn();
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    RECT client = {};
    GetClientRect(window_, &client);
    const PhoneLayout turned = LayOutPhone(320, 240);
    EXPECT_EQ(client.right, turned.width);
    EXPECT_EQ(client.bottom, turned.height);
    POINT corner = {turned.display.x, turned.display.y};
    ClientToScreen(window_, &corner);
    EXPECT_EQ(Origin().x, corner.x);
    EXPECT_EQ(Origin().y, corner.y);
    EXPECT_TRUE(WaitUntil([&] { return RadioIsAtTheDisplay(); }, kDeadline_ms));
    Click(*PlaceOf(turned, PhoneKey::k3));
    EXPECT_TRUE(WaitForNote("child keydown 51\n")) << Notes();
}

TEST_F(PanelWindowTest, ThePhoneTurnsAboutItsMiddle) {
    const auto middle = [this] {
        RECT place = {};
        GetWindowRect(window_, &place);
        return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    };
    const POINT before = middle();
    for (const wchar_t* way : {L"landscape", L"portrait"}) {
        EXPECT_EQ(Run({L"orientation", way}), kDone);
        EXPECT_NEAR(middle().x, before.x, 1);
        EXPECT_NEAR(middle().y, before.y, 1);
    }
}

TEST_F(PanelWindowTest, ALargeScreenHasItsSwitchesOnTheDesktopAndAmongThemTheWayBack) {
    for (const wchar_t* way : {L"portrait", L"landscape"}) {
        SCOPED_TRACE(testing::Message() << way);
        const bool flat = way[0] == L'l';
        EXPECT_EQ(Run({L"orientation", way}), kDone);
        ClickSwitch(LayOutPhone(CurrentScreen().width, CurrentScreen().height), L"Large screen");
        ASSERT_TRUE(WaitUntil([&] { return CurrentScreen().width == (flat ? 640 : 480); }, kDeadline_ms));
        const PhoneLayout large = LayOutPhone(CurrentScreen().width, CurrentScreen().height);
        const auto onTheDesktop = [&] {
            RECT client = {};
            GetClientRect(window_, &client);
            if (client.right != large.width) return false;
            POINT corner = {large.column.x, large.column.y};
            POINT end = {large.column.Right(), std::min(large.column.Bottom(), large.column.y + 600)};
            ClientToScreen(window_, &corner);
            ClientToScreen(window_, &end);
            return corner.x >= 0 && corner.y >= 0 && end.x <= GetSystemMetrics(SM_CXSCREEN) &&
                   end.y <= GetSystemMetrics(SM_CYSCREEN);
        };
        EXPECT_TRUE(WaitUntil(onTheDesktop, kDeadline_ms));
        ClickSwitch(large, L"Large screen");
        EXPECT_TRUE(WaitUntil([&] { return CurrentScreen().width == (flat ? 320 : 240); }, kDeadline_ms));
    }
}

TEST_F(PanelWindowTest, TheDisplayIsDarkUnlessThePowerStateIsOn) {
    StartStandIn();
    const auto darkness = [] { return FindWindowW(L"KoraHandsetDarkness", nullptr); };
    const auto dark = [&] { return darkness() != nullptr && IsWindowVisible(darkness()); };
    EXPECT_FALSE(dark());
    Run({L"power", L"unattended"});
    ASSERT_TRUE(WaitUntil(dark, kDeadline_ms));
    RECT place = {};
    GetWindowRect(darkness(), &place);
    EXPECT_EQ(place.left, Origin().x);
    EXPECT_EQ(place.top, Origin().y);
    EXPECT_EQ(place.right - place.left, 240);
    EXPECT_EQ(place.bottom - place.top, 320);
    // Touched, it leaves the radio the active window.
    EXPECT_EQ(SendMessageW(darkness(), WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
    Run({L"power", L"on"});
    EXPECT_TRUE(WaitUntil([&] { return !dark(); }, kDeadline_ms));
}

TEST_F(PanelWindowTest, ASecondPanelIsRefused) {
    EXPECT_EQ(Run({L"panel"}), kFailed);
    EXPECT_EQ(console_.Complained(), L"handset panel: the panel is open already\n");
}

TEST_F(PanelWindowTest, AnotherHandsetsPhoneIsNotThisOnes) {
    ASSERT_NE(handset::FindOwnWindow(handset::kPanelClass), nullptr);
    SetEnvironmentVariableW(L"KORA_STATEKEY", (stateKey_ + L" other").c_str());
    EXPECT_EQ(handset::FindOwnWindow(handset::kPanelClass), nullptr);
    EXPECT_EQ(DisplayOrigin().x, 0);
    EXPECT_EQ(DisplayOrigin().y, 0);
    SetEnvironmentVariableW(L"KORA_STATEKEY", stateKey_.c_str());
    EXPECT_NE(DisplayOrigin().x, 0);
}

TEST_F(PanelWindowTest, ThePanelIsMovedByItsBody) {
    const auto place = [this] {
        RECT rect = {};
        GetWindowRect(window_, &rect);
        return std::pair(rect.left, rect.top);
    };
    // Another process moves the window: the host may still be placing it where it was opened.
    ASSERT_TRUE(WaitUntil(
        [&] {
            if (place() == std::pair(40L, 30L)) return true;
            SetWindowPos(window_, nullptr, 40, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            return false;
        },
        kDeadline_ms));
    const POINT held = {upright_.body.x + 3, upright_.body.y + upright_.body.h / 2};
    SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(held.x, held.y));
    SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(held.x + 25, held.y + 17));
    SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(held.x, held.y));
    EXPECT_EQ(place(), std::pair(65L, 47L));
}

TEST_F(PanelWindowTest, TheCloseButtonPutsTheHandsetAway) {
    SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(upright_.close.x + 5, upright_.close.y + 5));
    SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
    EXPECT_EQ(WaitForSingleObject(process_.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    Click(upright_.close);
    EXPECT_EQ(WaitForSingleObject(process_.get(), kDeadline_ms), WAIT_OBJECT_0);
}

TEST_F(PanelWindowTest, ClosingThePanelClosesTheRadio) {
    StartStandIn();
    PostMessageW(window_, WM_CLOSE, 0, 0);
    EXPECT_EQ(WaitForSingleObject(process_.get(), kDeadline_ms), WAIT_OBJECT_0);
    EXPECT_TRUE(WaitUntil([] { return !RadioProcess().has_value(); }, kDeadline_ms));
}

TEST_F(PanelWindowTest, ThePanelOpensWhereItWasPutLast) {
    DragTo(33, 21);
    ClosePanel();
    OpenPanel();
    RECT place = {};
    GetWindowRect(window_, &place);
    EXPECT_EQ(place.left, 33);
    EXPECT_EQ(place.top, 21);
}

TEST_F(PanelWindowTest, APlaceThatIsOnTheScreenNoMoreIsBroughtBack) {
    ClosePanel();
    handset::SetStateQword(kPlaceX, static_cast<std::uint64_t>(-5000));
    handset::SetStateQword(kPlaceY, 70000);
    OpenPanel();
    RECT place = {};
    GetWindowRect(window_, &place);
    EXPECT_GE(place.left, 0);
    EXPECT_LT(place.left, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_GE(place.bottom, 0);
    EXPECT_LT(place.top, GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(PanelWindowTest, EverythingThatCanBePressedHasItsHintAlsoOnAPhoneThatWasTurned) {
    const auto hints = [this] {
        const HWND tips = GetWindow(FindWindowW(L"tooltips_class32", nullptr), GW_OWNER) == window_
                              ? FindWindowW(L"tooltips_class32", nullptr)
                              : nullptr;
        return tips != nullptr ? SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0) : 0;
    };
    const PhoneLayout turned = LayOutPhone(320, 240);
    // The band and the close button besides.
    const auto all =
        static_cast<LRESULT>(LayOutColumn(upright_.column).switches.size() + upright_.keys.size() + 2);
    EXPECT_EQ(hints(), all);
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    EXPECT_EQ(hints(), all);
}

TEST_F(PanelWindowTest, PutAwayWithRecordingsBookedItOffersTheServiceAndStartsIt) {
    Book(L"RunAppAtTime-0000000001", L"later", ten_ + kHour_s);
    Click(upright_.close);
    ASSERT_TRUE(WaitUntil([&] { return Question() != nullptr; }, kDeadline_ms));
    EXPECT_FALSE(ServiceRuns());
    PostMessageW(Question(), WM_COMMAND, IDYES, 0);
    EXPECT_TRUE(WaitUntil([&] { return HasEnded() && ServiceRuns(); }, kDeadline_ms));
    EXPECT_EQ(Run({L"service", L"stop"}), kDone);
    EXPECT_FALSE(ServiceRuns());
}

TEST_F(PanelWindowTest, PutAwayWithRecordingsBookedAndTheServiceDeclinedNothingRuns) {
    Book(L"RunAppAtTime-0000000001", L"later", ten_ + kHour_s);
    Click(upright_.close);
    ASSERT_TRUE(WaitUntil([&] { return Question() != nullptr; }, kDeadline_ms));
    PostMessageW(Question(), WM_COMMAND, IDNO, 0);
    EXPECT_TRUE(WaitUntil([&] { return HasEnded(); }, kDeadline_ms));
    EXPECT_FALSE(WaitUntil([] { return ServiceRuns(); }, kTimeToCome_ms));
}

TEST_F(PanelWindowTest, PutAwayWithNothingBookedOrClosedByAProgramItAsksNothing) {
    Click(upright_.close);
    EXPECT_TRUE(WaitUntil([&] { return HasEnded(); }, kDeadline_ms));
    OpenPanel();
    Book(L"RunAppAtTime-0000000001", L"later", ten_ + kHour_s);
    ClosePanel();
}

TEST_F(PanelWindowTest, PutAwayWhileAnotherServiceServesTheBookingsItAsksNothing) {
    Book(L"RunAppAtTime-0000000001", L"later", ten_ + kHour_s);
    ClosePanel();
    HandsetProcess service(L"service");
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    OpenPanel();
    Click(upright_.close);
    EXPECT_TRUE(WaitUntil([&] { return HasEnded(); }, kDeadline_ms));
    EXPECT_TRUE(ServiceRuns());
    EXPECT_EQ(Run({L"service", L"stop"}), kDone);
}

}  // namespace
}  // namespace panel
