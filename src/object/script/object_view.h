// How property objects show themselves to a debugger.
#pragma once

#include "host/engine/type_view.h"

namespace korvant {

/// By class, with value, unit and what their rules say. Changed as a script would change them.
const TypeView& objectView();

}  // namespace korvant
