// A field over a row of a list, in which its text is edited in place.
#pragma once

#include <functional>

#include "ui/kit/row_list.h"

class wxTextCtrl;

namespace korvant::ui {

/// Where a text is refused the reason stands beside the row.
class RowNote : public PaintedWindow {
  public:
    RowNote(RowList& list, const Look& look);
    /// Of the row at `place` in the list; an empty text hides it.
    void say(const wxString& text, const wxRect& place);
    const wxString& said() const { return said_; }

  private:
    void paint(wxGraphicsContext& context) override;

    RowList& list_;
    wxString said_;
    std::vector<wxString> lines_;
};

/// An event handler, so that windows which outlive it forget it.
class RowField : public wxEvtHandler {
  public:
    /// Answers what is wrong with a text; empty: it has been taken. It may change the list.
    using Taken = std::function<wxString(const wxString&)>;
    /// Of a row, in the list's own pixels.
    using Place = wxRect (RowList::*)(int) const;

    /// `list` and `look` outlive it. It hears when rows move in the list.
    RowField(RowList& list, const Look& look, Place placeOf);
    ~RowField() override { list_.onMoved = {}; }

    /// Shows `text`, selected, over a row. Return hands what the field holds to `taken`; what that
    /// refuses stays to be mended. Escape leaves the old text; so does whoever goes elsewhere, but
    /// not with a text of his own: that waits for one of the two keys.
    void open(int row, const wxString& text, Taken taken);
    /// Says why a row cannot be edited.
    void refuse(int row, const wxString& why);
    /// The row under the field; -1 when there is none.
    int row() const { return row_; }
    /// The row has come to be another one of the list.
    void setRow(int row);
    void close();
    /// The same, and the keyboard is the list's.
    void end();
    bool hasFocus() const;
    wxTextCtrl* field() const { return field_; }
    const RowNote* note() const { return note_; }

  private:
    void makeField();
    void place();
    void say(const wxString& problem, int row);
    void onKey(wxKeyEvent& event);
    void onText(wxCommandEvent& event);
    void onReturn(wxCommandEvent&) { take(); }
    void onLeft(wxFocusEvent& event);
    void onListLeft(wxFocusEvent& event);
    void take();

    RowList& list_;
    const Look& look_;
    Place placeOf_;
    Taken taken_;
    wxTextCtrl* field_ = nullptr;
    RowNote* note_ = nullptr;
    wxString before_;
    int row_ = -1;
};

}  // namespace korvant::ui
