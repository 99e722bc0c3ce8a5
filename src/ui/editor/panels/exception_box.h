// What went wrong, told under the line where the script stopped for it.
#pragma once

#include <functional>
#include <string>

#include "ui/kit/painted_button.h"

class wxStyledTextCtrl;

namespace korvant::ui {

class ExceptionBox : public PaintedWindow {
  public:
    struct Actions {
        std::function<void()> explain, copy, neverAgain;
    };

    ExceptionBox(wxStyledTextCtrl& control, const Look& look, Actions actions);
    bool AcceptsFocus() const override { return false; }

    /// Under the 1-based `line`, whose text moves down; 0 hides it.
    void show(int line, const wxString& message, const wxString& detail);
    /// The line came to stand elsewhere.
    void moveTo(int line);
    void place();
    const wxString& detail() const { return detail_; }
    /// Lines of text that it takes the room of.
    int rows() const { return rows_; }

  private:
    void paint(wxGraphicsContext& context) override;
    void makeRoom(bool room);
    int width() const;
    void wrap();
    int height() const;
    int rowsNeeded() const;
    PaintedButton* addLink(const wxString& label, std::function<void()> pressed);

    wxStyledTextCtrl& control_;
    wxString message_, detail_;
    std::vector<wxString> messageLines_, detailLines_;
    std::vector<PaintedButton*> links_;
    PaintedButton* close_;
    int line_ = 0, rows_ = 0;
};

}  // namespace korvant::ui
