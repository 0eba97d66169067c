// A window with the main screen's skin on it, on a screen of a given size, with images that belong to the
// tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "skin/skin.h"
#include "tests/unit/skin/layout.h"
#include "tests/unit/skin/picture.h"

struct SentMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD tick_ms;
};

class SkinOnScreen : public ::testing::TestWithParam<Screen> {
  protected:
    SkinOnScreen();
    ~SkinOnScreen() override;
    void SetUp() override;

    // For tests that choose their screen themselves.
    void UseScreen(const Screen& screen);
    const Screen& screen() const { return m_screen; }

    SkinButton& Button(int id);
    SkinSlider& Slider() { return m_sliders[0]; }
    // The test's image in that row of the bitmap table, in the current orientation.
    const Picture& Image(int index) const;

    // The window filled with kUntouched, and what it shows.
    void BlankScreen();
    Picture Shown() const { return Picture::OfWindow(m_skin.hWnd); }
    Picture Blank() const { return Picture(m_screen.cx, m_screen.cy); }
    // Paints with `paint` on the window's device context.
    void Paint(const std::function<void(HDC)>& paint);

    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Stylus(UINT message, int x, int y) { return Send(message, 0, MAKELPARAM(x, y)); }
    std::vector<SentMessage> Sent(UINT message) const;

    CSkin m_skin;
    std::vector<SentMessage> m_sent;  // timers and private messages that reached the window
    bool m_dispatching = false;       // the window hands its messages to SkinWindowProc

  private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void MakeImages();

    Screen m_screen = {};
    std::vector<SkinBitmap> m_bitmaps;
    std::vector<SkinButton> m_buttons;
    std::vector<SkinSlider> m_sliders;
    std::vector<SkinText> m_texts;
    std::vector<Picture> m_images[2];  // by orientation, portrait first
    std::vector<OwnedBitmap> m_handles;
};

// Names the parameterised tests by their screen.
std::string NameOfScreen(const ::testing::TestParamInfo<Screen>& info);
