// Who is told what the compiler said about a script that built.
#pragma once

#include "host/run/build_messages.h"

namespace korvant {

/// Called from now on, on the thread that runs, before the main function of a script that built
/// begins; its messages are warnings and notes, and are gone afterwards. Null: nobody.
void setBuildListener(void (*listener)(const BuildMessages& messages)) noexcept;

}  // namespace korvant
