// PNG (ISO/IEC 15948) with its picture in stored blocks (RFC 1950, RFC 1951): large, but nobody's library is
// needed.
#include "handset/phone/png_file.h"

#include <algorithm>

namespace panel {
namespace {

constexpr std::size_t kMostStored = 65535;
constexpr std::uint32_t kAdler = 65521;

void PutBig(std::string& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
}
void PutLittle16(std::string& bytes, std::size_t value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

std::uint32_t Crc(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

void PutChunk(std::string& file, const std::string& name, const std::string& data) {
    PutBig(file, static_cast<std::uint32_t>(data.size()));
    file += name + data;
    PutBig(file, Crc(name + data));
}

std::string Stored(const std::string& bytes) {
    std::string stream = "\x78\x01";
    for (std::size_t at = 0; at < bytes.size(); at += kMostStored) {
        const std::size_t size = std::min(kMostStored, bytes.size() - at);
        stream += static_cast<char>(at + size == bytes.size() ? 1 : 0);
        PutLittle16(stream, size);
        PutLittle16(stream, ~size);
        stream.append(bytes, at, size);
    }
    std::uint32_t low = 1, high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<std::uint8_t>(byte)) % kAdler;
        high = (high + low) % kAdler;
    }
    PutBig(stream, high << 16 | low);
    return stream;
}

}  // namespace

std::string PngOf(const std::uint32_t* pixels, int width, int height) {
    std::string header;
    PutBig(header, static_cast<std::uint32_t>(width));
    PutBig(header, static_cast<std::uint32_t>(height));
    // Eight bits of red, green and blue; the only compression and filter there are; not interlaced.
    header += std::string("\x08\x02\x00\x00\x00", 5);
    std::string rows;
    for (int y = 0; y < height; ++y) {
        rows += '\0';  // the row as it is
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = *pixels++;
            for (int shift = 16; shift >= 0; shift -= 8) rows += static_cast<char>(pixel >> shift & 0xFF);
        }
    }
    std::string file = "\x89PNG\r\n\x1A\n";
    PutChunk(file, "IHDR", header);
    PutChunk(file, "IDAT", Stored(rows));
    PutChunk(file, "IEND", "");
    return file;
}

}  // namespace panel
