// Where the scripting manual tells of something.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/engine/registration.h"

namespace korvant {

/// A title as the manual's files and places are named: "Index out of bounds" becomes
/// "index-out-of-bounds".
std::string manualSlug(std::string_view title);
/// "ref-strings.html#StrFind"; empty for what is no function of the library.
std::string manualPlaceOf(std::span<const FunctionFamily> families, const std::string& function);
/// "exceptions.html#index-out-of-bounds"; the place of an exception that the manual does not know
/// shows its page from the beginning.
std::string exceptionPlace(std::string_view exception);

}  // namespace korvant
