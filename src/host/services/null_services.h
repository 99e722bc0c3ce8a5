// A console and a front end that do nothing, for hosts that give none.
#pragma once

#include "host/services/console.h"
#include "host/services/frontend.h"

namespace korvant {

/// Swallows what is written, has no input. Lives for the process.
Console& nullConsole();

/// Answers every question as if the dialog had been closed. Lives for the process.
Frontend& nullFrontend();

}  // namespace korvant
