#include "object/form/file_filter.h"

namespace korvant {

namespace {

std::vector<std::string> splitAtBars(std::string_view text) {
    while (!text.empty() && text.back() == '|') text.remove_suffix(1);
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t bar = text.find('|');
        parts.emplace_back(text.substr(0, bar));
        text.remove_prefix(bar == std::string_view::npos ? text.size() : bar + 1);
    }
    return parts;
}

/// ".txt" means "*.txt".
std::string completed(const std::string& patterns) {
    return !patterns.empty() && patterns.front() == '.' ? "*" + patterns : patterns;
}

}  // namespace

std::vector<FileFilter> parseFileFilter(std::string_view text, const std::string& allFiles) {
    const std::vector<std::string> parts = splitAtBars(text);
    std::vector<FileFilter> filters;
    for (std::size_t i = 0; i < parts.size(); i += 2) {
        const bool pair = i + 1 < parts.size();
        const std::string patterns = completed(parts[pair ? i + 1 : i]);
        if (patterns.empty()) continue;
        filters.push_back({pair ? parts[i] : patterns, patterns});
    }
    if (filters.empty()) filters.push_back({allFiles, "*"});
    return filters;
}

}  // namespace korvant
