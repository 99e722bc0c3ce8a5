// House rules that a scan can hold.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "house/source_tree.h"

namespace fs = std::filesystem;

namespace {

int lineCount(const fs::path& path) {
    std::ifstream file(path);
    int lines = 0;
    for (std::string line; std::getline(file, line);) ++lines;
    return lines;
}

TEST(Style, NoSourceFileIsTooLongToReadInOneGo) {
    for (const char* folder : {"src", "apps", "include"})
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            const auto extension = entry.path().extension();
            if (extension != ".cpp" && extension != ".h") continue;
            EXPECT_LE(lineCount(entry.path()), 600) << fs::relative(entry.path(), kRoot);
        }
}

/// Lines of the longest function that begins at the left edge, from its head to its brace.
int longestFunction(const fs::path& path, std::string& head) {
    std::ifstream file(path);
    std::string line, current;
    int lines = 0, longest = 0;
    while (std::getline(file, line)) {
        ++lines;
        const bool opens = !line.empty() && line.back() == '{' && line[0] != ' ' &&
                           line.find('(') != std::string::npos;
        if (opens) current = line, lines = 1;
        if (line != "}" || current.empty()) continue;
        if (lines > longest) longest = lines, head = current;
        current.clear();
    }
    return longest;
}

TEST(Style, NoFunctionIsTooLongForAScreen) {
    for (const char* folder : {"src", "apps", "tests", "fuzz", "bench", "docs/manual"})
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            std::string head;
            EXPECT_LE(longestFunction(entry.path(), head), 60)
                << fs::relative(entry.path(), kRoot) << ": " << head;
        }
}

TEST(Style, EveryHeaderIsGuardedAndSaysWhatItIs) {
    for (const char* folder : {"src", "include"})
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            if (entry.path().extension() != ".h") continue;
            std::ifstream file(entry.path());
            std::string first;
            std::getline(file, first);
            EXPECT_TRUE(first.rfind("//", 0) == 0 || first.rfind("/*", 0) == 0)
                << fs::relative(entry.path(), kRoot) << " begins without a word about itself";
        }
}

}  // namespace
