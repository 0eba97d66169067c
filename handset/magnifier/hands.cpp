// Pointer and keys by the server's test extension.
#include "handset/magnifier/hands.h"

#include <xcb/xtest.h>

#include <algorithm>

namespace magnifier {

void CHands::TakeKeyboard() const {
    const xcb_setup_t& user = user_.Setup();
    const xcb_setup_t& shown = shown_.Setup();
    const xcb_keycode_t first = std::max(user.min_keycode, shown.min_keycode);
    const xcb_keycode_t last = std::min(user.max_keycode, shown.max_keycode);
    const auto count = static_cast<std::uint8_t>(last - first + 1);
    const Reply<xcb_get_keyboard_mapping_reply_t> keys(xcb_get_keyboard_mapping_reply(
        user_.get(), xcb_get_keyboard_mapping(user_.get(), first, count), nullptr));
    if (!keys) return;
    xcb_change_keyboard_mapping(shown_.get(), count, first, keys->keysyms_per_keycode,
                                xcb_get_keyboard_mapping_keysyms(keys.get()));
    xcb_flush(shown_.get());
}

void CHands::Fake(int type, int detail, int x, int y) const {
    xcb_test_fake_input(shown_.get(), static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(detail),
                        XCB_CURRENT_TIME, shown_.Screen().root, static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    xcb_flush(shown_.get());
}

void CHands::Move(int x, int y) const {
    Fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void CHands::Press(xcb_button_t button, bool down) const {
    Fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button, 0, 0);
}

void CHands::Key(xcb_keycode_t key, bool down) {
    held_.set(key, down);
    Fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, 0, 0);
}

void CHands::LetGo() {
    for (std::size_t key = 0; key < held_.size(); ++key) {
        if (held_.test(key)) Key(static_cast<xcb_keycode_t>(key), false);
    }
}

}  // namespace magnifier
