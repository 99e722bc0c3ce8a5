#include "editor/stops/last_output.h"

namespace korvant {

/// Up to twice the limit is held, so that what is dropped is dropped in large pieces.
void LastOutput::printed(std::string_view bytes) {
    try {
        bytes_ += bytes;
        if (bytes_.size() > 2 * kLimit) bytes_.erase(0, bytes_.size() - kLimit);
    } catch (...) {
        bytes_.clear();  // without memory there is nothing to show later
    }
}

std::string LastOutput::text() const {
    if (bytes_.size() <= kLimit) return bytes_;
    const std::string kept = bytes_.substr(bytes_.size() - kLimit);
    const std::size_t line = kept.find('\n');
    return line == std::string::npos ? kept : kept.substr(line + 1);
}

}  // namespace korvant
