#include "tests/support/fault_day.h"

#include <tlhelp32.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>

#include "handset/state/booking_lock.h"
#include "tests/support/handset_damage.h"
#include "tests/support/process_counts.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr wchar_t kPhone[] = L"HKLM\\System\\State\\Phone";
constexpr DWORD kAnswer_ms = 20000;
constexpr DWORD kWork_ms = 180000;
constexpr DWORD kPatience_ms = 1500;
constexpr DWORD kDialog_ms = 3000;
constexpr DWORD kKilled = 99;
constexpr std::size_t kTraceShown = 2000;

std::vector<DWORD> ProcessesOf(const std::wstring& program) {
    std::vector<DWORD> found;
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
        const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID);
        WCHAR image[MAX_PATH * 2] = L"";
        DWORD size = MAX_PATH * 2, code = 0;
        const bool runs = GetExitCodeProcess(process, &code) && code == STILL_ACTIVE;
        if (runs && QueryFullProcessImageNameW(process, 0, image, &size) &&
            _wcsicmp(image, program.c_str()) == 0)
            found.push_back(entry.th32ProcessID);
        CloseHandle(process);
    }
    CloseHandle(all);
    return found;
}

bool HasMainWindow(DWORD id) {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"Kora", nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == id) return true;
    }
    return false;
}

// The processes of a program that have their main window, in order.
std::vector<DWORD> ShownOf(const std::wstring& program) {
    std::vector<DWORD> shown = ProcessesOf(program);
    shown.erase(std::remove_if(shown.begin(), shown.end(), [](DWORD id) { return !HasMainWindow(id); }),
                shown.end());
    std::sort(shown.begin(), shown.end());
    return shown;
}

// 0 for a file that is not there.
std::uint64_t SizeOf(const std::wstring& path) {
    std::error_code missing;
    const auto size = std::filesystem::file_size(path, missing);
    return missing ? 0 : size;
}

std::string ReadFrom(const std::wstring& path, std::uint64_t place) {
    const std::string whole = ReadWholeFile(path);
    return whole.substr(std::min<std::size_t>(place, whole.size()));
}

void Handset(const wchar_t* arguments) {
    RunProgram(L"handset.exe", arguments);
}

void Agree(HWND box) {
    for (const int button : {IDYES, IDOK}) Radio::Answer(box, button);
}

}  // namespace

FaultDay::FaultDay(HandsetUnderTest& handset, unsigned seed)
    : m_handset(handset), m_random(seed), m_service(std::make_unique<ServiceProcess>(handset)) {
    for (const wchar_t* setting : {L"EnableMute", L"EnableRDSPSPTY", L"EnableAFAutoSwitch"})
        m_handset.SetRegistry(kRadioSettings, setting, 1u);
    ChangeSignal();
}

const std::vector<FaultDay::Event>& FaultDay::Events() {
    static const std::vector<Event> kEvents = {
        {8, &FaultDay::ChangeSignal},  {3, &FaultDay::ChangeCall},    {5, &FaultDay::Tune},
        {4, &FaultDay::Seek},          {3, &FaultDay::ToggleDisplay}, {3, &FaultDay::ToggleActivation},
        {1, &FaultDay::ToggleHeadset}, {2, &FaultDay::ToggleCard},    {2, &FaultDay::ToggleSpace},
        {2, &FaultDay::ChangeFaults},  {3, &FaultDay::ClearFaults},   {2, &FaultDay::ChangeRecordSettings},
        {6, &FaultDay::TapRecord},     {2, &FaultDay::Scan},          {2, &FaultDay::Book},
        {1, &FaultDay::SleepAndWake},  {1, &FaultDay::KillRadio},     {1, &FaultDay::KillService},
        {1, &FaultDay::CloseRadio},    {1, &FaultDay::BookPairSoon}};
    return kEvents;
}

void FaultDay::LiveFor(double hours, std::uint32_t clockRate) {
    const auto length_ms = static_cast<ULONGLONG>(hours * 3600 * 1000 / clockRate);
    const ULONGLONG end = GetTickCount64() + length_ms;
    while (GetTickCount64() < end) {
        Step();
        const ULONGLONG next = GetTickCount64() + 20 + Below(400);
        WaitFor([&] { return GetTickCount64() >= next; });
    }
}

void FaultDay::Step() {
    Look();
    if (m_radio == nullptr || m_radio->Window() == nullptr) {
        // Its user sees to it, sooner or later.
        if (m_radio != nullptr) AnswerBoxes();
        if (Toss()) MendStart();
        if (Below(20) == 0) EndLeftBehind();
        return;
    }
    AnswerBoxes();
    unsigned sum = 0;
    for (const Event& event : Events()) sum += event.weight;
    unsigned at = Below(sum);
    ++m_figures.events;
    for (const Event& event : Events()) {
        if (at < event.weight) return (this->*event.happen)();
        at -= event.weight;
    }
}

void FaultDay::End() {
    ClearFaults();
    m_handset.SetRegistry(kPhone, L"Status", 0u);
    if (!m_headset) ToggleHeadset();
    if (!m_card) ToggleCard();
    if (!m_space) ToggleSpace();
    Handset(L"power on");
    m_service->Kill();
    EndLeftBehind();
    Look();
    if (m_radio == nullptr) return;
    PostMessageW(m_radio->Window(), WM_CLOSE, 0, 0);
    // Once it has let go of the phone, the phone may fall asleep before it has ended.
    if (!WaitAwake([this] {
            AnswerBoxes();
            return !m_radio->Runs();
        })) {
        Complain("the last radio did not close (" + LookOfProcess(m_radio->ProcessId()) + ")");
        KillRadio();
        return;
    }
    NoteEnd();
    m_radio.reset();
}

void FaultDay::Look() {
    const LogPlace now = EndOfLogs();
    if (m_radio != nullptr && m_radio->Runs()) m_lastSeen = now;
    if (m_radio != nullptr && !m_radio->Runs()) {
        NoteEnd();
        m_radio.reset();
        // One that was booked may have begun since the last look, and be at its end already.
        m_lifeBegan = m_lastSeen;
    }
    ExpectOneRadio();
    if (m_radio != nullptr) return ExpectAnswer();
    const std::wstring program = m_handset.DevicePath(L"\\Windows\\UI.exe");
    const HWND window = FindWindowW(L"Kora", nullptr);
    if (window == nullptr) {
        // As everybody who starts the radio: not beside one that is on its way.
        const handset::CStartLock turn;
        if (!ProcessesOf(program).empty()) return;
        BeginLife();
        m_radio = std::make_unique<Radio>(m_handset);
    }
    m_active = true;
    ++m_figures.radios;
    if (window != nullptr) {
        m_radio = std::make_unique<Radio>(window);
        ++m_figures.bookedStarts;
        return;
    }
    // One that ends at once, for want of a tuner or of a headset, is looked at the next time.
    const auto settled = [this] {
        AnswerBoxes();
        return !m_radio->Runs() || (m_radio->Window() != nullptr && IsWindowVisible(m_radio->Window()));
    };
    if (!WaitFor(settled, kDialog_ms)) WaitAwake(settled);
    if (m_radio->Runs() && m_radio->Window() == nullptr) {
        Complain("a radio showed no window (" + LookOfProcess(m_radio->ProcessId()) + ")");
        KillRadio();
    }
}

void FaultDay::NoteEnd() {
    if (m_radio->Process() == nullptr) return;
    const DWORD code = m_radio->ExitCode();
    std::string cause;
    if (code == STATUS_ACCESS_VIOLATION) {
        cause = CauseOfCrash(Lines(ReadFrom(m_handset.TunerLogFile(), m_lifeBegan.calls)),
                             ReadFrom(m_handset.TraceFile(), m_lifeBegan.trace));
    }
    const std::string complaint = ComplaintOfEnd(code, cause);
    if (!complaint.empty()) return Complain(complaint);
    if (code == 0) return;
    ++m_figures.crashes;
    ++m_figures.causes[cause];
}

FaultDay::LogPlace FaultDay::EndOfLogs() const {
    return {SizeOf(m_handset.TunerLogFile()), SizeOf(m_handset.TraceFile())};
}

void FaultDay::BeginLife() {
    m_lifeBegan = m_lastSeen = EndOfLogs();
}

std::string FaultDay::ComplaintOfEnd(DWORD code, const std::string& cause) {
    if (code == 0 || (code == STATUS_ACCESS_VIOLATION && !cause.empty())) return "";
    char text[64];
    std::snprintf(text, sizeof text, "a radio ended with 0x%lx", code);
    return text;
}

std::string FaultDay::CauseOfCrash(const std::vector<std::string>& calls, const std::string& trace) {
    static const std::string kRaised = " -> 0xC0000005";
    std::string last;
    int raised = 0, taken = 0;
    for (const std::string& call : calls) {
        const std::size_t at = call.find(kRaised);
        if (at == std::string::npos) continue;
        last = "crash:" + call.substr(0, at);
        ++raised;
    }
    // What the guards of the monitor and of the sleep timer say.
    for (const char* guard : {"FM: *** Exception at Main_threadProc", "FM: *** SleepTimerProc Crash"}) {
        const std::string text = guard;
        for (std::size_t at = 0; (at = trace.find(text, at)) != std::string::npos; ++at) ++taken;
    }
    return raised > taken ? last : "";
}

void FaultDay::ExpectOneRadio() {
    const std::wstring program = m_handset.DevicePath(L"\\Windows\\UI.exe");
    const std::vector<DWORD> before = ShownOf(program);
    if (before.size() < 2) return;
    // They were looked at one after the other: one may have gone before the other came. Those that are there
    // a second time were there together.
    const std::vector<DWORD> after = ShownOf(program);
    std::vector<DWORD> together;
    std::set_intersection(before.begin(), before.end(), after.begin(), after.end(),
                          std::back_inserter(together));
    if (together.size() < 2) return;
    Complain("two radios run");
    for (const DWORD id : ProcessesOf(program)) {
        const HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, id);
        TerminateProcess(process, kKilled);
        WaitForSingleObject(process, kAnswer_ms);
        CloseHandle(process);
    }
    m_radio.reset();
}

void FaultDay::ExpectAnswer() {
    const auto answers = [this](DWORD within_ms) {
        const HWND window = m_radio->Window();
        DWORD_PTR answer = 0;
        return window == nullptr ||
               SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, within_ms, &answer) != 0 ||
               !m_radio->Runs();
    };
    if (answers(kPatience_ms)) return;
    // A phone whose display went dark falls asleep when a fault keeps its radio from holding it awake.
    ++m_figures.sleeps;
    if (WaitAwake([&] { return answers(kPatience_ms); })) return;
    Complain("a radio did not answer (" + LookOfProcess(m_radio->ProcessId()) + ")");
    KillRadio();
}

// As a user who waits for something does: a key now and then, since a phone that nobody touches falls asleep.
// A recording that stops writes all its sound first, which on a fast clock and a busy machine lags behind:
// while its file grows, the radio is at work.
bool FaultDay::WaitAwake(const std::function<bool()>& condition) {
    const ULONGLONG last = GetTickCount64() + kWork_ms;
    std::uintmax_t recorded = RecordedBytes(m_handset);
    for (ULONGLONG end = GetTickCount64() + kAnswer_ms; GetTickCount64() < std::min(end, last);) {
        Handset(L"power on");
        if (WaitFor(condition, kPatience_ms)) return true;
        const std::uintmax_t now = RecordedBytes(m_handset);
        if (now > recorded) end = GetTickCount64() + kAnswer_ms;
        recorded = now;
    }
    return false;
}

// With what goes wrong at that moment, and what was written last.
void FaultDay::Complain(const std::string& what) {
    const std::string trace = m_handset.Trace();
    const std::size_t shown = std::min<std::size_t>(trace.size(), kTraceShown);
    m_complaints.push_back(what + " at event " + std::to_string(m_figures.events) + ", fault \"" + m_fault +
                           "\", headset " + (m_headset ? "in" : "out") + "; the trace ends:\n" +
                           trace.substr(trace.size() - shown));
}

// With yes where that is asked.
void FaultDay::AnswerBoxes() {
    if (const HWND box = m_radio->Box(nullptr)) Agree(box);
}

// A radio that was booked may wait for an answer before it has a window.
void FaultDay::EndLeftBehind() {
    const std::wstring program = m_handset.DevicePath(L"\\Windows\\UI.exe");
    for (const DWORD id : ProcessesOf(program)) {
        if (HasMainWindow(id)) continue;
        const HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, id);
        // Or be about to end, or to show it.
        const auto settled = [&] {
            if (const HWND box = Radio::BoxOf(id, nullptr)) Agree(box);
            return WaitForSingleObject(process, 0) == WAIT_OBJECT_0 || HasMainWindow(id);
        };
        if (!WaitAwake(settled)) {
            Complain("a radio stayed without a window (" + LookOfProcess(id) + ")");
            TerminateProcess(process, kKilled);
            WaitForSingleObject(process, kAnswer_ms);
            ++m_figures.leftBehind;
            if (m_radio != nullptr && m_radio->ProcessId() == id) m_radio.reset();
        }
        CloseHandle(process);
    }
}

void FaultDay::MendStart() {
    ClearFaults();
    if (!m_headset) ToggleHeadset();
}

}  // namespace test
