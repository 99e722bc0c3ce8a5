#include "ui/editor/panels/problem_list.h"

#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

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
    count = [this] { return static_cast<int>(problems_().all().size()); };
    row = [this](int index) { return rowOf(index); };
    onActivated = [this](int index) {
        const Diagnostic chosen = problems_().all()[static_cast<std::size_t>(index)];
        onChosen(chosen);
    };
    onCopy = [this](int index) {
        copyToClipboard(fromUtf8(problems_().all()[static_cast<std::size_t>(index)].text));
    };
}

ListRow ProblemList::rowOf(int index) const {
    const Diagnostic& one = problems_().all()[static_cast<std::size_t>(index)];
    ListRow shown;
    shown.name = fromUtf8(one.text);
    if (one.line > 0) shown.right = wxString::Format(words("line %d"), one.line);
    if (one.kind == Diagnostic::Kind::information) {
        shown.depth = index > 0 ? 1 : 0;
        shown.nameColour = &ThemeTable::secondText;
        return shown;
    }
    const bool isError = one.kind == Diagnostic::Kind::error;
    shown.icon = isError ? Icon::error : Icon::warning;
    shown.iconColour = isError ? &ThemeTable::error : &ThemeTable::warning;
    return shown;
}

}  // namespace korvant::ui
