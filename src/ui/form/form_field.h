// The field, or list of options, that is open in a list of properties.
#pragma once

#include <wx/propgrid/propgrid.h>

#include <optional>
#include <string>

#include "object/form/edit_session.h"
#include "ui/form/form_row.h"
#include "ui/form/form_typed_text.h"

class wxOwnerDrawnComboBox;
class wxTextCtrl;

namespace korvant::ui {

class FormRefusal;

/// At most one row is edited at a time. Knows what its control began with, whether something else
/// was typed since, and shows why it was refused. The control is the toolkit's, which makes it for
/// the selected row when that row says that it is edited.
class FormField {
  public:
    FormField(wxPropertyGrid& list, const EditSession& session) : list_(list), session_(session) {}

    /// The row; null when none is edited.
    FormRow* row() const { return row_; }
    bool isOpen() const { return row_ != nullptr; }

    /// Makes the control of the selected row.
    void open(FormRow& row);
    /// Takes it away; what was typed is dropped.
    void close();
    /// Another row was selected: its control took the place of this one's.
    void forget();

    wxTextCtrl* text() const;               ///< null when a list is open, or nothing
    wxOwnerDrawnComboBox* options() const;  ///< null when a field is open, or nothing

    /// What the field began with.
    wxString original() const;
    bool modified() const;
    /// What was typed, as the session takes it.
    std::string typed() const;
    void set(const wxString& text);
    /// A rule changed the row: shows its new value, unless something was typed.
    void refresh();
    /// Marks the next option that begins with `typed` in the open list.
    void markOption(const wxString& typed);

    /// Shows `message` below `place`; the field has the keyboard again.
    void refuse(const wxString& message, const wxRect& place);
    void hideRefusal();
    /// Why the text was refused; empty when it was not.
    wxString refusal() const;

  private:
    wxPropertyGrid& list_;
    const EditSession& session_;
    FormRow* row_ = nullptr;
    std::optional<TypedText> began_;
    FormRefusal* refusal_ = nullptr;  ///< while it is shown
};

}  // namespace korvant::ui
