// What posix_spawn wants to be given.
#pragma once

#include <string>
#include <vector>

namespace korvant {

/// Pointers to the texts, which must live as long as they, and a null pointer at the end.
inline std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace korvant
