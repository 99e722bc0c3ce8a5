#include "ui/editor/panels/code_marks.h"

#include <wx/image.h>
#include <wx/stc/stc.h>

#include <algorithm>
#include <utility>

#include "editor/control/control_setup.h"
#include "ui/editor/panels/line_notes.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/look.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kSize = 14;
/// Numbers of markers beside the classic one.
constexpr int kConditionMark = 10, kPrintMark = 11, kOffMark = 12, kUnverifiedMark = 13,
              kPlainMark = 14, kCallerMark = 15, kStopMark = 16, kFailedMark = 17, kStopBand = 20,
              kExceptionBand = 21, kCallerBand = 22;
constexpr int kErrorIndicator = 8, kWarningIndicator = 9, kEditedIndicator = 12;
constexpr std::uintptr_t kClassicMarker = 0;

int markOf(BreakpointRow::Kind kind) {
    static constexpr int kMarks[] = {kPlainMark, kConditionMark, kPrintMark, kOffMark,
                                     kUnverifiedMark};
    return kMarks[static_cast<int>(kind)];
}

}  // namespace

CodeMarks::CodeMarks(wxStyledTextCtrl& control, const Look& look)
    : control_(control),
      look_(look),
      notes_(std::make_unique<LineNotes>(control, look)),
      over_(control, [this](wxGraphicsContext& context) { paintMarks(context); }) {}

CodeMarks::~CodeMarks() = default;

/// The control enlarges pictures on a fine screen, and then they are coarse: where the margin can
/// be painted over, its own mark is an empty one.
void CodeMarks::define(int marker, Icon icon, Rgb ThemeTable::*colour) {
    const bool lined = icon == Icon::breakpointCondition || icon == Icon::breakpointPrints;
    const wxColour second = lined                 ? *wxWHITE
                            : icon == Icon::error ? colourOf(look_->editor)
                                                  : wxNullColour;
    marks_[marker] = {icon, colourOf((*look_).*colour), second};
    if (over_.works()) return control_.MarkerDefine(marker, wxSTC_MARK_EMPTY);
    const int size = control_.FromDIP(kSize);
    control_.MarkerDefineBitmap(
        marker, iconBundle(icon, size, marks_[marker].first, second).GetBitmap(wxSize(size, size)));
}

void CodeMarks::paintMark(wxGraphicsContext& context, int marker, int margin, int y) const {
    const auto found = marks_.find(marker);
    if (found == marks_.end() || control_.GetMarginWidth(margin) == 0) return;
    int x = 0;
    for (int i = 0; i < margin; ++i) x += control_.GetMarginWidth(i);
    const int size = control_.FromDIP(kSize);
    x += (control_.GetMarginWidth(margin) - size) / 2;
    const double half = margin == kBookmarkMargin ? 0.5 : 0;  // as round as can be
    paintIcon(context, found->second.icon, x + half, y + (control_.TextHeight(0) - size) / 2 + half,
              size, found->second.first, found->second.second);
}

/// The mark of a kind stands in the place of the plain one, and any gives way to that of a stop.
int CodeMarks::shownMarks(int line) const {
    constexpr int kKinds =
        1 << kConditionMark | 1 << kPrintMark | 1 << kOffMark | 1 << kUnverifiedMark;
    const int marks = control_.MarkerGet(line) & control_.GetMarginMask(kBookmarkMargin);
    if (const int stop = marks & (1 << kStopMark | 1 << kFailedMark); stop != 0) return stop;
    if ((marks & kKinds) == 0) return marks;
    const bool plain = classicSymbol_ == sci::kMarkCircle;
    return marks & ~(1 << kWaitingMarker | 1 << kPlainMark | (plain ? 1 << kClassicMarker : 0));
}

/// Of the lines that can be seen, each in its first row.
void CodeMarks::paintMarks(wxGraphicsContext& context) const {
    if (!on_) return;
    const int first = control_.GetFirstVisibleLine(), rows = control_.LinesOnScreen() + 1;
    int before = -1;
    for (int row = 0; row <= rows; ++row) {
        const int line = control_.DocLineFromVisible(first + row);
        if (line >= control_.GetLineCount() || line == before) continue;
        before = line;
        const bool begins = row > 0 || control_.VisibleFromDocLine(line) == first;
        if (!begins) continue;
        const int y = row * control_.TextHeight(0), marks = shownMarks(line);
        for (int marker = 0; marker < wxSTC_MARKNUM_FOLDEREND; ++marker)
            if ((marks & 1 << marker) != 0) paintMark(context, marker, kBookmarkMargin, y);
        if ((control_.GetFoldLevel(line) & wxSTC_FOLDLEVELHEADERFLAG) != 0)
            paintMark(
                context,
                control_.GetFoldExpanded(line) ? wxSTC_MARKNUM_FOLDEROPEN : wxSTC_MARKNUM_FOLDER,
                kFoldMargin, y);
    }
}

void CodeMarks::defineMarkers() {
    define(kPlainMark, Icon::breakpoint, &ThemeTable::breakpoint);
    define(kConditionMark, Icon::breakpointCondition, &ThemeTable::breakpoint);
    define(kPrintMark, Icon::breakpointPrints, &ThemeTable::breakpoint);
    define(kOffMark, Icon::breakpointOff, &ThemeTable::breakpoint);
    define(kUnverifiedMark, Icon::breakpointUnverified, &ThemeTable::unverified);
    define(kCallerMark, Icon::callerArrow, &ThemeTable::secondText);
    define(kStopMark, Icon::stopArrow, &ThemeTable::stopMark);
    define(kFailedMark, Icon::bolt, &ThemeTable::error);
    define(kWaitingMarker, Icon::breakpoint, &ThemeTable::breakpoint);
    control_.MarkerDefine(kConditionMarker, wxSTC_MARK_EMPTY);
    const auto band = [this](int marker, Rgb ThemeTable::*colour) {
        control_.MarkerDefine(marker, wxSTC_MARK_BACKGROUND, wxNullColour,
                              colourOf((*look_).*colour));
    };
    band(kStopBand, &ThemeTable::stopBand);
    band(kExceptionBand, &ThemeTable::errorBand);
    band(kCallerBand, &ThemeTable::selected);
    control_.SetMarginMask(kBookmarkMargin,
                           0x01FFFFFF & ~(1 << kStopBand | 1 << kExceptionBand | 1 << kCallerBand));
}

/// It stands for breakpoints, for the current line or for errors, one at a time.
void CodeMarks::defineClassicMarker() {
    if (classicSymbol_ == sci::kMarkArrow)
        define(0, stop_.isException ? Icon::bolt : Icon::stopArrow,
               stop_.isException ? &ThemeTable::error : &ThemeTable::stopMark);
    else if (classicSymbol_ == sci::kMarkShortArrow)
        define(0, Icon::error, &ThemeTable::error);
    else
        define(0, Icon::breakpoint, &ThemeTable::breakpoint);
}

void CodeMarks::defineFolds() {
    if (!on_) {
        control_.MarkerDefine(wxSTC_MARKNUM_FOLDEROPEN, wxSTC_MARK_MINUS);
        control_.MarkerDefine(wxSTC_MARKNUM_FOLDER, wxSTC_MARK_PLUS);
        for (const int marker : {wxSTC_MARKNUM_FOLDEREND, wxSTC_MARKNUM_FOLDEROPENMID})
            control_.MarkerDefine(marker, wxSTC_MARK_EMPTY);
        return;
    }
    for (const int marker : {wxSTC_MARKNUM_FOLDEROPEN, wxSTC_MARKNUM_FOLDEROPENMID})
        define(marker, Icon::down, &ThemeTable::secondText);
    for (const int marker : {wxSTC_MARKNUM_FOLDER, wxSTC_MARKNUM_FOLDEREND})
        define(marker, Icon::right, &ThemeTable::secondText);
}

void CodeMarks::defineIndicators() {
    for (const auto& [indicator, colour] :
         {std::pair{kErrorIndicator, look_->error}, std::pair{kWarningIndicator, look_->warning}}) {
        control_.IndicatorSetStyle(indicator, wxSTC_INDIC_SQUIGGLEPIXMAP);
        control_.IndicatorSetForeground(indicator, colourOf(colour));
    }
    control_.IndicatorSetStyle(kEditedIndicator, wxSTC_INDIC_FULLBOX);
    control_.IndicatorSetForeground(kEditedIndicator, colourOf(look_->stopMark));
    control_.IndicatorSetAlpha(kEditedIndicator, 0);
    control_.IndicatorSetOutlineAlpha(kEditedIndicator, 255);
}

void CodeMarks::use(bool on) {
    on_ = on;
    defineFolds();
    if (!on) {
        for (int marker = kConditionMark; marker <= kFailedMark; ++marker)
            control_.MarkerDeleteAll(marker);
        showProblems({});
        const StopMark stop = stop_;
        showStop({});
        stop_ = stop;
        const bool isError = classicSymbol_ == sci::kMarkShortArrow;
        control_.MarkerDefine(kWaitingMarker, wxSTC_MARK_CIRCLE, wxColour(0, 80, 0),
                              wxColour(0, 255, 0));
        control_.MarkerDefine(kConditionMarker, wxSTC_MARK_CHARACTER + '?', *wxBLACK);
        control_.MarkerDefine(0, classicSymbol_, isError ? wxColour(80, 0, 0) : wxColour(0, 80, 0),
                              isError ? wxColour(255, 0, 0) : wxColour(0, 255, 0));
        return;
    }
    defineMarkers();
    defineClassicMarker();
    defineIndicators();
    notes_->relook();
    const std::vector<BreakpointRow> rows = std::move(rows_);
    showBreakpoints(rows);
    const std::vector<Diagnostic> problems = std::move(problems_);
    showProblems(problems);
    // A theme brings the caret's line back, which lies over the band of a stop.
    showStop(std::exchange(stop_, {}));
}

bool CodeMarks::takesMessage(unsigned message, std::uintptr_t w, std::intptr_t l) {
    if (w != kClassicMarker) return false;
    if (message == sci::kMarkerDefine) {
        classicSymbol_ = static_cast<int>(l);
        if (on_) defineClassicMarker();
        return on_;
    }
    if (message == sci::kMarkerSetFore || message == sci::kMarkerSetBack) return on_;
    return false;
}

void CodeMarks::showBreakpoints(const std::vector<BreakpointRow>& rows) {
    rows_ = rows;
    for (int marker = kConditionMark; marker <= kPlainMark; ++marker)
        control_.MarkerDeleteAll(marker);
    if (!on_) return;
    const bool classicShows = classicSymbol_ == sci::kMarkCircle;
    for (const BreakpointRow& row : rows) {
        const bool hasClassic = classicShows && (control_.MarkerGet(row.line - 1) & 1) != 0;
        if (row.kind == BreakpointRow::Kind::plain && hasClassic) continue;
        if (row.line == stop_.line) continue;  // the arrow is what matters there
        control_.MarkerAdd(row.line - 1, markOf(row.kind));
    }
    if (stop_.line > 0) markStopLine();
}

void CodeMarks::showStop(const StopMark& stop) {
    if (stop == stop_) return;
    for (const int marker :
         {kStopBand, kExceptionBand, kCallerBand, kCallerMark, kStopMark, kFailedMark})
        control_.MarkerDeleteAll(marker);
    const bool moved = stop.line != stop_.line;
    stop_ = stop;
    control_.SetCaretLineVisible(stop.line == 0);
    if (moved) {
        const std::vector<BreakpointRow> rows = std::move(rows_);
        showBreakpoints(rows);
        if (on_) defineClassicMarker();
    }
    control_.SetIndicatorCurrent(kEditedIndicator);
    control_.IndicatorClearRange(0, control_.GetLength());
    if (!on_) return;
    if (stop.line > 0) markStop(stop);
    if (stop.calledFrom > 0) control_.MarkerAdd(stop.calledFrom - 1, kCallerMark);
    if (stop.caller == 0) return;
    control_.MarkerAdd(stop.caller - 1, kCallerMark);
    control_.MarkerAdd(stop.caller - 1, kCallerBand);
}

/// The classic arrow stands only where the run has been left, until breakpoints are changed.
void CodeMarks::markStopLine() {
    const int line = stop_.line - 1;
    const bool hasArrow = classicSymbol_ == sci::kMarkArrow && (control_.MarkerGet(line) & 1) != 0;
    for (const int marker : {kStopMark, kFailedMark}) control_.MarkerDelete(line, marker);
    if (!hasArrow) control_.MarkerAdd(line, stop_.isException ? kFailedMark : kStopMark);
}

void CodeMarks::markStop(const StopMark& stop) {
    markStopLine();
    if (stop.edited) {
        const int begin = control_.GetLineIndentPosition(stop.line - 1);
        control_.IndicatorFillRange(begin, control_.GetLineEndPosition(stop.line - 1) - begin);
    } else {
        control_.MarkerAdd(stop.line - 1, stop.isException ? kExceptionBand : kStopBand);
    }
}

int CodeMarks::positionOf(int line, int column) const {
    const int begin = control_.PositionFromLine(line - 1);
    return std::min(begin + std::max(column - 1, 0), control_.GetLineEndPosition(line - 1));
}

bool CodeMarks::isBeingTyped(int begin, int end) const {
    return typedAt_ >= begin && typedAt_ <= end && control_.HasFocus() &&
           control_.WordStartPosition(typedAt_, true) != control_.WordEndPosition(typedAt_, true);
}

bool CodeMarks::leftWord() {
    if (typedAt_ < 0) return false;
    const int caret = control_.GetCurrentPos();
    if (caret >= control_.WordStartPosition(typedAt_, true) &&
        caret <= control_.WordEndPosition(typedAt_, true))
        return false;
    typedAt_ = -1;
    return true;
}

void CodeMarks::markProblem(const Diagnostic& problem) {
    if (problem.kind == Diagnostic::Kind::information || problem.line <= 0) return;
    const int begin = positionOf(problem.line, problem.column);
    const int end = std::max(positionOf(problem.line, problem.endColumn), begin + 1);
    if (isBeingTyped(begin, end)) return;
    const bool isError = problem.kind == Diagnostic::Kind::error;
    control_.SetIndicatorCurrent(isError ? kErrorIndicator : kWarningIndicator);
    control_.IndicatorFillRange(begin, end - begin);
}

void CodeMarks::showProblems(const std::vector<Diagnostic>& problems) {
    problems_ = problems;
    for (const int indicator : {kErrorIndicator, kWarningIndicator}) {
        control_.SetIndicatorCurrent(indicator);
        control_.IndicatorClearRange(0, control_.GetLength());
    }
    if (on_)
        for (const Diagnostic& one : problems) markProblem(one);
    notes_->show(on_ ? problems : std::vector<Diagnostic>());
}

void CodeMarks::textMoved() {
    if (on_) notes_->place();
}

}  // namespace korvant::ui
