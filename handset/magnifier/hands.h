// The pointer and the keys of the user's display, handed to the virtual one.
#pragma once

#include <bitset>

#include "handset/magnifier/x_server.h"

namespace magnifier {

class CHands {
  public:
    CHands(const CXServer& user, const CXServer& shown) : user_(user), shown_(shown) { TakeKeyboard(); }

    // The keyboard there becomes the user's, so that each key stands for itself.
    void TakeKeyboard() const;
    void Move(int x, int y) const;
    void Press(xcb_button_t button, bool down) const;
    void Key(xcb_keycode_t key, bool down);
    // What is held is let go: nobody will see when it is.
    void LetGo();

  private:
    void Fake(int type, int detail, int x, int y) const;

    const CXServer& user_;
    const CXServer& shown_;
    std::bitset<256> held_;
};

}  // namespace magnifier
