// The phone's volume of channel lists, opened beside the radio that may be using it.
#pragma once

#include <string>

#include "handset/coredll/cedb/windows_collator.h"
#include "handset/lists/list_store.h"

namespace panel {

class ChannelVolume {
  public:
    ChannelVolume() = default;
    ~ChannelVolume();
    ChannelVolume(const ChannelVolume&) = delete;
    ChannelVolume& operator=(const ChannelVolume&) = delete;

    enum class When { kMissingIsAFault, kMissingIsMade };
    // Why it could not be opened; empty when it was.
    std::wstring Open(When when);
    cedb::Volume& operator*() { return volume_; }

  private:
    cedb::WindowsCollator collator_;
    cedb::Volume volume_{collator_};
    bool open_ = false;
};

// What went wrong with the store, for a person; empty for Ok.
std::wstring StoreFault(cedb::Status status);

}  // namespace panel
