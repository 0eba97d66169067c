// The window on the user's display in which the virtual one is seen, each of its pixels times × times large.
#pragma once

#include <cstdint>
#include <vector>

#include "handset/magnifier/framebuffer.h"
#include "handset/magnifier/hands.h"
#include "handset/magnifier/x_server.h"

namespace magnifier {

class CLookingGlass {
  public:
    CLookingGlass(const CXServer& user, const Framebuffer& picture, int times, CHands& hands);

    // Whether the user's display has the pixels of the virtual one.
    [[nodiscard]] bool Fits() const;
    void Open(const char* title);
    // What the user did; false once the window was closed.
    bool Serve();
    // Shows what has changed since the last time.
    void Refresh();

  private:
    void Show(int top, int rows);
    void ShowAgain() { seen_.assign(seen_.size(), 0), seenAny_ = false; }
    bool Take(const xcb_generic_event_t& event);
    [[nodiscard]] xcb_atom_t Atom(const char* name) const;

    const CXServer& user_;
    const Framebuffer picture_;
    const int times_;
    CHands& hands_;
    xcb_window_t window_ = 0;
    xcb_gcontext_t gc_ = 0;
    xcb_atom_t close_ = 0;
    bool seenAny_ = false;
    std::vector<std::uint8_t> seen_;       // the picture as it was shown last
    std::vector<std::uint32_t> enlarged_;  // a band of it
};

}  // namespace magnifier
