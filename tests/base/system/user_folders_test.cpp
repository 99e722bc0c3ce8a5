// Folders of the user and of the program, and opening files with the desktop's programs.
#include "base/system/user_folders.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "support/desktop.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

TEST(UserFolders, ManualBesideTheProgramIsFound) {
    const TemporaryFolder tree;
    const std::string bin = tree.file("bin");
    std::filesystem::create_directories(bin + "/scripting_manual");
    writeFile(bin + "/scripting_manual/index.html", "beside");
    EXPECT_EQ(readFile(manualPage(bin)), "beside");
    EXPECT_EQ(std::filesystem::path(programFolder()).filename(), "bin");
}

TEST(UserFolders, PathsAreMadeAbsoluteOnce) {
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(absolutePath(here), here);
    EXPECT_EQ(absolutePath("a"), (std::filesystem::current_path() / "a").string());
}

TEST(UserFolders, DesktopGetsThePathAsOneArgument) {
    const TemporaryFolder folder;
    const PageProgram program(folder.path());
    for (const char* name : {"plain.html", "a; touch $(b) 'c' & (d) +e.html"}) {
        const std::string page = (folder.path() / name).string();
        EXPECT_FALSE(openWithDesktop(page)) << "there is no such file";
        writeFile(page, "x");
        ASSERT_TRUE(openWithDesktop(page));
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (program.opened() != page && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_EQ(program.opened(), page);
    }
}

TEST(UserFolders, APlaceInAPageIsOpened) {
    const TemporaryFolder folder;
    const PageProgram program(folder.path());
    const std::string page = folder.file("100% of a #1 page.html");
    writeFile(page, "x");
    ASSERT_TRUE(openWithDesktop(page + "#StrFind"));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!program.opened().ends_with("#StrFind") && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_TRUE(program.opened().starts_with("file:///")) << program.opened();
    EXPECT_TRUE(program.opened().ends_with("/100%25%20of%20a%20%231%20page.html#StrFind"))
        << program.opened();
}

}  // namespace
}  // namespace korvant::test
