// Everything that scripts can call, in the order in which it registers.
#pragma once

#include <span>

#include "host/engine/registration.h"
#include "host/run/script_session.h"

namespace korvant {

/// What ConfigureScriptEngine registers, in its order.
std::span<const RegisterFamily> registrationOrder();

/// The same as tables with titles, for the manual and for completion.
std::span<const FunctionFamily> allFamilies();

}  // namespace korvant
