// The files of a run: rules and buffers.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/library/file_probe.h"
#include "host/library/script_files.h"
#include "support/temporary_folder.h"

namespace korvant {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Mode = OutputFile::Mode;
using test::readFile;
using test::readText;
using test::TemporaryFolder;
using test::writeFile;

void put(const std::string& name, Mode mode, std::string_view text) {
    const auto file = OutputFile::open(name, mode, test::kAllFiles, nullptr);
    ASSERT_TRUE(file);
    file->write(text, nullptr);
    file->close(nullptr);
    EXPECT_EQ(0, file->failure());
}

TEST(Files, EveryByteIsWrittenAndReadBack) {
    const TemporaryFolder folder;
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) bytes.push_back(static_cast<char>(i * 7 % 256));
    std::erase(bytes, '\x1A');  // the end of a text where files are opened as texts
    put(folder.file("data"), Mode::truncate, bytes);
    EXPECT_TRUE(bytes == readText(folder.file("data")));
    const auto file = InputFile::open(folder.file("data"), test::kAllFiles);
    ASSERT_TRUE(file);
    EXPECT_TRUE(bytes == test::readAll(*file));
}

TEST(Files, TruncatingAndAppendingAreDifferentThings) {
    const TemporaryFolder folder;
    const std::string name = folder.file("log");
    put(name, Mode::append, "a");
    put(name, Mode::append, "b");
    EXPECT_EQ("ab", readFile(name));
    put(name, Mode::truncate, "c");
    EXPECT_EQ("c", readFile(name));
}

TEST(Files, TheBufferHoldsItsSizeAndLosesNothingAroundIt) {
    const TemporaryFolder folder;
    for (const std::size_t first : {std::size_t{0}, OutputFile::kBufferBytes - 1,
                                    OutputFile::kBufferBytes, OutputFile::kBufferBytes + 1}) {
        const auto file =
            OutputFile::open(folder.file("out"), Mode::truncate, test::kAllFiles, nullptr);
        const std::string a(first, 'a'), b(OutputFile::kBufferBytes * 2, 'b');
        for (const std::string& text : {a, "x"s, b, "y"s}) file->write(text, nullptr);
        file->close(nullptr);
        EXPECT_EQ(a + "x" + b + "y", readFile(folder.file("out"))) << first;
    }
}

TEST(Files, AByteGoesBackEvenAtTheEdgeOfTheBuffer) {
    const TemporaryFolder folder;
    writeFile(folder.file("in"), std::string((64 << 10) - 1, 'a') + "bc");
    const auto file = InputFile::open(folder.file("in"), test::kAllFiles);
    for (int i = 0; i < (64 << 10) - 1; ++i) ASSERT_EQ('a', file->readChar(nullptr));
    ASSERT_EQ('b', file->readChar(nullptr));
    file->unreadChar('b');
    EXPECT_EQ("bc", test::readAll(*file));
    EXPECT_EQ(ByteSource::kEndOfInput, file->readChar(nullptr));
    file->unreadChar(ByteSource::kEndOfInput);
    EXPECT_EQ(ByteSource::kEndOfInput, file->readChar(nullptr));
}

TEST(Files, WhatCannotBeOpenedIsNotOpened) {
    const TemporaryFolder folder;
    writeFile(folder.file("data.txt"), "x");
    for (const std::string& name : {""s, folder.file("missing"), folder.path().string(),
                                    folder.file("data.txt") + "\0.txt"s, "/no/such/folder/file"s})
        EXPECT_FALSE(InputFile::open(name, test::kAllFiles)) << name;
    for (const std::string& name : {""s, folder.path().string(), folder.file("x") + "\0y"s,
                                    "/no/such/folder/file"s, folder.file("data.txt") + "/x"})
        EXPECT_FALSE(OutputFile::open(name, Mode::truncate, test::kAllFiles, nullptr)) << name;
    EXPECT_FALSE(fs::exists(folder.file("x")));
}

TEST(Files, TheRulesAreKept) {
    const TemporaryFolder folder, other;
    writeFile(folder.file("in"), "i");
    writeFile(other.file("secret"), "s");
    struct Case {
        FileAccess access;
        bool readInside, readOutside, writeInside, writeOutside;
    };
    const Case cases[] = {
        {FileAccess::all, true, true, true, true},
        {FileAccess::readOnly, true, true, false, false},
        {FileAccess::oneFolder, true, false, true, false},
        {FileAccess::none, false, false, false, false},
    };
    for (const Case& each : cases) {
        const FileRules rules{each.access, folder.path().string()};
        const auto mayWrite = [&](const std::string& name) {
            return OutputFile::open(name, Mode::append, rules, nullptr) != nullptr;
        };
        EXPECT_EQ(each.readInside, !!InputFile::open(folder.file("in"), rules));
        EXPECT_EQ(each.readOutside, !!InputFile::open(other.file("secret"), rules));
        EXPECT_EQ(each.writeInside, mayWrite(folder.file("out")));
        EXPECT_EQ(each.writeOutside, mayWrite(other.file("new")));
        fs::remove(folder.file("out"));
        EXPECT_EQ(each.writeOutside, fs::remove(other.file("new")));
    }
}

}  // namespace
}  // namespace korvant
