// What the main screen asks of its pictures: the tests' own copy of the buttons' and text fields' places.
#pragma once

#include <vector>

#include "tests/unit/resources/picture.h"

struct Place {
    int x, y, cx, cy;
};

struct ButtonPlace {
    Place rect;
    int xSource;  // of the pressed picture in the strip; frames start at 0
    int xDisabled;
};

struct Button {
    int id;
    int frames;  // 0 for a key that has only a pressed picture
    unsigned portraitStrip, landscapeStrip;
    ButtonPlace portrait, landscape;
};

struct TextField {
    int id;
    Place portrait, landscape;
    Colour colour;
};

const std::vector<Button>& Buttons();
const std::vector<TextField>& TextFields();
