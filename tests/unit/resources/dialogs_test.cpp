// The dialog templates: the controls that their procedures expect, and layouts that fit the screen.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>

#include "resources/resource_ids.h"
#include "tests/unit/resources/dialog_template.h"

namespace {

struct Control {
    unsigned dialog;
    int id;
    const WCHAR* className;
};

// clang-format off
const Control kControls[] = {
    {102, 1061, L"listbox"}, {102, 1052, L"button"}, {102, 1058, L"button"}, {102, 1054, L"button"},
    {131, 1005, L"edit"}, {131, 1006, L"edit"}, {131, 1062, L"edit"},
    {138, 1055, L"edit"},
    {145, 1067, L"SysListView32"}, {145, 1064, L"button"},
    {230, 1071, L"static"}, {230, 1072, L"static"}, {230, 1073, L"static"}, {230, 1074, L"static"},
    {230, 1075, L"static"}, {230, 1076, L"static"}, {230, 1077, L"static"},
};
const Control kSettingsControls[] = {
    {0, 1013, L"button"}, {0, 1014, L"button"}, {0, 1015, L"button"}, {0, 1016, L"button"},
    {0, 1022, L"button"}, {0, 1023, L"button"}, {0, 1029, L"edit"}, {0, 1025, L"button"},
    {0, 1028, L"button"}, {0, 1070, L"button"},
};
const Control kScheduleControls[] = {
    {0, 1027, L"SysDateTimePick32"}, {0, 1053, L"SysDateTimePick32"}, {0, 1055, L"edit"},
    {0, 1039, L"msctls_updown32"}, {0, 1059, L"SysListView32"}, {0, 1052, L"button"}, {0, 1054, L"button"},
    {0, 1084, L"static"}, {0, 1085, L"static"}, {0, 1086, L"static"}, {0, 1087, L"static"},
    {0, 1088, L"static"}, {0, 1089, L"static"}, {0, 1090, L"static"},
};

// What the shell's bar and the menu bar leave of the screen, in pixels. A dialog that has one template has to fit both ways.
struct Screen { unsigned dialog; int width, height; };
const Screen kScreens[] = {
    {102, 240, 268}, {102, 320, 188}, {105, 240, 268}, {105, 320, 188}, {131, 240, 268}, {131, 320, 188},
    {138, 240, 268}, {138, 320, 188}, {145, 240, 268}, {145, 320, 188}, {230, 240, 268}, {230, 320, 188},
    {132, 240, 268}, {232, 320, 188}, {137, 240, 268}, {231, 320, 188},
};
// clang-format on

const unsigned kDialogs[] = {102, 105, 131, 132, 137, 138, 145, 230, 231, 232};

// The dialog font of a template on this machine, with the size of 4 × 8 units as the dialog manager takes it.
class DialogFont {
  public:
    explicit DialogFont(const DialogTemplate& dialog) : dc_(CreateCompatibleDC(nullptr)) {
        const int height = -MulDiv(dialog.points, GetDeviceCaps(dc_, LOGPIXELSY), 72);
        font_ = CreateFontW(height, 0, 0, 0, FW_DONTCARE, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, PROOF_QUALITY, FF_DONTCARE,
                            dialog.font.c_str());
        previous_ = SelectObject(dc_, font_);
        TEXTMETRICW metrics;
        GetTextMetricsW(dc_, &metrics);
        baseY_ = metrics.tmHeight;
        baseX_ = (Width(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") / 26 + 1) / 2;
    }
    ~DialogFont() {
        SelectObject(dc_, previous_);
        DeleteObject(font_);
        DeleteDC(dc_);
    }
    DialogFont(const DialogFont&) = delete;
    DialogFont& operator=(const DialogFont&) = delete;

    int Width(const std::wstring& text) const {
        SIZE size{};
        GetTextExtentPoint32W(dc_, text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    }
    int X(int units) const { return MulDiv(units, baseX_, 4); }
    int Y(int units) const { return MulDiv(units, baseY_, 8); }

  private:
    HDC dc_;
    HFONT font_;
    HGDIOBJ previous_;
    int baseX_, baseY_;
};

std::string Narrow(const std::wstring& ascii) {
    return {ascii.begin(), ascii.end()};
}

void ExpectControl(unsigned dialog, int id, const WCHAR* className) {
    const DialogTemplate loaded = LoadDialogTemplate(dialog);
    const DialogItem* item = loaded.Find(id);
    ASSERT_NE(item, nullptr) << dialog << ": " << id;
    // A class's name is the same in any letter case.
    EXPECT_STRCASEEQ(Narrow(item->className).c_str(), Narrow(className).c_str()) << dialog << ": " << id;
}

DWORD ButtonType(const DialogItem& item) {
    return item.className == L"button" ? item.style & BS_TYPEMASK : 0;
}
bool IsFrame(const DialogItem& item) {
    return ButtonType(item) == BS_GROUPBOX;
}
bool IsRadio(const DialogItem& item) {
    return ButtonType(item) == BS_AUTORADIOBUTTON;
}
bool HasMark(const DialogItem& item) {
    return IsRadio(item) || ButtonType(item) == BS_AUTOCHECKBOX;
}

bool Overlap(const DialogItem& a, const DialogItem& b) {
    return a.x < b.x + b.cx && b.x < a.x + a.cx && a.y < b.y + b.cy && b.y < a.y + a.cy;
}

// Both templates of a dialog have the same controls, so that one can be laid out as the other.
void ExpectSameControls(unsigned first, unsigned second) {
    const DialogTemplate a = LoadDialogTemplate(first), b = LoadDialogTemplate(second);
    ASSERT_EQ(a.items.size(), b.items.size());
    for (std::size_t at = 0; at < a.items.size(); ++at) {
        EXPECT_EQ(a.items[at].id, b.items[at].id) << at;
        EXPECT_EQ(a.items[at].className, b.items[at].className) << at;
        EXPECT_EQ(a.items[at].style, b.items[at].style) << at;
        EXPECT_EQ(a.items[at].text, b.items[at].text) << at;
    }
}

}  // namespace

TEST(Dialogs, EveryTemplateHasTheControlsThatItsProcedureUses) {
    for (const Control& control : kControls) ExpectControl(control.dialog, control.id, control.className);
    for (const unsigned dialog : {132u, 232u})
        for (const Control& control : kSettingsControls) ExpectControl(dialog, control.id, control.className);
    for (const unsigned dialog : {137u, 231u})
        for (const Control& control : kScheduleControls) ExpectControl(dialog, control.id, control.className);
}

TEST(Dialogs, NoTwoControlsOfATemplateShareAnId) {
    for (const unsigned dialog : kDialogs) {
        std::set<int> ids;
        for (const DialogItem& item : LoadDialogTemplate(dialog).items)
            EXPECT_TRUE(ids.insert(item.id).second) << dialog << ": " << item.id;
        EXPECT_FALSE(ids.empty()) << dialog;
    }
}

TEST(Dialogs, APortraitTemplateAndItsLandscapeOneHaveTheSameControlsInTheSameOrder) {
    ExpectSameControls(IDD_SETTINGS_PORTRAIT, IDD_SETTINGS_LANDSCAPE);
    ExpectSameControls(IDD_SCHEDULE_PORTRAIT, IDD_SCHEDULE_LANDSCAPE);
}

TEST(Dialogs, EveryTemplateFitsTheScreenBetweenTheBars) {
    for (const Screen& screen : kScreens) {
        const DialogTemplate dialog = LoadDialogTemplate(screen.dialog);
        const DialogFont font(dialog);
        EXPECT_GT(dialog.cx, 0) << screen.dialog;
        EXPECT_LE(font.X(dialog.cx), screen.width) << screen.dialog;
        EXPECT_LE(font.Y(dialog.cy), screen.height) << screen.dialog;
    }
}

TEST(Dialogs, EveryControlLiesInsideItsDialog) {
    for (const unsigned id : kDialogs) {
        const DialogTemplate dialog = LoadDialogTemplate(id);
        for (const DialogItem& item : dialog.items) {
            EXPECT_GE(item.x, 0) << id << ": " << item.id;
            EXPECT_GE(item.y, 0) << id << ": " << item.id;
            EXPECT_LE(item.x + item.cx, dialog.cx) << id << ": " << item.id;
            EXPECT_LE(item.y + item.cy, dialog.cy) << id << ": " << item.id;
        }
    }
}

TEST(Dialogs, NoControlCoversAnother) {
    for (const unsigned id : kDialogs) {
        const DialogTemplate dialog = LoadDialogTemplate(id);
        for (std::size_t a = 0; a < dialog.items.size(); ++a)
            for (std::size_t b = a + 1; b < dialog.items.size(); ++b) {
                if (IsFrame(dialog.items[a]) || IsFrame(dialog.items[b])) continue;
                EXPECT_FALSE(Overlap(dialog.items[a], dialog.items[b]))
                    << id << ": " << dialog.items[a].id << " and " << dialog.items[b].id;
            }
    }
}

TEST(Dialogs, EveryCaptionFitsItsControl) {
    constexpr int kMark_px = 20;  // a check box or radio button before its text
    for (const unsigned id : kDialogs) {
        const DialogTemplate dialog = LoadDialogTemplate(id);
        const DialogFont font(dialog);
        for (const DialogItem& item : dialog.items) {
            const int lines = item.className == L"static" ? font.Y(item.cy) / font.Y(8) : 1;
            const int room = font.X(item.cx) * lines - (HasMark(item) ? kMark_px : 0);
            EXPECT_LE(font.Width(item.text), room) << id << ": " << item.id;
        }
    }
}

TEST(Dialogs, NoButtonOfADialogClosesItBesideItsSoftKeys) {
    for (const unsigned id : kDialogs)
        for (const DialogItem& item : LoadDialogTemplate(id).items) {
            const bool closes = item.id == IDOK || item.id == IDCANCEL || item.text == L"Close" ||
                                item.text == L"OK" || item.text == L"Cancel";
            EXPECT_FALSE(closes && (item.style & WS_VISIBLE) != 0) << id << ": " << item.id;
        }
}

// The device centres images by this style; what a text does with it is not said.
TEST(Dialogs, NoTextIsCentredAsAnImage) {
    int texts = 0;
    for (const unsigned dialog : kDialogs)
        for (const DialogItem& item : LoadDialogTemplate(dialog).items) {
            const DWORD kind = item.style & SS_TYPEMASK;
            const bool image = kind == SS_ICON || kind == SS_BITMAP;
            if (item.className != L"static" || image) continue;
            EXPECT_EQ(item.style & SS_CENTERIMAGE, 0u) << dialog << ": " << item.id;
            ++texts;
        }
    EXPECT_GT(texts, 20);
}

TEST(Dialogs, ADaysButtonShowsTheNameUnderWhichTheDayIsStored) {
    for (const unsigned id : {137u, 231u})
        for (int day = 0; day < 7; ++day) {
            WCHAR name[16] = L"";
            LoadStringW(nullptr, IDS_SUNDAY + day, name, ARRAYSIZE(name));
            const DialogTemplate dialog = LoadDialogTemplate(id);
            ASSERT_NE(dialog.Find(1084 + day), nullptr);
            EXPECT_EQ(dialog.Find(1084 + day)->text, name);
        }
}

TEST(Dialogs, TheSettingsDoNotOpenWithTheFocusOnARadioButton) {
    for (const unsigned id : {132u, 232u}) {
        const DialogTemplate dialog = LoadDialogTemplate(id);
        const DialogItem* first = nullptr;
        for (const DialogItem& item : dialog.items)
            if (first == nullptr && (item.style & WS_TABSTOP) && !(item.style & WS_DISABLED)) first = &item;
        ASSERT_NE(first, nullptr) << id;
        EXPECT_FALSE(IsRadio(*first)) << id;
    }
}

TEST(Dialogs, TheFileOfTheSettingsStartsDisabled) {
    for (const unsigned id : {132u, 232u})
        for (const int control : {1023, 1029}) {
            const DialogTemplate dialog = LoadDialogTemplate(id);
            ASSERT_NE(dialog.Find(control), nullptr) << id;
            EXPECT_TRUE(dialog.Find(control)->style & WS_DISABLED) << id << ": " << control;
        }
}

TEST(Dialogs, EveryDialogHasACaptionAndNoFrame) {
    for (const unsigned id : kDialogs) {
        const DialogTemplate dialog = LoadDialogTemplate(id);
        EXPECT_FALSE(dialog.caption.empty()) << id;
        EXPECT_EQ(dialog.style & WS_CAPTION, 0u) << id;
    }
}
