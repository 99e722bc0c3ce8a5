// A field over a row of a list, in which its text is edited in place.
#pragma once

#include <functional>
#include <string>

#include "ui/kit/row_list.h"

class wxTextCtrl;

namespace korvant::ui {

/// Shows the field at `place` of `list` with `text` selected. Return hands what it holds to
/// `taken`, which answers what is wrong with it (empty: nothing, the field goes); Escape and
/// leaving it keep the old text. `taken` may change the list.
void editInPlace(RowList& list, const Look& look, const wxRect& place, const wxString& text,
                 std::function<wxString(const wxString&)> taken);

}  // namespace korvant::ui
