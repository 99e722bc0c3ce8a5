#include "module/composition.h"

namespace korvant {

/// Nothing to do: whoever links this has set the services of the session itself.
void composeServices() {}

}  // namespace korvant
