// Bitmap files as the panel reads them.
#include "handset/phone/art_picture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace panel {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Two pixels wide, two rows high, of 32 bits, its pixels behind a header of the usual size.
Bytes File() {
    Bytes file(54, 0);
    file[0] = 'B', file[1] = 'M', file[10] = 54, file[18] = 2, file[22] = 2, file[28] = 32;
    for (const std::uint8_t pixel : {0x30, 0x40, 0x10, 0x20}) file.insert(file.end(), {pixel, 0, 0, 0xFF});
    return file;
}

ArtPicture Read(const Bytes& file) {
    // Of exactly that size, so that a byte read behind the end is noticed.
    const std::vector<std::uint8_t> copy(file);
    return ReadBitmapFile(copy.data(), copy.size());
}

bool Refused(const Bytes& file) {
    const ArtPicture picture = Read(file);
    return picture.width == 0 && picture.height == 0 && picture.pixels.empty();
}

TEST(ArtPicture, HasTheFilesPixelsFromTheTop) {
    const ArtPicture picture = Read(File());
    EXPECT_EQ(picture.width, 2);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.pixels, (std::vector<std::uint32_t>{0xFF000010, 0xFF000020, 0xFF000030, 0xFF000040}));
}

TEST(ArtPicture, AFileThatIsCutOffAnywhereIsRefused) {
    const Bytes whole = File();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(Refused(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
}

TEST(ArtPicture, AFileOfAnotherKindIsRefused) {
    Bytes file = File();
    file[0] = 'P';
    EXPECT_TRUE(Refused(file));
    file = File();
    file[28] = 24;
    EXPECT_TRUE(Refused(file));
}

TEST(ArtPicture, SizesAndPlacesBeyondTheFileAreRefused) {
    for (const std::size_t place : {10u, 18u, 22u}) {
        for (const std::uint32_t value : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x10000u}) {
            Bytes file = File();
            std::memcpy(&file[place], &value, sizeof value);
            EXPECT_TRUE(Refused(file)) << place << " " << value;
        }
    }
    for (const std::size_t place : {18u, 22u}) {
        Bytes file = File();
        file[place] = 0;
        EXPECT_TRUE(Refused(file)) << place;
    }
}

}  // namespace
}  // namespace panel
