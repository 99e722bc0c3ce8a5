// Finding among the variables, and what can be done with one.
#include <wx/menu.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/editor/panels/debug_panel.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kFilterRow = 36, kFilterSide = 8, kFilterTop = 4, kFieldHeight = 28, kInField = 9;

enum Item { kChange = 1, kWatchItem, kCopyItem, kFindItem, kCloseAll };

}  // namespace

void DebugPanel::makeFilter() {
    filter_ = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxBORDER_NONE);
    native::bareField(*filter_);
    filter_->SetHint(words("Find a variable"));
    native::setAccessibleName(*filter_, words("Find a variable"));
    filter_->Hide();
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { readVariables(); });
    filter_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        const int code = event.GetKeyCode();
        if (code != WXK_DOWN && code != WXK_RETURN && code != WXK_TAB) return event.Skip();
        sections_[kVariables].list->select(0);
        sections_[kVariables].list->SetFocus();
    });
    for (const auto& change : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
        filter_->Bind(change, [this](wxFocusEvent& event) {
            Refresh();
            event.Skip();
        });
}

void DebugPanel::openFilter() {
    filtering_ = true;
    filter_->SetFont(look().code);
    filter_->SetBackgroundColour(colourOf(look()->editor));
    filter_->SetForegroundColour(colourOf(look()->text));
    showSection(kVariables);
    filter_->SetFocus();
    filter_->SelectAll();
}

bool DebugPanel::escape() {
    for (RowField* field : {variableField_.get(), watchField_.get()})
        if (field->hasFocus()) return field->end(), true;
    if (!filter_->HasFocus()) return false;
    closeFilter();
    return true;
}

void DebugPanel::closeFilter() {
    filtering_ = false;
    filter_->ChangeValue({});
    readVariables();
    place();
    sections_[kVariables].list->SetFocus();
}

int DebugPanel::placeFilter(int left, int y, int width, bool visible) {
    const bool shown = filtering_ && visible;
    filter_->Show(shown);
    if (!shown) return 0;
    filterBox_ = wxRect(left + dip(kFilterSide), y + dip(kFilterTop),
                        std::max(width - 2 * dip(kFilterSide), 0), dip(kFieldHeight));
    const int tall = std::min(filter_->GetBestSize().y, filterBox_.height - 4);
    filter_->SetSize(filterBox_.x + dip(kInField), filterBox_.y + (filterBox_.height - tall) / 2,
                     std::max(filterBox_.width - 2 * dip(kInField), 0), tall);
    Refresh();
    return dip(kFilterRow);
}

bool DebugPanel::passesFilter(const ValueRow& row) const {
    const wxString wanted = filter_->GetValue().Lower();
    const auto has = [&wanted](const std::string& text) {
        return fromUtf8(text).Lower().Contains(wanted);
    };
    return has(row.value.name) || has(row.summary.empty() ? row.value.value : row.summary);
}

/// With a row that is found those that it lies in are shown.
void DebugPanel::readVariables() {
    const auto& all = values_.rows();
    valueRows_.clear();
    int wanted = 0;  // depth from which on the row before shows that this one is above it
    for (std::size_t i = all.size(); i-- > 0;) {
        const bool above = all[i].depth < wanted;
        if (filtering_ && !above && !passesFilter(all[i])) continue;
        wanted = all[i].depth;
        valueRows_.push_back(i);
    }
    std::reverse(valueRows_.begin(), valueRows_.end());
    sections_[kVariables].list->setEmptyText(
        filtering_ && !all.empty() ? words("No variable has this in its name or value.")
                                   : wxString());
    sections_[kVariables].list->rowsChanged();
    keepVariableField();
}

const ValueRow& DebugPanel::valueAt(int index) const {
    return values_.rows()[placeOf(index)];
}

void DebugPanel::editVariable(int index) {
    const ValueRow& row = valueAt(index);
    if (row.more > 0 || row.value.heading) return;
    const std::string why = values_.whyNotSettable(placeOf(index));
    if (!why.empty()) return variableField_->refuse(index, fromUtf8(why));
    if (variableField_->row() != index) variableField_->close();
    edited_ = row.path;
    variableField_->open(
        index, fromUtf8(values_.editText(placeOf(index))),
        [this, path = row.path](const wxString& text) { return setVariable(path, toUtf8(text)); });
}

wxString DebugPanel::setVariable(const std::string& path, const std::string& expression) {
    const std::string problem = values_.set(values_.find(path), expression);
    readVariables();
    // What was refused may have run before it was.
    inspection_.valuesChanged();
    return fromUtf8(problem);
}

void DebugPanel::keepVariableField() {
    if (variableField_->row() < 0) return;
    const std::size_t place = values_.find(edited_);
    const auto row = std::find(valueRows_.begin(), valueRows_.end(), place);
    if (row == valueRows_.end()) return variableField_->close();
    variableField_->setRow(static_cast<int>(row - valueRows_.begin()));
}

void DebugPanel::openVariableMenu(const wxPoint& place) {
    const int index = sections_[kVariables].list->selected();
    const ValueRow* const row =
        index >= 0 && index < static_cast<int>(valueRows_.size()) ? &valueAt(index) : nullptr;
    const bool isValue = row && row->more == 0 && !row->value.heading;
    wxMenu menu;
    menu.Append(kChange, words("Change the value") + "\tF2");
    menu.Append(kWatchItem, words("Watch"));
    menu.Append(kCopyItem, words("Copy") + "\tCtrl+C");
    menu.AppendSeparator();
    menu.Append(kFindItem, words("Find a variable"));
    menu.Append(kCloseAll, words("Close all"));
    menu.Enable(kChange, isValue && row->value.settable);
    menu.Enable(kWatchItem, isValue && !row->value.evaluateName.empty());
    menu.Enable(kCopyItem, isValue);
    const int item = GetPopupMenuSelectionFromUser(menu, place);
    if (item != wxID_NONE) chooseForVariable(item);
}

void DebugPanel::chooseForVariable(int item) {
    RowList& list = *sections_[kVariables].list;
    const int index = list.selected();
    if (item == kFindItem) return openFilter();
    if (item == kCloseAll) {
        values_.closeAll();
        return readVariables();
    }
    if (index < 0 || index >= static_cast<int>(valueRows_.size())) return;
    if (item == kChange) editVariable(index);
    if (item == kWatchItem) addWatch(valueAt(index).value.evaluateName);
    if (item == kCopyItem) list.onCopy(index);
}

}  // namespace korvant::ui
