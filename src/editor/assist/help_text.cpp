#include "editor/assist/help_text.h"

namespace korvant {

HelpText helpTextOf(std::string_view markdown) {
    HelpText help;
    std::string paragraph, code;
    bool inCode = false;
    const auto endParagraph = [&] {
        if (!paragraph.empty()) help.paragraphs.push_back(paragraph);
        paragraph.clear();
    };
    while (!markdown.empty()) {
        const std::size_t end = markdown.find('\n');
        std::string_view line = markdown.substr(0, end);
        markdown.remove_prefix(end == std::string_view::npos ? markdown.size() : end + 1);
        if (line.starts_with("```")) {
            endParagraph();
            if (inCode && !code.empty()) help.code.push_back(code);
            code.clear();
            inCode = !inCode;
        } else if (inCode) {
            code.append(code.empty() ? "" : "\n").append(line);
        } else if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
            endParagraph();
        } else {
            paragraph.append(paragraph.empty() ? "" : " ").append(line);
        }
    }
    endParagraph();
    if (!code.empty()) help.code.push_back(code);
    return help;
}

}  // namespace korvant
