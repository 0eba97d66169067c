#include "tests/support/random_day.h"

#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr wchar_t kPhoneKey[] = L"HKLM\\System\\State\\Phone";
constexpr std::uint32_t kCallStates[] = {0, 0x00010000, 0x00020000, 0x20000000};
constexpr const char* kFrequencies[] = {"985", "1011", "1034"};

std::string Band(int first, int second, int third) {
    const auto station = [](const char* section, int level, const char* others) {
        return std::string(section) + "\nlevel=" + std::to_string(level) +
               "\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\npt=Gardens\naf=" + others + "\n";
    };
    return station("[9850]", first, "101.1 103.4") + station("[10110]", second, "98.5 103.4") +
           station("[10340]", third, "98.5 101.1");
}

}  // namespace

void StoreFavourites(HandsetUnderTest& handset) {
    const Radio builder(handset, L"Kora.vol");
    WaitFor([&] { return !builder.Runs() || builder.Box(nullptr) != nullptr; });
    if (const HWND box = builder.Box(nullptr)) Radio::Answer(box, IDOK);
    builder.WaitUntilGone();
}

RandomDay::RandomDay(HandsetUnderTest& handset, Radio& radio, unsigned seed)
    : m_handset(handset), m_radio(radio), m_random(seed) {
    for (const wchar_t* setting : {L"EnableMute", L"EnableRDSPSPTY", L"EnableAFAutoSwitch"}) {
        m_handset.SetRegistry(kRadioSettings, setting, 1u);
    }
}

void RandomDay::Step() {
    AnswerBoxes();
    // A window in front does not stay for long: behind it the monitor rests.
    if (!m_active) {
        ToggleActivation();
        return;
    }
    // The signal changes oftenest.
    static constexpr void (RandomDay::*kEvents[])() = {
        &RandomDay::ChangeSignal,     &RandomDay::ChangeSignal, &RandomDay::ChangeSignal,
        &RandomDay::ChangeCall,       &RandomDay::ChangeCall,   &RandomDay::ToggleDisplay,
        &RandomDay::ToggleActivation, &RandomDay::Tune};
    (this->*kEvents[Below(std::size(kEvents))])();
}

void RandomDay::Calm() {
    m_handset.WriteBand(Band(60, 60, 60));
    m_handset.SetRegistry(kPhoneKey, L"Status", 0u);
    if (m_dark) ToggleDisplay();
    if (!m_active) ToggleActivation();
    AnswerBoxes();
    m_radio.Type("985");
}

long RandomDay::Rounds() {
    const HANDLE log = CreateFileW(m_handset.DevicePath(L"\\tuner.log").c_str(), GENERIC_READ,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
    if (log == INVALID_HANDLE_VALUE) return m_rounds;
    LARGE_INTEGER from = {};
    from.QuadPart = m_read;
    SetFilePointerEx(log, from, nullptr, FILE_BEGIN);
    std::string part(1 << 16, '\0');
    for (DWORD read = 0;
         ReadFile(log, part.data(), static_cast<DWORD>(part.size()), &read, nullptr) && read > 0;) {
        m_read += read;
        m_rest.append(part, 0, read);
        std::size_t begin = 0;
        for (std::size_t end; (end = m_rest.find('\n', begin)) != std::string::npos; begin = end + 1) {
            // Asked exactly once a round.
            if (m_rest.compare(begin, 9, "GetStereo") == 0) ++m_rounds;
        }
        m_rest.erase(0, begin);
    }
    CloseHandle(log);
    return m_rounds;
}

void RandomDay::ChangeSignal() {
    const auto level = [this] { return static_cast<int>(Below(2) == 0 ? Below(16) : 16 + Below(60)); };
    const int first = level(), second = level(), third = level();
    m_handset.WriteBand(Band(first, second, third));
}

void RandomDay::ChangeCall() {
    if (Below(2) == 0) {
        m_handset.SetRegistry(kPhoneKey, L"Caller Number", L"+49 30 1234");
    } else {
        m_handset.DeleteRegistry(kPhoneKey, L"Caller Number");
    }
    m_handset.SetRegistry(kPhoneKey, L"Status", kCallStates[Below(std::size(kCallStates))]);
}

void RandomDay::ToggleDisplay() {
    m_dark = !m_dark;
    m_radio.Key(VK_RETURN);
}

void RandomDay::ToggleActivation() {
    m_active = !m_active;
    PostMessageW(m_radio.Window(), WM_ACTIVATE, m_active ? WA_ACTIVE : WA_INACTIVE, 0);
}

void RandomDay::Tune() {
    m_radio.Type(kFrequencies[Below(std::size(kFrequencies))]);
}

void RandomDay::AnswerBoxes() {
    if (const HWND box = m_radio.Box(L"FM")) Radio::Answer(box, IDOK);
}

}  // namespace test
