// The find bar over the text: matches counted and marked while the user types.
#pragma once

#include <functional>
#include <vector>

#include "ui/editor/editor_settings.h"
#include "ui/kit/painted_button.h"
#include "ui/kit/painted_check.h"

class wxStyledTextCtrl;
class wxTextCtrl;

namespace korvant::ui {

class FindBar : public PaintedWindow {
  public:
    /// `layOut` is called when the bar needs another height; `closed` when it is to go.
    FindBar(wxWindow* parent, const Look& look, wxStyledTextCtrl& text, EditorSettings& settings,
            std::function<void()> layOut, std::function<void()> closed);

    /// Starts with what is selected, where that is on one line.
    void open(bool withReplace);
    /// Shows again what was searched for last, and leaves the keyboard; false for nothing.
    bool resume();
    bool hasReplaceRow() const { return replaceRow_; }
    /// In a narrow window what has no room beside the fields stands in rows below them.
    int rows() const { return rows_; }
    /// True when it needs another number of rows than before.
    bool setWidth(int width);
    /// Goes to a match; begins again at the other end, and says so.
    void go(bool forward);
    /// The marks of the matches go.
    void leave();
    void applyLook();
    /// The text has changed: matches are counted anew.
    void textChanged();
    wxTextCtrl* field() const { return field_; }
    wxTextCtrl* replacement() const { return replacement_; }
    PaintedButton* replaceAllButton() const { return replaceAll_; }
    wxString said() const { return said_; }

  private:
    struct Match {
        int begin = 0, end = 0;
    };
    void makeButtons();
    PaintedButton* addOption(const wxString& label, const wxString& name, bool EditorSettings::*on);
    /// What stands beside the fields, the most dispensable first.
    enum Below { kNone, kCheck, kMarkAll, kAll };

    void place();
    int countWidth() const;
    int besideFirst(Below below) const;
    int besideSecond(Below below) const;
    int roomForField(Below below) const;
    void arrange(int width);
    void placeBeside();
    wxPoint putBeside(wxPoint at, wxWindow& part, int width);
    void placeField(wxTextCtrl& field, int y, int width);
    void paintBox(wxGraphicsContext& context, const wxTextCtrl& field, int y) const;
    void showSelection();
    void connectField(wxTextCtrl& field);
    void onFieldKey(wxKeyEvent& event);
    void search();
    std::vector<Match> matchesIn(int begin, int end) const;
    int currentMatch() const;
    std::vector<wxWindow*> tabOrder() const;
    void show(bool withReplace);
    std::vector<Match> replacedMatches() const;
    void countReplaced();
    void showCount(bool wrapped);
    void mark();
    void select(const Match& match);
    void selectAll();
    void replaceOne();
    void replaceAll();
    void paint(wxGraphicsContext& context) override;

    wxStyledTextCtrl& text_;
    EditorSettings& settings_;
    std::function<void()> layOut_, closed_;
    wxTextCtrl* field_ = nullptr;
    wxTextCtrl* replacement_ = nullptr;
    PaintedCheck* inSelection_ = nullptr;
    PaintedButton *more_ = nullptr, *previous_ = nullptr, *next_ = nullptr, *markAll_ = nullptr,
                  *close_ = nullptr, *replace_ = nullptr, *replaceAll_ = nullptr;
    std::vector<PaintedButton*> options_;
    std::vector<Match> matches_;
    wxString said_;
    wxPoint saidAt_;
    int width_ = 0, fieldWidth_ = 0, rows_ = 1;
    Below below_ = kNone;
    bool replaceRow_ = false;
};

}  // namespace korvant::ui
