// A picture's file, taken apart by the standard.
#include "handset/phone/png_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace panel {
namespace {

std::uint32_t Big(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    return value;
}

// The data of each chunk, by turns name and data.
std::vector<std::string> Chunks(const std::string& file) {
    std::vector<std::string> chunks;
    for (std::size_t at = 8; at < file.size();) {
        const std::size_t length = Big(file, at);
        chunks.push_back(file.substr(at + 4, 4));
        chunks.push_back(file.substr(at + 8, length));
        at += 12 + length;
    }
    return chunks;
}

// What the stored blocks hold; their lengths are there twice, once upside down.
std::string Unpacked(const std::string& stream) {
    std::string bytes;
    bool last = false;
    std::size_t at = 2;
    while (!last) {
        last = stream.at(at) == 1;
        const auto length = static_cast<std::size_t>(static_cast<std::uint8_t>(stream.at(at + 1)) |
                                                     static_cast<std::uint8_t>(stream.at(at + 2)) << 8);
        EXPECT_EQ(stream.at(at + 1), static_cast<char>(~stream.at(at + 3)));
        EXPECT_EQ(stream.at(at + 2), static_cast<char>(~stream.at(at + 4)));
        bytes += stream.substr(at + 5, length);
        at += 5 + length;
    }
    EXPECT_EQ(at + 4, stream.size());
    return bytes;
}

TEST(PngFile, HasItsSizeAndItsPixelsRowByRow) {
    const std::uint32_t pixels[] = {0x112233, 0x445566, 0x778899, 0xAABBCC, 0xDDEEFF, 0x000102};
    const std::string file = PngOf(pixels, 3, 2);
    EXPECT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1A\n");
    const std::vector<std::string> chunks = Chunks(file);
    ASSERT_EQ(chunks.size(), 6u);
    EXPECT_EQ(chunks[0], "IHDR");
    EXPECT_EQ(chunks[1], std::string("\0\0\0\3\0\0\0\2\x08\x02\0\0\0", 13));
    EXPECT_EQ(chunks[2], "IDAT");
    EXPECT_EQ(Unpacked(chunks[3]), std::string("\0\x11\x22\x33\x44\x55\x66\x77\x88\x99"
                                               "\0\xAA\xBB\xCC\xDD\xEE\xFF\0\x01\x02",
                                               20));
    EXPECT_EQ(chunks[4], "IEND");
}

TEST(PngFile, ChecksumsAreThoseOfTheStandard) {
    const std::uint32_t pixel = 0;
    const std::string file = PngOf(&pixel, 1, 1);
    // The last chunk of every PNG file.
    EXPECT_EQ(file.substr(file.size() - 12), std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
    // Four zeros have the Adler-32 sum 4 and 1.
    EXPECT_EQ(Big(Chunks(file)[3], 2 + 5 + 4), 0x00040001u);
}

TEST(PngFile, ALargePictureIsInSeveralBlocks) {
    const std::vector<std::uint32_t> pixels(300 * 200, 0xABCDEF);
    const std::string rows = Unpacked(Chunks(PngOf(pixels.data(), 300, 200))[3]);
    ASSERT_EQ(rows.size(), 200u * 901);
    EXPECT_EQ(rows.substr(901, 4), std::string("\0\xAB\xCD\xEF", 4));
    EXPECT_EQ(rows.substr(rows.size() - 3), "\xAB\xCD\xEF");
}

}  // namespace
}  // namespace panel
