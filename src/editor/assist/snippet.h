// A piece of text with places to fill in one after the other.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "language/text_document.h"

namespace korvant {

/// "for (int ${1:i} = 0; ${1:i} < ${2:count};) $0" without the signs, and where its places are.
struct SnippetText {
    std::string text;
    /// In the order in which they are filled, the end ($0) last; each with all of its ranges.
    std::vector<std::vector<ByteRange>> stops;
};
/// Lines behind the first get `indent` in front of them.
SnippetText readSnippet(std::string_view snippet, std::string_view indent);

/// The places of a snippet that has been written, while they are filled.
class SnippetPlaces {
  public:
    SnippetPlaces() = default;
    /// The text begins at `begin` of what it was written into.
    SnippetPlaces(const SnippetText& snippet, std::size_t begin);

    bool active() const noexcept { return at_ < stops_.size(); }
    void end() noexcept { at_ = stops_.size(); }
    /// The ranges of the present place; all are to be written in at once.
    const std::vector<ByteRange>& present() const { return stops_[at_]; }
    /// The next place; false behind the last one.
    bool next();
    /// `removed` bytes behind `begin` have become `added` ones. What is changed outside of the
    /// present place ends the filling.
    void changed(std::size_t begin, std::size_t removed, std::size_t added);

  private:
    std::vector<std::vector<ByteRange>> stops_;
    std::size_t at_ = 0;
};

}  // namespace korvant
