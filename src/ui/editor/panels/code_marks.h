// What is drawn into the text and its margins: breakpoints, the stop, problems, fold arrows.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "language/diagnostics.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/kit/ui_native.h"

class wxStyledTextCtrl;

namespace korvant::ui {

class LineNotes;

/// Where a script stands still.
struct StopMark {
    int line = 0;  ///< 1-based; 0: nowhere
    bool isException = false;
    int caller = 0;       ///< the line of the frame that was chosen; 0: the innermost one
    int calledFrom = 0;   ///< at an exception: the line of the calling frame; 0: none
    bool edited = false;  ///< the text is not the one that runs any more
    bool operator==(const StopMark&) const = default;
};

class CodeMarks {
  public:
    CodeMarks(wxStyledTextCtrl& control, const Look& look);
    ~CodeMarks();
    CodeMarks(const CodeMarks&) = delete;
    CodeMarks& operator=(const CodeMarks&) = delete;

    /// Off: the classic marks alone. Also to be called when the look has changed.
    void use(bool on);
    /// A message of the classic set-up that sets the look of the classic marker: with our marks it
    /// gets our pictures. True when it was taken.
    bool takesMessage(unsigned message, std::uintptr_t w, std::intptr_t l);

    void showBreakpoints(const std::vector<BreakpointRow>& rows);
    void showStop(const StopMark& stop);
    /// The word that is being typed is not marked.
    void showProblems(const std::vector<Diagnostic>& problems);
    /// The user changes the word around this position; -1: none any more.
    void typedAt(int position) { typedAt_ = position; }
    /// True once, when the caret has left the word that was typed.
    bool leftWord();
    /// Messages at the ends of lines go with the text.
    void textMoved();

  private:
    void defineMarkers();
    void defineClassicMarker();
    void defineFolds();
    void define(int marker, Icon icon, Rgb ThemeTable::*colour);
    void paintMarks(wxGraphicsContext& context) const;
    int shownMarks(int line) const;
    void paintMark(wxGraphicsContext& context, int marker, int margin, int y) const;
    void defineIndicators();
    void markStop(const StopMark& stop);
    void markStopLine();
    void markProblem(const Diagnostic& problem);
    int positionOf(int line, int column) const;
    bool isBeingTyped(int begin, int end) const;

    wxStyledTextCtrl& control_;
    const Look& look_;
    std::vector<BreakpointRow> rows_;
    StopMark stop_;
    std::vector<Diagnostic> problems_;
    std::unique_ptr<LineNotes> notes_;
    struct Mark {
        Icon icon;
        wxColour first, second;
    };
    std::map<int, Mark> marks_;  ///< by the number of the marker
    native::PaintOver over_;
    int classicSymbol_ = 0;  ///< circle: breakpoints
    int typedAt_ = -1;
    bool on_ = false;
};

}  // namespace korvant::ui
