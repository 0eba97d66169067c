// The window of the magnifier.
#include "handset/magnifier/looking_glass.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace magnifier {
namespace {

// Rows of the virtual display that are looked at and sent together; the largest of them is far below what a
// server takes at once.
constexpr int kBandRows = 16;
constexpr std::uint8_t kDepth = 24;

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_KEY_PRESS |
                                  XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
                                  XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION |
                                  XCB_EVENT_MASK_FOCUS_CHANGE;

template <typename Event>
const Event& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

}  // namespace

CLookingGlass::CLookingGlass(const CXServer& user, const Framebuffer& picture, int times, CHands& hands)
    : user_(user), picture_(picture), times_(times), hands_(hands) {
    seen_.resize(picture.stride * static_cast<std::size_t>(picture.height));
    enlarged_.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(times) * kBandRows *
                     static_cast<std::size_t>(times));
}

bool CLookingGlass::Fits() const {
    return user_.Screen().root_depth == kDepth && user_.Setup().image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
}

xcb_atom_t CLookingGlass::Atom(const char* name) const {
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        user_.get(), xcb_intern_atom(user_.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void CLookingGlass::Open(const char* title) {
    xcb_connection_t* const x = user_.get();
    const auto width = static_cast<std::uint16_t>(picture_.width * times_);
    const auto height = static_cast<std::uint16_t>(picture_.height * times_);
    window_ = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, user_.Screen().root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &kEvents);
    gc_ = xcb_generate_id(x);
    xcb_create_gc(x, gc_, window_, 0, nullptr);
    close_ = Atom("WM_DELETE_WINDOW");
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, Atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1,
                        &close_);
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(std::strlen(title)), title);
    // Neither smaller nor larger (ICCCM 4.1.2.3): a pixel is a square of whole pixels.
    const std::uint32_t kMinimumAndMaximum = 1U << 4 | 1U << 5;
    const std::uint32_t hints[18] = {kMinimumAndMaximum, 0, 0, 0, 0, width, height, width, height};
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS,
                        32, 18, hints);
    xcb_map_window(x, window_);
    xcb_flush(x);
}

bool CLookingGlass::Take(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_EXPOSE:
            ShowAgain();
            return true;
        case XCB_MAPPING_NOTIFY:
            hands_.TakeKeyboard();
            return true;
        case XCB_FOCUS_OUT:
            hands_.LetGo();
            return true;
        case XCB_CLIENT_MESSAGE:
            return As<xcb_client_message_event_t>(event).data.data32[0] != close_;
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE: {
            const auto& key = As<xcb_key_press_event_t>(event);
            hands_.Key(key.detail, key.response_type == XCB_KEY_PRESS);
            return true;
        }
        case XCB_MOTION_NOTIFY:
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE: {
            const auto& pointer = As<xcb_button_press_event_t>(event);
            hands_.Move(pointer.event_x / times_, pointer.event_y / times_);
            if (pointer.response_type != XCB_MOTION_NOTIFY)
                hands_.Press(pointer.detail, pointer.response_type == XCB_BUTTON_PRESS);
            return true;
        }
        default:
            return true;
    }
}

bool CLookingGlass::Serve() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(user_.get())}) {
        if (!Take(*event)) return false;
    }
    return true;
}

void CLookingGlass::Refresh() {
    for (int top = 0; top < picture_.height; top += kBandRows) {
        const int rows = std::min(kBandRows, picture_.height - top);
        const std::size_t at = picture_.stride * static_cast<std::size_t>(top);
        const std::size_t size = picture_.stride * static_cast<std::size_t>(rows);
        if (seenAny_ && std::memcmp(seen_.data() + at, picture_.pixels + at, size) == 0) continue;
        std::memcpy(seen_.data() + at, picture_.pixels + at, size);
        Show(top, rows);
    }
    seenAny_ = true;
    xcb_flush(user_.get());
}

void CLookingGlass::Show(int top, int rows) {
    // From the copy: the virtual display goes on drawing.
    const Framebuffer copy = {picture_.width, picture_.height, seen_.data(), picture_.stride};
    Enlarge(copy, top, rows, times_, enlarged_.data());
    const auto width = static_cast<std::uint16_t>(picture_.width * times_);
    const auto height = static_cast<std::uint16_t>(rows * times_);
    xcb_put_image(user_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, gc_, width, height, 0,
                  static_cast<std::int16_t>(top * times_), 0, kDepth,
                  std::uint32_t{width} * height * sizeof(std::uint32_t),
                  reinterpret_cast<const std::uint8_t*>(enlarged_.data()));
}

}  // namespace magnifier
