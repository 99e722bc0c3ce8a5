#include "module/own_looks.h"

namespace korvant {

/// The desktop draws all programs alike.
void useOwnLooks(bool) noexcept {}

}  // namespace korvant
