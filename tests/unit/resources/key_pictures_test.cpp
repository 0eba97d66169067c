// The pictures of the buttons: strips, frames, and their released looks in the backgrounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "resources/resource_ids.h"
#include "tests/unit/resources/main_screen.h"

namespace {

constexpr Colour kAccent = 0x8DC21F;
constexpr Colour kGlyph = 0xE6EDF0;

struct Side {
    const char* name;
    bool portrait;
    unsigned background, disabled;

    const ButtonPlace& Of(const Button& button) const {
        return portrait ? button.portrait : button.landscape;
    }
    unsigned Strip(const Button& button) const {
        return portrait ? button.portraitStrip : button.landscapeStrip;
    }
};

const Side kSides[] = {
    {"portrait", true, IDB_BACKGROUND_PORTRAIT, IDB_DISABLED_PORTRAIT},
    {"landscape", false, IDB_BACKGROUND_LANDSCAPE, IDB_DISABLED_LANDSCAPE},
    {"wide portrait", true, IDB_BACKGROUND_PORTRAIT + IDB_WIDE_OFFSET, IDB_DISABLED_PORTRAIT},
    {"wide landscape", false, IDB_BACKGROUND_LANDSCAPE + IDB_WIDE_OFFSET, IDB_DISABLED_LANDSCAPE},
};

template <class Check>
void ForEachButton(const Check& check) {
    for (const Side& side : kSides)
        for (const Button& button : Buttons()) {
            SCOPED_TRACE(std::string(side.name) + " " + std::to_string(button.id));
            check(side, button, side.Of(button));
        }
}

Picture Cut(const Picture& picture, const Place& at) {
    return picture.Part(at.x, at.y, at.cx, at.cy);
}

int Brightest(const Picture& picture) {
    int brightest = 0;
    for (const Colour colour : picture.pixels)
        brightest = std::max(brightest, Red(colour) + Green(colour) + Blue(colour));
    return brightest;
}

// The pressed pictures of the keys share one strip; the small ones are 15 high.
Picture Pressed(const Side& side, const Button& button) {
    const ButtonPlace& place = side.Of(button);
    return LoadPicture(side.Strip(button)).Part(place.xSource, 0, place.rect.cx, place.rect.cy);
}

Picture Frame(const Side& side, const Button& button, int frame) {
    const Place& rect = side.Of(button).rect;
    return LoadPicture(side.Strip(button)).Part(frame * rect.cx, 0, rect.cx, rect.cy);
}

}  // namespace

TEST(KeyPictures, StripsHoldEverySourceRectangleOfTheButtonTable) {
    ForEachButton([](const Side& side, const Button& button, const ButtonPlace& place) {
        const Picture strip = LoadPicture(side.Strip(button));
        const int source = button.frames > 0 ? (button.frames - 1) * place.rect.cx : place.xSource;
        EXPECT_GE(strip.width, source + place.rect.cx);
        EXPECT_GE(strip.height, place.rect.cy);
    });
}

TEST(KeyPictures, TheDisabledStripHoldsEverySourceRectangleOfTheButtonTable) {
    ForEachButton([](const Side& side, const Button&, const ButtonPlace& place) {
        const Picture strip = LoadPicture(side.disabled);
        EXPECT_GE(strip.width, place.xDisabled + place.rect.cx);
        EXPECT_GE(strip.height, place.rect.cy);
    });
}

TEST(KeyPictures, TheBackgroundShowsEachSwitchInItsFirstFrame) {
    ForEachButton([](const Side& side, const Button& button, const ButtonPlace& place) {
        if (button.frames == 0) return;
        EXPECT_TRUE(Cut(LoadPicture(side.background), place.rect) == Frame(side, button, 0));
    });
}

TEST(KeyPictures, TheBackgroundShowsTheReleasedGlyphWhereThePressedPictureHasItsOwn) {
    ForEachButton([](const Side& side, const Button& button, const ButtonPlace& place) {
        if (button.frames > 0) return;
        const Picture released = Cut(LoadPicture(side.background), place.rect),
                      pressed = Pressed(side, button);
        const int kUnderline = 25;  // below this row a pressed key is underlined
        int glyph = 0, matching = 0;
        for (int y = 0; y < std::min(pressed.height, kUnderline); ++y)
            for (int x = 0; x < pressed.width; ++x) {
                if (pressed.At(x, y) != kAccent) continue;
                ++glyph;
                matching += released.At(x, y) == kGlyph;
            }
        EXPECT_GE(glyph, 5);
        EXPECT_EQ(matching, glyph);
    });
}

TEST(KeyPictures, APressedKeyMeetsItsSurroundingsWithoutAnEdge) {
    ForEachButton([](const Side& side, const Button& button, const ButtonPlace& place) {
        if (button.frames > 0) return;
        const Picture released = Cut(LoadPicture(side.background), place.rect),
                      pressed = Pressed(side, button);
        for (int y = 0; y < pressed.height; ++y) {
            EXPECT_EQ(pressed.At(0, y), released.At(0, y));
            EXPECT_EQ(pressed.At(pressed.width - 1, y), released.At(pressed.width - 1, y));
        }
    });
}

TEST(KeyPictures, ADisabledKeyIsDimmerThanAReleasedOneAndStillShowsItsGlyph) {
    for (const Side& side : kSides)
        for (const Button& button : Buttons()) {
            if (button.frames > 0) continue;
            SCOPED_TRACE(std::string(side.name) + " " + std::to_string(button.id));
            const ButtonPlace& place = side.Of(button);
            const Picture disabled =
                LoadPicture(side.disabled).Part(place.xDisabled, 0, place.rect.cx, place.rect.cy);
            const Picture released = Cut(LoadPicture(side.background), place.rect);
            EXPECT_LT(Brightest(disabled), Brightest(released) / 2);
            EXPECT_GT(Brightest(disabled), 180);
        }
}

TEST(KeyPictures, TheFourFramesOfASwitchAllDiffer) {
    ForEachButton([](const Side& side, const Button& button, const ButtonPlace&) {
        for (int first = 0; first < button.frames; ++first)
            for (int second = first + 1; second < button.frames; ++second)
                EXPECT_FALSE(Frame(side, button, first) == Frame(side, button, second))
                    << "frames " << first << " and " << second;
    });
}
