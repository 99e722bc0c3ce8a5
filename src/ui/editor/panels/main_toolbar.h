// The toolbar of the editor's window: what can be done next, by state of the script.
#pragma once

#include <map>
#include <vector>

#include "editor/editor_status.h"
#include "ui/kit/painted_button.h"

namespace korvant::ui {

class TimeUsed;

/// What of the toolbar depends on.
struct ToolbarState {
    EditorStatus::Run run = EditorStatus::Run::idle;
    bool canOpen = true, canSave = false, canUndo = false, canRedo = false;
    bool words = true;  ///< beside the icons of the steps
    bool find = false, outline = false, bottom = false, side = false;  ///< what is open
    std::uint32_t runMilliseconds = 0, limitMilliseconds = 0;
    bool operator==(const ToolbarState&) const = default;
};

/// One tab stop; the arrows move inside.
class MainToolbar : public PaintedWindow {
  public:
    /// `command` gets the number of what was pressed.
    MainToolbar(wxWindow* parent, const Look& look, std::function<void(int)> command);

    void setState(const ToolbarState& state);
    /// The button that Tab reaches.
    wxWindow* tabStop() const;
    /// Null for one that has never been shown.
    PaintedButton* button(int command) const;

  private:
    struct Item {
        PaintedButton* button = nullptr;       ///< made when it is first to be seen
        std::function<PaintedButton*()> make;  ///< none: a line between groups
        unsigned shownIn = 0;                  ///< bits by state
        bool isStep = false;
        bool atRight = false;
        bool hasWords = false;
        bool isMain = false;
    };

    void add(int command, PaintedButton::Kind kind, PaintedButton::Face face, unsigned shownIn,
             bool isStep = false, bool atRight = false);
    void addLine(unsigned shownIn, bool atRight = false);
    void addFileButtons();
    void addRunButtons();
    void addWindowButtons();
    void makeShown();
    void place();
    /// Words give way to icons where there is no room: those of the main button last.
    void fitWords();
    int widthWanted() const;
    bool showsTime() const;
    int widthOf(const Item& item) const;
    bool isShown(const Item& item) const;
    void moveFocus(int step);
    void paint(wxGraphicsContext& context) override;
    void onKey(wxKeyEvent& event);

    std::function<void(int)> command_;
    std::vector<Item> items_;
    std::map<int, PaintedButton*> buttons_;
    std::vector<int> lines_;  ///< where the lines stand
    TimeUsed* time_;
    ToolbarState state_;
};

}  // namespace korvant::ui
