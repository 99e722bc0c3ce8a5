// Folders of the user, and opening files with the desktop's programs.
#include "editor/user_folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

/// An environment variable for the time of a test.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before;
        ::setenv(name, value.c_str(), 1);
    }
    ~Variable() { ::setenv(name_, before_.c_str(), 1); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::string before_;
};

TEST(UserFolders, FollowTheUsersSettings) {
    const Variable home("HOME", "/home/somebody");
    {
        const Variable data("XDG_DATA_HOME", "/elsewhere");
        EXPECT_EQ(userDataFolder(), "/elsewhere/korvantide");
    }
    const Variable data("XDG_DATA_HOME", "relative paths do not count");
    EXPECT_EQ(userDataFolder(), "/home/somebody/.local/share/korvantide");
}

TEST(UserFolders, ManualIsBesideTheProgramOrInTheDataOfItsTree) {
    EXPECT_TRUE(std::filesystem::exists(programFolder() + "/editor_tests"));
    const TemporaryFolder tree;
    const std::string bin = tree.file("bin"), page = "/scripting_manual/index.html";
    std::filesystem::create_directories(bin + "/scripting_manual");
    std::filesystem::create_directories(tree.file("share/korvantide/scripting_manual"));
    writeFile(tree.file("share/korvantide") + page, "shared");
    EXPECT_EQ(readFile(manualPage(bin)), "shared");
    writeFile(bin + page, "beside");
    EXPECT_EQ(readFile(manualPage(bin)), "beside");
    EXPECT_EQ(absolutePath("/a"), "/a");
    EXPECT_EQ(absolutePath("a"), std::filesystem::current_path().string() + "/a");
}

TEST(UserFolders, DesktopGetsThePathAsOneArgumentAndNoShellReadsIt) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > \"$OUTPUT\"\n");
    ::chmod(folder.file("xdg-open").c_str(), 0755);
    const Variable path("PATH", folder.path().string() + ":/bin:/usr/bin");
    const Variable output("OUTPUT", folder.file("argument"));
    const std::string page = folder.file("a\"; touch pwned; $(touch pwned) '.html");
    EXPECT_FALSE(openWithDesktop(page));  // there is no such file
    writeFile(page, "x");
    EXPECT_TRUE(openWithDesktop(page));
    EXPECT_EQ(readFile(folder.path() / "argument"), page);
    EXPECT_FALSE(std::filesystem::exists("pwned"));
    writeFile(folder.path() / "xdg-open", "#!/bin/sh\nexit 3\n");
    EXPECT_FALSE(openWithDesktop(page));
}

}  // namespace
}  // namespace korvant::test
