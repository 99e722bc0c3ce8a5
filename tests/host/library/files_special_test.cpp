// The files of a run that are links, pipes and devices, and what could not be written.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

#include "host/library/file_probe.h"
#include "host/library/script_files.h"
#include "support/temporary_folder.h"

namespace korvant {
namespace {

namespace fs = std::filesystem;
using Mode = OutputFile::Mode;
using test::readFile;
using test::TemporaryFolder;
using test::writeFile;

TEST(Files, NoWayLeadsOutOfTheOneFolder) {
    const TemporaryFolder folder, other;
    writeFile(other.file("secret"), "keep me");
    fs::create_symlink(other.file("secret"), folder.file("link"));
    fs::create_symlink(other.file("new"), folder.file("dangling"));
    fs::create_directory_symlink(other.path(), folder.path() / "way");
    const FileRules rules{FileAccess::oneFolder, folder.path().string()};
    const std::string up = folder.path().string() + "/../" + other.path().filename().string();
    const std::string sibling = folder.path().string() + "-sibling";
    for (const std::string& name :
         {folder.file("link"), folder.file("way/secret"), up + "/secret", other.file("secret")}) {
        EXPECT_FALSE(InputFile::open(name, rules)) << name;
        EXPECT_FALSE(OutputFile::open(name, Mode::truncate, rules, nullptr)) << name;
    }
    for (const std::string& name :
         {folder.file("dangling"), folder.file("way/new"), up + "/new", sibling})
        EXPECT_FALSE(OutputFile::open(name, Mode::truncate, rules, nullptr)) << name;
    EXPECT_EQ("keep me", readFile(other.file("secret")));
    EXPECT_FALSE(fs::exists(other.file("new")));
    EXPECT_FALSE(fs::exists(sibling));
}

TEST(Files, AFullDiskIsToldOnceAndStopsNothing) {
    const auto file = OutputFile::open("/dev/full", Mode::truncate, test::kAllFiles, nullptr);
    ASSERT_TRUE(file);
    for (int i = 0; i < 4; ++i) file->write(std::string(50'000, 'x'), nullptr);
    EXPECT_EQ(ENOSPC, file->failure());
    file->close(nullptr);
    EXPECT_EQ(ENOSPC, file->failure());
}

TEST(Files, AClosedPipeEndsTheWriteAndNotTheProcess) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.file("pipe").c_str(), 0600));
    const int reader = ::open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    const auto file =
        OutputFile::open(folder.file("pipe"), Mode::truncate, test::kAllFiles, nullptr);
    ASSERT_TRUE(file);
    ::close(reader);
    file->write("text", nullptr);
    file->close(nullptr);
    EXPECT_EQ(EPIPE, file->failure());
    struct sigaction action {};
    sigaction(SIGPIPE, nullptr, &action);
    EXPECT_EQ(SIG_DFL, action.sa_handler);  // the host's handling is as it was
}

TEST(Files, APipeIsWaitedForUntilTheStop) {
    const TemporaryFolder folder;
    const std::string name = folder.file("pipe");
    ASSERT_EQ(0, ::mkfifo(name.c_str(), 0600));
    EXPECT_FALSE(OutputFile::open(name, Mode::truncate, test::kAllFiles, test::stopAtOnce));
    const auto input = InputFile::open(name, test::kAllFiles);
    ASSERT_TRUE(input);
    EXPECT_EQ(ByteSource::kStopped, input->readChar(test::stopAtOnce));
    std::thread writer([&] { writeFile(name, "late"); });
    EXPECT_EQ("late", test::readAll(*input));
    writer.join();
}

TEST(Files, AReaderThatDoesNotReadIsWaitedForUntilTheStop) {
    const TemporaryFolder folder;
    const std::string name = folder.file("pipe");
    ASSERT_EQ(0, ::mkfifo(name.c_str(), 0600));
    const int reader = ::open(name.c_str(), O_RDONLY | O_NONBLOCK);
    const auto file = OutputFile::open(name, Mode::truncate, test::kAllFiles, nullptr);
    ASSERT_TRUE(file);
    for (int i = 0; i < 4; ++i) file->write(std::string(60'000, 'x'), test::stopAtOnce);
    file->close(test::stopAtOnce);
    EXPECT_EQ(ECANCELED, file->failure());
    ::close(reader);
}

TEST(Files, SignalsAndShortWritesCutNothing) {
    const TemporaryFolder folder;
    const std::string name = folder.file("pipe");
    ASSERT_EQ(0, ::mkfifo(name.c_str(), 0600));
    struct sigaction action {
    }, before{};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before);
    const itimerval often{{0, 500}, {0, 500}}, never{};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    const std::string text(1'000'000, 'x');
    std::string received;
    std::thread reader([&] { received = test::readAll(*InputFile::open(name, test::kAllFiles)); });
    {
        const auto file = OutputFile::open(name, Mode::truncate, test::kAllFiles, nullptr);
        for (int i = 0; i < 10; ++i) file->write(text, nullptr);
        file->close(nullptr);
        EXPECT_EQ(0, file->failure());
    }
    reader.join();
    ::setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_EQ(10 * text.size(), received.size());
}

TEST(Files, NoOpenFileIsInheritedOrLeftOver) {
    const TemporaryFolder folder;
    const auto handles = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = handles();
    for (int i = 0; i < 2000; ++i) {
        ASSERT_TRUE(OutputFile::open(folder.file("out"), Mode::truncate, test::kAllFiles, nullptr));
        ASSERT_TRUE(InputFile::open(folder.file("out"), test::kAllFiles));
    }
    EXPECT_EQ(before, handles());
    const auto file =
        OutputFile::open(folder.file("out"), Mode::truncate, test::kAllFiles, nullptr);
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (fs::read_symlink(entry.path(), gone) != folder.file("out")) continue;
        const int handle = std::stoi(entry.path().filename().string());
        EXPECT_TRUE(::fcntl(handle, F_GETFD) & FD_CLOEXEC);
    }
}

}  // namespace
}  // namespace korvant
