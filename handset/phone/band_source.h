// What the strip of the band is drawn from: the tuner's own figures, and the band file. One thread at a time.
#pragma once

#include <windows.h>

#include "handset/phone/band_strip.h"

namespace panel {

class CBandSource {
  public:
    // As it is now. `radio`: whether one runs; without it nothing is tuned.
    BandShown Look(bool radio);

  private:
    void ReadFile();

    // The file is read again when it is another one than before.
    FILETIME written_{};
    DWORD size_ = 0;
    bool read_ = false;
    fm::Band band_;
};

}  // namespace panel
