// The buttons of forms, in the form's language.
#pragma once

#include <wx/string.h>

#include <cstdint>

#include "object/form/form_texts.h"

class wxButton;
class wxSizer;
class wxWindow;

namespace korvant::ui {

/// The text for a control.
wxString formCaption(FormText caption, std::int32_t locale);

/// The caption of a button that a form shows beside others, with the letter that presses it.
wxString keyedFormCaption(FormText caption, std::int32_t locale);

wxButton* formButton(wxWindow* parent, int id, FormText caption, std::int32_t locale);

/// OK, the default, and Cancel.
wxSizer* okAndCancel(wxWindow* parent, std::int32_t locale);

}  // namespace korvant::ui
