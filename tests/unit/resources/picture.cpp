// Reads bitmap resources byte by byte, without GDI in between.
#include "tests/unit/resources/picture.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "tests/unit/resources/resource_bytes.h"

Picture Picture::Part(int x, int y, int cx, int cy) const {
    Picture part{cx, cy, {}};
    for (int row = y; row < y + cy; ++row)
        for (int column = x; column < x + cx; ++column) part.pixels.push_back(At(column, row));
    return part;
}

Picture LoadPicture(unsigned id) {
    ResourceBytes bytes = FindBytes(L"GIF", id);
    BITMAPINFOHEADER header{};
    if (bytes.size < sizeof(BITMAPFILEHEADER) + sizeof header) return {};
    // The whole file is the resource.
    bytes.data += sizeof(BITMAPFILEHEADER);
    bytes.size -= sizeof(BITMAPFILEHEADER);
    std::memcpy(&header, bytes.data, sizeof header);
    if (header.biBitCount != 24 || header.biCompression != BI_RGB || header.biHeight <= 0) return {};
    const std::size_t stride = (static_cast<std::size_t>(header.biWidth) * 3 + 3) / 4 * 4;
    if (bytes.size < header.biSize + stride * header.biHeight) return {};

    Picture picture{static_cast<int>(header.biWidth), static_cast<int>(header.biHeight), {}};
    for (int y = picture.height - 1; y >= 0; --y) {
        const std::uint8_t* row = bytes.data + header.biSize + stride * y;
        for (int x = 0; x < picture.width; ++x, row += 3)
            picture.pixels.push_back(Colour{row[2]} << 16 | Colour{row[1]} << 8 | row[0]);
    }
    return picture;
}
