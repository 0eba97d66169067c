#include "tests/screens/picture.h"

#include <utility>

#include "handset/phone/png_file.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/screen_picture.h"
#include "tests/support/wait.h"

namespace screens {
namespace {

// The shell's bar looks for its title five times a second.
constexpr DWORD kBetweenLooks_ms = 250, kRests_ms = 2500;

}  // namespace

Picture PictureOf(const RECT& area) {
    return {area.right - area.left, area.bottom - area.top, test::PictureOf(area)};
}

void TakePicture(const RECT& area, const std::wstring& file) {
    test::ScreenPicture before;
    test::WaitFor(
        [&] {
            test::ScreenPicture now = test::PictureOf(area);
            const bool rests = now == before;
            before = std::move(now);
            if (!rests) Sleep(kBetweenLooks_ms);
            return rests;
        },
        kRests_ms);
    test::WriteWholeFile(file, panel::PngOf(before.data(), area.right - area.left, area.bottom - area.top));
}

}  // namespace screens
