// Paths as people write and read them.
#include "handset/controls/host_folder.h"

#include <gtest/gtest.h>

namespace panel {
namespace {

TEST(SaidPaths, OfTheUnixDriveAreUnixPathsAgainAndOthersStay) {
    EXPECT_EQ(SaidPath(L"C:\\Users\\me\\lists.json"), L"C:\\Users\\me\\lists.json");
    EXPECT_EQ(SaidPath(L"\\\\server\\share"), L"\\\\server\\share");
    EXPECT_EQ(SaidPath(L""), L"");
    if (!OnWine()) {
        EXPECT_EQ(SaidPath(L"Z:\\music\\lists.json"), L"Z:\\music\\lists.json");
        return;
    }
    EXPECT_EQ(SaidPath(FullHostPath(L"/home/me/my lists.json")), L"/home/me/my lists.json");
    EXPECT_EQ(SaidPath(L"z:\\"), L"/");
}

}  // namespace
}  // namespace panel
