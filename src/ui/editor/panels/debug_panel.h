// The panel at the side while a script stands still: stack, variables, watches, breakpoints.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "editor/stops/inspection.h"
#include "editor/stops/value_rows.h"
#include "ui/editor/panels/frame_chooser.h"
#include "ui/editor/panels/row_field.h"
#include "ui/kit/pane_heading.h"
#include "ui/kit/row_list.h"

class wxTextCtrl;

namespace korvant::ui {

/// A breakpoint as its row and its mark in the margin show it.
struct BreakpointRow {
    enum class Kind { plain, condition, prints, off, unverified };
    int line = 0;  ///< 1-based
    Kind kind = Kind::plain;
    bool enabled = true;
    std::string remark;
    bool operator==(const BreakpointRow&) const = default;
};
Icon iconOf(BreakpointRow::Kind kind);

/// What the panel asks for beside the inspection.
struct DebugPanelActions {
    std::function<void(int line)> gotoLine;
    std::function<void(int line)> removeBreakpoint;
    std::function<void(int line)> switchBreakpoint;
    std::function<void(int line)> editBreakpoint;
    std::function<void()> removeBreakpoints;
    std::function<void()> switchBreakpoints;
    std::function<void()> closed;
    /// `entered`: the user goes there.
    std::function<void(unsigned frame, bool entered)> frameChosen;
    /// The file of a place; empty where it is in none.
    std::function<std::string(const ScriptPlace& place)> fileOf;
};

class DebugPanel : public PaintedWindow {
  public:
    DebugPanel(wxWindow* parent, const Look& look, Inspection& inspection,
               DebugPanelActions actions);

    /// Shows what can be seen now.
    void refresh(const std::vector<BreakpointRow>& breakpoints);
    /// The four sections as tabs of one pane, where there is little room.
    void setAsTabs(bool asTabs);
    void setFolded(int bits);
    int folded() const;
    /// Lists that can be seen, from top to bottom.
    std::vector<wxWindow*> focusOrder() const;
    RowList* list(int section) const { return sections_[static_cast<std::size_t>(section)].list; }
    enum Section { kStack, kVariables, kWatches, kBreakpoints };
    FrameChooser* frameChooser() const { return frame_; }
    void addWatch(const std::string& expression);
    /// Shows only variables with the text of the field in their name or value; Escape ends it.
    void openFilter();
    /// False when there was nothing to end.
    bool escape();
    wxTextCtrl* filter() const { return filter_; }
    const RowField& variableField() const { return *variableField_; }
    void showSection(int section);

  private:
    struct Part {
        PaneHeading* heading = nullptr;
        RowList* list = nullptr;
    };

    void makeSections();
    void connectStack();
    void connectVariables();
    void connectWatches();
    void makeFilter();
    void closeFilter();
    /// The height that it takes.
    int placeFilter(int left, int y, int width, bool visible);
    void readVariables();
    bool passesFilter(const ValueRow& row) const;
    const ValueRow& valueAt(int index) const;
    std::size_t placeOf(int index) const { return valueRows_[static_cast<std::size_t>(index)]; }
    void openVariableMenu(const wxPoint& place);
    void chooseForVariable(int item);
    void connectBreakpoints();
    void place();
    void placeSections(int left, int width, int height);
    int wantedHeight(int section) const;
    ListRow stackRow(int index) const;
    ListRow variableRow(int index) const;
    ListRow watchRow(int index) const;
    ListRow breakpointRow(int index) const;
    static wxString lineWords(const ScriptPlace& place);
    void refreshFrame();
    void chooseFrame(int index, bool entered = false);
    void editVariable(int index);
    wxString setVariable(const std::string& path, const std::string& expression);
    /// What is typed for a variable stays with it; without it there is nothing to be set.
    void keepVariableField();
    void editWatch(int index);
    void paint(wxGraphicsContext& context) override;

    Inspection& inspection_;
    DebugPanelActions actions_;
    ValueRows values_;
    std::vector<std::size_t> valueRows_;  ///< those of values_ that are shown
    std::unique_ptr<RowField> variableField_, watchField_;
    std::string edited_;  ///< the path of the variable under the field
    wxTextCtrl* filter_ = nullptr;
    wxRect filterBox_;
    bool filtering_ = false;
    std::vector<DebugFrame> stack_;
    std::vector<BreakpointRow> breakpoints_;
    std::vector<Part> sections_;
    PaneHeading* tabs_ = nullptr;
    FrameChooser* frame_ = nullptr;  ///< above the variables where the sections are tabs
    std::uint64_t shown_ = ~std::uint64_t{0};
    bool asTabs_ = false;
};

}  // namespace korvant::ui
