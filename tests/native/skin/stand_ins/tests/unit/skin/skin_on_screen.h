// The rows of the main screen's skin on a screen of a given size, for the tests that paint nothing. Found
// before the window with images of the same name, so that those tests are the same ones here.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "skin/skin.h"
#include "tests/native/skin/stand_ins/platform.h"
#include "tests/unit/skin/layout.h"

struct SentMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD tick_ms;
};

class SkinOnScreen : public ::testing::TestWithParam<Screen> {
  protected:
    void SetUp() override { UseScreen(GetParam()); }
    void TearDown() override { platform::StopTimers(); }

    void UseScreen(const Screen& screen) {
        m_screen = screen;
        platform::UseScreen(screen.cx, screen.cy);
        platform::StopTimers();
        const SkinTables tables = MainScreenTables();
        m_buttons.assign(tables.pButtons, tables.pButtons + tables.nButtons);
        m_sliders.assign(tables.pSliders, tables.pSliders + tables.nSliders);
        static_cast<SkinTables&>(m_skin) = tables;
        m_skin.pButtons = m_buttons.data();
        m_skin.pSliders = m_sliders.data();
    }
    const Screen& screen() const { return m_screen; }

    SkinButton& Button(int id) {
        const auto row = std::find_if(m_buttons.begin(), m_buttons.end(),
                                      [id](const SkinButton& button) { return button.nId == id; });
        if (row == m_buttons.end()) throw std::out_of_range("no such button");
        return *row;
    }
    SkinSlider& Slider() { return m_sliders[0]; }

    // A timer's ticks, since the last time when the tests forgot them.
    std::vector<SentMessage> Sent(UINT message) const {
        std::vector<SentMessage> sent;
        if (message != WM_TIMER) return sent;
        const std::vector<platform::Tick>& ticks = platform::Ticks();
        for (std::size_t i = m_sent.seen; i < ticks.size(); ++i) {
            sent.push_back({message, ticks[i].id, 0, ticks[i].tick_ms});
        }
        return sent;
    }

    struct SeenTicks {
        void clear() { seen = platform::Ticks().size(); }
        std::size_t seen = 0;
    };

    CSkin m_skin;
    SeenTicks m_sent;

  private:
    Screen m_screen = {};
    std::vector<SkinButton> m_buttons;
    std::vector<SkinSlider> m_sliders;
};

inline std::string NameOfScreen(const ::testing::TestParamInfo<Screen>& info) {
    return info.param.name;
}
