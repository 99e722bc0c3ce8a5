// How the parts of the control without a screen read bytes.
#pragma once

#include <cstdint>

namespace korvant::test {

inline bool isWordByte(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z') || byte == '_' || static_cast<signed char>(byte) < 0;
}

inline const char* textAt(std::intptr_t pointer) {
    return reinterpret_cast<const char*>(pointer);
}

}  // namespace korvant::test
