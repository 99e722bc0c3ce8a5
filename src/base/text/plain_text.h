// Markup as a terminal can show it.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// The text of what boundedHtml gives: line breaks where elements break the line, no tags, the
/// characters that its entities stand for.
std::string plainFromHtml(std::string_view html);

}  // namespace korvant
