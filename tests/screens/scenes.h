// Every screen, dialog, menu and box of the radio, and how one gets there.
#pragma once

#include "tests/screens/stage.h"

namespace screens {

struct Scene {
    const char* name;
    void (*open)(Stage& stage);
    bool goesOn = false;  // the next scene goes on from here
    bool turns = false;   // a dialog, which is laid out again when the display turns
    bool hosts = false;   // the host's own dialog: it is opened and left, and lays itself out as it will
};

// In the order in which they can follow one another.
const std::vector<Scene>& Scenes();

}  // namespace screens
