// The way of the keys through the panel's switches, and how it is seen.
#include "handset/phone/panel_focus.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "handset/base/owned.h"
#include "handset/phone/panel_picture.h"
#include "handset/state/display_format.h"

namespace panel {
namespace {

struct Picture {
    int width, height;
    std::vector<std::uint32_t> pixels;
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)] &
               0xFFFFFF;
    }
};

Picture Draw(const PanelView& view) {
    const int width = view.phone.width, height = view.phone.height;
    CPanelPicture picture;
    picture.Make(view);
    const BITMAPINFO info = handset::DisplayFormat(width, height);
    void* bits = nullptr;
    const handset::OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::CSelectedObject selected(dc.get(), bitmap.get());
    picture.Show(dc.get(), {0, 0, width, height});
    GdiFlush();
    const auto* first = static_cast<const std::uint32_t*>(bits);
    return {width, height, {first, first + static_cast<std::ptrdiff_t>(width) * height}};
}

// The pixels in which two pictures differ.
Box Difference(const Picture& one, const Picture& other) {
    int left = one.width, top = one.height, right = 0, bottom = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            if (one.At(x, y) == other.At(x, y)) continue;
            left = std::min(left, x), right = std::max(right, x + 1);
            top = std::min(top, y), bottom = std::max(bottom, y + 1);
        }
    }
    return {left, top, right - left, bottom - top};
}

PanelView ViewOf(int width, int height) {
    PanelView view{};
    view.phone = LayOutPhone(width, height);
    view.column = LayOutColumn(view.phone.column);
    view.now.lit = true;
    view.now.screenWidth = width;
    view.now.screenHeight = height;
    view.band.levels.fill(handset::kLevelNotSeen);
    return view;
}

TEST(PanelFocus, TheKeysComeByEverySwitchAndTheCloseButtonOnceAndRoundAgainBothWays) {
    const ColumnLayout column = LayOutColumn(LayOutPhone(240, 320).column);
    std::set<const SwitchRow*> seen;
    FocusPlace place = 0;
    for (std::size_t i = 0; i <= column.switches.size(); ++i) {
        seen.insert(SwitchAtPlace(column, place));
        EXPECT_EQ(PreviousPlace(column, NextPlace(column, place)), place);
        place = NextPlace(column, place);
    }
    EXPECT_EQ(place, 0u);
    // The close button is the one that is no switch.
    EXPECT_EQ(seen.size(), column.switches.size() + 1);
    std::size_t rows = 0;
    for (const SwitchGroup& group : SwitchGroups()) rows += group.rows.size();
    EXPECT_EQ(column.switches.size(), rows);
}

TEST(PanelFocus, WhatHasTheKeysIsFramedOnAPhoneThatStandsAndOnOneThatLies) {
    for (const auto& [width, height] : {std::pair(240, 320), std::pair(320, 240)}) {
        PanelView view = ViewOf(width, height);
        const Picture without = Draw(view);
        for (FocusPlace place = 0; place <= CloseButtonPlace(view.column); ++place) {
            view.focus = place;
            const Box framed = Difference(without, Draw(view));
            const Box box = BoxOfPlace(view.column, view.phone.close, place);
            EXPECT_TRUE(framed.x < box.x && framed.y < box.y && framed.Right() > box.Right() &&
                        framed.Bottom() > box.Bottom())
                << place;
            EXPECT_TRUE(framed.x >= box.x - 4 && framed.Right() <= box.Right() + 4) << place;
        }
    }
}

}  // namespace
}  // namespace panel
