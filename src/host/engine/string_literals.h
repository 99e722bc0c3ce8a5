// What string literals of a script become.
#pragma once

#include "host/engine/engine_compat.h"

namespace korvant {

/// One object per literal text, shared by all places where it stands. Lives for the process.
asIStringFactory& stringLiterals();

}  // namespace korvant
