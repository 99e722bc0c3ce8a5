// How many columns a character takes where every letter takes one.
#pragma once

#include <cstddef>
#include <string_view>

namespace korvant {

/// Of one UTF-8 sequence: 2 for East Asian wide characters and pictures, 0 for marks that stand on
/// the letter before, else 1, for anything malformed too.
std::size_t characterWidth(std::string_view sequence) noexcept;

}  // namespace korvant
