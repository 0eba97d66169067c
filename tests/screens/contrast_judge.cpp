#include "tests/screens/contrast_judge.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "tests/support/contrast.h"

namespace screens {
namespace {

constexpr double kReadable = 4.5;
// What a letter of the smallest text has of its full colour.
constexpr int kLeastInk_px = 4;

bool IsGreyed(const Item& item) {
    if (item.className == "menu item") return (item.style & (MF_GRAYED | MF_DISABLED)) != 0;
    return (item.style & WS_DISABLED) != 0;
}

bool IsCovered(const Item& item) {
    const POINT middle = {(item.place.left + item.place.right) / 2, (item.place.top + item.place.bottom) / 2};
    const HWND own = reinterpret_cast<HWND>(item.window);
    return GetAncestor(WindowFromPoint(middle), GA_ROOT) != GetAncestor(own, GA_ROOT);
}

// Between the colour that most of a place has and the one that stands out best.
double ContrastIn(const Picture& picture, const RECT& place) {
    std::map<std::uint32_t, int> counts;
    for (LONG y = std::max(place.top, LONG{0}); y < std::min(place.bottom, picture.height); ++y) {
        for (LONG x = std::max(place.left, LONG{0}); x < std::min(place.right, picture.width); ++x)
            ++counts[picture.At(x, y)];
    }
    if (counts.empty()) return 0;
    const auto ground =
        std::max_element(counts.begin(), counts.end(), [](const auto& one, const auto& other) {
            return one.second < other.second;
        })->first;
    double best = 0;
    for (const auto& [colour, count] : counts) {
        if (count >= kLeastInk_px) best = std::max(best, test::Contrast(ground, colour));
    }
    return best;
}

}  // namespace

std::vector<std::string> HardToRead(const std::vector<Item>& now, const Picture& picture, POINT corner) {
    std::vector<std::string> faults;
    for (const Item& item : now) {
        if (item.kind != Kind::kText || item.text.empty() || IsRectEmpty(&item.place)) continue;
        if (IsGreyed(item) || IsCovered(item)) continue;
        RECT place = item.place;
        OffsetRect(&place, -corner.x, -corner.y);
        const double contrast = ContrastIn(picture, place);
        if (contrast >= kReadable) continue;
        std::ostringstream fault;
        fault << item.className << " \"" << item.text << "\" stands out by " << contrast << " to 1";
        faults.push_back(fault.str());
    }
    return faults;
}

}  // namespace screens
