// What may happen to a radio in a phone, in random order: signals, calls, the display, windows in front.
#pragma once

#include <windows.h>

#include <random>

#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"

namespace test {

// Stores the preset favourites as channels, as the start of the radio with "Kora.vol" does. Before a radio
// runs.
void StoreFavourites(HandsetUnderTest& handset);

class RandomDay {
  public:
    // Every setting of the radio is switched on. The same seed brings the same day.
    RandomDay(HandsetUnderTest& handset, Radio& radio, unsigned seed);
    RandomDay(const RandomDay&) = delete;
    RandomDay& operator=(const RandomDay&) = delete;

    // One event; a box that the radio shows is answered first.
    void Step();
    // Back to the start: a good signal, no call, the display on, the window in front, no box.
    void Calm();
    // Rounds of the monitor since the radio was started. Reads the tuner's log on from where it was.
    long Rounds();

  private:
    void ChangeSignal();
    void ChangeCall();
    void ToggleDisplay();
    void ToggleActivation();
    void Tune();
    void AnswerBoxes();
    unsigned Below(unsigned end) { return std::uniform_int_distribution<unsigned>(0, end - 1)(m_random); }

    HandsetUnderTest& m_handset;
    Radio& m_radio;
    std::mt19937 m_random;
    bool m_active = true;
    bool m_dark = false;
    LONGLONG m_read = 0;  // bytes of the tuner's log
    std::string m_rest;   // a line that was not whole yet
    long m_rounds = 0;
};

}  // namespace test
