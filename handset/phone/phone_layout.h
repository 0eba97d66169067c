// Where the phone's parts lie in the panel's window, for any screen and both orientations. Portable.
#pragma once

#include <optional>
#include <vector>

namespace panel {

struct Box {
    int x, y, w, h;
    [[nodiscard]] bool Contains(int px, int py) const {
        return px >= x && py >= y && px < x + w && py < y + h;
    }
    [[nodiscard]] int Right() const { return x + w; }
    [[nodiscard]] int Bottom() const { return y + h; }
};

enum class PhoneKey {
    kSoftLeft,
    kSoftRight,
    kCall,
    kHangUp,
    kUp,
    kDown,
    kLeft,
    kRight,
    kReturn,
    k0,
    k1,
    k2,
    k3,
    k4,
    k5,
    k6,
    k7,
    k8,
    k9,
    kStar,
    kHash,
};

struct KeyPlace {
    PhoneKey key;
    Box box;
};

struct PhoneLayout {
    int width, height;  // the window's client area
    bool landscape;     // the phone lies on its side, its top to the left
    Box body;
    Box glass;  // around the display
    Box display;
    Box speaker;
    Box pad;  // the arrow keys with Return in the middle
    std::vector<KeyPlace> keys;
    Box column;  // room for the switches
    Box band;    // the levels of all channels
    Box close;   // puts the handset away
};

inline constexpr int kBandHeight = 60;

// `screenWidth` and `screenHeight` in pixels; a screen wider than tall lays the phone on its side.
PhoneLayout LayOutPhone(int screenWidth, int screenHeight);
// The key at a place of the client area. The arrow pad has no dead corners.
std::optional<PhoneKey> KeyAt(const PhoneLayout& layout, int x, int y);
// Null for a key that the layout does not have.
const Box* PlaceOf(const PhoneLayout& layout, PhoneKey key);

}  // namespace panel
