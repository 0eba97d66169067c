#include "tests/screens/stage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <iterator>

#include "resources/resource_ids.h"
#include "tests/screens/contrast_judge.h"
#include "tests/screens/picture.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace screens {
namespace {

using test::WaitFor;

constexpr wchar_t kBoxClass[] = L"#32770", kMenuClass[] = L"#32768";
constexpr UINT kSkinClick = 0x8003;
constexpr DWORD kAnswerWithin_ms = 20000;
constexpr DWORD kBetweenLooks_ms = 30, kClosesWithin_ms = 2000, kPaintsWithin_ms = 3000;
// As long as a stored list takes, and as its rows need to scroll.
constexpr int kChannels = 9, kBookings = 12;

constexpr char kBand[] =
    "[band]\nwrap=1\n"
    "[8760]\nlevel=45\nstereo=1\nps=LOW END\npty=Classics\n"
    "[9010]\nlevel=10\nps=FAR AWAY\n"
    "[9850]\nlevel=60\nstereo=1\nps=KORA ONE\npty=News\npt=MORNINGS\nrt=Good morning from the "
    "handset\naf=101.1 103.4 87.6\n"
    "[10110]\nlevel=30\nps=KORA ONE\n"
    "[10340]\nlevel=25\nps=KORA ONE\n"
    "[10570]\nlevel=50\nps=LONGNAME\npty=Easy Listening\npt=EVENINGS\nrt=MUSIC OF ALL SORTS ALL DAY LONG\n"
    "[10790]\nlevel=35\nps=TOP END\n";

void SetList(const test::HandsetUnderTest& handset) {
    const std::wstring favourites = L"HKCU\\Software\\Quillon\\Kora\\My Favorite";
    handset.DeleteRegistryKey(favourites);
    const auto set = [&](const std::wstring& list, int number, const std::wstring& name,
                         std::uint32_t channel) {
        const std::wstring key = favourites + L"\\" + list, n = std::to_wstring(number);
        handset.SetRegistry(key, (L"ChannelName" + n).c_str(), name);
        handset.SetRegistry(key, (L"ChannelValue" + n).c_str(), channel);
        handset.SetRegistry(key, (L"ChannelProgramGuide" + n).c_str(), std::wstring(L"http://guide"));
    };
    handset.SetRegistry(favourites + L"\\G1", L"Name", std::wstring(L"Home"));
    handset.SetRegistry(favourites + L"\\G2", L"Name", std::wstring(L"Travel"));
    set(L"G1", 1, L"Kora One", 9850);
    set(L"G1", 2, std::wstring(std::begin(kLongName), std::end(kLongName) - 1), 10570);
    for (int i = 3; i <= kChannels; ++i)
        set(L"G1", i, L"FM " + std::to_wstring(i + 7), static_cast<std::uint32_t>(8750 + 50 * i));
    set(L"G2", 1, L"Distant", 9010);
    handset.SetRegistry(test::kRadioSettings, L"Selected", std::wstring(L"Home"));
    handset.SetRegistry(test::kRadioSettings, L"EnableRDSPSPTY", 1u);
}

void SetBookings(const test::HandsetUnderTest& handset) {
    for (int i = 0; i < kBookings; ++i) {
        wchar_t start[16] = L"", end[16] = L"";
        std::swprintf(start, std::size(start), L"%02d : 00", i + 8);
        std::swprintf(end, std::size(end), L"%02d : 59", i + 8);
        const std::wstring key = std::wstring(test::kRadioSettings) + L"\\Booking" + std::to_wstring(i + 10);
        handset.SetRegistry(key, L"Channel", std::wstring(i % 2 == 0 ? L"98.5" : L"107.9"));
        handset.SetRegistry(key, L"StartTime", std::wstring(start));
        handset.SetRegistry(key, L"EndTime", std::wstring(end));
        handset.SetRegistry(key, L"Week", std::wstring(i % 2 == 0 ? L"Wed" : L"Mon"));
    }
}

// While it lives, programs of the handset get the reader for a companion, beside the one that they have.
class WithReader {
  public:
    explicit WithReader(const std::wstring& report) {
        GetEnvironmentVariableW(kCompanion, before_, MAX_PATH);
        SetEnvironmentVariableW(kOtherCompanion, before_[0] != L'\0' ? before_ : nullptr);
        SetEnvironmentVariableW(kCompanion,
                                (test::BuildFolder() + L"\\..\\screens\\screen_reader.dll").c_str());
        SetEnvironmentVariableW(kReportFileName, report.c_str());
    }
    ~WithReader() { SetEnvironmentVariableW(kCompanion, before_[0] != L'\0' ? before_ : nullptr); }
    WithReader(const WithReader&) = delete;
    WithReader& operator=(const WithReader&) = delete;

  private:
    static constexpr wchar_t kCompanion[] = L"KORA_COMPANION";
    wchar_t before_[MAX_PATH] = L"";
};

std::wstring ReportFile() {
    return (std::filesystem::temp_directory_path() /
            (L"kora-screen-" + std::to_wstring(GetCurrentProcessId())))
        .wstring();
}

bool HasClass(HWND window, const wchar_t* name) {
    wchar_t actual[64] = L"";
    GetClassNameW(window, actual, static_cast<int>(std::size(actual)));
    return std::wcscmp(actual, name) == 0;
}

struct Search {
    DWORD process;
    const wchar_t* className;  // null: any
    std::vector<HWND> found;   // uppermost first
};

BOOL CALLBACK Collect(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.process || !IsWindowVisible(window)) return TRUE;
    if (search.className == nullptr || HasClass(window, search.className)) search.found.push_back(window);
    return TRUE;
}

std::vector<HWND> Shown(DWORD process, const wchar_t* className) {
    Search search = {process, className, {}};
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

BOOL CALLBACK IsPainted(HWND window, LPARAM painted) {
    if (IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE))
        *reinterpret_cast<bool*>(painted) = false;
    return TRUE;
}

HWND ReaderOf(DWORD process) {
    for (HWND reader = nullptr;
         (reader = FindWindowExW(HWND_MESSAGE, reader, kReaderClass, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(reader, &owner);
        if (owner == process) return reader;
    }
    return nullptr;
}

// Whatever leaves one of the radio's dialogs without a change; a box of the system's has a button for it.
void Leave(HWND box) {
    for (const int button : {IDCANCEL, IDNO, IDOK}) {
        if (GetDlgItem(box, button) == nullptr || GetDlgItem(box, IDC_GROUP_LIST) != nullptr) continue;
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        return;
    }
    for (const WORD command : {IDC_CHANNEL_ADD_CANCEL, IDC_CHANNEL_EDIT_CANCEL, IDC_GROUP_CANCEL,
                               IDC_SETTINGS_CANCEL, IDC_AF_CLOSE, IDC_SCHEDULE_CLOSE, IDOK}) {
        PostMessageW(box, WM_COMMAND, command, 0);
    }
}

}  // namespace

Stage::Stage(test::HandsetUnderTest& forHandset, const Shape& forShape)
    : handset(forHandset), shape(forShape), display_{forShape.width, forShape.height} {
    handset.SetState(L"ScreenWidth", static_cast<std::uint32_t>(shape.width));
    handset.SetState(L"ScreenHeight", static_cast<std::uint32_t>(shape.height));
    handset.WriteBand(kBand);
    SetList(handset);
    SetBookings(handset);
    Handset(L"favourites");
    // A Monday.
    Handset(L"clock 2026-11-23 09:57");
    handset.SetState(L"ClockRate", kHurry);
}

void Stage::Start(const std::wstring& arguments) {
    Stop();
    arguments_ = arguments;
    const WithReader reader(ReportFile());
    radio_.emplace(handset, arguments);
}

void Stage::Stop() {
    radio_.reset();
    now_.clear();
    drawn_.clear();
}

void Stage::Listen() {
    constexpr wchar_t kUsual[] = L"-Rec -Channel 9850";
    if (radio_ && radio_->Runs() && arguments_ == kUsual) return;
    Start(kUsual);
    radio_->WaitUntilShown();
}

void Stage::Click(WORD element) const {
    PostMessageW(radio_->Window(), kSkinClick, element, 0);
}

void Stage::TapElement(WORD element) const {
    struct Row {
        WORD element;
        POINT upright, flat;
    };
    constexpr Row kRows[] = {{SKIN_RECORD, {28, 251}, {65, 170}}, {SKIN_OUTPUT, {211, 251}, {251, 170}}};
    for (const Row& row : kRows) {
        const POINT& place = shape.width < shape.height ? row.upright : row.flat;
        if (row.element == element) radio_->Tap(place.x, place.y);
    }
}

void Stage::Tune(const std::string& digits, const char* shown) {
    radio_->Type(digits);
    AwaitDrawn(shown);
}

void Stage::Reshape(int width, int height) {
    // What was drawn until now stood elsewhere.
    AwaitPainted();
    Read();
    drawn_.clear();
    display_ = {width, height};
    Handset(L"orientation " + std::to_wstring(width) + L"x" + std::to_wstring(height));
    HWND turns = nullptr;
    EXPECT_TRUE(WaitFor([&] {
        const auto opened = Opened();
        turns = opened.empty() ? radio_->Window() : opened.front();
        RECT place = {};
        GetWindowRect(turns, &place);
        return place.right == width && place.bottom == height;
    })) << "it does not follow the display";
    // Answered when the controls stand at their new places, too.
    SendMessageW(turns, WM_NULL, 0, 0);
}

void Stage::Handset(const std::wstring& arguments) const {
    std::string said;
    EXPECT_EQ(test::RunProgram(L"handset.exe", arguments, &said), 0u) << said;
}

std::vector<HWND> Stage::Opened() const {
    return Shown(radio_->ProcessId(), kBoxClass);
}

HWND Stage::Box(HWND below) {
    HWND box = nullptr;
    EXPECT_TRUE(WaitFor([&] {
        for (const HWND opened : Opened()) {
            if (opened == below || !IsWindowEnabled(opened)) continue;
            box = opened;
            return true;
        }
        return false;
    })) << "no box";
    return box;
}

HWND Stage::Menu(std::size_t open) const {
    std::vector<HWND> menus;
    EXPECT_TRUE(WaitFor([&] {
        menus = Shown(radio_->ProcessId(), kMenuClass);
        return menus.size() == open;
    })) << "no menu";
    return menus.empty() ? nullptr : menus.front();
}

void Stage::Read() {
    HWND reader = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (reader = ReaderOf(radio_->ProcessId())) != nullptr; })) << "no reader";
    DWORD_PTR written = 0;
    SendMessageTimeoutW(reader, kWriteReport, 0, 0, SMTO_NORMAL, kAnswerWithin_ms, &written);
    ASSERT_NE(written, 0u) << "no report";
    now_.clear();
    for (const std::string& line : test::Lines(test::ReadWholeFile(ReportFile()))) {
        const Item item = FromLine(line);
        (item.kind == Kind::kDrawn ? drawn_ : now_).push_back(item);
    }
}

void Stage::AwaitDrawn(const std::string& part) {
    EXPECT_TRUE(WaitFor([&] {
        Sleep(kBetweenLooks_ms);
        Read();
        const auto main = reinterpret_cast<std::uint64_t>(radio_->Window());
        return std::any_of(drawn_.begin(), drawn_.end(), [&](const Item& item) {
            return item.window == main && item.text.find(part) != std::string::npos;
        });
    })) << "\""
        << part << "\" was not drawn";
}

void Stage::AwaitPainted() const {
    EXPECT_TRUE(WaitFor([&] {
        bool painted = true;
        for (const HWND window : Shown(radio_->ProcessId(), nullptr)) {
            IsPainted(window, reinterpret_cast<LPARAM>(&painted));
            EnumChildWindows(window, IsPainted, reinterpret_cast<LPARAM>(&painted));
        }
        return painted;
    })) << "never painted";
}

void Stage::PutAway() {
    if (!radio_) return;
    const auto clear = [&] {
        if (!radio_->Runs()) return true;
        const auto menus = [&] { return Shown(radio_->ProcessId(), kMenuClass).size(); };
        if (const std::size_t open = menus(); open > 0) {
            radio_->Key(VK_ESCAPE);
            WaitFor([&] { return menus() < open; }, kClosesWithin_ms);
            return false;
        }
        const auto opened = Opened();
        const auto last = std::find_if(opened.begin(), opened.end(), IsWindowEnabled);
        if (last != opened.end()) {
            const HWND box = *last;
            Leave(box);
            WaitFor([&] { return !IsWindow(box) || !IsWindowVisible(box); }, kClosesWithin_ms);
        }
        return opened.empty();
    };
    EXPECT_TRUE(WaitFor(clear)) << "it does not close";
    if (display_.cx != shape.width || display_.cy != shape.height) Reshape(shape.width, shape.height);
    if (radio_->Runs() && radio_->Window() != nullptr) Read();
    now_.clear();
    drawn_.clear();
}

Display Stage::DisplayNow() const {
    Display display;
    display.all = {0, 0, display_.cx, display_.cy};
    display.barRows = std::min(display_.cx, display_.cy) >= 480 ? 52 : 26;
    return display;
}

std::vector<std::string> Stage::Faults() {
    AwaitPainted();
    Read();
    return FaultsOf(now_, drawn_, DisplayNow(), kLongName);
}

std::vector<std::string> Stage::HardToRead() {
    const RECT display = DisplayNow().all;
    std::vector<std::string> faults;
    // What was invalid a moment ago may still be on its way to the screen, and what was written there by then
    // may be gone.
    WaitFor(
        [&] {
            Read();
            faults = screens::HardToRead(now_, drawn_, PictureOf(display), {display.left, display.top});
            return faults.empty();
        },
        kPaintsWithin_ms);
    return faults;
}

void Stage::TakePicture(const std::wstring& file) const {
    screens::TakePicture(DisplayNow().all, file);
}

}  // namespace screens
