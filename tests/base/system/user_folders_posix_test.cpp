// Where the desktop's rules and an installation put things, and what a failing opener says.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/system/user_folders.h"
#include "support/desktop.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

TEST(UserFolders, FollowTheUsersSettings) {
    const Variable home("HOME", "/home/somebody");
    {
        const Variable data("XDG_DATA_HOME", "/elsewhere");
        EXPECT_EQ(userDataFolder(), "/elsewhere/korvantide");
    }
    const Variable data("XDG_DATA_HOME", "relative paths do not count");
    EXPECT_EQ(userDataFolder(), "/home/somebody/.local/share/korvantide");
}

TEST(UserFolders, ManualIsInTheDataOfTheProgramsTree) {
    EXPECT_TRUE(std::filesystem::exists(programFolder() + "/editor_tests"));
    const TemporaryFolder tree;
    std::filesystem::create_directories(tree.file("bin"));
    std::filesystem::create_directories(tree.file("share/korvantide/scripting_manual"));
    writeFile(tree.file("share/korvantide/scripting_manual/index.html"), "shared");
    EXPECT_EQ(readFile(manualPage(tree.file("bin"))), "shared");
}

TEST(UserFolders, NoShellReadsThePathAndAFailureIsTold) {
    const TemporaryFolder folder;
    const PageProgram program(folder.path());
    const std::string page = folder.file("a\"; touch pwned; $(touch pwned) '.html");
    writeFile(page, "x");
    EXPECT_TRUE(openWithDesktop(page));
    EXPECT_EQ(program.opened(), page);
    EXPECT_FALSE(std::filesystem::exists("pwned"));
    writeFile(folder.path() / "xdg-open", "#!/bin/sh\nexit 3\n");
    EXPECT_FALSE(openWithDesktop(page));
}

}  // namespace
}  // namespace korvant::test
