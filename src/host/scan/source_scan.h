// A look at a script's text ahead of the compiler.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/engine/engine_build.h"
#include "host/engine/limits.h"

namespace korvant {

/// Why a text is not given to the compiler.
struct ScanRefusal {
    std::string text;         ///< as a compiler would say it
    std::int32_t row = 1;     ///< 1-based
    std::int32_t column = 1;  ///< 1-based
};

/// Refuses what would overflow the compiler's stack or keep it busy without end; nothing for every
/// other text, however wrong. Linear in the text's length. Where the engine is not `hardened`, also
/// what would overflow its message buffer and, of what it does not survive otherwise, the part that
/// people write.
std::optional<ScanRefusal> scanSource(std::string_view text, const Limits& limits,
                                      bool hardened = engineIsHardened());

}  // namespace korvant
