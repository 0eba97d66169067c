// Every screen, dialog, menu and box of the radio, in each shape of the display: nothing on them is cut,
// covers something else or sticks out, and each text stands out from its ground. KORA_SCREEN_PICTURES names a
// folder that gets a picture of each. KORA_SHAPES=all looks at all four shapes, as `./kora screens` does;
// otherwise it is the small display upright and the large one on its side.
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "handset/phone/phone_layout.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/process_start.h"
#include "resources/resource_ids.h"
#include "tests/screens/picture.h"
#include "tests/screens/scenes.h"
#include "tests/support/hand.h"
#include "tests/system/radio_test.h"

namespace {

using screens::Scene;
using screens::Shape;
using screens::Stage;
using test::Radio;

constexpr Shape kShapes[] = {
    {"Portrait", 240, 320}, {"Landscape", 320, 240}, {"WidePortrait", 480, 640}, {"WideLandscape", 640, 480}};

std::vector<Shape> WantedShapes() {
    const char* const shapes = std::getenv("KORA_SHAPES");
    if (shapes != nullptr && std::string(shapes) == "all") return {std::begin(kShapes), std::end(kShapes)};
    return {kShapes[0], kShapes[3]};
}

// Empty: no pictures are wanted.
std::wstring PictureFile(const std::string& name) {
    wchar_t folder[MAX_PATH] = L"";
    if (GetEnvironmentVariableW(L"KORA_SCREEN_PICTURES", folder, MAX_PATH) == 0) return L"";
    return std::wstring(folder) + L"\\" + std::wstring(name.begin(), name.end()) + L".png";
}

// The scenes whose names contain KORA_SCENES; all without it.
bool IsWanted(const Scene& scene) {
    const char* const part = std::getenv("KORA_SCENES");
    return part == nullptr || std::string(scene.name).find(part) != std::string::npos;
}

class Screens : public test::RadioTest, public testing::WithParamInterface<Shape> {
  protected:
    void SetUp() override { NEEDS_THE_SIMULATED_BAND("texts that come when they are waited for"); }

    static void LookAt(Stage& stage, const std::string& name) {
        for (const std::string& fault : stage.Faults()) ADD_FAILURE() << name << ": " << fault;
        for (const std::string& fault : stage.HardToRead()) ADD_FAILURE() << name << ": " << fault;
        Keep(stage, name);
    }
    // Each dialog that lays itself out anew, open on the stage.
    template <class Look>
    void OnEachThatTurns(Look look) {
        Stage stage(handset, GetParam());
        for (const Scene& scene : screens::Scenes()) {
            if (!scene.turns || !IsWanted(scene)) continue;
            SCOPED_TRACE(scene.name);
            scene.open(stage);
            look(stage, scene.name);
            stage.PutAway();
            if (HasFatalFailure()) return;
        }
    }
    static void Keep(const Stage& stage, const std::string& name) {
        const std::wstring file = PictureFile(name + "." + stage.shape.name);
        if (!file.empty()) stage.TakePicture(file);
    }
};

TEST_P(Screens, NothingIsCutCoversAnotherSticksOutOrIsHardToRead) {
    Stage stage(handset, GetParam());
    for (const Scene& scene : screens::Scenes()) {
        if (!IsWanted(scene)) continue;
        SCOPED_TRACE(scene.name);
        scene.open(stage);
        scene.hosts ? Keep(stage, scene.name) : LookAt(stage, scene.name);
        if (!scene.goesOn) stage.PutAway();
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, Screens, testing::ValuesIn(WantedShapes()),
                         [](const testing::TestParamInfo<Shape>& row) { return row.param.name; });

using TurnedScreens = Screens;

TEST_P(TurnedScreens, ADialogIsLaidOutAnewWithNothingCutWhenTheDisplayTurns) {
    OnEachThatTurns([](Stage& stage, const std::string& name) {
        stage.Reshape(GetParam().height, GetParam().width);
        LookAt(stage, name + "-turned");
    });
}

INSTANTIATE_TEST_SUITE_P(Shapes, TurnedScreens, testing::Values(kShapes[0]),
                         [](const testing::TestParamInfo<Shape>& row) { return row.param.name; });

TEST_P(TurnedScreens, ADialogIsLaidOutAnewWithNothingCutWhenTheDisplayGetsTwiceThePixelsAndLosesThem) {
    OnEachThatTurns([](Stage& stage, const std::string& name) {
        stage.Reshape(2 * GetParam().width, 2 * GetParam().height);
        LookAt(stage, name + "-grown");
        stage.Reshape(GetParam().width, GetParam().height);
        LookAt(stage, name + "-shrunk");
    });
}

// handset.exe as the phone around the display, ended at the end of the scope.
class PhoneProcess {
  public:
    PhoneProcess() {
        std::wstring line = L"\"" + test::BuildFolder() + L"\\handset.exe\" panel";
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        EXPECT_TRUE(handset::StartProcess(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                          &startup, &m_process));
    }
    ~PhoneProcess() {
        TerminateProcess(m_process.hProcess, 99);
        WaitForSingleObject(m_process.hProcess, 5000);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    PhoneProcess(const PhoneProcess&) = delete;
    PhoneProcess& operator=(const PhoneProcess&) = delete;
    HWND Window() const {
        HWND window = nullptr;
        EXPECT_TRUE(test::WaitFor([&] {
            window = FindWindowW(handset::kPanelClass, nullptr);
            return window != nullptr && IsWindowVisible(window);
        }));
        return window;
    }
    HWND Box() const {
        HWND box = nullptr;
        EXPECT_TRUE(test::WaitFor([&] {
            box = Radio::BoxOf(m_process.dwProcessId, L"Kora handset");
            return box != nullptr && IsWindowVisible(box);
        }));
        return box;
    }

  private:
    PROCESS_INFORMATION m_process = {};
};

class PhoneScreens : public test::RadioTest {
  protected:
    static RECT PlaceOf(HWND window) {
        RECT place = {};
        GetWindowRect(window, &place);
        return place;
    }
    // The display as the phone has it, on the desktop.
    static RECT DisplayOf(HWND phone, int width, int height) {
        const auto origin = SendMessageW(phone, RegisterWindowMessageW(handset::kDisplayOriginMessage), 0, 0);
        const LONG left = static_cast<SHORT>(LOWORD(origin)), top = static_cast<SHORT>(HIWORD(origin));
        return {left, top, left + width, top + height};
    }
    static bool Holds(const RECT& outer, const RECT& inner) {
        RECT both = {};
        return IntersectRect(&both, &outer, &inner) && EqualRect(&both, &inner);
    }
    static void Keep(HWND window, const char* name) {
        const std::wstring file = PictureFile(name);
        if (!file.empty()) screens::TakePicture(PlaceOf(window), file);
    }
};

TEST_F(PhoneScreens, ThePhoneIsWhollyOnTheDesktopAndTheRadioWhollyInItsDisplay) {
    const PhoneProcess phone;
    const HWND window = phone.Window();
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const RECT desktop = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    struct Row {
        const wchar_t* turn;
        int width, height;
        const char* picture;
    };
    for (const Row& row : {Row{L"orientation landscape", 320, 240, "phone-flat.Panel"},
                           Row{L"orientation portrait", 240, 320, "phone.Panel"}}) {
        ASSERT_EQ(test::RunProgram(L"handset.exe", row.turn), 0u);
        EXPECT_TRUE(test::WaitFor([&] {
            const RECT display = DisplayOf(window, row.width, row.height);
            return PlaceOf(radio.Window()).right == display.right && Holds(display, PlaceOf(radio.Window()));
        })) << row.picture;
        EXPECT_TRUE(Holds(desktop, PlaceOf(window))) << row.picture;
        EXPECT_TRUE(Holds(PlaceOf(window), PlaceOf(radio.Window()))) << row.picture;
        Keep(window, row.picture);
    }
}

TEST_F(PhoneScreens, ItsOfferOfTheServiceStandsWhollyOnTheDesktop) {
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"clock 2026-11-23 09:10"), 0u);
    const PhoneProcess phone;
    const HWND window = phone.Window();
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    radio.Command(IDC_SCHEDULE);
    const HWND schedule = radio.WaitForBox(nullptr);
    ASSERT_NE(schedule, nullptr);
    // Not while the test lasts.
    test::StepMinutes(GetDlgItem(schedule, IDC_SCHEDULE_START), 40);
    test::StepMinutes(GetDlgItem(schedule, IDC_SCHEDULE_END), 41);
    SendMessageW(GetDlgItem(schedule, IDC_SCHEDULE_ADD), BM_CLICK, 0, 0);
    PostMessageW(schedule, WM_COMMAND, IDOK, 0);
    const panel::Box close = panel::LayOutPhone(240, 320).close;
    const LPARAM point = MAKELPARAM(close.x + close.w / 2, close.y + close.h / 2);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(window, WM_LBUTTONUP, 0, point);
    const HWND box = phone.Box();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(Holds({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, PlaceOf(box)));
    EXPECT_THAT(Radio::BoxText(box), testing::HasSubstr(L"Recordings are booked."));
    Keep(box, "box-offer-service.Panel");
    Radio::Answer(box, IDNO);
    EXPECT_TRUE(test::WaitFor([&] { return !IsWindow(box); }));
}

}  // namespace
