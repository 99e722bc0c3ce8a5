// Saving when the system refuses, breaks off or is interrupted.
#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "safe_save_fixture.h"

namespace korvant::test {
namespace {

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
                          {"close", ENOSPC, SaveFailure::whileWriting},
                          {"rename", EBUSY, SaveFailure::cannotCreate}};
    for (const Case& row : cases) {
        writeFile(path, "old content");
        BrokenFiles files;
        files.call = row.call;
        files.error = row.error;
        const SaveResult result = save(files, path, "new", markOf(path, true));
        EXPECT_EQ(result.failure, row.failure) << row.call;
        EXPECT_EQ(result.error, row.error) << row.call;
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

TEST_F(SafeSaving, HardLinksStayLinkedAndTheOldContentIsKept) {
    const std::string other = folder.file("other.as");
    writeFile(path, "the old and longer content");
    std::filesystem::create_hard_link(path, other);
    EXPECT_EQ(save(systemFiles(), path, "new", markOf(path, true)).failure, SaveFailure::none);
    EXPECT_EQ(readFile(other), "new");
    EXPECT_EQ(readFile(folder.file("backups/" + names("backups").at(0))),
              "the old and longer content");
}

TEST_F(SafeSaving, AFailureWhileWritingThroughPutsTheOldContentBack) {
    writeFile(path, "the old content");
    std::filesystem::create_hard_link(path, folder.file("other.as"));
    BrokenFiles files;
    files.call = "flush";
    files.good = 1;  // the backup's
    EXPECT_EQ(save(files, path, "new", markOf(path, true)).failure, SaveFailure::whileWriting);
    EXPECT_EQ(readFile(path), "the old content");
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
