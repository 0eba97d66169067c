// A handset on which scenes are set up one after another: the radio is brought somewhere, looked at, and
// brought back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/screens/screen_judge.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"

namespace screens {

struct Shape {
    const char* name;
    int width, height;  // of the display, in pixels
};

// A name of the user's own that no field has room for: it ends in dots.
inline constexpr char kLongName[] = "Radio Mountain Valley and Lake";

// Handset seconds per second: what is waited for comes sooner.
inline constexpr std::uint32_t kHurry = 4;

class Stage {
  public:
    // Lists, bookings and a band, as a phone has them that is in use.
    Stage(test::HandsetUnderTest& handset, const Shape& shape);

    test::HandsetUnderTest& handset;
    const Shape shape;

    // The radio with this command line, tuned to 98.5 MHz unless it says otherwise; one that runs goes first.
    void Start(const std::wstring& arguments = L"-Rec -Channel 9850");
    void Stop();
    // The one that runs already, if it may stay, or else a new one.
    void Listen();
    test::Radio& radio() { return *radio_; }
    void Click(WORD element) const;       // an element of the main screen
    void TapElement(WORD element) const;  // the stylus on it, where its looks count
    void Tune(const std::string& digits, const char* shown);
    // The display becomes one of these sides while something is open.
    void Reshape(int width, int height);
    void Handset(const std::wstring& arguments) const;

    // The dialog or box that is open above that one, or above the main window.
    HWND Box(HWND below = nullptr);
    // The uppermost of so many menus that are open.
    HWND Menu(std::size_t open = 1) const;
    // Until a text has been drawn on the main screen since the scene began. A row of its list does not count.
    void AwaitDrawn(const std::string& part);

    // Everything that is open is left, the last first, and what was drawn so far is forgotten.
    void PutAway();
    // What is wrong with what is to be seen now.
    std::vector<std::string> Faults();
    // What of it can hardly be read.
    std::vector<std::string> HardToRead();
    // As a PNG.
    void TakePicture(const std::wstring& file) const;

  private:
    void Read();
    void AwaitPainted() const;
    std::vector<HWND> Opened() const;
    Display DisplayNow() const;

    std::optional<test::Radio> radio_;
    std::wstring arguments_;
    SIZE display_;
    std::vector<Item> now_, drawn_;
};

}  // namespace screens
