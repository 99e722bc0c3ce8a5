// Texts that a function of the library returns, and that another one overwrites before they are
// read.
#pragma once

#include <string_view>
#include <vector>

#include "host/scan/source_scan.h"

namespace korvant {

/// Functions that return `string@` share one text. Where two of them meet in one expression, list
/// or list of arguments, and one is read after the other has written, both give the same: these
/// places, in the words of a warning, for a text that has been built. A handle that a script keeps
/// is its own business. Linear in the text's length; at most 100 places.
std::vector<ScanRefusal> findOverwrittenResults(std::string_view text);

}  // namespace korvant
