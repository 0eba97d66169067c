// The pictures of which the panel is made, and where they stand. They are resources of the program, made of
// the drawings in art/.
#pragma once

#include "handset/phone/art_picture.h"
#include "handset/phone/canvas.h"
#include "handset/phone/phone_layout.h"

namespace panel {

enum class Art {
    kDesk,
    kBody,
    kGlass,
    kSpeaker,
    kSpeakerTurned,
    kKeyUp,
    kKeyDown,
    kPad,
    kArrowUp,
    kArrowUpLit,
    kArrowDown,
    kArrowDownLit,
    kArrowLeft,
    kArrowLeftLit,
    kArrowRight,
    kArrowRightLit,
    kReturnUp,
    kReturnDown,
    kSoftSign,
    kSoftSignTurned,
    kCallSign,
    kCallSignTurned,
    kEndSign,
    kEndSignTurned,
    kToggleOff,
    kToggleOffDown,
    kToggleOn,
    kToggleOnDown,
    kButtonUp,
    kButtonDown,
    kButtonLit,
    kTrack,
    kTrackLit,
    kKnob,
    kClose,
    kFocus,
    kBand,
    kTuned,
};

// How a picture stands on the box of the layout that it is for.
struct ArtRow {
    Art art;
    const wchar_t* name;  // of the resource
    // One with corners fits every box: they keep their size, and what is between them is drawn out. 0: the
    // picture stands in the middle of its box, as it is.
    int corner;
    int margin;  // pixels beyond the box, for a shadow; of one with corners
};
const std::vector<ArtRow>& ArtRows();
const ArtPicture& PictureOf(Art art);

void DrawArt(CCanvas& canvas, Art art, const Box& box);

}  // namespace panel
