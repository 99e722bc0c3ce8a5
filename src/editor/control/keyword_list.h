// The words that the editor colours as keywords.
#pragma once

namespace korvant {

/// Keyword set 0 of the editor control: the language's words, the run-time library's functions
/// and functions that hosts of the family register themselves. 1456 characters.
extern const char kKeywordList[];

}  // namespace korvant
