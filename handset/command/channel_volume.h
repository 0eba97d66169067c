// The phone's volume of channel lists, opened beside the radio that may be using it.
#pragma once

#include <string>

#include "handset/coredll/cedb/windows_collator.h"
#include "handset/lists/list_store.h"

namespace panel {

class CChannelVolume {
  public:
    CChannelVolume() = default;
    ~CChannelVolume();
    CChannelVolume(const CChannelVolume&) = delete;
    CChannelVolume& operator=(const CChannelVolume&) = delete;

    enum class When { kMissingIsAFault, kMissingIsMade };
    // Why it could not be opened; empty when it was.
    std::wstring Open(When when);
    cedb::CVolume& operator*() { return volume_; }

  private:
    cedb::CWindowsCollator collator_;
    cedb::CVolume volume_{collator_};
    bool open_ = false;
};

// What went wrong with the store, for a person; empty for Ok.
std::wstring StoreFault(cedb::Status status);

}  // namespace panel
