// The list of properties on a page of a form.
#pragma once

#include <wx/propgrid/propgrid.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "object/form/edit_session.h"
#include "ui/form/form_field.h"
#include "ui/form/form_host.h"
#include "ui/form/form_row.h"
#include "ui/kit/guarded_window.h"

namespace korvant::ui {

class FormRowPainter;

/// Rows with a label, a value and, on a page that has any, a unit; under captions of categories.
/// A row is idle until it is edited: by Return, F2, typing or a click on its value. What was typed
/// is taken by Return, Tab, the arrows, or by leaving; a refused text stays in its field, with the
/// reason below it. Asks the session for what it shows at every paint; its own state is the
/// selected row and the field that is open.
class CListCtrlEx : public Guarded<wxPropertyGrid> {
  public:
    CListCtrlEx(wxWindow* parent, EditSession& session, int page, FormHost& host);
    ~CListCtrlEx() override;
    /// Keys are dealt with in onKey() and onCharacter() alone: the toolkit's own reading of a key
    /// that it has no action for depends on what happens to be on the stack, and may walk on by a
    /// row. It also stands between the key and its character.
    bool ProcessEvent(wxEvent& event) override;

    /// Makes the rows, when the page is first shown.
    void fill();
    bool filled() const { return filled_; }

    /// Takes what is being typed and closes the field. False: refused, the field stays.
    bool commit();
    /// Drops what is being typed.
    void revert() { field_.close(); }
    bool editing() const { return field_.isOpen(); }
    /// Something was typed that is not taken yet.
    bool typing() const { return field_.modified(); }
    /// Why the open field was refused; empty when it was not.
    wxString refusal() const { return field_.refusal(); }

    std::int32_t selectedProperty() const;
    /// False when what is being typed was refused. -1 selects nothing.
    bool select(std::int32_t property);
    /// The first row that can be edited, else the first.
    void selectFirst();
    /// Scrolls to the selected row.
    void showSelected();
    /// Opens the field, list or window of the selected row, or switches it.
    void editSelected();
    void resetSelected();

    void apply(const EditChanges& changes);

    // For rows, painter and editors.

    const EditSession& session() const { return session_; }
    int page() const { return page_; }
    const FormRowPainter& painter() const { return *painter_; }
    RowEditor editorOf(std::int32_t property) const;
    bool isEdited(const FormRow& row) const { return field_.row() == &row; }
    wxString fieldText() const { return field_.original(); }
    bool isFocused() const { return HasInternalFlag(wxPG_FL_FOCUSED); }
    int columnWidth(int column) const { return m_pState->GetColumnWidth(column); }
    /// Where a row stands in the window; empty when it is not shown.
    wxRect rowRect(std::int32_t property) const;
    void fieldChanged() { field_.hideRefusal(); }
    /// The button beside the field, F4.
    void openChooser();
    /// The list of options was closed, with a choice or without one.
    void optionsClosed();

    // Of the toolkit.

    bool CommitChangesFromEditor(wxUint32 flags) override;
    void ScrollWindow(int dx, int dy, const wxRect* rect = nullptr) override;

  private:
    void setLook();
    void addRows();
    FormRow* rowOf(std::int32_t property) const;
    FormRow* selectedRow() const;

    // Editing.
    void beginEdit(FormRow& row);
    void open(FormRow& row);
    void openLines(FormRow& row, const wxString& typed, bool replaces = false);
    void toggle(FormRow& row);
    std::optional<std::string> chosenFile(const FormRow& row);
    std::optional<std::string> chosenColour(const FormRow& row);
    void refuse(const FormRow& row, const std::string& message);
    bool take(const FormRow& row, const EditCommit& commit);

    // Keys.
    void onKey(wxKeyEvent& event);
    bool handleOptionsKey(int code);
    bool handleFieldKey(const wxKeyEvent& key);
    bool handleIdleKey(const wxKeyEvent& key);
    bool handleMoveKey(const wxKeyEvent& key);
    bool chooserKey(const wxKeyEvent& key);
    void onCharacter(wxKeyEvent& event);
    void typeOn(FormRow& row, const wxString& typed);
    void moveByTab(bool forward);
    void moveBy(int step);
    void moveToEnd(bool last);
    void fold(bool open);
    void copyValue() const;

    // Mouse.
    void onClick(wxMouseEvent& event);
    void clickValue(FormRow& row, int x, bool twice);
    void onMove(wxMouseEvent& event);
    wxString tipAt(const wxPoint& place) const;
    wxString cutOffText(const FormRow& row, int column) const;
    wxString findings(const FormRow& row) const;
    bool selectForMenu(const wxContextMenuEvent& event);
    void onContextMenu(wxContextMenuEvent& event);
    void runMenuCommand(int command);

    void onSize(wxSizeEvent& event);
    void applyFilter();
    void onSelected(wxPropertyGridEvent& event);

    EditSession& session_;
    const int page_;
    FormHost& host_;
    std::unique_ptr<FormRowPainter> painter_;
    FormField field_;
    std::vector<FormRow*> rows_;  ///< by property, from the page's first; the toolkit's own
    bool filled_ = false;
    bool fresh_ = true;  ///< the user has done nothing here yet
};

}  // namespace korvant::ui
