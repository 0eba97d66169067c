#include "tests/screens/contrast_judge.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

#include "tests/screens/shown_fields.h"
#include "tests/support/contrast.h"

namespace screens {
namespace {

constexpr char kBoxClass[] = "#32770";
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

struct Text {
    const Item* item;
    RECT place;  // on the screen
};

// A field is the window's own: a list that stands on it covers it, too.
bool IsFieldCovered(const Item& main, const RECT& place) {
    const LONG middle = (place.top + place.bottom) / 2;
    const POINT points[] = {
        {place.left, middle}, {(place.left + place.right) / 2, middle}, {place.right - 1, middle}};
    return std::any_of(std::begin(points), std::end(points), [&](const POINT& point) {
        return WindowFromPoint(point) != reinterpret_cast<HWND>(main.window);
    });
}

// While a dialog or a box is open, the monitor that fills most fields rests: what a repaint took away stays
// away.
bool IsBoxOpen(const std::vector<Item>& now) {
    return std::any_of(now.begin(), now.end(), [](const Item& item) {
        return item.kind == Kind::kWindow && item.className == kBoxClass;
    });
}

std::vector<Text> FieldsOf(const Item& main, const std::vector<Item>& drawn) {
    std::vector<Text> fields;
    for (const Item* field : ShownFields(main, drawn)) {
        RECT place = {};
        if (field->text.empty() || !IntersectRect(&place, &field->ink, &field->place)) continue;
        OffsetRect(&place, main.room.left, main.room.top);
        if (!IsFieldCovered(main, place)) fields.push_back({field, place});
    }
    return fields;
}

std::vector<Text> TextsOf(const std::vector<Item>& now) {
    std::vector<Text> texts;
    for (const Item& item : now) {
        if (item.kind != Kind::kText || item.text.empty() || IsRectEmpty(&item.place)) continue;
        if (!IsGreyed(item) && !IsCovered(item)) texts.push_back({&item, item.place});
    }
    return texts;
}

}  // namespace

std::vector<std::string> HardToRead(const std::vector<Item>& now, const std::vector<Item>& drawn,
                                    const Picture& picture, POINT corner) {
    std::vector<Text> texts = TextsOf(now);
    const Item* const main = MainWindow(now);
    if (main != nullptr && !IsBoxOpen(now)) {
        for (const Text& field : FieldsOf(*main, drawn)) texts.push_back(field);
    }
    std::vector<std::string> faults;
    for (const Text& text : texts) {
        RECT place = text.place;
        OffsetRect(&place, -corner.x, -corner.y);
        const double contrast = ContrastIn(picture, place);
        if (contrast >= kReadable) continue;
        std::ostringstream fault;
        fault << text.item->className << " \"" << text.item->text << "\" stands out by " << contrast
              << " to 1";
        faults.push_back(fault.str());
    }
    return faults;
}

}  // namespace screens
