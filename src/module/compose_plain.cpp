#include "module/composition.h"

namespace korvant {

/// Nothing to do: whoever links this has set the services of the session itself.
void composeServices() {}

bool feedScriptInput(const std::string&) {
    return false;
}

}  // namespace korvant
