#include "host/source_scan.h"

namespace korvant {

std::optional<ScanRefusal> scanSource(std::string_view text, const Limits& limits) {
    if (text.size() <= limits.scriptBytes) return std::nullopt;
    return ScanRefusal{"The script is longer than " + std::to_string(limits.scriptBytes) + " bytes",
                       1, 1};
}

}  // namespace korvant
