// Saving with modes, attributes, links and devices, as only some systems have them.
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>

#include "safe_save_fixture.h"

namespace korvant::test {
namespace {

class SavingSpecialFiles : public SafeSaving {
  protected:
    mode_t modeOf(const std::string& file) {
        struct stat found {};
        EXPECT_EQ(::stat(file.c_str(), &found), 0);
        return found.st_mode & 07777;
    }
};

TEST_F(SavingSpecialFiles, ModeAndExtendedAttributesStay) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0751), 0);
    const bool attributes = ::setxattr(path.c_str(), "user.note", "kept", 4, 0) == 0;
    EXPECT_EQ(save(systemFiles(), path, "new").failure, SaveFailure::none);
    EXPECT_EQ(modeOf(path), 0751u);
    char value[8] = "";
    EXPECT_EQ(::getxattr(path.c_str(), "user.note", value, sizeof value), attributes ? 4 : -1);
}

TEST_F(SavingSpecialFiles, ANewFileGetsTheUsualMode) {
    const mode_t mask = ::umask(022);
    EXPECT_EQ(save(systemFiles(), path, "new").failure, SaveFailure::none);
    ::umask(mask);
    EXPECT_EQ(modeOf(path), 0644u);
}

TEST_F(SavingSpecialFiles, SymbolicLinksAreWrittenThrough) {
    const std::string link = folder.file("link.as");
    const std::string second = folder.file("second.as");
    writeFile(path, "old");
    ASSERT_EQ(::symlink("a.as", link.c_str()), 0);
    ASSERT_EQ(::symlink(link.c_str(), second.c_str()), 0);
    EXPECT_EQ(save(systemFiles(), second, "new").failure, SaveFailure::none);
    EXPECT_EQ(readFile(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link) && std::filesystem::is_symlink(second));
    const std::string dangling = folder.file("dangling.as");
    ASSERT_EQ(::symlink("target.as", dangling.c_str()), 0);
    EXPECT_EQ(save(systemFiles(), dangling, "made").failure, SaveFailure::none);
    EXPECT_EQ(readFile(folder.file("target.as")), "made");
    ASSERT_EQ(::symlink("loop.as", folder.file("loop.as").c_str()), 0);
    EXPECT_EQ(save(systemFiles(), folder.file("loop.as"), "x").failure, SaveFailure::cannotCreate);
}

TEST_F(SavingSpecialFiles, AttributesThatCannotBeKeptMakeItWriteThrough) {
    writeFile(path, "old");
    struct stat before {};
    ::stat(path.c_str(), &before);
    BrokenFiles files;
    files.call = "copyAttributes";
    files.error = EPERM;
    EXPECT_EQ(save(files, path, "new", markOf(path, true)).failure, SaveFailure::none);
    struct stat after {};
    ::stat(path.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(names(), (std::vector<std::string>{"a.as", "backups"}));
}

TEST_F(SavingSpecialFiles, FoldersDevicesAndPipesAreNoFiles) {
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    for (const std::string& target :
         {folder.path().string(), folder.file("pipe"), std::string("/dev/full")})
        EXPECT_EQ(save(systemFiles(), target, "x").failure, SaveFailure::cannotCreate) << target;
    EXPECT_EQ(save(systemFiles(), "/dev/full/x", "x").failure, SaveFailure::cannotCreate);
    EXPECT_EQ(save(systemFiles(), folder.file("no/such/a.as"), "x").failure,
              SaveFailure::cannotCreate);
}

TEST_F(SavingSpecialFiles, ABackupIsTheUsersAlone) {
    BackupStore backups(systemFiles(), folder.file("backups"));
    std::string kept;
    writeFile(path, "old");
    EXPECT_EQ(backups.keep(path, kept), 0);
    EXPECT_EQ(modeOf(kept), 0600u);
}

}  // namespace
}  // namespace korvant::test
