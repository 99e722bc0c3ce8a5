// Finding rows by words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// `bytes` as UTF-8 in lower case: letters of Latin, Greek and Cyrillic script.
std::string folded(std::string_view bytes);

/// The words that a row must hold, each folded.
class RowFilter {
  public:
    RowFilter() = default;
    explicit RowFilter(std::string_view words);
    bool empty() const noexcept { return words_.empty(); }
    /// True when every word is in one of the two texts, both folded.
    bool accepts(std::string_view text, std::string_view value) const;

  private:
    std::vector<std::string> words_;
};

}  // namespace korvant
