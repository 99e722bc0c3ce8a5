// The code blocks of the documents that a reader follows.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace korvant::test {

/// One fenced block.
struct DocumentBlock {
    std::string document;  ///< path from the root of the sources
    int line = 0;          ///< of its fence, 1-based
    std::string language;  ///< "sh", "cpp", ...
    std::string mark;      ///< what a comment `<!-- test: MARK -->` right before it says
    std::string text;

    std::string place() const { return document + ":" + std::to_string(line); }
};

/// README, CONTRIBUTING and docs/*.md, as paths from the root.
std::vector<std::string> documents();

/// The fenced blocks of one of them, in order.
std::vector<DocumentBlock> blocksOf(const std::string& document);

}  // namespace korvant::test
