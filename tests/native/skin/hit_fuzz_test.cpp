// A million touches anywhere, in any order, on screens of every kind: whatever the stylus does, the rows stay
// ones that can be painted, and a timer runs for exactly the repeating keys that are held.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "skin/hit_test.h"
#include "skin/skin_rows.h"
#include "tests/native/fuzz_inputs.h"
#include "tests/native/skin/stand_ins/platform.h"
#include "tests/unit/skin/layout.h"

namespace {

constexpr std::uint64_t kTouches = 1'000'000;

class TouchedSkin {
  public:
    explicit TouchedSkin(unsigned seed) : m_random(seed) {
        const SkinTables tables = MainScreenTables();
        m_buttons.assign(tables.pButtons, tables.pButtons + tables.nButtons);
        m_sliders.assign(tables.pSliders, tables.pSliders + tables.nSliders);
        // A second slider, upright, so that both axes are walked.
        m_sliders.push_back(m_sliders[0]);
        m_sliders[1].nId = 299;
        m_sliders[1].nOrientation = kSliderVertical;
        m_sliders[1].portrait = m_sliders[1].landscape = {{5, 20, 18, 90}, 18, 13};
        static_cast<SkinTables&>(m_skin) = tables;
        m_skin.pButtons = m_buttons.data();
        m_skin.pSliders = m_sliders.data();
        m_skin.nSliders = 2;
        platform::StopTimers();
    }

    // One touch; what is wrong after it, or null.
    const char* Touch() {
        if (Below(1000) == 0) Turn();
        if (Below(200) == 0) Disable();
        const POINT at = AnyPoint();
        const UINT message = kMessages[Below(kMessages.size())];
        m_before = m_buttons;
        int button = -7, slider = -7;
        const int buttonId = HitTestButtons(m_skin, at.x, at.y, message, &button);
        const int sliderId = HitTestSlider(m_skin, at.x, at.y, message, &slider);
        if (!Names(m_buttons, buttonId, button)) return "the button's row is not the one that was named";
        if (!Names(m_sliders, sliderId, slider)) return "the slider's row is not the one that was named";
        if (!IsStylusMessage(message) && Changed() != 0) return "another message changed a button";
        if (Changed() > 1) return "one touch changed two buttons";
        m_hits += buttonId != kNoHit;
        return BrokenRow();
    }
    std::uint64_t Hits() const { return m_hits; }

  private:
    static constexpr std::array<UINT, 5> kMessages = {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_NULL,
                                                      WM_LBUTTONDBLCLK};

    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_random() % limit); }

    void Turn() {
        const Screen& screen = kScreens[Below(std::size(kScreens))];
        platform::UseScreen(screen.cx, screen.cy);
    }
    // Only a released key is greyed, and a grey one comes back.
    void Disable() {
        SkinButton& button = m_buttons[Below(m_buttons.size())];
        if (button.dwLook == kLookReleased || button.dwLook == kLookDisabled)
            button.dwLook ^= kLookReleased | kLookDisabled;
    }
    // Half of the points on or beside an element, the others as far away as a message can say.
    POINT AnyPoint() {
        if (Below(2) == 0) {
            return {static_cast<std::int16_t>(m_random()), static_cast<std::int16_t>(m_random())};
        }
        const SkinScreen screen = CurrentScreen();
        const SkinRect rect = Below(2) == 0 ? PlaceOf(m_buttons[Below(m_buttons.size())], screen).rect
                                            : PlaceOf(m_sliders[Below(m_sliders.size())], screen).track;
        const auto along = [this](int start, int length) {
            return start - 2 + static_cast<int>(Below(static_cast<std::size_t>(length) + 4));
        };
        return {along(rect.x, rect.cx), along(rect.y, rect.cy)};
    }

    template <typename Row>
    static bool Names(const std::vector<Row>& rows, int id, int index) {
        if (id == kNoHit) return index == static_cast<int>(rows.size());
        return index >= 0 && index < static_cast<int>(rows.size()) &&
               rows[static_cast<std::size_t>(index)].nId == id;
    }
    int Changed() const {
        int changed = 0;
        for (std::size_t i = 0; i < m_buttons.size(); ++i) {
            changed += m_buttons[i].dwLook != m_before[i].dwLook || m_buttons[i].nFrame != m_before[i].nFrame;
        }
        return changed;
    }
    const char* BrokenRow() const {
        std::set<UINT_PTR> held;
        for (const SkinButton& button : m_buttons) {
            const bool states = (button.dwKind & kButtonHasStates) != 0;
            if (states && (button.nFrame < 0 || button.nFrame >= button.nFrames))
                return "a frame that there is not";
            if (!states && button.nFrame != kNoFrame) return "a frame of a key that has none";
            const bool pressed = (button.dwLook & (kLookPressed | kLookSlidOnto)) != 0;
            if (pressed && (button.dwKind & kButtonRepeats) != 0)
                held.insert(static_cast<UINT_PTR>(button.nId));
        }
        if (platform::Timers() != held) return "the timers are not those of the held keys";
        for (const SkinSlider& slider : m_sliders) {
            if (slider.nPos < 0 || slider.nPos > FarthestPos(slider, CurrentScreen()))
                return "a thumb off its track";
        }
        return nullptr;
    }

    std::mt19937 m_random;
    CSkin m_skin;
    std::vector<SkinButton> m_buttons, m_before;
    std::vector<SkinSlider> m_sliders;
    std::uint64_t m_hits = 0;
};

TEST(HitFuzz, AMillionTouchesAnywhereKeepTheRowsPaintableAndTheTimersThoseOfTheHeldKeys) {
    const std::uint64_t touches = test::FuzzInputs(kTouches);
    TouchedSkin skin(20260104);
    for (std::uint64_t i = 0; i < touches; ++i) {
        const char* broken = skin.Touch();
        ASSERT_EQ(broken, nullptr) << broken << ", touch " << i;
    }
    EXPECT_GT(skin.Hits(), touches / 20) << "hardly any touch met a key: the test has become an empty one";
}

}  // namespace
