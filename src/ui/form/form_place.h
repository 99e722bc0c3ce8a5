// Where forms stand.
#pragma once

#include "object/form/form_memory.h"

class wxTopLevelWindow;

namespace korvant::ui {

/// Where the last form of this kind stood, inside the display that holds most of that place; the
/// first time in the middle. Before the window is shown.
void placeForm(wxTopLevelWindow& form, FormKind kind);

/// When the form closes.
void rememberForm(const wxTopLevelWindow& form, FormKind kind);

}  // namespace korvant::ui
