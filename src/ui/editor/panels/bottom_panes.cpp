#include "ui/editor/panels/bottom_panes.h"

#include <wx/stc/stc.h>

#include <algorithm>
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kTextMargin = 12;
constexpr char kEmptyOutput[] = "What the editor and the debugger report";

}  // namespace

BottomPanes::BottomPanes(wxWindow& parent, const Look& look, wxStyledTextCtrl* output,
                         std::function<void(Pane)> clear, std::function<void()> layOut)
    : clear_(std::move(clear)), layOut_(std::move(layOut)) {
    part(Pane::output) = {output, true};
    left_ = new PaneHeading(&parent, look, PaneHeading::Style::underlined, {{words("Output"), {}}});
    right_ =
        new PaneHeading(&parent, look, PaneHeading::Style::underlined, {{words("Console"), {}}});
    const auto copy = [this] {
        if (copyConsole) copyConsole();
    };
    leftCopy_ = left_->addButton(Icon::copy, words("Copy"), copy);
    leftTrash_ = left_->addButton(Icon::trash, words("Empty"), [this] { clear_(shownPane(true)); });
    leftClose_ = left_->addButton(Icon::close, words("Close"), [this] { closeShown(true); });
    rightCopy_ = right_->addButton(Icon::copy, words("Copy"), copy);
    rightTrash_ = right_->addButton(Icon::trash, words("Empty"), [this] { clear_(rightFront_); });
    right_->addButton(Icon::close, words("Close"), [this] { closeShown(false); });
    left_->onChosen = [this](int index) { show(panesOf(true)[static_cast<std::size_t>(index)]); };
    right_->onChosen = [this](int index) { show(panesOf(false)[static_cast<std::size_t>(index)]); };
    right_->Hide();
}

void BottomPanes::closeShown(bool left) {
    const Pane pane = shownPane(left);
    if (pane != Pane::output) {
        open(pane, false);
        if (onClosed) onClosed(pane);
        return;
    }
    if (onOutputClosed) onOutputClosed();
}

void BottomPanes::setContent(Pane pane, wxWindow* content) {
    part(pane).content = content;
    content->Hide();
}

bool BottomPanes::isOpen(Pane pane) const {
    return part(pane).open && part(pane).content;
}

void BottomPanes::open(Pane pane, bool opened) {
    if (part(pane).open == opened) return;
    part(pane).open = opened;
    if (opened) rightFront_ = pane;
    if (!isOpen(rightFront_)) rightFront_ = isOpen(Pane::problems) ? Pane::problems : Pane::console;
    if (!isOpen(front_)) front_ = Pane::output;
    refreshTitles();
    layOut_();
}

void BottomPanes::show(Pane pane) {
    open(pane, true);
    front_ = pane;
    if (pane != Pane::output) rightFront_ = pane;
    refreshTitles();
    layOut_();
}

void BottomPanes::setProblemCount(int count) {
    if (std::exchange(problems_, count) != count) refreshTitles();
}

void BottomPanes::setOutputRemark(bool empty) {
    outputEmpty_ = empty;
    left_->setRemark(empty && !hasRight() ? words(kEmptyOutput) : wxString());
}

PaneHeading::Title BottomPanes::titleOf(Pane pane) const {
    switch (pane) {
        case Pane::output:
            return {words("Output"), {}};
        case Pane::console:
            return {words("Console"), {}};
        case Pane::problems:
            break;
    }
    return {words("Problems"), problems_ > 0 ? wxString::Format("%d", problems_) : wxString()};
}

std::vector<BottomPanes::Pane> BottomPanes::panesOf(bool left) const {
    std::vector<Pane> panes;
    if (left) panes.push_back(Pane::output);
    if (!left || asTabs_)
        for (const Pane pane : {Pane::problems, Pane::console})
            if (isOpen(pane)) panes.push_back(pane);
    if (left && panes.size() == 3) std::swap(panes[1], panes[2]);
    return panes;
}

void BottomPanes::refreshTitles() {
    for (const bool left : {true, false}) {
        PaneHeading* heading = left ? left_ : right_;
        const Pane shown = shownPane(left);
        std::vector<PaneHeading::Title> titles;
        int chosen = 0;
        for (const Pane pane : panesOf(left)) {
            if (pane == shown) chosen = static_cast<int>(titles.size());
            titles.push_back(titleOf(pane));
        }
        heading->setTitles(titles);
        heading->choose(chosen);
    }
    left_->showButton(leftClose_, !hasRight() || asTabs_);
    left_->showButton(leftCopy_, shownPane(true) == Pane::console);
    left_->showButton(leftTrash_, shownPane(true) != Pane::problems);
    right_->showButton(rightCopy_, rightFront_ == Pane::console);
    right_->showButton(rightTrash_, rightFront_ == Pane::console);
    setOutputRemark(outputEmpty_);
}

void BottomPanes::layOut(const WorkbenchLayout& layout, bool visible,
                         const std::function<wxRect(const Rectangle&)>& pixels) {
    asTabs_ = layout.bottomAsTabs;
    refreshTitles();
    const bool beside = visible && hasRight() && !asTabs_;
    left_->Show(visible);
    right_->Show(beside);
    if (visible) left_->SetSize(pixels(layout.outputHeading));
    if (beside) right_->SetSize(pixels(layout.rightHeading));
    for (const Pane pane : {Pane::output, Pane::console, Pane::problems}) {
        wxWindow* content = part(pane).content;
        if (!content) continue;
        const bool isLeft = asTabs_ || pane == Pane::output;
        const Pane shown = asTabs_ ? front_ : pane == Pane::output ? Pane::output : rightFront_;
        const Rectangle& place = isLeft ? layout.output : layout.right;
        const bool seen = visible && isOpen(pane) && pane == shown && place.height > 0;
        content->Show(seen);
        if (seen) content->SetSize(pixels(place));
    }
}

std::vector<wxWindow*> BottomPanes::focusOrder() const {
    std::vector<wxWindow*> order;
    for (const Pane pane : {Pane::output, Pane::problems, Pane::console})
        if (part(pane).content && part(pane).content->IsShown())
            order.push_back(part(pane).content);
    return order;
}

}  // namespace korvant::ui
