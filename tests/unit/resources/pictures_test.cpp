// The pictures of the main screen other than the buttons: sizes, grounds, indicators.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "resources/resource_ids.h"
#include "tests/support/contrast.h"
#include "tests/unit/resources/main_screen.h"

namespace {

struct Size {
    unsigned id;
    int width, height;
};

constexpr unsigned Wide(unsigned id) {
    return id + IDB_WIDE_OFFSET;
}

const Size kSizes[] = {
    {186, 240, 320}, {188, 320, 240}, {Wide(186), 480, 640}, {Wide(188), 640, 480}, {229, 320, 105},
    {189, 212, 30},  {190, 212, 30},  {191, 212, 30},        {192, 212, 30},        {193, 36, 13},
    {194, 36, 13},   {195, 132, 30},  {196, 132, 30},        {197, 136, 30},        {198, 136, 30},
    {199, 68, 18},   {200, 68, 18},
};

// Pictures that are painted with magenta left out.
std::vector<unsigned> TransparentPictures() {
    std::vector<unsigned> ids = {IDB_THUMB_PORTRAIT, IDB_THUMB_LANDSCAPE};
    for (unsigned level = 0; level <= 10; ++level) ids.push_back(IDB_SCAN_PROGRESS + level);
    for (unsigned grade = 0; grade < 6; ++grade) ids.push_back(Wide(IDB_SIGNAL) + grade);
    return ids;
}

std::vector<unsigned> OpaquePictures() {
    std::vector<unsigned> ids;
    for (const Size& size : kSizes)
        if (size.id != IDB_THUMB_PORTRAIT && size.id != IDB_THUMB_LANDSCAPE) ids.push_back(size.id);
    for (unsigned grade = 0; grade < 6; ++grade) ids.push_back(IDB_SIGNAL + grade);
    return ids;
}

// Pink to the eye: what is left where a drawing was mixed with magenta.
bool IsMagentaTinted(Colour colour) {
    return Red(colour) > Green(colour) + 40 && Blue(colour) > Green(colour) + 40;
}

int Count(const Picture& picture, Colour colour) {
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), colour));
}

constexpr Colour kLit = 0x8DC21F;

// The share of a text field's ground on which its text would be hard to read.
double IllegibleShare(const Picture& ground, Colour text) {
    const auto hard = [text](Colour colour) { return test::Contrast(colour, text) < 4.5; };
    return static_cast<double>(std::count_if(ground.pixels.begin(), ground.pixels.end(), hard)) /
           static_cast<double>(ground.pixels.size());
}

}  // namespace

TEST(Pictures, EveryPictureHasItsExactSizeAndTwentyFourBits) {
    for (const Size& size : kSizes) {
        const Picture picture = LoadPicture(size.id);
        EXPECT_EQ(picture.width, size.width) << size.id;
        EXPECT_EQ(picture.height, size.height) << size.id;
    }
}

TEST(Pictures, EveryIndicatorHasItsExactSize) {
    for (unsigned level = 0; level <= 10; ++level) {
        EXPECT_EQ(LoadPicture(217 + level).width, 159) << level;
        EXPECT_EQ(LoadPicture(217 + level).height, 14) << level;
    }
    for (unsigned grade = 0; grade < 6; ++grade) {
        EXPECT_EQ(LoadPicture(211 + grade).width, 24) << grade;
        EXPECT_EQ(LoadPicture(211 + grade).height, 11) << grade;
        EXPECT_EQ(LoadPicture(1211 + grade).width, 49) << grade;
        EXPECT_EQ(LoadPicture(1211 + grade).height, 22) << grade;
    }
}

TEST(Pictures, TransparentPicturesHaveMagentaAndNoFringeOfIt) {
    for (const unsigned id : TransparentPictures()) {
        const Picture picture = LoadPicture(id);
        EXPECT_GT(Count(picture, kMagenta), 0) << id;
        for (const Colour colour : picture.pixels)
            ASSERT_TRUE(colour == kMagenta || !IsMagentaTinted(colour)) << id << ": " << std::hex << colour;
    }
}

TEST(Pictures, OpaquePicturesHaveNoMagentaAtAll) {
    for (const unsigned id : OpaquePictures()) {
        const Picture picture = LoadPicture(id);
        ASSERT_GT(picture.width, 0) << id;
        for (const Colour colour : picture.pixels)
            ASSERT_FALSE(IsMagentaTinted(colour)) << id << ": " << std::hex << colour;
    }
}

TEST(Pictures, EachSignalGradeLightsMoreThanTheOneBefore) {
    for (const unsigned first : {unsigned{IDB_SIGNAL}, Wide(IDB_SIGNAL)}) {
        EXPECT_EQ(Count(LoadPicture(first), kLit), 0);
        for (unsigned grade = 1; grade < 6; ++grade)
            EXPECT_GT(Count(LoadPicture(first + grade), kLit), Count(LoadPicture(first + grade - 1), kLit));
    }
}

TEST(Pictures, EachScanProgressLevelLightsMoreThanTheOneBefore) {
    for (unsigned level = 1; level <= 10; ++level)
        EXPECT_GT(Count(LoadPicture(IDB_SCAN_PROGRESS + level), kLit),
                  Count(LoadPicture(IDB_SCAN_PROGRESS + level - 1), kLit))
            << level;
}

TEST(Pictures, AWideSignalGradeCoversEveryOther) {
    const Picture first = LoadPicture(Wide(IDB_SIGNAL));
    for (unsigned grade = 1; grade < 6; ++grade) {
        const Picture other = LoadPicture(Wide(IDB_SIGNAL) + grade);
        ASSERT_EQ(other.pixels.size(), first.pixels.size());
        for (std::size_t at = 0; at < first.pixels.size(); ++at)
            ASSERT_EQ(first.pixels[at] == kMagenta, other.pixels[at] == kMagenta) << grade << " at " << at;
    }
}

bool IsWithin(const Place& place, int x, int y) {
    return x >= place.x && x < place.x + place.cx && y >= place.y && y < place.y + place.cy;
}

TEST(Pictures, TheWideSignalLeavesTheNameAndTheLabelsFree) {
    const Picture signal = LoadPicture(Wide(IDB_SIGNAL) + 5);
    ASSERT_EQ(signal.width, 49);
    for (int y = 0; y < signal.height; ++y)
        for (int x = 0; x < signal.width; ++x) {
            if (signal.At(x, y) == kMagenta) continue;
            for (const TextField& field : TextFields()) {
                EXPECT_FALSE(IsWithin(field.portrait, 14 + x, 12 + y))
                    << field.id << " at " << x << ", " << y;
                EXPECT_FALSE(IsWithin(field.landscape, 14 + x, 12 + y))
                    << field.id << " at " << x << ", " << y;
            }
        }
}

// The name reaches up to it from the left and the frequency from the right.
TEST(Pictures, TheNeedleEndsAboveTheRowOfTheNameAndTheFrequency) {
    for (const unsigned background : {unsigned{IDB_BACKGROUND_PORTRAIT}, Wide(IDB_BACKGROUND_PORTRAIT)})
        EXPECT_EQ(Count(LoadPicture(background).Part(0, 28, 240, 37), kLit), 0) << background;
    for (const unsigned background : {unsigned{IDB_BACKGROUND_LANDSCAPE}, Wide(IDB_BACKGROUND_LANDSCAPE)})
        EXPECT_EQ(Count(LoadPicture(background).Part(0, 8, 320, 27), kLit), 0) << background;
    EXPECT_GT(Count(LoadPicture(IDB_BACKGROUND_PORTRAIT).Part(0, 0, 240, 28), kLit), 0);
    EXPECT_GT(Count(LoadPicture(IDB_BACKGROUND_LANDSCAPE).Part(0, 0, 320, 8), kLit), 0);
}

// It would stand still whatever is tuned.
TEST(Pictures, BesideTheFaceOfAWideScreenThereIsNoNeedle) {
    const Picture portrait = LoadPicture(Wide(IDB_BACKGROUND_PORTRAIT)),
                  landscape = LoadPicture(Wide(IDB_BACKGROUND_LANDSCAPE));
    EXPECT_EQ(Count(portrait, kLit), Count(portrait.Part(0, 0, 240, 320), kLit));
    EXPECT_EQ(Count(landscape, kLit), Count(landscape.Part(0, 0, 320, 240), kLit));
}

TEST(Pictures, TheSignalStandsOnTheGroundOfTheDisplayBehindIt) {
    for (const unsigned background : {IDB_BACKGROUND_PORTRAIT, IDB_BACKGROUND_LANDSCAPE}) {
        const Picture behind = LoadPicture(background).Part(5, 10, 24, 11);
        const Picture signal = LoadPicture(IDB_SIGNAL);
        for (const Colour colour : behind.pixels) ASSERT_EQ(colour, signal.At(0, 10)) << background;
    }
}

TEST(Pictures, TheListLooksLikeThePartOfTheFaceThatItCovers) {
    const Picture list = LoadPicture(IDB_LIST_BACKGROUND);
    EXPECT_TRUE(LoadPicture(IDB_BACKGROUND_PORTRAIT).Part(0, 105, 240, 105) == list.Part(0, 0, 240, 105));
    EXPECT_TRUE(LoadPicture(IDB_BACKGROUND_LANDSCAPE).Part(0, 70, 320, 60) == list.Part(0, 0, 320, 60));
}

TEST(Pictures, AWideBackgroundKeepsTheWholeFaceInItsUpperLeftCorner) {
    EXPECT_TRUE(LoadPicture(Wide(186)).Part(0, 0, 240, 320) == LoadPicture(186));
    EXPECT_TRUE(LoadPicture(Wide(188)).Part(0, 0, 320, 240) == LoadPicture(188));
}

TEST(Pictures, EveryTextFieldLiesOnAGroundOnWhichItsColourCanBeRead) {
    const Picture portrait = LoadPicture(IDB_BACKGROUND_PORTRAIT),
                  landscape = LoadPicture(IDB_BACKGROUND_LANDSCAPE);
    for (const TextField& field : TextFields()) {
        const Place &up = field.portrait, &side = field.landscape;
        EXPECT_LT(IllegibleShare(portrait.Part(up.x, up.y, up.cx, up.cy), field.colour), 0.02) << field.id;
        EXPECT_LT(IllegibleShare(landscape.Part(side.x, side.y, side.cx, side.cy), field.colour), 0.02)
            << field.id;
    }
}

TEST(Pictures, TheListsColoursCanBeReadOnItsGround) {
    const Picture list = LoadPicture(IDB_LIST_BACKGROUND);
    for (const Colour text : {0xFFFF80u, 0x80FFFFu, 0x9E9E9Eu})
        EXPECT_EQ(IllegibleShare(list, text), 0.0) << std::hex << text;
}

TEST(Pictures, AHeldThumbLooksUnlikeAReleasedOneAndHasTheSameShape) {
    const Picture strip = LoadPicture(IDB_THUMB_PORTRAIT);
    const Picture released = strip.Part(0, 0, 18, 13), held = strip.Part(18, 0, 18, 13);
    EXPECT_FALSE(released == held);
    for (std::size_t at = 0; at < released.pixels.size(); ++at)
        ASSERT_EQ(released.pixels[at] == kMagenta, held.pixels[at] == kMagenta) << at;
}
