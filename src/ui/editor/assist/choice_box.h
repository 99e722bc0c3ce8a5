// A list over the text out of which one thing is chosen, found by typing.
#pragma once

#include "ui/kit/painted_window.h"
#include "ui/kit/row_list.h"

class wxStyledTextCtrl;
class wxTextCtrl;

namespace korvant::ui {

class ChoiceBox : public PaintedWindow {
  public:
    struct Choice {
        ListRow row;
        std::string name;  ///< what is typed is looked for in it
    };
    struct Content {
        wxString heading;  ///< above the field
        std::vector<Choice> choices;
        std::function<void(std::size_t)> chosen;
        /// What the arrows come to is shown meanwhile; may be empty.
        std::function<void(std::size_t)> seen;
        int selected = 0;
    };

    ChoiceBox(wxStyledTextCtrl& control, const Look& look);

    /// In the middle at the top, or below `place` (of the text's window) where one is given.
    void open(Content content, const wxPoint& place = wxDefaultPosition);
    /// The keyboard goes back to the text.
    void close();
    RowList* list() const { return list_; }
    wxTextCtrl* field() const { return field_; }

  private:
    void filter();
    void layOut();
    void onKey(wxKeyEvent& event);
    void take(int row);
    void tellSeen();
    void paint(wxGraphicsContext& context) override;

    wxStyledTextCtrl& control_;
    wxTextCtrl* field_;
    RowList* list_;
    Content content_;
    std::vector<std::size_t> shown_;
    wxPoint place_;
};

}  // namespace korvant::ui
