// The phone's keys in a dialog. It has arrows and Return, and neither Tab nor a space bar: what the host's
// dialogs leave to those two, the arrows and Return do as well.
//
// An arrow that a control makes nothing of moves the focus: up and left to the control before, down and right
// to the next one, round and round. Return presses a check box or a radio button, and activates the row of a
// list whose rows a touch activates.
#pragma once

namespace coredll {

// While it lives, in the dialogs of the calling thread.
class CDialogKeys {
  public:
    CDialogKeys();
    ~CDialogKeys();
    CDialogKeys(const CDialogKeys&) = delete;
    CDialogKeys& operator=(const CDialogKeys&) = delete;
};

}  // namespace coredll
