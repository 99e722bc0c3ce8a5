// Answers of message boxes that the user does not want to see again.
#pragma once

#include <string>

#include "host/services/frontend.h"

namespace korvant::ui {

/// The remembered button for this box, or 0. Kept per company and module, under a key that is
/// made from caption and text: in the registry on Windows, elsewhere in the settings folder of the
/// user (COMPANY/MODULE.conf). Nothing is kept without both names.
int rememberedAnswer(const MessageBoxRequest& request);

/// Cancel is no answer to be kept, nor is a box that was closed or that stopped the script.
bool mayBeRemembered(int button);

/// False when it could not be stored.
bool rememberAnswer(const MessageBoxRequest& request, int button);

}  // namespace korvant::ui
