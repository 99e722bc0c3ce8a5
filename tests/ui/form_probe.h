// What a test sees of the form that is open.
#pragma once

#include <string>

#include "support/ui_driver.h"
#include "ui/form/form_editor.h"
#include "ui/form/form_list.h"
#include "ui/form/form_window.h"

namespace korvant::test {

/// Objects are edited in windows while it lives.
class FormsInstalled {
  public:
    FormsInstalled() { ui::installFormEditor(); }
    ~FormsInstalled() { setObjectEditor(nullptr); }
    FormsInstalled(const FormsInstalled&) = delete;
    FormsInstalled& operator=(const FormsInstalled&) = delete;
};

/// The form that was opened last; null for none.
ui::FormWindow* shownForm();
/// The list of the page that is shown; null while there is none.
ui::CListCtrlEx* shownList();
/// The label of the selected row, and what it shows; empty when there is none.
std::string selectedLabel();
std::string selectedText();
/// The property whose row has this label; -1 for none.
int propertyLabelled(const std::string& label);
/// The text in the open field.
std::string typedText();

/// Add, Copy, Remove and Order of the page that is shown, from 0; null when it is not shown.
wxWindow* groupButton(int index);

/// Adds to the steps of UiDriver what forms need.
class FormDriver : public UiDriver {
  public:
    /// Waits until the form has the keyboard and a row is selected.
    FormDriver& form(const wxString& title);
    /// Waits until the row with this label is selected.
    FormDriver& row(const std::string& label);
    FormDriver& untilEditing();
    FormDriver& untilIdle();
    /// Waits until the open field holds exactly this text.
    FormDriver& untilTyped(const std::string& text);
    /// Waits until the selected row shows this text.
    FormDriver& untilShows(const std::string& text);
    FormDriver& untilRefused();
    FormDriver& untilReport();
    FormDriver& expect(const std::string& what, Condition holds);
    FormDriver& press(int code, int modifiers = wxMOD_NONE);
    FormDriver& enter(const std::string& text);
    // The steps of UiDriver, so that a chain goes on.
    FormDriver& when(const std::string& what, Condition ready, Action act = {});
    FormDriver& run(Action act);
    FormDriver& window(const wxString& title);
    /// Waits until a window that the form opened has the keyboard, whatever its title.
    FormDriver& windowOverForm();
    FormDriver& gone(const wxString& title);
    FormDriver& click(std::function<wxWindow*()> target);
    /// Points at the value of the row with this label, which must be in sight: at its left end.
    FormDriver& pointAtValue(const std::string& label);
    /// Clicks there.
    FormDriver& clickValue(const std::string& label, int button = wxMOUSE_BTN_LEFT);
    FormDriver& untilMenu();
    /// Answers the question about changes: they go.
    FormDriver& discard();

    /// A picture of the screen once everything has been painted.
    FormDriver& shot(const std::string& name);
};

}  // namespace korvant::test
