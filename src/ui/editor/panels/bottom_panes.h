// The panes below the text: Output, and beside it or as tabs Console and Problems.
#pragma once

#include <functional>

#include "editor/control/workbench_layout.h"
#include "ui/kit/pane_heading.h"
#include "ui/kit/row_list.h"

class wxStyledTextCtrl;

namespace korvant::ui {

class BottomPanes {
  public:
    enum class Pane { output, console, problems };

    /// `clear` empties a pane; `closed` is told when a pane's cross is pressed.
    BottomPanes(wxWindow& parent, const Look& look, wxStyledTextCtrl* output,
                std::function<void(Pane)> clear, std::function<void()> layOut);

    /// Content of a pane at the right, which has a tab while it is open.
    void setContent(Pane pane, wxWindow* content);
    void open(Pane pane, bool open);
    bool isOpen(Pane pane) const;
    bool hasRight() const { return isOpen(Pane::console) || isOpen(Pane::problems); }
    /// Puts a pane in front.
    void show(Pane pane);
    void setProblemCount(int count);
    /// What of them can be clicked into at any time.
    std::vector<wxWindow*> headings() const { return {left_, right_}; }
    std::function<void()> copyConsole;
    std::function<void(Pane)> onClosed;  ///< by hand
    void setOutputRemark(bool empty);

    void layOut(const WorkbenchLayout& layout, bool visible,
                const std::function<wxRect(const Rectangle&)>& pixels);
    std::vector<wxWindow*> focusOrder() const;
    PaneHeading* outputHeading() const { return left_; }
    PaneHeading* rightHeading() const { return right_; }
    std::function<void()> onOutputClosed;

  private:
    struct Part {
        wxWindow* content = nullptr;
        bool open = false;
    };
    Part& part(Pane pane) { return parts_[static_cast<int>(pane)]; }
    const Part& part(Pane pane) const { return parts_[static_cast<int>(pane)]; }
    PaneHeading::Title titleOf(Pane pane) const;
    void refreshTitles();
    std::vector<Pane> panesOf(bool left) const;
    void closeShown(bool left);
    Pane shownPane(bool left) const {
        return !left ? rightFront_ : asTabs_ ? front_ : Pane::output;
    }
    Pane& front(bool left) { return left && asTabs_ ? front_ : rightFront_; }

    Part parts_[3];
    std::function<void(Pane)> clear_;
    std::function<void()> layOut_;
    PaneHeading* left_;
    PaneHeading* right_;
    PaintedButton* leftClose_;
    PaintedButton* leftCopy_;
    PaintedButton* leftTrash_;
    PaintedButton* rightCopy_;
    PaintedButton* rightTrash_;
    Pane front_ = Pane::output;        ///< with all as tabs of one pane
    Pane rightFront_ = Pane::console;  ///< of the right one
    bool asTabs_ = false;
    int problems_ = 0;
    bool outputEmpty_ = true;
};

}  // namespace korvant::ui
