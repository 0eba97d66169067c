// The text fields, compared with the same text drawn in place by the test.
#include <atomic>
#include <cstdio>
#include <cwchar>
#include <string>

#include "skin/skin_paint.h"
#include "tests/support/wait.h"
#include "tests/unit/skin/asked_fonts.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr const WCHAR* kShort = L"Ab 1";
// Longer than any field, with several words.
constexpr const WCHAR* kLong =
    L"The quick brown fox of the morning programme jumps over 107 lazy dogs and one more and yet another one";

OwnedFont ExpectedFont(const TextLayout& field) {
    LOGFONTW font = {};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof(font), &font);
    font.lfWidth = field.width;
    font.lfHeight = field.height;
    font.lfWeight = field.weight;
    return OwnedFont(CreateFontIndirectW(&font));
}

// Drawn where it belongs on a picture of the whole screen, cut off at the field's edges.
Picture Rendered(const Screen& screen, const Picture& background, const TextLayout& field,
                 const WCHAR* text) {
    const WindowDC desktop(nullptr);
    const OwnedMemoryDC dc(CreateCompatibleDC(desktop.get()));
    const OwnedBitmap whole(CreateCompatibleBitmap(desktop.get(), screen.cx, screen.cy));
    const SelectObjectGuard selected(dc.get(), whole.get());
    {
        const OwnedBitmap image = background.ToBitmap();
        const OwnedMemoryDC from(CreateCompatibleDC(desktop.get()));
        const SelectObjectGuard source(from.get(), image.get());
        BitBlt(dc.get(), 0, 0, screen.cx, screen.cy, from.get(), 0, 0, SRCCOPY);
    }
    const SkinRect at = field.At(screen);
    IntersectClipRect(dc.get(), at.x, at.y, at.x + at.cx, at.y + at.cy);
    SetBkMode(dc.get(), TRANSPARENT);
    SetTextColor(dc.get(), field.colour);
    const OwnedFont font = ExpectedFont(field);
    const SelectObjectGuard withFont(dc.get(), font.get());
    RECT rect = {at.x, at.y, at.x + at.cx, at.y + at.cy};
    DrawTextW(dc.get(), text, -1, &rect, field.format);
    return Picture::OfDC(dc.get(), screen.cx, screen.cy);
}

Pixel PixelOf(COLORREF colour) {
    return static_cast<Pixel>(GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour));
}

class TextFields : public SkinOnScreen {
  protected:
    // The blank screen with the field painted on it, as the test expects it.
    Picture Expected(const TextLayout& field, const WCHAR* text) {
        const Picture rendered = Rendered(screen(), Image(0), field, text);
        const SkinRect at = field.At(screen());
        Picture expected = Blank();
        expected.Copy(rendered, at.x, at.y, at);
        return expected;
    }

    void ExpectPainted(const TextLayout& field, const WCHAR* text) {
        BlankScreen();
        DrawSkinText(m_skin, field.id, text);
        EXPECT_TRUE(Same(Expected(field, text), Shown()));
    }
};

TEST_P(TextFields, EachFieldShowsItsTextInItsRectangleFormatColourAndFontAndTouchesNothingElse) {
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        ExpectPainted(field, kShort);
        const Picture shown = Shown();
        EXPECT_GT(shown.Count(field.At(screen()), PixelOf(field.colour)), 0)
            << "nothing is in the text's colour";
    }
}

TEST_P(TextFields, ATextThatIsTooLongIsCutOffWrappedOrEndedByDotsAsTheFieldsFormatSays) {
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        ExpectPainted(field, kLong);
    }
}

// Two of them are one where an ampersand marks a key, as in the picture that is expected.
TEST_P(TextFields, AnAmpersandIsShownAsItStands) {
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        BlankScreen();
        DrawSkinText(m_skin, field.id, L"A&B");
        EXPECT_TRUE(Same(Expected(field, L"A&&B"), Shown()));
    }
}

// Where every face is drawn alike, the pictures above cannot tell one from another.
TEST_P(TextFields, EachFieldsFontIsTheSystemsInItsOwnSize) {
    LOGFONTW system = {};
    ASSERT_NE(GetObjectW(GetStockObject(SYSTEM_FONT), sizeof system, &system), 0);
    ASSERT_STRNE(system.lfFaceName, L"");
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        test::TakeAskedFonts();
        DrawSkinText(m_skin, field.id, kShort);
        const std::vector<LOGFONTW> asked = test::TakeAskedFonts();
        ASSERT_EQ(asked.size(), 1u);
        const LOGFONTW& font = asked.front();
        EXPECT_STREQ(font.lfFaceName, system.lfFaceName);
        EXPECT_EQ(font.lfCharSet, system.lfCharSet);
        EXPECT_EQ(font.lfPitchAndFamily, system.lfPitchAndFamily);
        EXPECT_EQ(font.lfHeight, field.height);
    }
}

// As wide as the text is in the field's own font.
int WidthOf(const TextLayout& field, const std::wstring& text) {
    const OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const OwnedFont font = ExpectedFont(field);
    const SelectObjectGuard selected(dc.get(), font.get());
    SIZE size = {};
    GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

TEST_P(TextFields, TheNameOfASearchAndOfAnUnknownStationFitTheirField) {
    const TextLayout& name = kTextLayout[1];
    for (const WCHAR* text : {L"Searching...", L"Unknown"})
        EXPECT_LE(WidthOf(name, text), name.At(screen()).cx) << text;
}

// The list covers all but the field's first line.
TEST_P(TextFields, EveryRadioTextOfTheBandAsItIsDeliveredFitsInOneLine) {
    WCHAR program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring folder(program, std::wcsrchr(program, L'\\') + 1);
    std::FILE* band = _wfopen((folder + L"band.ini").c_str(), L"rt, ccs=UTF-8");
    ASSERT_NE(band, nullptr);
    const TextLayout& field = kTextLayout[5];
    int texts = 0;
    for (WCHAR line[256] = L""; std::fgetws(line, ARRAYSIZE(line), band) != nullptr;) {
        if (std::wcsncmp(line, L"rt=", 3) != 0) continue;
        const std::wstring text(line + 3, std::wcscspn(line + 3, L"\r\n"));
        EXPECT_LE(WidthOf(field, text), field.At(screen()).cx) << std::string(text.begin(), text.end());
        ++texts;
    }
    std::fclose(band);
    EXPECT_GT(texts, 20);
}

TEST_P(TextFields, AnEmptyTextClearsTheFieldToTheBackground) {
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        BlankScreen();
        DrawSkinText(m_skin, field.id, kLong);
        DrawSkinText(m_skin, field.id, L"");
        const SkinRect at = field.At(screen());
        Picture expected = Blank();
        expected.Copy(Image(0), at.x, at.y, at);
        EXPECT_TRUE(Same(expected, Shown()));
    }
}

TEST_P(TextFields, AFieldPaintedAgainShowsTheNewTextAlone) {
    DrawSkinText(m_skin, 222, L"Searching...");
    DrawSkinText(m_skin, 222, L"Unknown");
    EXPECT_TRUE(Same(Expected(kTextLayout[1], L"Unknown"), Shown()));
}

TEST_P(TextFields, AnIdThatIsNoFieldChangesNothing) {
    for (const int id : {-1, 0, 210, 214, 224, 227}) DrawSkinText(m_skin, id, kShort);
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(TextFields, AFieldIsPaintedWhileAnotherThreadHoldsTheBackground) {
    const HBITMAP background =
        screen().portrait ? m_skin.pBitmaps[0].hPortrait : m_skin.pBitmaps[0].hLandscape;
    const OwnedMemoryDC other(CreateCompatibleDC(nullptr));
    const SelectObjectGuard taken(other.get(), background);
    ASSERT_TRUE(taken);
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        ExpectPainted(field, kShort);
    }
}

// A thread that paints the service name over and over until it is told to stop.
class Painter {
  public:
    explicit Painter(CSkin& skin)
        : m_skin(skin), m_thread(CreateThread(nullptr, 0, PainterProc, this, 0, nullptr)) {}
    ~Painter() { Stop(); }
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    HANDLE thread() const { return m_thread.get(); }
    bool WaitForNextPaint() const {
        const int before = m_paints;
        return test::WaitFor([this, before] { return m_paints != before; });
    }
    bool Stop() {
        m_stop = true;
        return WaitForSingleObject(m_thread.get(), test::kDeadline_ms) == WAIT_OBJECT_0;
    }

  private:
    static DWORD WINAPI PainterProc(void* parameter) {
        auto* self = static_cast<Painter*>(parameter);
        while (!self->m_stop) {
            DrawSkinText(self->m_skin, 212, L"KORA ONE");
            ++self->m_paints;
        }
        return 0;
    }

    CSkin& m_skin;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_paints{0};
    OwnedHandle m_thread;
};

TEST_P(TextFields, TwoThreadsThatPaintDifferentFieldsDoNotDisturbEachOther) {
    const TextLayout &service = kTextLayout[2], &record = kTextLayout[9];
    Painter painter(m_skin);
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(painter.WaitForNextPaint());
        for (int i = 0; i < 20; ++i) DrawSkinText(m_skin, record.id, L"Rec 00:00:01");
    }
    ASSERT_TRUE(painter.Stop());

    Picture expected = Expected(service, L"KORA ONE");
    const SkinRect at = record.At(screen());
    expected.Copy(Expected(record, L"Rec 00:00:01"), at.x, at.y, at);
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(TextFields, AFieldIsPaintedWhileAnotherThreadIsSuspendedInTheMiddleOfAPaint) {
    const TextLayout& name = kTextLayout[1];
    const SkinRect at = name.At(screen());
    const Picture expected = Expected(name, L"Unknown");
    Painter painter(m_skin);
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(painter.WaitForNextPaint());
        ASSERT_EQ(SuspendThread(painter.thread()), 0u);
        BlankScreen();
        DrawSkinText(m_skin, name.id, L"Unknown");
        Picture shown = Blank();
        shown.Copy(Shown(), at.x, at.y, at);
        ASSERT_EQ(ResumeThread(painter.thread()), 1u);
        ASSERT_TRUE(Same(expected, shown)) << "round " << round;
    }
    EXPECT_TRUE(painter.Stop());
}

INSTANTIATE_TEST_SUITE_P(Screens, TextFields, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
