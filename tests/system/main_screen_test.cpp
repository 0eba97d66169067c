// The main screen as it stands on the display: ground, labels and buttons, in every orientation and size.
#include "resources/resource_ids.h"
#include "tests/support/bitmap_file.h"
#include "tests/support/contrast.h"
#include "tests/support/screen_picture.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;

constexpr COLORREF kWhite = RGB(255, 255, 255);

// A bitmap of UI.exe, readable pixel by pixel.
class SkinBitmap {
  public:
    SkinBitmap(const std::wstring& program, UINT id) {
        const HMODULE module = LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        // A resource of the type GIF, which the image loader wants; the image is a bitmap's file.
        const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), L"GIF");
        const auto* file = static_cast<const BYTE*>(LockResource(LoadResource(module, found)));
        if (file != nullptr) m_bitmap = test::BitmapOfFile(file);
        FreeLibrary(module);
        m_dc = CreateCompatibleDC(nullptr);
        m_previous = SelectObject(m_dc, m_bitmap);
    }
    ~SkinBitmap() {
        SelectObject(m_dc, m_previous);
        DeleteDC(m_dc);
        DeleteObject(m_bitmap);
    }
    SkinBitmap(const SkinBitmap&) = delete;
    SkinBitmap& operator=(const SkinBitmap&) = delete;
    bool Loaded() const { return m_bitmap != nullptr; }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }

  private:
    HBITMAP m_bitmap = nullptr;
    HDC m_dc = nullptr;
    HGDIOBJ m_previous = nullptr;
};

struct Screen {
    const char* name;
    int width, height;
    UINT background;
    RECT list;
    RECT frequency;
};

// Rectangles are left, top, right, bottom.
const Screen kScreens[] = {
    {"Portrait", 240, 320, IDB_BACKGROUND_PORTRAIT, {0, 105, 240, 210}, {123, 30, 240, 65}},
    {"Landscape", 320, 240, IDB_BACKGROUND_LANDSCAPE, {0, 70, 320, 130}, {150, 10, 270, 35}},
    {"WidePortrait",
     480,
     640,
     IDB_BACKGROUND_PORTRAIT + IDB_WIDE_OFFSET,
     {0, 105, 240, 210},
     {123, 30, 240, 65}},
    {"WideLandscape",
     640,
     480,
     IDB_BACKGROUND_LANDSCAPE + IDB_WIDE_OFFSET,
     {0, 70, 320, 130},
     {150, 10, 270, 35}},
};

class MainScreen : public test::RadioTest, public testing::WithParamInterface<Screen> {
  protected:
    void SetUp() override {
        handset.SetState(L"ScreenWidth", static_cast<std::uint32_t>(GetParam().width));
        handset.SetState(L"ScreenHeight", static_cast<std::uint32_t>(GetParam().height));
    }

    // Rows of the shell's bar, and of the menu bar.
    static int BarHeight() { return std::min(GetParam().width, GetParam().height) >= 480 ? 52 : 26; }

    static bool Holds(const Radio& radio, const RECT& area, COLORREF colour) {
        for (LONG y = area.top; y < area.bottom; ++y) {
            for (LONG x = area.left; x < area.right; ++x) {
                if (radio.Pixel(x, y) == colour) return true;
            }
        }
        return false;
    }
};

TEST_P(MainScreen, TheWindowFillsTheScreenBelowTheShellsBar) {
    Radio radio(handset);
    radio.WaitUntilShown();
    RECT client = {};
    GetClientRect(radio.Window(), &client);
    EXPECT_EQ(client.right, GetParam().width);
    EXPECT_EQ(client.bottom, GetParam().height - BarHeight());
    POINT corner = {0, 0};
    ClientToScreen(radio.Window(), &corner);
    EXPECT_EQ(corner.x, 0);
    EXPECT_EQ(corner.y, BarHeight());
}

TEST_P(MainScreen, TheListStandsInItsPlaceAndTheMenuBarAtTheFoot) {
    Radio radio(handset);
    radio.WaitUntilShown();
    RECT list = {}, bar = {};
    ASSERT_TRUE(GetWindowRect(radio.ListView(), &list));
    MapWindowPoints(nullptr, radio.Window(), reinterpret_cast<POINT*>(&list), 2);
    EXPECT_TRUE(EqualRect(&list, &GetParam().list));
    ASSERT_TRUE(GetWindowRect(radio.MenuBar(), &bar));
    MapWindowPoints(nullptr, radio.Window(), reinterpret_cast<POINT*>(&bar), 2);
    EXPECT_EQ(bar.bottom, GetParam().height - BarHeight());
    EXPECT_EQ(bar.bottom - bar.top, BarHeight());
    EXPECT_EQ(bar.right - bar.left, GetParam().width);
}

TEST_P(MainScreen, TheGroundIsTheSkinsBackground) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const SkinBitmap background(handset.DevicePath(L"\\Windows\\UI.exe"), GetParam().background);
    ASSERT_TRUE(background.Loaded());
    // Down the edges, where neither text nor list nor soft keys stand.
    int compared = 0;
    for (int y = 2; y < GetParam().height - 2 * BarHeight() - 4; y += 3) {
        if (y >= GetParam().list.top && y < GetParam().list.bottom) continue;
        for (const int x : {0, GetParam().width - 1}) {
            ASSERT_TRUE(WaitFor([&] { return radio.Pixel(x, y) == background.At(x, y); }))
                << "at " << x << ", " << y << ": 0x" << std::hex << radio.Pixel(x, y) << " is not 0x"
                << background.At(x, y);
            ++compared;
        }
    }
    EXPECT_GT(compared, 50);
}

TEST_P(MainScreen, TheFrequencyIsWrittenInWhite) {
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitFor([&] { return Holds(radio, GetParam().frequency, kWhite); }));
}

// Measured on the screen: the text's colour against the one that most of its place has.
TEST_P(MainScreen, TheFrequencyTheTitleAndTheSoftKeysStandOutFromTheirGround) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const LONG width = GetParam().width, bar = BarHeight(), foot = GetParam().height - bar;
    for (const RECT& place :
         {GetParam().frequency, RECT{0, -bar, width / 2, -2}, RECT{0, foot - bar + 2, width, foot}}) {
        SCOPED_TRACE(place.top);
        const test::ScreenPicture picture = test::SettledPicture(radio, place);
        EXPECT_GT(test::PixelsOf(picture, kWhite), 20u);
        EXPECT_GE(test::Contrast(test::MostOf(picture), 0xFFFFFF), 4.5);
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, MainScreen, testing::ValuesIn(kScreens),
                         [](const testing::TestParamInfo<Screen>& row) { return row.param.name; });

class Turned : public test::RadioTest {};

// The list stands on the part of the skin that lies behind it.
TEST_F(Turned, AWideScreensListStandsOnTheGroundOfTheOrientationThatItIsTurnedTo) {
    handset.SetState(L"ScreenWidth", 480);
    handset.SetState(L"ScreenHeight", 640);
    Radio radio(handset);
    radio.WaitUntilShown();
    for (const Screen& turned : {kScreens[3], kScreens[2]}) {
        const bool upright = turned.width < turned.height;
        ASSERT_EQ(
            test::RunProgram(L"handset.exe", upright ? L"orientation portrait" : L"orientation landscape"),
            0u);
        const SkinBitmap background(handset.DevicePath(L"\\Windows\\UI.exe"), turned.background);
        for (LONG x = turned.list.left + 3; x < turned.list.right; x += 40) {
            for (LONG y = turned.list.top + 3; y < turned.list.bottom; y += 20) {
                ASSERT_TRUE(WaitFor([&] { return radio.Pixel(x, y) == background.At(x, y); }))
                    << turned.name << " at " << x << ", " << y << ": 0x" << std::hex << radio.Pixel(x, y);
            }
        }
    }
}

// A display of other pixels, under the running radio.
TEST_F(Turned, AScreenThatBecomesWideAndNarrowAgainHasTheGroundOfItsSize) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const struct {
        const wchar_t* order;
        const Screen& screen;
    } kSteps[] = {{L"orientation 480x640", kScreens[2]},
                  {L"orientation landscape", kScreens[3]},
                  {L"orientation usual", kScreens[0]},
                  {L"orientation landscape", kScreens[1]}};
    for (const auto& step : kSteps) {
        SCOPED_TRACE(step.screen.name);
        ASSERT_EQ(test::RunProgram(L"handset.exe", step.order), 0u);
        const SkinBitmap background(handset.DevicePath(L"\\Windows\\UI.exe"), step.screen.background);
        ASSERT_TRUE(background.Loaded());
        const int foot = std::min(step.screen.width, step.screen.height) >= 480 ? 110 : 60;
        for (int y = 2; y < step.screen.height - foot; y += 20) {
            if (y >= step.screen.list.top && y < step.screen.list.bottom) continue;
            const int x = step.screen.width - 1;
            ASSERT_TRUE(WaitFor([&] { return radio.Pixel(x, y) == background.At(x, y); }))
                << "at " << x << ", " << y << ": 0x" << std::hex << radio.Pixel(x, y);
        }
    }
}

class Notices : public test::RadioTest {};

TEST_F(Notices, TheSwitchToAnAlternativeFrequencyIsTold) {
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.Window(), 0xA404, 0, 0);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(Radio::BoxText(box).empty());
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
}

TEST_F(Notices, TheInformationDialogOpensOverTheScreenAndEndsWithOk) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_INFORMATION);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
    EXPECT_TRUE(radio.Runs());
}

TEST_F(Turned, OnAWideScreenTheDialsNeedleFollowsTheTuningAndIsThereAfterATurnAndADialog) {
    constexpr COLORREF kNeedle = RGB(141, 194, 31);
    constexpr POINT kAt985[] = {{336, 376}, {496, 216}}, kAt1050[] = {{421, 329}, {581, 169}};
    handset.SetState(L"ScreenWidth", 480);
    handset.SetState(L"ScreenHeight", 640);
    Radio radio(handset);
    radio.WaitUntilShown();
    const auto pointsAt = [&](const POINT& here, const POINT& notThere) {
        return WaitFor([&] {
            return radio.Pixel(here.x, here.y) == kNeedle && radio.Pixel(notThere.x, notThere.y) != kNeedle;
        });
    };
    radio.Type("985");
    EXPECT_TRUE(pointsAt(kAt985[0], kAt1050[0]));
    radio.Type("1050");
    EXPECT_TRUE(pointsAt(kAt1050[0], kAt985[0]));
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"orientation landscape"), 0u);
    EXPECT_TRUE(pointsAt(kAt1050[1], kAt985[1]));
    radio.Command(IDC_SETTINGS);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(WaitFor([&] { return radio.Pixel(kAt1050[1].x, kAt1050[1].y) != kNeedle; }));
    PostMessageW(dialog, WM_COMMAND, IDC_SETTINGS_DONE, 0);
    EXPECT_TRUE(pointsAt(kAt1050[1], kAt985[1]));
}

TEST_F(Turned, OnAWideScreenTheDialsNeedleGoesWithAScan) {
    constexpr POINT kAt1079 = {464, 322};
    handset.WriteBand("[10790]\nlevel=60\n");
    handset.SetState(L"ScreenWidth", 480);
    handset.SetState(L"ScreenHeight", 640);
    Hurry(10);
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_NE(radio.Pixel(kAt1079.x, kAt1079.y), RGB(141, 194, 31));
    radio.Command(IDC_AUTOSCAN);
    const HWND question = radio.WaitForBox(nullptr);
    ASSERT_NE(question, nullptr);
    Radio::Answer(question, IDOK);
    ASSERT_TRUE(WaitForCall("SeekNext -> 0"));
    // Until the box at its end is answered, the screen is the scan's.
    ASSERT_NE(radio.WaitForBox(L"FM"), nullptr);
    EXPECT_TRUE(WaitFor([&] { return radio.Pixel(kAt1079.x, kAt1079.y) == RGB(141, 194, 31); }));
}

}  // namespace
