// Looking for pins of filters.
#pragma once

#include <vector>

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"

namespace capture {

struct PinQuery {
    PIN_DIRECTION direction = PINDIR_OUTPUT;
    const GUID* category = nullptr;   // none: any
    const GUID* majorType = nullptr;  // none: any
    bool unconnected = false;
};

// The pins of a filter that fit, in the filter's order.
std::vector<CRef<IPin>> FindPins(IBaseFilter* filter, const PinQuery& query);
// True when a pin fits.
bool PinFits(IPin* pin, const PinQuery& query);

}  // namespace capture
