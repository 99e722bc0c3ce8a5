// Which expression a name in the text is the end of.
#pragma once

#include <string>
#include <string_view>

#include "language/text_document.h"

namespace korvant {

/// With the pointer over "grade" of "samples[i].grade * 2" it is "samples[i].grade"; over "samples"
/// it is that alone. Empty where no name stands, and in front of a bracket: what is called there
/// could change something. `word` lies in `text`.
std::string expressionEndingWith(std::string_view text, ByteRange word);

}  // namespace korvant
