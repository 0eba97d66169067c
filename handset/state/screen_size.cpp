#include "handset/state/screen_size.h"

#include <algorithm>

#include "handset/base/shell_look.h"
#include "handset/state/handset_state.h"

namespace handset {

std::uint32_t ScreenWidth() {
    return std::clamp(StateDword(L"ScreenWidth", 240), kSmallestScreen, kLargestScreen);
}

std::uint32_t ScreenHeight() {
    return std::clamp(StateDword(L"ScreenHeight", 320), kSmallestScreen, kLargestScreen);
}

std::uint32_t ShellBarHeight() {
    constexpr std::uint32_t kFineDisplay = 480;  // pixels of its shorter side
    return std::min(ScreenWidth(), ScreenHeight()) >= kFineDisplay ? 2 * kUsualBarRows : kUsualBarRows;
}

}  // namespace handset
