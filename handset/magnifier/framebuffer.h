// The picture of a virtual display, as its server keeps it in a file (xwd, version 7). Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace magnifier {

struct Framebuffer {
    int width, height;
    const std::uint8_t* pixels;  // rows from the top, 32 bits each: 0x..RRGGBB, the lowest byte first
    std::size_t stride;          // bytes from row to row
};

// What lies in such a file's bytes, which the result points into. Nothing when they are none, are cut off, or
// hold pixels of another kind.
[[nodiscard]] std::optional<Framebuffer> ReadFramebuffer(const std::uint8_t* bytes, std::size_t size);

// Each pixel of `rows` rows from row `top` on becomes times × times of them in `to`, which has room for
// width * times * rows * times.
void Enlarge(const Framebuffer& from, int top, int rows, int times, std::uint32_t* to);

}  // namespace magnifier
