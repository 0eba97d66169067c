#include "handset/state/screen_size.h"

#include <algorithm>

#include "handset/base/shell_look.h"
#include "handset/state/handset_state.h"
#include "handset/state/write_count.h"

namespace handset {
namespace {

constexpr wchar_t kWidth[] = L"ScreenWidth";
constexpr wchar_t kHeight[] = L"ScreenHeight";

}  // namespace

std::uint32_t ScreenWidth() {
    return std::clamp(CountedStateDword(kWidth, 240), kSmallestScreen, kLargestScreen);
}

std::uint32_t ScreenHeight() {
    return std::clamp(CountedStateDword(kHeight, 320), kSmallestScreen, kLargestScreen);
}

bool SetScreenSize(std::uint32_t width, std::uint32_t height) {
    const CCountedWrite write;
    return SetStateDword(kWidth, width) && SetStateDword(kHeight, height);
}

std::uint32_t ShellBarHeight() {
    constexpr std::uint32_t kFineDisplay = 480;  // pixels of its shorter side
    return std::min(ScreenWidth(), ScreenHeight()) >= kFineDisplay ? 2 * kUsualBarRows : kUsualBarRows;
}

}  // namespace handset
