// The controls that stand in a row while it is edited.
#pragma once

#include <wx/propgrid/editors.h>

#include "ui/form/form_row.h"

namespace korvant::ui {

/// For fields and options; the others have no control in the row.
const wxPGEditor& rowEditor(RowEditor kind);
const wxPGEditor& noRowEditor();

}  // namespace korvant::ui
