#include "ui/editor/panels/problem_list.h"

#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr char kCandidates[] = "Candidates are:";

ListMetrics problemMetrics() {
    ListMetrics places;
    places.iconX = 12;
    places.nameX = 38;
    places.indent = 28;
    places.top = 4;
    return places;
}

}  // namespace

ProblemList::ProblemList(wxWindow* parent, const Look& look,
                         std::function<const Problems&()> problems)
    : RowList(parent, look, problemMetrics(), words("Problems")), problems_(std::move(problems)) {
    setEmptyText(words("No problems found."));
    count = [this] {
        readRows();
        return static_cast<int>(rows_.size());
    };
    row = [this](int index) { return rowOf(index); };
    onActivated = [this](int index) {
        const Diagnostic chosen = at(index);
        onChosen(chosen);
    };
    onCopy = [this](int index) { copyToClipboard(fromUtf8(at(index).text)); };
}

/// The line above the candidates says no more than each of them does.
void ProblemList::readRows() {
    const Problems& problems = problems_();
    if (readFrom_ == &problems && read_ == problems.generation()) return;
    readFrom_ = &problems;
    read_ = problems.generation();
    rows_.clear();
    for (std::size_t i = 0; i < problems.all().size(); ++i) {
        const bool last = i + 1 == problems.all().size();
        if (problems.all()[i].text != kCandidates || last) rows_.push_back(i);
    }
}

const Diagnostic& ProblemList::at(int index) const {
    return problems_().all()[rows_[static_cast<std::size_t>(index)]];
}

ListRow ProblemList::rowOf(int index) const {
    const Diagnostic& one = at(index);
    ListRow shown;
    shown.name = fromUtf8(one.text);
    if (one.line > 0) shown.right = wxString::Format(words("line %d"), one.line);
    if (one.kind == Diagnostic::Kind::information) {
        shown.depth = index > 0 ? 1 : 0;
        shown.nameColour = &ThemeTable::secondText;
        if (isCandidate(rows_[static_cast<std::size_t>(index)]))
            shown.name = words("Candidate: ") + shown.name;
        return shown;
    }
    const bool isError = one.kind == Diagnostic::Kind::error;
    shown.icon = isError ? Icon::error : Icon::warning;
    shown.iconColour = isError ? &ThemeTable::error : &ThemeTable::warning;
    return shown;
}

bool ProblemList::isCandidate(std::size_t place) const {
    const auto& all = problems_().all();
    while (place > 0 && all[place].kind == Diagnostic::Kind::information)
        if (all[--place].text == kCandidates) return true;
    return false;
}

}  // namespace korvant::ui
