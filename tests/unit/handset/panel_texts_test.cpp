// Every text beside the phone has room: looked at in a recording of the drawing, so that it is the drawing's
// own places and fonts that count.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "handset/controls/encoding.h"
#include "handset/phone/panel_picture.h"

namespace panel {
namespace {

struct Written {
    std::wstring text;
    RECT place;
};

int CALLBACK Collect(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM data) {
    if (record->iType != EMR_EXTTEXTOUTW) return 1;
    const auto& written = *reinterpret_cast<const EMREXTTEXTOUTW*>(record);
    const auto* text =
        reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(record) + written.emrtext.offString);
    const RECTL& box = written.rclBounds;
    reinterpret_cast<std::vector<Written>*>(data)->push_back(
        {std::wstring(text, written.emrtext.nChars), {box.left, box.top, box.right, box.bottom}});
    return 1;
}

std::vector<Written> ColumnTexts(const PanelView& view) {
    std::vector<Written> texts;
    const HDC recording = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    DrawColumnTexts(recording, view);
    const HENHMETAFILE drawing = CloseEnhMetaFile(recording);
    EnumEnhMetaFile(nullptr, drawing, reinterpret_cast<ENHMFENUMPROC>(Collect), &texts, nullptr);
    DeleteEnhMetaFile(drawing);
    return texts;
}

struct Screen {
    int width, height;
};
class PanelTexts : public testing::TestWithParam<Screen> {
  protected:
    // With everything said that a switch can say.
    static PanelView View() {
        PanelView view = {};
        view.now.screenWidth = GetParam().width;
        view.now.screenHeight = GetParam().height;
        view.now.signalLimited = true;
        view.now.signalLimit = 100;
        view.now.limitedChannel = 10790;
        view.phone = LayOutPhone(GetParam().width, GetParam().height);
        view.column = LayOutColumn(view.phone.column);
        return view;
    }
};
INSTANTIATE_TEST_SUITE_P(Screens, PanelTexts,
                         testing::Values(Screen{240, 320}, Screen{320, 240}, Screen{480, 640},
                                         Screen{640, 480}),
                         [](const auto& screen) {
                             return std::to_string(screen.param.width) + "x" +
                                    std::to_string(screen.param.height);
                         });

TEST_P(PanelTexts, EachStandsInThePanelAndOnNoOther) {
    for (const bool sleeps : {true, false}) {
        PanelView view = View();
        view.now.sleeps = sleeps;
        const auto texts = ColumnTexts(view);
        ASSERT_GT(texts.size(), view.column.switches.size());
        for (auto one = texts.begin(); one != texts.end(); ++one) {
            EXPECT_GE(one->place.left, 0) << Utf8(one->text);
            EXPECT_LE(one->place.right, view.phone.width) << Utf8(one->text);
            EXPECT_LE(one->place.bottom, view.phone.height) << Utf8(one->text);
            for (auto other = one + 1; other != texts.end(); ++other) {
                RECT both = {};
                EXPECT_FALSE(IntersectRect(&both, &one->place, &other->place))
                    << Utf8(one->text) << " and " << Utf8(other->text);
            }
        }
    }
}

TEST_P(PanelTexts, ALabelStandsOnItsButton) {
    const PanelView view = View();
    int labels = 0;
    for (const Written& written : ColumnTexts(view)) {
        for (const SwitchPlace& place : view.column.switches) {
            const bool face = place.row->kind == SwitchKind::kButton || place.row->kind == SwitchKind::kChip;
            const LONG middle = (written.place.left + written.place.right) / 2;
            const Box& box = place.box;
            if (!face || written.text != place.row->label || middle < box.x || middle > box.Right()) continue;
            ++labels;
            EXPECT_GT(written.place.left, box.x) << Utf8(written.text);
            EXPECT_LT(written.place.right, box.Right()) << Utf8(written.text);
            EXPECT_GE(written.place.top, box.y) << Utf8(written.text);
            EXPECT_LE(written.place.bottom, box.Bottom()) << Utf8(written.text);
        }
    }
    EXPECT_GT(labels, 8);
}

}  // namespace
}  // namespace panel
