// Tells when anything in the device's registry changes, whichever process changed it.
#pragma once

#include <windows.h>

#include "handset/aygshell/owned.h"

namespace handset {

// One watch over the whole of the device's registry. To be armed and waited for on one and the same thread:
// the host ends a notification with the thread that asked for it.
class RegistryWatcher {
  public:
    RegistryWatcher();

    // Asks for the next change; everything that changes from now on sets the event. False when the registry
    // cannot be watched.
    bool Arm();
    // Auto-reset.
    HANDLE Changed() const { return changed_.get(); }

  private:
    bool Open();

    OwnedHandle changed_;
    OwnedKey registry_;
};

}  // namespace handset
