// House rules that a scan can hold.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

const fs::path kRoot = KORVANT_SOURCE_DIR;

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
