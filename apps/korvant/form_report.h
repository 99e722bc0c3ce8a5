// Forms as text or as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "object/form/edit_session.h"

namespace korvant_app {

/// Everything that the form shows, in UTF-8. Looks at the elements of groups and comes back to
/// the current ones.
nlohmann::ordered_json formAsJson(korvant::EditSession& session);

/// The same for people to read.
std::string formAsText(const nlohmann::ordered_json& form);

}  // namespace korvant_app
