// Where one text stands in another, in linear time.
#pragma once

#include <cstddef>
#include <string_view>

namespace korvant {

/// First, or last, position of a `wanted` that is not empty; npos for none. Takes time in
/// proportion to the length of `text`, whatever the two look like, and no memory.
std::size_t searchForward(std::string_view text, std::string_view wanted);
std::size_t searchBackward(std::string_view text, std::string_view wanted);

}  // namespace korvant
