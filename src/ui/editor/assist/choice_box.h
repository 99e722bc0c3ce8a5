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

    /// In the middle at the top; or where a line is given (of the text's window), below it, and
    /// above it where there is more room.
    void open(Content content, const wxRect& line = {});
    /// The keyboard goes back to the text.
    void close();
    RowList* list() const { return list_; }
    wxTextCtrl* field() const { return field_; }

  private:
    void filter();
    void layOut();
    void onKey(wxKeyEvent& event);
    void onTextEntered(wxFocusEvent& event);
    void take(int row);
    void tellSeen();
    void paint(wxGraphicsContext& context) override;

    wxStyledTextCtrl& control_;
    bool entered_ = false;  ///< the field has had the keyboard since it was opened
    wxTextCtrl* field_;
    RowList* list_;
    Content content_;
    std::vector<std::size_t> shown_;
    wxRect line_;
};

}  // namespace korvant::ui
