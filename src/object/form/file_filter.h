// Which files a file row offers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

struct FileFilter {
    std::string description;
    std::string patterns;  ///< "*.txt;*.csv"
};

/// Reads pairs of description and patterns separated by '|'; one or two '|' may end the text.
/// A bare "*.txt" or ".txt" is a pattern without a description. `allFiles` describes "*", which
/// an empty text stands for. Never empty.
std::vector<FileFilter> parseFileFilter(std::string_view text, const std::string& allFiles);

}  // namespace korvant
