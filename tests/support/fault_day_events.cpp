// What happens in the day: what its user does, and what goes wrong.
#include <algorithm>

#include "handset/state/app_booking.h"
#include "resources/resource_ids.h"
#include "tests/support/fault_day.h"
#include "tests/support/hand.h"
#include "tests/support/remote_list.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr DWORD kDialog_ms = 3000;
constexpr DWORD kKilled = 99;
constexpr wchar_t kPhone[] = L"HKLM\\System\\State\\Phone";
constexpr const char* kChannels[] = {"87.6", "98.5", "101.1", "107.9"};
constexpr const char* kDigits[] = {"876", "985", "1011", "1079"};
constexpr int kMostBookings = 40;
constexpr wchar_t kNotifications[] = L"HKLM\\System\\Notifications";
// Far from those that the radio's own bookings get.
constexpr std::uint32_t kPairNumbers = 4000000000;

// clang-format off
constexpr const wchar_t* kFaults[] = {
    L"initialize", L"create", L"seek", L"msgqueue", L"power-notify", L"registry-rights", L"database-write",
};
constexpr const wchar_t* kOperations[] = {
    L"GetVolume", L"GetChannel", L"SetChannel", L"SetSpeaker", L"SetMute",    L"SetVolume",  L"SeekNext",   L"SeekPrev",
    L"GetSignal", L"GetRDSData", L"GetStereo",  L"GetAFCount", L"GetAFItem",  L"GetRDSInfo", L"GetPTYText",
};
// clang-format on

std::string Band(const unsigned (&levels)[4]) {
    std::string band = "[band]\nwrap=1\n";
    for (std::size_t i = 0; i < 4; ++i) {
        static constexpr const char* kStations[] = {"8760", "9850", "10110", "10790"};
        band +=
            "[" + std::string(kStations[i]) + "]\nlevel=" + std::to_string(levels[i]) +
            "\nstereo=1\nps=KORA " + std::to_string(i) +
            "\npty=News\nrt=Good morning\naf=98.5 101.1\nprogramme=tone:" + std::to_string(330 + 110 * i) +
            "\n";
    }
    return band;
}

}  // namespace

void FaultDay::ChangeSignal() {
    const auto level = [this] { return Toss() ? Below(16) : 16 + Below(60); };
    m_handset.WriteBand(Band({level(), level(), level(), level()}));
}

void FaultDay::ChangeCall() {
    static constexpr std::uint32_t kStates[] = {0, 0, 0, 0x00010000, 0x00020000, 0x20000000};
    if (Toss()) {
        m_handset.SetRegistry(kPhone, L"Caller Number", L"+49 30 1234");
    } else {
        m_handset.DeleteRegistry(kPhone, L"Caller Number");
    }
    m_handset.SetRegistry(kPhone, L"Status", kStates[Below(std::size(kStates))]);
    ++m_figures.calls;
}

void FaultDay::Tune() {
    m_radio->Type(kDigits[Below(std::size(kDigits))]);
}

void FaultDay::Seek() {
    m_radio->Tap(Toss() ? 60 : 170, 250);
}

void FaultDay::ToggleDisplay() {
    m_radio->Key(VK_RETURN);
}

void FaultDay::ToggleActivation() {
    m_active = !m_active;
    PostMessageW(m_radio->Window(), WM_ACTIVATE, m_active ? WA_ACTIVE : WA_INACTIVE, 0);
}

void FaultDay::ToggleHeadset() {
    m_headset = !m_headset;
    m_handset.PlugHeadset(m_headset);
}

void FaultDay::ToggleCard() {
    m_card = !m_card;
    m_handset.SetState(L"StorageCard", m_card ? 1u : 0u);
}

void FaultDay::ToggleSpace() {
    m_space = !m_space;
    if (m_space) {
        m_handset.DeleteState(L"ObjectStoreFree");
    } else {
        m_handset.SetState(L"ObjectStoreFree", 999999);
    }
}

void FaultDay::ChangeFaults() {
    const bool crash = Below(3) == 0;
    const std::wstring fault = crash ? L"crash:" + std::wstring(kOperations[Below(std::size(kOperations))])
                                     : std::wstring(kFaults[Below(std::size(kFaults))]);
    m_handset.SetState(L"Fault", fault);
    m_fault.assign(fault.begin(), fault.end());
    ++m_figures.faults;
}

void FaultDay::ClearFaults() {
    m_handset.DeleteState(L"Fault");
    m_fault.clear();
}

void FaultDay::ChangeRecordSettings() {
    m_handset.SetRegistry(kRadioSettings, L"RecordAudioType", Below(3));
    const bool named = Below(3) == 0;
    m_handset.SetRegistry(kRadioSettings, L"SaveFileType", named ? 1u : 0u);
    if (named)
        m_handset.SetRegistry(kRadioSettings, L"DefineFileName",
                              L"\\Storage Card\\Take " + std::to_wstring(++m_names) + L".");
}

void FaultDay::TapRecord() {
    m_radio->Tap(28, 251);
    ++m_figures.recordings;
}

void FaultDay::Scan() {
    m_radio->Command(IDC_AUTOSCAN);
    ++m_figures.scans;
}

void FaultDay::Book() {
    if (m_figures.bookings >= kMostBookings) return;
    // Under a phone that falls asleep the dialog would hold its user's hand as well.
    RunProgram(L"handset.exe", L"power on");
    m_radio->Command(IDC_SCHEDULE);
    HWND dialog = nullptr;
    WaitFor(
        [&] {
            dialog = m_radio->Box(nullptr);
            return !m_radio->Runs() || (dialog != nullptr && IsWindowVisible(dialog));
        },
        kDialog_ms);
    const HWND list = dialog == nullptr ? nullptr : GetDlgItem(dialog, IDC_SCHEDULE_LIST);
    if (list == nullptr) return;
    const int before = RowCount(list);
    const char* channel = kChannels[Below(std::size(kChannels))];
    TypeInto(dialog, IDC_SCHEDULE_CHANNEL,
             std::wstring(channel, channel + std::char_traits<char>::length(channel)));
    const int start_min = 2 + static_cast<int>(Below(6));
    StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_START), start_min);
    StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_END), start_min + 1 + static_cast<int>(Below(8)));
    PressButton(dialog, IDC_SCHEDULE_ADD);
    // Refused in a box of the dialog's own; a notice of the radio's may stand before it as well.
    bool refused = false;
    WaitFor(
        [&] {
            const HWND box = m_radio->Box(nullptr);
            refused = box != nullptr && box != dialog && GetWindow(box, GW_OWNER) == dialog;
            return !IsWindow(list) || RowCount(list) > before || box != dialog;
        },
        kDialog_ms);
    if (IsWindow(list) && RowCount(list) > before) {
        ++m_figures.bookings;
    } else if (!refused) {
        ++m_figures.unseenBookings;  // nobody can tell what became of it
    }
    WaitFor(
        [&] {
            AnswerBoxes();
            return !IsWindow(dialog);
        },
        kDialog_ms);
}

// As another program of the phone may do it; the radio's own dialog takes no two of one minute.
void FaultDay::BookPair(int minutes) {
    static constexpr const wchar_t* kWeek[] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
    std::string said;
    RunProgram(L"handset.exe", L"clock", &said);
    const auto now = handset::ReadLocalTime(
        std::wstring(said.begin(), said.begin() + std::min<std::size_t>(said.size(), 19)));
    if (!now) return Complain("the clock says " + said);
    const handset::LocalSeconds start = (*now / 60 + minutes) * 60;
    static constexpr struct {
        const wchar_t *text, *argument;
    } kOnes[] = {{L"87.6", L"8760"}, {L"107.9", L"10790"}};
    for (const auto& channel : kOnes) {
        const std::wstring name = handset::BookingName(kPairNumbers + static_cast<std::uint32_t>(++m_names));
        const std::wstring booking = kNotifications + (L"\\" + name), entry = kRadioSettings + (L"\\" + name);
        m_handset.SetRegistry(booking, handset::kBookingProgram, L"\\Windows\\UI.exe");
        m_handset.SetRegistry(booking, handset::kBookingCommandLine,
                              L"-Rec -Channel " + std::wstring(channel.argument) + L" -Duration 2");
        m_handset.SetRegistry(booking, handset::kBookingRepeat, 2u);
        m_handset.SetRegistry(entry, L"Channel", channel.text);
        m_handset.SetRegistry(entry, L"Week", kWeek[handset::DayOfWeek(start)]);
        const std::wstring text = handset::LocalTimeText(start), end = handset::LocalTimeText(start + 120);
        m_handset.SetRegistry(entry, L"StartTime", text.substr(11, 2) + L" : " + text.substr(14, 2));
        m_handset.SetRegistry(entry, L"EndTime", end.substr(11, 2) + L" : " + end.substr(14, 2));
        m_handset.SetRegistry(booking, handset::kBookingStart, text);
        ++m_figures.bookings;
    }
    ++m_figures.pairs;
}

void FaultDay::BookPairSoon() {
    if (m_figures.bookings < kMostBookings) BookPair(1 + static_cast<int>(Below(5)));
}

void FaultDay::SleepAndWake() {
    static constexpr const wchar_t* kWakers[] = {L"power on", L"power key", L"call incoming"};
    RunProgram(L"handset.exe", L"power suspend");
    RunProgram(L"handset.exe", kWakers[Below(std::size(kWakers))]);
    ++m_figures.sleeps;
}

void FaultDay::KillRadio() {
    TerminateProcess(m_radio->Process(), kKilled);
    m_radio->WaitUntilGone();
    m_radio.reset();
    BeginLife();
    ++m_figures.kills;
}

void FaultDay::KillService() {
    m_service->Kill();
    m_service = std::make_unique<ServiceProcess>(m_handset);
    ++m_figures.services;
}

void FaultDay::CloseRadio() {
    m_radio->Command(static_cast<WORD>(IDC_EXIT));
}

}  // namespace test
