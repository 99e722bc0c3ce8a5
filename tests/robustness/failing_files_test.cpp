// Every operation on files fails in turn, for every reason, under an editing session; and the files
// that scripts read and write fail as the system makes them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "editor/control/command_ids.h"
#include "support/editor_fixture.h"

namespace korvant::test {

namespace {

/// The `which`-th operation of the system fails, whatever it is, and all behind it if so wanted.
class FailingFiles final : public FileOperations {
  public:
    int which = 0;
    int error = EIO;
    bool lasting = false;
    int calls = 0;

    int status(const std::string& p, FileStatus& s) override {
        return fails() ? error : system.status(p, s);
    }
    int resolve(const std::string& p, std::string& t) override {
        return fails() ? error : system.resolve(p, t);
    }
    int mayWrite(const std::string& p) override { return fails() ? error : system.mayWrite(p); }
    int openRead(const std::string& p, Handle& h) override {
        return fails() ? error : system.openRead(p, h);
    }
    int create(const std::string& p, bool secret, Handle& h) override {
        return fails() ? error : system.create(p, secret, h);
    }
    int openWrite(const std::string& p, Handle& h) override {
        return fails() ? error : system.openWrite(p, h);
    }
    std::int64_t read(Handle h, char* b, std::size_t n) override {
        return fails() ? -error : system.read(h, b, std::min<std::size_t>(n, 5));
    }
    std::int64_t write(Handle h, const char* b, std::size_t n) override {
        return fails() ? -error : system.write(h, b, std::min<std::size_t>(n, 5));
    }
    int truncate(Handle h, std::uint64_t size) override {
        return fails() ? error : system.truncate(h, size);
    }
    int flush(Handle) override { return fails() ? error : 0; }
    int close(Handle h) override {
        const int result = system.close(h);  // a failed close has closed all the same
        return fails() ? error : result;
    }
    int copyAttributes(const std::string& p, Handle h) override {
        return fails() ? error : system.copyAttributes(p, h);
    }
    int rename(const std::string& f, const std::string& t) override {
        return fails() ? error : system.rename(f, t);
    }
    int remove(const std::string& p) override { return fails() ? error : system.remove(p); }
    int makeFolder(const std::string& p) override { return fails() ? error : system.makeFolder(p); }
    int flushFolder(const std::string&) override { return fails() ? error : 0; }
    int list(const std::string& f, std::vector<std::string>& n) override {
        return fails() ? error : system.list(f, n);
    }
    int lock(const std::string& p, Handle& h) override {
        return fails() ? error : system.lock(p, h);
    }

  private:
    bool fails() { return ++calls == which || (lasting && calls > which); }

    FileOperations& system = systemFiles();
};

struct Reason {
    const char* name;
    int error;
    bool lasting;
};

class FailingSession : public EditorFixture, public ::testing::WithParamInterface<Reason> {
  protected:
    const std::string old = "// old\n", typed = "// old\n// new\n";

    /// Opens a file, types into it, lets time pass, saves, types again, and ends as in a crash.
    void session(FailingFiles& broken, const std::string& path) {
        files = &broken;
        open();
        window->files = {path};
        window->answers.assign(4, Answer::no);
        editor().shown();
        editor().command(command_id::kOpen);
        setText(typed);
        fakeClock.advance(11'000);
        editor().tick();
        editor().command(command_id::kSave);
    }
};

TEST_P(FailingSession, KeepsTheOldTextOrTheNewOneAndSaysWhichCouldNotBeWritten) {
    useClock(&fakeClock);
    for (int which = 1;; ++which) {
        const std::string path = folder.file("a.as");
        std::filesystem::remove_all(dataFolder());
        writeFile(path, old);
        FailingFiles broken;
        broken.which = which;
        broken.error = GetParam().error;
        broken.lasting = GetParam().lasting;
        session(broken, path);
        const std::string now = readFile(path);
        EXPECT_TRUE(now == old || now == typed) << which << ": " << now;
        EXPECT_EQ(text(), typed) << which;
        if (now == old && editor().documentPath() == path) {
            EXPECT_NE(pane().find("Error"), std::string::npos) << which << ": " << pane();
        }
        broken.which = 0;
        broken.lasting = false;
        window->files = {path};
        editor().command(command_id::kSaveAs);
        EXPECT_EQ(readFile(path), typed) << which;
        close();
        files = &systemFiles();
        if (broken.calls < which || ::testing::Test::HasFailure()) {
            EXPECT_GT(which, 20);
            return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, FailingSession,
    ::testing::Values(Reason{"full", ENOSPC, false}, Reason{"broken", EIO, false},
                      Reason{"brokenForGood", EIO, true}, Reason{"denied", EACCES, false},
                      Reason{"deniedForGood", EACCES, true}, Reason{"notPermitted", EPERM, false},
                      Reason{"readOnlyDisk", EROFS, true}, Reason{"interrupted", EINTR, false}),
    [](const auto& one) { return std::string(one.param.name); });

class FailingScriptFiles : public ScriptFixture {};

TEST_F(FailingScriptFiles, ARunThatCannotReadEndsWithDefinedValues) {
    // Reading the first byte of this process's memory is an input/output error.
    EXPECT_EQ(
        output("int n = 7; string s = \"s\"; if (!OpenInputFile(\"/proc/self/mem\")) return 1; "
               "Input(n); Input(s); CloseInputFile(); Print(\"\" + n + \"[\" + s + \"]\");"),
        "0[]");
}

/// While it lives, files that nobody may touch cannot be touched, not even by a test that root
/// runs.
class WithoutPrivileges {
  public:
    WithoutPrivileges() {
        constexpr uid_t kNobody = 65534;
        if (before_ == 0 && ::seteuid(kNobody) != 0) ADD_FAILURE() << "root for ever";
    }
    ~WithoutPrivileges() {
        if (::seteuid(before_) != 0) ADD_FAILURE() << "never root again";
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

  private:
    uid_t before_ = ::geteuid();
};

TEST_F(FailingScriptFiles, WhatIsDeniedIsNotOpenedAndTheConsoleStays) {
    const TemporaryFolder folder;
    const std::string path = folder.file("secret"), inside = folder.file("inside/new");
    writeFile(path, "7");
    ::mkdir(folder.file("inside").c_str(), 0755);
    ::chmod(path.c_str(), 0);
    ::chmod(folder.file("inside").c_str(), 0);
    {
        const WithoutPrivileges here;
        EXPECT_EQ(output("string all; if (OpenInputFile(\"" + path + "\")) all += \"read \";" +
                         "if (OpenOutputFile(\"" + path + "\")) all += \"written \";" +
                         "if (ApendOutputFile(\"" + path + "\")) all += \"appended \";" +
                         "if (OpenOutputFile(\"" + inside + "\")) all += \"made \";" +
                         "Print(\"[\" + all + \"]\");"),
                  "[]");
    }
    ::chmod(folder.file("inside").c_str(), 0755);
    EXPECT_EQ(readFile(path), "7");
    EXPECT_TRUE(session().lastFailure().unwritten.empty());
}

TEST_F(FailingScriptFiles, AFileThatIsSealedMeanwhileCutsTheOutputAndNotTheRun) {
    const int sealed = ::memfd_create("sealed", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    ASSERT_GE(sealed, 0);
    ASSERT_EQ(::fcntl(sealed, F_ADD_SEALS, F_SEAL_WRITE), 0);
    EXPECT_TRUE(run("int main() { if (!OpenOutputFile(\"/proc/self/fd/" + std::to_string(sealed) +
                    "\")) return 1; for (int i = 0; i < 100000; i++) Print(\"0123456789\"); "
                    "CloseOutputFile(); Print(\"done\"); return 0; }"));
    ::close(sealed);
    EXPECT_EQ(console.output, "done");
    ASSERT_EQ(session().lastFailure().unwritten.size(), 1u);
    EXPECT_NE(session().lastFailure().unwritten[0].find("not permitted"), std::string::npos);
}

TEST_F(FailingScriptFiles, AFullDiskCutsTheOutputAndNotTheRun) {
    EXPECT_TRUE(
        run("int main() { OpenOutputFile(\"/dev/full\"); for (int i = 0; i < 100000; i++) "
            "Print(\"0123456789\"); CloseOutputFile(); Print(\"done\"); return 0; }"));
    EXPECT_EQ(console.output, "done");
    EXPECT_EQ(session().lastFailure().unwritten.size(), 1u);
}

}  // namespace

}  // namespace korvant::test
