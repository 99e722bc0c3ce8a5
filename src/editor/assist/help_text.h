// What is said about a name, taken apart for a pop-up.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// Of the Markdown that the language's help is written in: paragraphs and blocks of code.
struct HelpText {
    std::vector<std::string> paragraphs;  ///< each on one line
    std::vector<std::string> code;        ///< lines, without the last line end
    bool empty() const { return paragraphs.empty() && code.empty(); }
};
HelpText helpTextOf(std::string_view markdown);

}  // namespace korvant
