// Taking a handset away again: its files and its state.
#pragma once

#include <string>
#include <vector>

namespace panel {

// Notes that this very folder, which is the device root now, belongs to the handset alone when there was
// nothing in it yet, or when it is the usual one; only such a folder is ever removed. Call it before anything
// is laid there.
void ClaimDeviceRoot();

struct RemovalReport {
    std::wstring fault;              // empty when everything went well
    std::vector<std::wstring> kept;  // host paths of the recordings that stay
    bool rootLeft = false;           // the folder was not the handset's own and stays as it is
};

// Removes the device root and the state key. Sound files, and what lies in \My Documents and on the storage
// card, stay unless `recordingsToo`. Nothing of the handset may run.
RemovalReport RemoveHandset(bool recordingsToo);

}  // namespace panel
