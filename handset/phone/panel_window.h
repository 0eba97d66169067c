// The panel's window: the phone drawn around the display, and its switches.
#pragma once

#include <windows.h>

#include <atomic>
#include <bitset>
#include <optional>

#include "handset/phone/band_source.h"
#include "handset/phone/keyboard_watch.h"
#include "handset/phone/panel_hints.h"
#include "handset/phone/panel_picture.h"
#include "handset/phone/radio_follow.h"

namespace panel {

// State values: where the panel was put last, pixels of the host's screen.
inline constexpr wchar_t kPlaceX[] = L"PanelX", kPlaceY[] = L"PanelY";

class CPanelWindow {
  public:
    // Creates and shows the window without taking the focus from anybody; false when the system refuses.
    bool Open(HINSTANCE instance);
    // Runs until the window is closed; true when its close button did it.
    bool Run();

  private:
    // Posted for a key of the computer: wParam its code, lParam how it was pressed.
    static constexpr UINT kKeyMessage = WM_APP + 1;

    struct MessageRow;
    struct FocusKey;
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

    LRESULT OnPaint(WPARAM, LPARAM);
    LRESULT OnPress(WPARAM, LPARAM lParam);
    LRESULT OnStylusMove(WPARAM, LPARAM lParam);
    LRESULT OnLetGo(WPARAM, LPARAM lParam);
    LRESULT OnCaptureLost(WPARAM, LPARAM);
    LRESULT OnTimer(WPARAM timer, LPARAM);
    LRESULT OnMoved(WPARAM, LPARAM);
    LRESULT OnDesktopChanged(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnMouseActivate(WPARAM, LPARAM);
    LRESULT OnEraseBackground(WPARAM, LPARAM);
    LRESULT OnComputerKey(WPARAM virtualKey, LPARAM with);

    // A key of the computer as it comes, on the watching thread: whether it is the panel's, and kept from the
    // windows.
    [[nodiscard]] bool WantsKey(const ComputerKey& key) const;
    bool TakeKey(const ComputerKey& key);
    // What the keys do while they are for the switches.
    static const FocusKey* FocusKeyFor(WORD virtualKey);
    void WalkOn(const ComputerKey& key);
    void MoveOrWalk(const ComputerKey& key);
    void MoveOrSlide(const ComputerKey& key);
    void PressFocused(const ComputerKey& key);
    void LeaveSwitches(const ComputerKey& key);
    void MovePanel(int dx, int dy);
    void HoldKeyboard(bool radioBefore);
    void PutAway();

    // Reads the state again and draws what has changed.
    void Refresh();
    void Redraw();
    void FitToScreen();
    void ShowDarkness();
    void ReleaseKey();
    void RepeatKey();
    void DragSlider(int x);
    void DragPanel(int x, int y);
    void KeepPlace() const;
    void TuneAt(int x, int y);
    // Moves the window so that it lies on the host's screen, or as much of it as has room there.
    void KeepOnScreen();
    [[nodiscard]] RECT DisplayOnScreen() const;

    HWND window_ = nullptr;
    HWND darkness_ = nullptr;  // lies over the radio's windows while the display is dark
    UINT displayOriginMessage_ = 0, stateChangedMessage_ = 0;
    PanelView view_{};
    std::optional<POINT> grip_;   // while the panel is dragged: where it is held, from its corner
    std::uint32_t weakened_ = 0;  // while the slider is dragged: the station that it is for
    bool tuning_ = false;         // the band was pressed and not let go yet
    bool closing_ = false;        // the close button was pressed and not let go yet
    bool putAway_ = false;        // by the close button, not by a program
    std::size_t lastFocus_ = 0;   // where the keys were the last time
    bool stale_ = false;          // the picture is to be made anew before it is shown
    CPanelPicture picture_;
    CPanelHints hints_;
    CRadioFollow follow_;
    CBandSource band_;
    // Of the watching thread: what is held of the keys that were taken. And, for both, whether the keys are
    // for the switches, which a key has to know before the panel has come to the one before it.
    std::bitset<256> heldKeys_;
    std::atomic<bool> onSwitches_ = false;
    // Last: its thread ends before anything else goes.
    std::optional<CKeyboardWatch> keyboard_;
};

// Opens the panel and, when asked to, starts the radio on it; returns when the panel is closed: 0, or 1 when
// the system gave no window.
int RunPanel(bool withRadio);

}  // namespace panel
