#include "ui/editor/panels/code_marks.h"

#include <wx/image.h>
#include <wx/stc/stc.h>

#include <algorithm>

#include "editor/control/control_setup.h"
#include "ui/editor/panels/line_notes.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/look.h"

namespace korvant::ui {
namespace {

constexpr int kSize = 16;
/// Numbers of markers beside the classic one.
constexpr int kConditionMark = 10, kPrintMark = 11, kOffMark = 12, kUnverifiedMark = 13,
              kPlainMark = 14, kCallerMark = 15, kStopMark = 16, kFailedMark = 17, kStopBand = 20,
              kExceptionBand = 21, kCallerBand = 22;
constexpr int kErrorIndicator = 8, kWarningIndicator = 9, kEditedIndicator = 12;
constexpr std::uintptr_t kClassicMarker = 0;

/// The control paints pictures at the size of 96 dots per inch only; where the screen is finer its
/// own shapes look better.
bool picturesFit(const wxStyledTextCtrl& control) {
    return control.GetContentScaleFactor() < 1.5;
}

int markOf(BreakpointRow::Kind kind) {
    constexpr int kMarks[] = {kPlainMark, kConditionMark, kPrintMark, kOffMark, kUnverifiedMark};
    return kMarks[static_cast<int>(kind)];
}

}  // namespace

CodeMarks::CodeMarks(wxStyledTextCtrl& control, const Look& look)
    : control_(control), look_(look), notes_(std::make_unique<LineNotes>(control, look)) {}

CodeMarks::~CodeMarks() = default;

void CodeMarks::define(int marker, Icon icon, Rgb ThemeTable::*colour, int otherwise) {
    const wxColour first = colourOf((*look_).*colour);
    const bool lined = icon == Icon::breakpointCondition || icon == Icon::breakpointPrints;
    const wxColour second = lined                 ? *wxWHITE
                            : icon == Icon::error ? colourOf(look_->editor)
                                                  : wxNullColour;
    if (picturesFit(control_))
        control_.MarkerDefineBitmap(marker,
                                    iconBundle(icon, kSize, first, lined ? *wxWHITE : wxNullColour)
                                        .GetBitmap(wxSize(kSize, kSize)));
    else
        control_.MarkerDefine(marker, otherwise, first, first);
}

void CodeMarks::defineMarkers() {
    define(kPlainMark, Icon::breakpoint, &ThemeTable::breakpoint, wxSTC_MARK_CIRCLE);
    define(kConditionMark, Icon::breakpointCondition, &ThemeTable::breakpoint,
           wxSTC_MARK_CIRCLEMINUS);
    define(kPrintMark, Icon::breakpointPrints, &ThemeTable::breakpoint, wxSTC_MARK_BOOKMARK);
    define(kOffMark, Icon::breakpointOff, &ThemeTable::breakpoint, wxSTC_MARK_DOTDOTDOT);
    define(kUnverifiedMark, Icon::breakpointUnverified, &ThemeTable::unverified,
           wxSTC_MARK_DOTDOTDOT);
    define(kCallerMark, Icon::callerArrow, &ThemeTable::secondText, wxSTC_MARK_SHORTARROW);
    define(kStopMark, Icon::stopArrow, &ThemeTable::stopMark, wxSTC_MARK_ARROW);
    define(kFailedMark, Icon::bolt, &ThemeTable::error, wxSTC_MARK_ARROW);
    define(kWaitingMarker, Icon::breakpoint, &ThemeTable::breakpoint, wxSTC_MARK_CIRCLE);
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
               stop_.isException ? &ThemeTable::error : &ThemeTable::stopMark, wxSTC_MARK_ARROW);
    else if (classicSymbol_ == sci::kMarkShortArrow)
        define(0, Icon::error, &ThemeTable::error, wxSTC_MARK_SHORTARROW);
    else
        define(0, Icon::breakpoint, &ThemeTable::breakpoint, wxSTC_MARK_CIRCLE);
}

void CodeMarks::defineFolds() {
    if (!on_) {
        control_.MarkerDefine(wxSTC_MARKNUM_FOLDEROPEN, wxSTC_MARK_MINUS);
        control_.MarkerDefine(wxSTC_MARKNUM_FOLDER, wxSTC_MARK_PLUS);
        for (const int marker : {wxSTC_MARKNUM_FOLDEREND, wxSTC_MARKNUM_FOLDEROPENMID})
            control_.MarkerDefine(marker, wxSTC_MARK_EMPTY);
        return;
    }
    const auto fold = [this](int marker, Icon icon, int otherwise) {
        define(marker, icon, &ThemeTable::secondText, otherwise);
    };
    fold(wxSTC_MARKNUM_FOLDEROPEN, Icon::down, wxSTC_MARK_ARROWDOWN);
    fold(wxSTC_MARKNUM_FOLDEROPENMID, Icon::down, wxSTC_MARK_ARROWDOWN);
    fold(wxSTC_MARKNUM_FOLDER, Icon::right, wxSTC_MARK_ARROW);
    fold(wxSTC_MARKNUM_FOLDEREND, Icon::right, wxSTC_MARK_ARROW);
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
        showStop({});
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
        // The classic marker stands there already.
        if (row.kind == BreakpointRow::Kind::plain && classicShows) continue;
        if (row.line == stop_.line) continue;  // the arrow is what matters there
        control_.MarkerAdd(row.line - 1, markOf(row.kind));
    }
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

/// The classic arrow stands only where the run has been left.
void CodeMarks::markStop(const StopMark& stop) {
    const bool hasArrow =
        classicSymbol_ == sci::kMarkArrow && (control_.MarkerGet(stop.line - 1) & 1) != 0;
    if (!hasArrow) control_.MarkerAdd(stop.line - 1, stop.isException ? kFailedMark : kStopMark);
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

void CodeMarks::showProblems(const std::vector<Diagnostic>& problems) {
    problems_ = problems;
    for (const int indicator : {kErrorIndicator, kWarningIndicator}) {
        control_.SetIndicatorCurrent(indicator);
        control_.IndicatorClearRange(0, control_.GetLength());
    }
    if (on_)
        for (const Diagnostic& one : problems) {
            if (one.kind == Diagnostic::Kind::information || one.line <= 0) continue;
            const int begin = positionOf(one.line, one.column);
            const int end = std::max(positionOf(one.line, one.endColumn), begin + 1);
            if (isBeingTyped(begin, end)) continue;
            control_.SetIndicatorCurrent(one.kind == Diagnostic::Kind::error ? kErrorIndicator
                                                                             : kWarningIndicator);
            control_.IndicatorFillRange(begin, end - begin);
        }
    notes_->show(on_ ? problems : std::vector<Diagnostic>());
}

void CodeMarks::textMoved() {
    if (on_) notes_->place();
}

}  // namespace korvant::ui
