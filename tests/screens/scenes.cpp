#include "tests/screens/scenes.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "resources/resource_ids.h"
#include "tests/support/hand.h"
#include "tests/support/remote_list.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace screens {
namespace {

using test::PressButton;
using test::PressSoftKey;
using test::SoftKey;
using test::TypeInto;
using test::WaitFor;

constexpr UINT kNoticeSwitched = 0xA404;
constexpr int kPopupAdd = 1, kPopupDelete = 2, kPopupEdit = 3;

void SetRadio(const Stage& stage, const wchar_t* setting, std::uint32_t value) {
    stage.handset.SetRegistry(test::kRadioSettings, setting, value);
}

// --- The main screen ---

void Main(Stage& stage) {
    stage.Listen();
    stage.Tune("985", "98.5");
    for (const char* text : {"98.5", "Kora One", "KORA ONE", "News", "Good morning", "Stereo", "R.D.S", "AF"})
        stage.AwaitDrawn(text);
}
void Unknown(Stage& stage) {
    stage.Listen();
    stage.Tune("1049", "Unknown");
}
void TwoDigitChannel(Stage& stage) {
    stage.Listen();
    stage.Tune("890", "FM 10");
}
void LongName(Stage& stage) {
    stage.Listen();
    stage.Tune("1057", kLongName);
    for (const char* text : {"LONGNAME", "EVENINGS", "MUSIC OF ALL SORTS"}) stage.AwaitDrawn(text);
}
// At the clock's own pace: digits that nothing follows are over after two seconds.
void Digits(Stage& stage) {
    stage.handset.SetState(L"ClockRate", 1);
    stage.Stop();
    stage.Listen();
    stage.Tune("10", "10");
}
void WeakSignal(Stage& stage) {
    stage.Listen();
    SetRadio(stage, L"EnableMute", 1);
    stage.Tune("901", "Weak");
    SetRadio(stage, L"EnableMute", 0);
}
void Call(Stage& stage) {
    stage.Listen();
    stage.Handset(L"call incoming");
    EXPECT_TRUE(WaitFor([&] {
        return stage.handset.RegistryNumber(L"HKLM\\System\\State\\Phone", L"Status").value_or(0) != 0;
    }));
}
void CallIsOver(Stage& stage) {
    stage.Listen();
    stage.Handset(L"call hangup");
}
void Loudspeaker(Stage& stage) {
    stage.Listen();
    stage.TapElement(SKIN_OUTPUT);
}

// --- Menus ---

void PressBar(Stage& stage, WPARAM key) {
    stage.Listen();
    PostMessageW(stage.radio().MenuBar(), RegisterWindowMessageW(L"KoraHandset.SoftKey"), key, 0);
    stage.Menu();
}
void MenuLeft(Stage& stage) {
    PressBar(stage, 0);
}
void MenuRight(Stage& stage) {
    PressBar(stage, 1);
}
void Submenu(Stage& stage, int entry) {
    PressBar(stage, 1);
    for (int down = 0; down < entry; ++down) stage.radio().Key(VK_DOWN);
    stage.radio().Key(VK_RIGHT);
    stage.Menu(2);
}
void MenuSleep(Stage& stage) {
    Submenu(stage, 3);
}
void MenuButtons(Stage& stage) {
    Submenu(stage, 4);
}
// The row of those that are to be seen.
void TapRow(HWND list, int shown) {
    const auto rows = [&](WPARAM count) {
        return static_cast<int>(
            HIWORD(SendMessageW(list, LVM_APPROXIMATEVIEWRECT, count, MAKELPARAM(-1, -1))));
    };
    const int height = rows(2) - rows(1);
    const HWND heads = FindWindowExW(list, nullptr, WC_HEADERW, nullptr);
    RECT place = {};
    if (IsWindowVisible(heads)) GetClientRect(heads, &place);
    const int head = place.bottom;
    const LPARAM point = MAKELPARAM(20, static_cast<WORD>(head + shown * height + height / 2));
    const int row = static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0)) + shown;
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(list, WM_LBUTTONUP, 0, point);
    EXPECT_TRUE(WaitFor([&] { return test::SelectedRow(list) == row; })) << "row " << row;
}
// Its row stays chosen, and the focus goes to the main window.
void RowWithoutFocus(Stage& stage) {
    stage.Listen();
    TapRow(stage.radio().ListView(), 2);
    PostMessageW(stage.radio().ListView(), WM_KEYDOWN, VK_LEFT, 0);
    PostMessageW(stage.radio().Window(), WM_KEYDOWN, VK_RIGHT, 0);
    SendMessageW(stage.radio().Window(), WM_NULL, 0, 0);
}
void OpenContextMenu(Stage& stage, HWND window, HWND list) {
    RECT place = {};
    GetWindowRect(list, &place);
    PostMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window),
                 MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2));
    stage.Menu();
}
void MenuOfChannel(Stage& stage) {
    stage.Listen();
    TapRow(stage.radio().ListView(), 2);
    OpenContextMenu(stage, stage.radio().Window(), stage.radio().ListView());
}
void Choose(Stage& stage, int item) {
    for (int down = 0; down < item; ++down) stage.radio().Key(VK_DOWN);
    stage.radio().Key(VK_RETURN);
}

// --- Dialogs ---

HWND Command(Stage& stage, WORD command) {
    stage.Listen();
    stage.radio().Command(command);
    return stage.Box();
}
void Information(Stage& stage) {
    Command(stage, IDC_INFORMATION);
}
void Settings(Stage& stage) {
    Command(stage, IDC_SETTINGS);
}
HWND OwnFile(Stage& stage) {
    SetRadio(stage, L"SaveFileType", 1);
    stage.handset.SetRegistry(test::kRadioSettings, L"DefineFileName", std::wstring(L"\\evening."));
    const HWND dialog = Command(stage, IDC_SETTINGS);
    SetRadio(stage, L"SaveFileType", 0);
    return dialog;
}
void SettingsOwnFile(Stage& stage) {
    OwnFile(stage);
}
void SettingsBrowse(Stage& stage) {
    const HWND dialog = OwnFile(stage);
    PressButton(dialog, IDC_SAVE_BROWSE);
    stage.Box(dialog);
}
void Schedule(Stage& stage) {
    Command(stage, IDC_SCHEDULE);
}
HWND ChooseBooking(Stage& stage) {
    const HWND dialog = Command(stage, IDC_SCHEDULE);
    TapRow(GetDlgItem(dialog, IDC_SCHEDULE_LIST), 1);
    return dialog;
}
void FocusTheNext(HWND dialog) {
    PostMessageW(dialog, WM_NEXTDLGCTL, 0, FALSE);
    SendMessageW(dialog, WM_NULL, 0, 0);
}
void ScheduleChosen(Stage& stage) {
    ChooseBooking(stage);
}
void ScheduleChosenWithoutFocus(Stage& stage) {
    FocusTheNext(ChooseBooking(stage));
}
void MenuOfBooking(Stage& stage) {
    const HWND dialog = ChooseBooking(stage);
    OpenContextMenu(stage, dialog, GetDlgItem(dialog, IDC_SCHEDULE_LIST));
}
void Rds(Stage& stage) {
    stage.Listen();
    stage.Tune("985", "KORA ONE");
    stage.Click(SKIN_RDS_INFORMATION);
    stage.Box();
}
void Alternatives(Stage& stage) {
    stage.Listen();
    stage.Tune("985", "98.5");
    stage.AwaitDrawn("AF");
    stage.Click(SKIN_AF_LIST);
    stage.Box();
}
void MeasuredAlternatives(Stage& stage) {
    Alternatives(stage);
    const HWND dialog = stage.Box();
    PressButton(dialog, IDC_AF_MEASURE);
    SendMessageW(dialog, WM_NULL, 0, 0);
}
void AlternativeChosen(Stage& stage) {
    Alternatives(stage);
    const HWND list = GetDlgItem(stage.Box(), IDC_AF_FREQUENCIES);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 8));
    PostMessageW(list, WM_LBUTTONUP, 0, MAKELPARAM(30, 8));
    EXPECT_TRUE(WaitFor([&] { return test::SelectedRow(list) >= 0; }));
}
void Lists(Stage& stage) {
    Command(stage, IDC_CHANNEL_LISTS);
}
void ListsWithoutFocus(Stage& stage) {
    FocusTheNext(Command(stage, IDC_CHANNEL_LISTS));
}
HWND ListName(Stage& stage, int button) {
    const HWND lists = Command(stage, IDC_CHANNEL_LISTS);
    PressButton(lists, button);
    return stage.Box(lists);
}
void ListNew(Stage& stage) {
    ListName(stage, IDC_GROUP_NEW);
}
void ListRename(Stage& stage) {
    ListName(stage, IDC_GROUP_RENAME);
}
HWND AddChannel(Stage& stage) {
    MenuOfChannel(stage);
    Choose(stage, kPopupAdd);
    return stage.Box();
}
void ChannelAdd(Stage& stage) {
    AddChannel(stage);
}
void ChannelAddCurrent(Stage& stage) {
    stage.Listen();
    stage.Tune("1049", "Unknown");
    Command(stage, IDC_ADD_CURRENT);
}
HWND EditChannel(Stage& stage) {
    MenuOfChannel(stage);
    Choose(stage, kPopupEdit);
    return stage.Box();
}
void ChannelEdit(Stage& stage) {
    EditChannel(stage);
}

// --- Boxes over dialogs ---

// What is typed there is accepted, and refused in a box.
void Refused(Stage& stage, HWND dialog, const std::wstring& name, const std::wstring& frequency) {
    TypeInto(dialog, IDC_CHANNEL_NAME, name);
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, frequency);
    PressSoftKey(dialog, SoftKey::kLeft);
    stage.Box(dialog);
}
void NameEmpty(Stage& stage) {
    Refused(stage, AddChannel(stage), L"", L"98.5");
}
void FrequencyEmpty(Stage& stage) {
    Refused(stage, AddChannel(stage), L"Delta", L"");
}
void FrequencyInvalid(Stage& stage) {
    Refused(stage, AddChannel(stage), L"Delta", L"50");
}
void InsertFailed(Stage& stage) {
    Refused(stage, AddChannel(stage), L"Twice", L"98.5");
}
void UpdateFailed(Stage& stage) {
    Refused(stage, EditChannel(stage), L"Twice", L"98.5");
}
void ChannelDelete(Stage& stage) {
    MenuOfChannel(stage);
    Choose(stage, kPopupDelete);
    stage.Box();
}
void NameRefused(Stage& stage, int button, const std::wstring& typed) {
    const HWND name = ListName(stage, button);
    TypeInto(name, IDC_GROUP_NAME, typed);
    PressSoftKey(name, SoftKey::kLeft);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(name); }));
    stage.Box(stage.radio().Box(L"Channel lists"));
}
void ListNotAdded(Stage& stage) {
    NameRefused(stage, IDC_GROUP_NEW, L"Travel");
}
void ListNotRenamed(Stage& stage) {
    NameRefused(stage, IDC_GROUP_RENAME, L"");
}
void ListDelete(Stage& stage) {
    const HWND lists = Command(stage, IDC_CHANNEL_LISTS);
    PressButton(lists, IDC_GROUP_DELETE);
    stage.Box(lists);
}
// The schedule opens at 09:30 of a Monday, which is the day that is chosen.
void NotBooked(Stage& stage, int start_min, int end_min, bool onMonday) {
    stage.Handset(L"clock 2026-11-23 09:30");
    const HWND dialog = Command(stage, IDC_SCHEDULE);
    test::StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_START), start_min);
    test::StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_END), end_min);
    RECT monday = {};
    GetWindowRect(GetDlgItem(dialog, IDC_SCHEDULE_SUNDAY + 1), &monday);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&monday), 2);
    if (!onMonday)
        PostMessageW(dialog, WM_LBUTTONUP, 0,
                     MAKELPARAM((monday.left + monday.right) / 2, (monday.top + monday.bottom) / 2));
    PressButton(dialog, IDC_SCHEDULE_ADD);
    stage.Box(dialog);
}
void BookingNoDay(Stage& stage) {
    NotBooked(stage, 0, 1, false);
}
void BookingSameTime(Stage& stage) {
    NotBooked(stage, 0, 0, true);
}
void BookingEndFirst(Stage& stage) {
    NotBooked(stage, 1, 0, true);
}
void BookingConflict(Stage& stage) {
    NotBooked(stage, 0, 1, true);
}
void DeleteBooking(Stage& stage, int item) {
    MenuOfBooking(stage);
    const HWND dialog = stage.Box();
    Choose(stage, item);
    stage.Box(dialog);
}
void BookingDelete(Stage& stage) {
    DeleteBooking(stage, 1);
}
void BookingDeleteAll(Stage& stage) {
    DeleteBooking(stage, 2);
}

// --- Boxes over the main screen ---

void AlternativeTaken(Stage& stage) {
    stage.Listen();
    PostMessageW(stage.radio().Window(), kNoticeSwitched, 0, 0);
    stage.Box();
}
void NoSpace(Stage& stage) {
    stage.Listen();
    stage.handset.SetState(L"ObjectStoreFree", 1000);
    stage.TapElement(SKIN_RECORD);
    stage.Box();
    stage.handset.DeleteState(L"ObjectStoreFree");
}
void NoCard(Stage& stage) {
    stage.Listen();
    SetRadio(stage, L"SaveFileType", 1);
    stage.handset.SetRegistry(test::kRadioSettings, L"DefineFileName",
                              std::wstring(L"\\Storage Card\\evening."));
    stage.handset.SetState(L"StorageCardFree", 1u << 30);
    stage.handset.SetState(L"StorageCard", 0);
    stage.TapElement(SKIN_RECORD);
    stage.Box();
    stage.handset.SetState(L"StorageCard", 1);
    SetRadio(stage, L"SaveFileType", 0);
}
void FileExists(Stage& stage) {
    stage.Listen();
    SetRadio(stage, L"SaveFileType", 1);
    stage.handset.SetRegistry(test::kRadioSettings, L"DefineFileName", std::wstring(L"\\evening."));
    test::WriteWholeFile(stage.handset.DevicePath(L"\\evening.amr"), "there");
    stage.TapElement(SKIN_RECORD);
    stage.Box();
    SetRadio(stage, L"SaveFileType", 0);
}
void Recording(Stage& stage) {
    stage.Listen();
    stage.Tune("985", "98.5");
    stage.TapElement(SKIN_RECORD);
    stage.AwaitDrawn("Rec 00:00:0");
}
// The recording of the scene before ends.
void RecordingSaved(Stage& stage) {
    stage.TapElement(SKIN_RECORD);
    stage.Box();
}

// --- The scan; its three scenes follow one another ---

void ScanQuestion(Stage& stage) {
    stage.handset.SetState(L"ClockRate", kHurry);
    stage.Stop();
    stage.Listen();
    Command(stage, IDC_AUTOSCAN);
}
void Scan(Stage& stage) {
    ScanQuestion(stage);
    test::Radio::Answer(stage.Box(), IDOK);
    stage.AwaitDrawn("Searching");
}
// The scan of the scene before comes to its end.
void ScanFinished(Stage& stage) {
    WaitFor([&] { return stage.radio().Box(L"FM") != nullptr; }, 60000);
    stage.Box();
}
// The first station that was found is tuned when its row has rested; what is typed before that would be tuned
// away again.
bool IsTunedLast(const Stage& stage, const std::string& station) {
    const std::vector<std::string> calls = stage.handset.TunerCalls();
    const auto last = std::find_if(calls.rbegin(), calls.rend(),
                                   [](const std::string& call) { return call.rfind("SetChannel", 0) == 0; });
    return last != calls.rend() && *last == "SetChannel " + station + " -> 0";
}
void Scanned(Stage& stage) {
    stage.Listen();
    EXPECT_TRUE(WaitFor([&] {
        return IsWindowEnabled(stage.radio().Window()) && IsWindowVisible(stage.radio().ListView()) &&
               IsTunedLast(stage, "8760");
    })) << "the first station is not tuned";
    stage.Tune("985", "FM  3");
}

// --- Starts ---

void NoHeadset(Stage& stage) {
    stage.handset.PlugHeadset(false);
    stage.Start();
    stage.Box();
    stage.handset.PlugHeadset(true);
}
void NoTuner(Stage& stage) {
    stage.handset.SetState(L"Fault", std::wstring(L"initialize"));
    stage.Start();
    stage.Box();
    stage.handset.DeleteState(L"Fault");
}
void DatabaseCreated(Stage& stage) {
    stage.Start(L"Kora.vol");
    stage.Box();
}
void DatabaseFailed(Stage& stage) {
    stage.handset.SetState(L"Fault", std::wstring(L"database-write"));
    stage.Start(L"Kora.vol");
    stage.Box();
    stage.handset.DeleteState(L"Fault");
}

}  // namespace

const std::vector<Scene>& Scenes() {
    static const std::vector<Scene> scenes = {
        {"main", Main},
        {"main-unknown", Unknown},
        {"main-two-digits", TwoDigitChannel},
        {"main-long-name", LongName},
        {"main-row-without-focus", RowWithoutFocus},
        {"main-weak", WeakSignal},
        {"main-loudspeaker", Loudspeaker},
        {"main-call", Call},
        {"main-after-call", CallIsOver},
        {"menu-left", MenuLeft},
        {"menu-right", MenuRight},
        {"menu-sleep", MenuSleep},
        {"menu-buttons", MenuButtons},
        {"menu-channel", MenuOfChannel},
        {"menu-booking", MenuOfBooking},
        {"information", Information, false, true},
        {"settings", Settings, false, true},
        {"settings-own-file", SettingsOwnFile, false, true},
        {"settings-browse", SettingsBrowse, false, false, true},
        {"schedule", Schedule, false, true},
        {"schedule-chosen", ScheduleChosen},
        {"schedule-without-focus", ScheduleChosenWithoutFocus},
        {"rds", Rds, false, true},
        {"alternatives", Alternatives, false, true},
        {"alternatives-measured", MeasuredAlternatives},
        {"alternatives-chosen", AlternativeChosen},
        {"lists", Lists, false, true},
        {"lists-without-focus", ListsWithoutFocus},
        {"list-new", ListNew, false, true},
        {"list-rename", ListRename},
        {"channel-add", ChannelAdd, false, true},
        {"channel-add-current", ChannelAddCurrent},
        {"channel-edit", ChannelEdit},
        {"box-name-empty", NameEmpty},
        {"box-frequency-empty", FrequencyEmpty},
        {"box-frequency-invalid", FrequencyInvalid},
        {"box-channel-not-added", InsertFailed},
        {"box-channel-not-changed", UpdateFailed},
        {"box-channel-delete", ChannelDelete},
        {"box-list-not-added", ListNotAdded},
        {"box-list-not-renamed", ListNotRenamed},
        {"box-list-delete", ListDelete},
        {"box-booking-no-day", BookingNoDay},
        {"box-booking-same-time", BookingSameTime},
        {"box-booking-end-first", BookingEndFirst},
        {"box-booking-conflict", BookingConflict},
        {"box-booking-delete", BookingDelete},
        {"box-booking-delete-all", BookingDeleteAll},
        {"box-alternative-taken", AlternativeTaken},
        {"box-no-space", NoSpace},
        {"box-no-card", NoCard},
        {"box-file-exists", FileExists},
        {"recording", Recording, true},
        {"box-recording-saved", RecordingSaved},
        // Digits that are left alone go on with the next ones: a radio that is started anew follows.
        {"main-digits", Digits},
        {"box-scan-question", ScanQuestion},
        {"scan", Scan, true},
        {"box-scan-finished", ScanFinished},
        {"main-scanned", Scanned},
        {"box-no-headset", NoHeadset},
        {"box-no-tuner", NoTuner},
        {"box-lists-created", DatabaseCreated},
        {"box-lists-failed", DatabaseFailed},
    };
    return scenes;
}

}  // namespace screens
