// Scrambling is its own inverse and keeps every byte in its range.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "editor/document/scramble.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::int32_t key = 0;
    if (size < sizeof key) return 0;
    std::memcpy(&key, data, sizeof key);
    const std::string original(reinterpret_cast<const char*>(data) + sizeof key, size - sizeof key);
    std::string text = original;
    korvant::scramble(text, key);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto before = static_cast<unsigned char>(original[i]);
        const auto after = static_cast<unsigned char>(text[i]);
        if ((before >> 5) != (after >> 5)) std::abort();
        if ((before < 32 || before > 127) && before != after) std::abort();
    }
    korvant::scramble(text, key);
    if (text != original) std::abort();
    return 0;
}
