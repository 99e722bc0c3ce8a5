#include "document_blocks.h"

#include <algorithm>
#include <fstream>
#include <regex>

#include "house/source_tree.h"

namespace fs = std::filesystem;

namespace korvant::test {

namespace {}  // namespace

std::vector<std::string> documents() {
    std::vector<std::string> found = {"README.md", "CONTRIBUTING.md"};
    for (const auto& entry : fs::directory_iterator(kRoot / "docs"))
        if (entry.path().extension() == ".md")
            found.push_back("docs/" + entry.path().filename().string());
    std::sort(found.begin() + 2, found.end());
    return found;
}

std::vector<DocumentBlock> blocksOf(const std::string& document) {
    static const std::regex kMark("^<!-- test: (.*) -->$"), kFence("^```(\\w*)$");
    std::vector<DocumentBlock> blocks;
    std::ifstream file(kRoot / document);
    std::smatch match;
    std::string mark;
    bool inside = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (std::regex_match(line, match, kFence)) {
            if (!inside) blocks.push_back({document, number, match[1], mark, ""});
            inside = !inside;
        } else if (inside) {
            blocks.back().text += line + "\n";
        }
        mark = std::regex_match(line, match, kMark) ? match[1].str() : "";
    }
    return blocks;
}

}  // namespace korvant::test
