// Rich text as the markup that message boxes show.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// HTML of a text in RTF: paragraphs, line breaks, tabs, bold, italic and underlined text, and
/// characters by code; pictures, tables of fonts and colours and everything unknown is left out.
/// Any other text comes back as it is. Source: Rich Text Format 1.9.1.
std::string htmlOfRichText(std::string_view text);

}  // namespace korvant
