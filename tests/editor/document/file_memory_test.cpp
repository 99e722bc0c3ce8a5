#include "editor/document/file_memory.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace korvant {
namespace {

RememberedFile sample() {
    RememberedFile file;
    file.caretLine = 12;
    file.caretByte = 5;
    file.firstLine = 3;
    file.folds = {4, 30};
    file.watches = {"metal / metres", "a\tb\n\\n"};
    file.breakpoints = {{7, "    return 1;\t// \\", true, 0, "i == 3", "", ""},
                        {9, "", false, 10, "", "best {best}", "x > 1"}};
    return file;
}

class FileMemoryTest : public testing::Test {
  protected:
    test::TemporaryFolder folder;
    std::string list = (folder.path() / "deeper" / "files").string();
    FileMemory memory{systemFiles(), list};
};

TEST_F(FileMemoryTest, KeepsWhatItIsGivenForEachFile) {
    memory.remember("/a b/one.as", sample());
    memory.remember("/two\t.as", {});
    EXPECT_EQ(memory.recall("/a b/one.as"), sample());
    EXPECT_EQ(memory.recall("/two\t.as"), RememberedFile());
    EXPECT_EQ(memory.recall("/three.as"), RememberedFile());
    RememberedFile changed = sample();
    changed.watches.clear();
    memory.remember("/a b/one.as", changed);
    EXPECT_EQ(FileMemory(systemFiles(), list).recall("/a b/one.as"), changed);
}

TEST_F(FileMemoryTest, ForgetsTheOldestAndReadsWhatIsBroken) {
    for (std::size_t i = 0; i <= FileMemory::kMost; ++i)
        memory.remember(std::to_string(i), sample());
    EXPECT_EQ(memory.recall("0"), RememberedFile());
    EXPECT_EQ(memory.recall("1"), sample());
    std::ofstream(list, std::ios::binary) << "caret\t3\n\nfile\tx\ncaret\nfold\tzz\nbreakpoint\t-"
                                             "4\nbreakpoint\nbreakpoint\t2\t1\\\nfile";
    const RememberedFile read = memory.recall("x");
    EXPECT_EQ(read.caretLine, 1);
    ASSERT_EQ(read.breakpoints.size(), 1u);
    EXPECT_EQ(read.breakpoints[0].line, 2);
    FileMemory(systemFiles(), "").remember("x", sample());
    EXPECT_EQ(FileMemory(systemFiles(), "").recall("x"), RememberedFile());
}

TEST(FindAgain, BreakpointsFollowTheirLinesIntoAChangedFile) {
    const auto found = [](std::vector<std::pair<int, std::string>> wanted,
                          const std::vector<std::string>& lines) {
        std::vector<RememberedBreakpoint> breakpoints;
        for (const auto& [line, text] : wanted)
            breakpoints.push_back({line, text, {}, {}, {}, {}, {}});
        findAgain(breakpoints, lines);
        std::vector<int> at;
        for (const RememberedBreakpoint& one : breakpoints) at.push_back(one.line);
        return at;
    };
    const std::vector<std::string> lines = {"int a;", "", "f();", "}", "  f(); ", "g();"};
    EXPECT_EQ(found({{6, "g();"}, {1, "int a;"}}, lines), (std::vector<int>{6, 1}));
    EXPECT_EQ(found({{4, "f();"}}, lines), std::vector<int>{5});
    EXPECT_EQ(found({{2, "f();"}, {3, "f();"}}, lines), (std::vector<int>{3, 5}));
    EXPECT_EQ(found({{2, "gone();"}, {9, "gone();"}}, lines), std::vector<int>{2});
    EXPECT_EQ(found({{900, "int a;"}}, lines), std::vector<int>{1});
    EXPECT_TRUE(found({{3, "f();"}}, {}).empty());
}

}  // namespace
}  // namespace korvant
