// Marks in the margins of the text that are pictures of ours.
#pragma once

class wxStyledTextCtrl;

namespace korvant::ui {

struct Look;

/// Arrows at what can be folded, in the colours of `look`; null brings the classic signs back.
void showFoldMarks(wxStyledTextCtrl& control, const Look* look);

}  // namespace korvant::ui
