// Texts of scripts as markup that a renderer can be given without a second thought.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvant {

constexpr std::size_t kHtmlBytes = std::size_t{64} << 10;  ///< longer texts are cut, "..." follows
constexpr int kHtmlDepth = 64;      ///< elements inside each other; deeper ones lose their tags
constexpr int kHtmlTableDepth = 4;  ///< tables inside each other: their layout cost doubles a level

/// UTF-8 markup of the known subset: every element closed, only harmless attributes, nothing that
/// is fetched from elsewhere. What is no tag of the subset is shown as it stands, so "a < b" needs
/// no escape. A line feed is a line break, except beside a tag that breaks the line itself. Bytes
/// that are not UTF-8 are read as Windows Western.
std::string boundedHtml(std::string_view bytes);

/// The same for a text without markup: nothing in it is a tag, blanks are kept.
std::string htmlFromPlain(std::string_view bytes);

}  // namespace korvant
