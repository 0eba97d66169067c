#include "handset/state/screen_size.h"

#include <algorithm>

#include "handset/state/handset_state.h"

namespace handset {

std::uint32_t ScreenWidth() {
    return std::clamp(StateDword(L"ScreenWidth", 240), kSmallestScreen, kLargestScreen);
}

std::uint32_t ScreenHeight() {
    return std::clamp(StateDword(L"ScreenHeight", 320), kSmallestScreen, kLargestScreen);
}

}  // namespace handset
