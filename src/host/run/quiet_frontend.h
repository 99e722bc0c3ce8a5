// A front end that refuses every question, for looking at values.
#pragma once

#include "host/services/frontend.h"

namespace korvant {

/// Sets a script exception instead of asking. Lives for the process.
Frontend& quietFrontend();

inline constexpr char kQuietRefusal[] = "Nothing can be asked while a value is looked at";

}  // namespace korvant
