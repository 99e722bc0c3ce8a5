#include "form_probe.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <cstdlib>

#include "ui/form/form_group_bar.h"
#include "ui/form/form_report.h"
#include "ui/kit/text_conversion.h"

namespace korvant::test {
ui::FormWindow* shownForm() {
    ui::FormWindow* found = nullptr;
    for (wxWindow* window : wxTopLevelWindows) {
        auto* form = dynamic_cast<ui::FormWindow*>(window);
        if (form && form->IsShownOnScreen()) found = form;
    }
    return found;
}

ui::CListCtrlEx* shownList() {
    wxWindow* form = shownForm();
    ui::CListCtrlEx* found = nullptr;
    for (int i = 0; form && !found; ++i) {
        const auto list = findChild<ui::CListCtrlEx>(form, i);
        if (!list) break;
        if (list->IsShownOnScreen()) found = list;
    }
    return found;
}

std::string selectedLabel() {
    const ui::CListCtrlEx* list = shownList();
    if (!list || list->selectedProperty() < 0) return {};
    return decodeForDisplay(list->session().row(list->selectedProperty()).label);
}

std::string selectedText() {
    const ui::CListCtrlEx* list = shownList();
    if (!list || list->selectedProperty() < 0) return {};
    return decodeForDisplay(list->session().state(list->selectedProperty()).text);
}

int propertyLabelled(const std::string& label) {
    const ui::CListCtrlEx* list = shownList();
    for (int i = 0; list && i < list->session().rowCount(); ++i)
        if (decodeForDisplay(list->session().row(i).label) == label) return i;
    return -1;
}

std::string typedText() {
    const ui::CListCtrlEx* list = shownList();
    const auto* field = list ? dynamic_cast<wxTextCtrl*>(list->GetEditorControl()) : nullptr;
    return field ? ui::toUtf8(field->GetValue()) : std::string();
}

wxWindow* groupButton(int index) {
    const wxWindow* form = shownForm();
    for (int i = 0; const auto bar = form ? findChild<ui::FormGroupBar>(form, i) : nullptr; ++i)
        if (bar->IsShownOnScreen()) return findChild<wxButton>(bar, index);
    return nullptr;
}

namespace {

/// On the screen; at the left end of the value.
wxPoint valuePlace(const std::string& label) {
    const wxRect row = shownList()->rowRect(propertyLabelled(label));
    EXPECT_TRUE(wxRect(shownList()->GetClientSize()).Contains(row.GetTopLeft())) << label;
    const int x = shownList()->GetSplitterPosition() + 12;
    return shownList()->ClientToScreen(wxPoint(x, row.y + row.height / 2));
}

/// What a form opened.
wxTopLevelWindow* windowOfForm() {
    for (wxWindow* window : wxTopLevelWindows) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        if (dialog && dialog->IsShownOnScreen() && !dynamic_cast<ui::FormWindow*>(dialog))
            return dialog;
    }
    return nullptr;
}

/// Without a window manager nobody gives the keyboard to a window that opens over another one, or
/// back to it.
class KeyboardIn {
  public:
    explicit KeyboardIn(std::function<wxTopLevelWindow*()> find) : find_(std::move(find)) {}
    explicit KeyboardIn(const wxString& title) : find_([title] { return findWindow(title); }) {}

    bool operator()() {
        wxTopLevelWindow* window = find_();
        if (dynamic_cast<ui::FormWindow*>(window) && windowOfForm()) return false;
        const bool managed = std::getenv("KORVANT_WINDOW_MANAGER") != nullptr;
        if (window && !managed && (!raised_ || !window->IsActive())) {
            window->Raise();
            raised_ = true;
            return false;
        }
        return window && window->IsActive() && wxWindow::FindFocus();
    }

  private:
    std::function<wxTopLevelWindow*()> find_;
    bool raised_ = false;
};

}  // namespace

FormDriver& FormDriver::form(const wxString& title) {
    when("form \"" + ui::toUtf8(title) + "\"", [keyboard = KeyboardIn(title)]() mutable {
        const ui::CListCtrlEx* list = shownList();
        return keyboard() && list && list->IsDescendant(wxWindow::FindFocus());
    });
    return *this;
}

FormDriver& FormDriver::row(const std::string& label) {
    when("row \"" + label + "\"", [label] { return selectedLabel() == label; });
    return *this;
}

FormDriver& FormDriver::untilEditing() {
    when("an open field", [] { return shownList() && shownList()->editing(); });
    return *this;
}

FormDriver& FormDriver::untilIdle() {
    when("an idle row", [] { return shownList() && !shownList()->editing(); });
    return *this;
}

FormDriver& FormDriver::untilTyped(const std::string& text) {
    when("typed \"" + text + "\"", [text] { return typedText() == text; });
    return *this;
}

FormDriver& FormDriver::untilShows(const std::string& text) {
    when("value \"" + text + "\"", [text] { return selectedText() == text; });
    return *this;
}

FormDriver& FormDriver::untilRefused() {
    when("a refusal", [] { return shownList() && !shownList()->refusal().empty(); });
    return *this;
}

FormDriver& FormDriver::untilReport() {
    when("a report", [] { return findChild<ui::FormReport>(shownForm()) != nullptr; });
    return *this;
}

FormDriver& FormDriver::expect(const std::string& what, Condition holds) {
    run([what, holds] { EXPECT_TRUE(holds()) << what; });
    return *this;
}

FormDriver& FormDriver::press(int code, int modifiers) {
    key(code, modifiers);
    return *this;
}

FormDriver& FormDriver::enter(const std::string& text) {
    type(text);
    return *this;
}

FormDriver& FormDriver::when(const std::string& what, Condition ready, Action act) {
    UiDriver::when(what, std::move(ready), std::move(act));
    return *this;
}

FormDriver& FormDriver::run(Action act) {
    UiDriver::run(std::move(act));
    return *this;
}

FormDriver& FormDriver::window(const wxString& title) {
    when("window \"" + ui::toUtf8(title) + "\"", KeyboardIn(title));
    return *this;
}

FormDriver& FormDriver::windowOverForm() {
    return when("a window over the form", KeyboardIn(windowOfForm));
}

FormDriver& FormDriver::gone(const wxString& title) {
    UiDriver::gone(title);
    return *this;
}

FormDriver& FormDriver::click(std::function<wxWindow*()> target) {
    UiDriver::click(std::move(target));
    return *this;
}

FormDriver& FormDriver::pointAtValue(const std::string& label) {
    return run([label] { wxUIActionSimulator().MouseMove(valuePlace(label)); });
}

FormDriver& FormDriver::clickValue(const std::string& label, int button) {
    return pointAtValue(label).run([button] { wxUIActionSimulator().MouseClick(button); });
}

FormDriver& FormDriver::untilMenu() {
    return when("a menu", menuIsOpen);
}

FormDriver& FormDriver::discard() {
    return window("KorvantIDE").press('N');
}

FormDriver& FormDriver::shot(const std::string& name) {
    if (!std::getenv("KORVANT_SCREENSHOTS")) return *this;
    when("the paint", [turns = 0]() mutable { return ++turns > 60; });
    picture(name);
    return *this;
}

}  // namespace korvant::test
