// Where this user's data is kept.
#include <gtest/gtest.h>

#include "base/system/user_folders.h"
#include "support/desktop.h"

namespace korvant::test {
namespace {

TEST(UserFolders, FollowTheUsersSettings) {
    EXPECT_TRUE(userDataFolder().ends_with("\\KorvantIDE")) << userDataFolder();
    {
        const Variable data("LOCALAPPDATA", "D:\\Caf\xE9");  // the system's own encoding
        EXPECT_TRUE(userDataFolder().starts_with("D:\\Caf")) << userDataFolder();
    }
    const Variable data("LOCALAPPDATA", "relative paths do not count");
    EXPECT_TRUE(userDataFolder().ends_with("\\AppData\\Local\\KorvantIDE")) << userDataFolder();
}

TEST(UserFolders, PathsOnEveryDriveAreAbsolute) {
    for (const char* path : {"C:\\a", "z:/b", "\\\\server\\share\\c"})
        EXPECT_EQ(absolutePath(path), path);
}

}  // namespace
}  // namespace korvant::test
