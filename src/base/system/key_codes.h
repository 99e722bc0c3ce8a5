// Character codes of keys, the same on every platform.
#pragma once

#include <string_view>
#include <vector>

namespace korvant {

/// The codes of one key as the console's single-key read gives them one after the other. `bytes`:
/// what a terminal sent for it. A character gives its byte in Windows Western, or its UTF-8 bytes
/// where it has none; Backspace 8; arrows, Home, End, Page Up and Down, Insert and Delete 224 and
/// a scan code, F1 to F10 0 and a scan code; a sequence that is not known its bytes.
/// Scan codes: keyboard scan code set 1 of the personal computer.
std::vector<int> keyCodes(std::string_view bytes);

/// How many more bytes belong to the key that begins with `bytes`: false when it is whole. An
/// escape byte alone may be the Escape key; only time tells.
bool keyGoesOn(std::string_view bytes);

}  // namespace korvant
