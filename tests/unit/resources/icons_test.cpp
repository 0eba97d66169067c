// The program's icon and the seven grades of the list of alternative frequencies.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/unit/resources/resource_bytes.h"

namespace {

// One entry of an icon's directory, as it stands in the resource.
#pragma pack(push, 2)
struct IconEntry {
    BYTE width, height, colours, reserved;
    WORD planes, bits;
    DWORD size;
    WORD id;
};
#pragma pack(pop)
static_assert(sizeof(IconEntry) == 14);

std::vector<IconEntry> Directory(unsigned id) {
    const ResourceBytes bytes = FindBytes(RT_GROUP_ICON, id);
    WORD header[3] = {};  // reserved, type, count
    if (bytes.size < sizeof header) return {};
    std::memcpy(header, bytes.data, sizeof header);
    std::vector<IconEntry> entries(header[2]);
    if (bytes.size < sizeof header + entries.size() * sizeof(IconEntry)) return {};
    std::memcpy(entries.data(), bytes.data + sizeof header, entries.size() * sizeof(IconEntry));
    return entries;
}

struct IconPixels {
    std::vector<RGBQUAD> colours;  // rgbReserved is the opacity
    std::vector<bool> hidden;      // by the mask
};

// A 32-bit icon of 16 × 16: its colours from the bottom row up, then the mask, rows of 32 bits.
IconPixels Pixels(const IconEntry& entry) {
    const ResourceBytes bytes = FindBytes(RT_ICON, entry.id);
    BITMAPINFOHEADER header{};
    constexpr std::size_t kCount = 16 * 16, kMaskStride = 4;
    if (bytes.size < sizeof header + kCount * 4 + 16 * kMaskStride) return {};
    std::memcpy(&header, bytes.data, sizeof header);
    if (header.biBitCount != 32 || header.biWidth != 16) return {};
    IconPixels pixels;
    pixels.colours.resize(kCount);
    std::memcpy(pixels.colours.data(), bytes.data + header.biSize, kCount * 4);
    const std::uint8_t* mask = bytes.data + header.biSize + kCount * 4;
    for (std::size_t at = 0; at < kCount; ++at)
        pixels.hidden.push_back(mask[at / 16 * kMaskStride + at % 16 / 8] >> (7 - at % 8) & 1);
    return pixels;
}

}  // namespace

TEST(Icons, TheProgramsIconComesInThreeSizes) {
    std::set<int> sizes;
    for (const IconEntry& entry : Directory(IDI_APP)) sizes.insert(entry.width);
    EXPECT_EQ(sizes, (std::set<int>{16, 32, 48}));
}

TEST(Icons, TheSevenGradesAreSixteenPixelsSquareAndAllDiffer) {
    std::set<std::string> pictures;
    for (unsigned grade = 0; grade < 7; ++grade) {
        const std::vector<IconEntry> entries = Directory(204 + grade);
        ASSERT_EQ(entries.size(), 1u) << grade;
        EXPECT_EQ(entries[0].width, 16) << grade;
        EXPECT_EQ(entries[0].height, 16) << grade;
        const ResourceBytes bytes = FindBytes(RT_ICON, entries[0].id);
        pictures.insert(std::string(reinterpret_cast<const char*>(bytes.data), bytes.size));
    }
    EXPECT_EQ(pictures.size(), 7u);
}

TEST(Icons, AGradesPixelsAreOpaqueOrHiddenByTheMaskAndNothingBetween) {
    for (unsigned grade = 0; grade < 7; ++grade) {
        const std::vector<IconEntry> entries = Directory(204 + grade);
        ASSERT_EQ(entries.size(), 1u) << grade;
        const IconPixels pixels = Pixels(entries[0]);
        ASSERT_EQ(pixels.colours.size(), 256u) << grade;
        int seen = 0;
        for (std::size_t at = 0; at < pixels.colours.size(); ++at) {
            EXPECT_EQ(pixels.colours[at].rgbReserved, pixels.hidden[at] ? 0 : 255) << grade << " at " << at;
            seen += !pixels.hidden[at];
        }
        EXPECT_GT(seen, 0) << grade;
    }
}
