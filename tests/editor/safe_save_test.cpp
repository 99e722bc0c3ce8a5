// Saving when the system refuses, breaks off or is interrupted.
#include "editor/safe_save.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <functional>

#include "editor/file_io.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

/// Breaks one call, chosen by name, after a number of good ones.
class BrokenFiles final : public ForwardingFiles {
  public:
    BrokenFiles() : ForwardingFiles(systemFiles()) {}
    std::string call;
    int error = EIO;
    int good = 0;  ///< that many calls succeed first
    int broken = 0;

    int status(const std::string& p, FileStatus& s) override {
        return fails("status") ? error : ForwardingFiles::status(p, s);
    }
    int resolve(const std::string& p, std::string& t) override {
        return fails("resolve") ? error : ForwardingFiles::resolve(p, t);
    }
    int mayWrite(const std::string& p) override {
        return fails("mayWrite") ? error : ForwardingFiles::mayWrite(p);
    }
    int create(const std::string& p, bool secret, Handle& h) override {
        return fails("create") ? error : ForwardingFiles::create(p, secret, h);
    }
    int openWrite(const std::string& p, Handle& h) override {
        return fails("openWrite") ? error : ForwardingFiles::openWrite(p, h);
    }
    std::int64_t read(Handle h, char* b, std::size_t n) override {
        return fails("read") ? -error : ForwardingFiles::read(h, b, n);
    }
    std::int64_t write(Handle h, const char* b, std::size_t n) override {
        return fails("write") ? -error : ForwardingFiles::write(h, b, n);
    }
    int flush(Handle h) override { return fails("flush") ? error : ForwardingFiles::flush(h); }
    int close(Handle h) override {
        const int result = ForwardingFiles::close(h);
        return fails("close") ? error : result;
    }
    int copyAttributes(const std::string& p, Handle h) override {
        return fails("copyAttributes") ? error : ForwardingFiles::copyAttributes(p, h);
    }
    int rename(const std::string& f, const std::string& t) override {
        return fails("rename") ? error : ForwardingFiles::rename(f, t);
    }
    int flushFolder(const std::string& p) override {
        return fails("flushFolder") ? error : ForwardingFiles::flushFolder(p);
    }

  private:
    bool fails(const char* name) {
        if (call != name || good-- > 0) return false;
        ++broken;
        return true;
    }
};

/// Every transfer is short and every other one is interrupted.
class SlowFiles final : public ForwardingFiles {
  public:
    SlowFiles() : ForwardingFiles(systemFiles()) {}
    std::int64_t read(Handle h, char* b, std::size_t n) override {
        return (++calls_ & 1) != 0 ? -EINTR
                                   : ForwardingFiles::read(h, b, std::min<std::size_t>(n, 3));
    }
    std::int64_t write(Handle h, const char* b, std::size_t n) override {
        return (++calls_ & 1) != 0 ? -EINTR
                                   : ForwardingFiles::write(h, b, std::min<std::size_t>(n, 3));
    }

  private:
    int calls_ = 0;
};

class SafeSaving : public ::testing::Test {
  protected:
    SaveResult save(FileOperations& files, const std::string& file, const std::string& bytes,
                    const FileMark& known = {}) {
        BackupStore backups(files, folder.file("backups"));
        return SafeSave(files, backups).write(file, bytes, known);
    }
    FileMark markOf(const std::string& file, bool written) {
        FileMark mark{file, {}, contentHash(readFile(file)), written};
        systemFiles().status(file, mark.status);
        return mark;
    }
    std::vector<std::string> names(const std::string& sub = ".") {
        std::vector<std::string> list;
        systemFiles().list(folder.file(sub), list);
        std::sort(list.begin(), list.end());
        return list;
    }
    mode_t modeOf(const std::string& file) {
        struct stat found {};
        EXPECT_EQ(::stat(file.c_str(), &found), 0);
        return found.st_mode & 07777;
    }
    static std::string readFile(const std::string& file) { return test::readFile(file); }

    TemporaryFolder folder;
    const std::string path = folder.file("a.as");
};

TEST_F(SafeSaving, AFailedSaveLeavesTheOldFileWholeAndNothingBesideIt) {
    struct Case {
        const char* call;
        int error;
        SaveFailure failure;
    };
    const Case cases[] = {{"status", EIO, SaveFailure::cannotCreate},
                          {"resolve", ELOOP, SaveFailure::cannotCreate},
                          {"mayWrite", EACCES, SaveFailure::cannotCreate},
                          {"create", ENOSPC, SaveFailure::cannotCreate},
                          {"write", ENOSPC, SaveFailure::whileWriting},
                          {"write", EIO, SaveFailure::whileWriting},
                          {"flush", EIO, SaveFailure::whileWriting},
                          {"close", EDQUOT, SaveFailure::whileWriting},
                          {"rename", EBUSY, SaveFailure::cannotCreate}};
    for (const Case& row : cases) {
        writeFile(path, "old content");
        BrokenFiles files;
        files.call = row.call;
        files.error = row.error;
        EXPECT_EQ(save(files, path, "new", markOf(path, true)).failure, row.failure) << row.call;
        EXPECT_GT(files.broken, 0) << row.call;
        EXPECT_EQ(readFile(path), "old content") << row.call;
        EXPECT_EQ(names(), (std::vector<std::string>{"a.as"})) << row.call;
    }
}

TEST_F(SafeSaving, AFailureWhileANewFileIsWrittenLeavesNoFile) {
    for (const char* call : {"create", "write", "flush", "rename"}) {
        BrokenFiles files;
        files.call = call;
        EXPECT_NE(save(files, path, "new").failure, SaveFailure::none) << call;
        EXPECT_TRUE(names().empty()) << call;
    }
}

TEST_F(SafeSaving, ShortAndInterruptedTransfersLoseNothing) {
    SlowFiles files;
    const std::string bytes = "a longer text that takes many small writes";
    writeFile(path, "before, in many small reads");
    EXPECT_EQ(save(files, path, bytes).failure, SaveFailure::none);
    EXPECT_EQ(readFile(path), bytes);
    EXPECT_EQ(readFile(folder.file("backups/" + names("backups").at(0))),
              "before, in many small reads");
}

TEST_F(SafeSaving, AFailedFlushOfTheFolderIsNoFailure) {
    BrokenFiles files;
    files.call = "flushFolder";
    EXPECT_EQ(save(files, path, "new").failure, SaveFailure::none);
    EXPECT_EQ(readFile(path), "new");
}

TEST_F(SafeSaving, ModeAndExtendedAttributesStay) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0751), 0);
    const bool attributes = ::setxattr(path.c_str(), "user.note", "kept", 4, 0) == 0;
    EXPECT_EQ(save(systemFiles(), path, "new").failure, SaveFailure::none);
    EXPECT_EQ(modeOf(path), 0751u);
    char value[8] = "";
    EXPECT_EQ(::getxattr(path.c_str(), "user.note", value, sizeof value), attributes ? 4 : -1);
}

TEST_F(SafeSaving, ANewFileGetsTheUsualMode) {
    const mode_t mask = ::umask(022);
    EXPECT_EQ(save(systemFiles(), path, "new").failure, SaveFailure::none);
    ::umask(mask);
    EXPECT_EQ(modeOf(path), 0644u);
}

TEST_F(SafeSaving, SymbolicLinksAreWrittenThrough) {
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

TEST_F(SafeSaving, HardLinksStayLinkedAndTheOldContentIsKept) {
    const std::string other = folder.file("other.as");
    writeFile(path, "the old and longer content");
    ASSERT_EQ(::link(path.c_str(), other.c_str()), 0);
    EXPECT_EQ(save(systemFiles(), path, "new", markOf(path, true)).failure, SaveFailure::none);
    EXPECT_EQ(readFile(other), "new");
    EXPECT_EQ(readFile(folder.file("backups/" + names("backups").at(0))),
              "the old and longer content");
}

TEST_F(SafeSaving, AFailureWhileWritingThroughPutsTheOldContentBack) {
    writeFile(path, "the old content");
    ASSERT_EQ(::link(path.c_str(), folder.file("other.as").c_str()), 0);
    BrokenFiles files;
    files.call = "flush";
    files.good = 1;  // the backup's
    EXPECT_EQ(save(files, path, "new", markOf(path, true)).failure, SaveFailure::whileWriting);
    EXPECT_EQ(readFile(path), "the old content");
}

TEST_F(SafeSaving, AttributesThatCannotBeKeptMakeItWriteThrough) {
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

TEST_F(SafeSaving, ForeignContentIsNeverOverwrittenWithoutABackup) {
    writeFile(path, "foreign");
    BrokenFiles files;
    files.call = "create";
    files.error = ENOSPC;
    EXPECT_EQ(save(files, path, "new").failure, SaveFailure::cannotCreate);
    EXPECT_EQ(readFile(path), "foreign");
    // Without a data folder the backup goes beside the file.
    BackupStore nowhere(systemFiles(), "");
    EXPECT_EQ(SafeSave(systemFiles(), nowhere).write(path, "new", {}).failure, SaveFailure::none);
    const std::string beside = names().at(1);
    EXPECT_TRUE(beside.starts_with("a.as.") && beside.ends_with("~")) << beside;
    EXPECT_EQ(readFile(folder.file(beside)), "foreign");
}

TEST_F(SafeSaving, FoldersDevicesAndPipesAreNoFiles) {
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    for (const std::string& target :
         {folder.path().string(), folder.file("pipe"), std::string("/dev/full")})
        EXPECT_EQ(save(systemFiles(), target, "x").failure, SaveFailure::cannotCreate) << target;
    EXPECT_EQ(save(systemFiles(), "/dev/full/x", "x").failure, SaveFailure::cannotCreate);
    EXPECT_EQ(save(systemFiles(), folder.file("no/such/a.as"), "x").failure,
              SaveFailure::cannotCreate);
}

TEST_F(SafeSaving, EachContentIsBackedUpOnceAndTheNewestTenAreKept) {
    BackupStore backups(systemFiles(), folder.file("backups"));
    std::string kept;
    for (int i = 0; i < 14; ++i) {
        writeFile(path, "version " + std::to_string(i));
        EXPECT_EQ(backups.keep(path, kept), 0);
        EXPECT_EQ(backups.keep(path, kept), 0);
    }
    EXPECT_EQ(names("backups").size(), 10u);
    EXPECT_EQ(readFile(kept), "version 13");
    EXPECT_EQ(modeOf(kept), 0600u);
}

TEST_F(SafeSaving, ContentsThatTheEditorWroteNeedNoBackup) {
    FileMark mark = save(systemFiles(), path, "one").mark;
    for (const char* bytes : {"two", "three"}) mark = save(systemFiles(), path, bytes, mark).mark;
    EXPECT_EQ(names(), (std::vector<std::string>{"a.as"}));
    save(systemFiles(), path, "", mark);
    EXPECT_EQ(names("backups").size(), 1u);
}

}  // namespace
}  // namespace korvant::test
