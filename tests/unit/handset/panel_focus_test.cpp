// The way of the keys through the panel's switches, and how it is seen.
#include "handset/phone/panel_focus.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/unit/handset/drawn_panel.h"

namespace panel {
namespace {

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
        const DrawnPanel without = Draw(view);
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
