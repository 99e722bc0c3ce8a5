// Gathered output, with and without a reader.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <thread>

#include "base/system/gathered_output.h"
#include "base/system/os_file.h"
#include "host/library/file_probe.h"
#include "host/terminal/status_line.h"
#include "support/temporary_folder.h"

namespace korvant {
namespace {

/// A pipe whose reading end the test holds.
class Pipe {
  public:
    Pipe() { EXPECT_EQ(0, ::pipe2(ends_, O_CLOEXEC)); }
    ~Pipe() {
        closeReader();
        ::close(ends_[1]);
    }
    int writer() const { return ends_[1]; }
    void closeReader() {
        if (ends_[0] >= 0) ::close(ends_[0]);
        ends_[0] = -1;
    }
    /// What is there, waiting up to a second for the first of it.
    std::string read() {
        char piece[70000];
        pollfd entry{ends_[0], POLLIN, 0};
        if (::poll(&entry, 1, 1000) <= 0) return {};
        const ssize_t got = ::read(ends_[0], piece, sizeof piece);
        return got > 0 ? std::string(piece, static_cast<std::size_t>(got)) : std::string();
    }
    bool empty() const {
        pollfd entry{ends_[0], POLLIN, 0};
        return ::poll(&entry, 1, 0) == 0;
    }

  private:
    int ends_[2] = {-1, -1};
};

std::string text(std::size_t bytes) {
    std::string result;
    for (std::size_t i = 0; i < bytes; ++i) result.push_back(static_cast<char>(i % 251));
    return result;
}

TEST(GatheredOutput, KeepsTextUntilItIsAskedFor) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    EXPECT_EQ(0, output.write("hello", nullptr));
    EXPECT_TRUE(pipe.empty());
    EXPECT_EQ(0, output.flush(nullptr));
    EXPECT_EQ("hello", pipe.read());
}

TEST(GatheredOutput, AScriptThatGoesQuietStillShowsWhatItPrinted) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    output.begin();
    output.write("quiet", nullptr);
    EXPECT_EQ("quiet", pipe.read());
    output.end();
}

TEST(GatheredOutput, NothingIsLostOrMixedUpForAnySizes) {
    Pipe pipe;
    std::string received;
    const std::string all = text(3 * GatheredOutput::kBufferBytes + 12345);
    std::thread reader([&] {
        while (received.size() < all.size()) received += pipe.read();
    });
    GatheredOutput output(pipe.writer());
    output.begin();
    std::size_t size = 1;
    for (std::size_t at = 0; at < all.size(); at += size, size = size * 3 % 100'003)
        output.write(std::string_view(all).substr(at, size), nullptr);
    EXPECT_EQ(0, output.flush(nullptr));
    output.end();
    reader.join();
    EXPECT_TRUE(received == all);
}

TEST(GatheredOutput, AStopEndsTheWaitForASlowReaderAndKeepsTheText) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    const std::string all = text(300'000);
    EXPECT_EQ(0, output.write(all, test::stopAtOnce));
    std::string received;
    std::thread reader([&] {
        while (received.size() < all.size()) received += pipe.read();
    });
    EXPECT_EQ(0, output.flush(nullptr));
    reader.join();
    EXPECT_TRUE(received == all);
}

TEST(GatheredOutput, WhatIsKeptForASlowReaderHasALimit) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    const std::size_t most = GatheredOutput::kBufferBytes * 2 + GatheredOutput::kRestBytes;
    EXPECT_EQ(0, output.write(text(most - 1000), test::stopAtOnce));
    EXPECT_EQ(ECANCELED, output.write(text(200'000), test::stopAtOnce));
}

TEST(GatheredOutput, AReaderThatTakesNothingIsGivenUpAfterAWhile) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    output.write(text(200'000), test::stopAtOnce);
    EXPECT_EQ(ECANCELED, output.flushWithin(100));
    EXPECT_EQ(ECANCELED, output.write("more", nullptr));
    output.begin();
    EXPECT_EQ(0, output.write("", nullptr));  // a new use begins without the old failure
    output.end();
}

TEST(GatheredOutput, AClosedPipeAndAFullDiskAreToldAndEndNothing) {
    Pipe pipe;
    pipe.closeReader();
    GatheredOutput broken(pipe.writer());
    broken.write("x", nullptr);
    EXPECT_EQ(EPIPE, broken.flush(nullptr));
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    GatheredOutput output(full);
    for (int i = 0; i < 100; ++i) output.write(text(5000), nullptr);
    EXPECT_EQ(ENOSPC, output.flush(nullptr));
    ::close(full);
}

TEST(GatheredOutput, LeavesTheHostsStreamAsItWas) {
    Pipe pipe;
    {
        GatheredOutput output(pipe.writer());
        output.write("x", nullptr);
        output.flush(nullptr);
    }
    EXPECT_EQ(0, ::fcntl(pipe.writer(), F_GETFL) & O_NONBLOCK);
    EXPECT_EQ(1, ::write(pipe.writer(), "y", 1));
    EXPECT_EQ("xy", pipe.read());
}

TEST(GatheredOutput, TheStatusStandsBelowWholeLinesOnly) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    const auto sent = [&](const char* printed) {
        output.write(printed, nullptr);
        output.flush(nullptr);
        return pipe.read();
    };
    output.setStatus("50 %");
    EXPECT_EQ("\r\x1b[K50 %", pipe.read());
    EXPECT_EQ("\r\x1b[Kline\n\r\x1b[K50 %", sent("line\n"));
    EXPECT_EQ("\r\x1b[Kname: ", sent("name: "));
    EXPECT_EQ("\n\r\x1b[K50 %", sent("\n"));
    output.holdStatus(true);
    EXPECT_EQ("\r\x1b[K", pipe.read());
    EXPECT_EQ("x\n", sent("x\n"));
    output.holdStatus(false);
    output.setStatus("");
    EXPECT_TRUE(pipe.empty());
}

TEST(StatusLine, FitsTheTerminalAndCannotSteerIt) {
    Pipe pipe;
    GatheredOutput output(pipe.writer());
    StatusLine line(output, [] { return 12; });
    line.setTexts("Cap", "\x1b[2Jé\n and much more");
    EXPECT_TRUE(pipe.empty());
    line.show(true);
    EXPECT_EQ("\r\x1b[KCap: ^[[2Jé", pipe.read());
    line.show(false);
    EXPECT_EQ("\r\x1b[K", pipe.read());
}

}  // namespace
}  // namespace korvant
