#include <algorithm>
#include <cmath>

#include "handset/coredll/windows/list_scroll_bar.h"

namespace coredll {
namespace {

constexpr double kStandsOut = 3.2;  // to 1: what has to be seen and is no text needs 3
constexpr int kSteps = 64;

double Linear(BYTE part) {
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Brightness(COLORREF colour) {
    return 0.2126 * Linear(GetRValue(colour)) + 0.7152 * Linear(GetGValue(colour)) +
           0.0722 * Linear(GetBValue(colour)) + 0.05;
}

COLORREF Blend(COLORREF from, BYTE towards, int step) {
    const auto part = [&](BYTE one) { return static_cast<BYTE>(one + (towards - one) * step / kSteps); };
    return RGB(part(GetRValue(from)), part(GetGValue(from)), part(GetBValue(from)));
}

}  // namespace

// From the ground towards white, or from a bright one towards black, until it stands out.
ScrollBarColours ScrollBarColoursOn(COLORREF ground) {
    const double own = Brightness(ground);
    const BYTE towards = own < 0.2 ? 255 : 0;
    COLORREF thumb = ground;
    for (int step = 1; step <= kSteps; ++step) {
        thumb = Blend(ground, towards, step);
        const double other = Brightness(thumb);
        if (std::max(own, other) / std::min(own, other) >= kStandsOut) break;
    }
    return {ground, thumb};
}

}  // namespace coredll
