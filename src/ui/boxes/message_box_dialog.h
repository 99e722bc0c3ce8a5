// The message box of scripts.
#pragma once

#include <wx/dialog.h>
#include <wx/timer.h>

#include <vector>

#include "host/services/box_buttons.h"
#include "host/services/frontend.h"
#include "ui/kit/guarded_window.h"

class wxButton;
class wxCheckBox;

namespace korvant::ui {

class HtmlView;

/// Text and details can be selected and copied; Ctrl+C without a selection copies the whole box.
/// Return presses the button that has the focus, else the default one; a letter presses the button
/// whose caption underlines it; the arrows walk along the buttons; Escape and closing choose what
/// BoxButtons::closeId says.
class MessageBoxDialog : public Guarded<wxDialog> {
  public:
    MessageBoxDialog(wxWindow* parent, const MessageBoxRequest& request);
    ~MessageBoxDialog() override;

    /// Shows the box until it is answered. The chosen box_button; 0: closed without one.
    int ask();
    /// "Do not show again" was offered and is ticked.
    bool dontShowAgain() const;

  private:
    struct Choice {
        int id;
        wxString caption;
        wxUniChar key;
        wxButton* button;
    };

    wxSizer* makeMessage();
    void makeDetails(wxSizer* column);
    wxSizer* makeButtonRow();
    void addChoices(wxSizer* row);
    void connect();
    void connectMarks();
    void markReturn(int id);

    int roomBesideButtons();
    void fitToText();
    void toggleDetails();
    void copyAll();
    HtmlView* viewWithSelection() const;

    void choose(int id);
    bool chooseByLetter(const wxKeyEvent& event);
    bool moveAlongButtons(int step);
    const Choice* focusedChoice() const;
    bool handleKey(const wxKeyEvent& event);
    void onKey(wxKeyEvent& event);

    void startCountdown();
    void stopCountdown();
    void showSeconds();
    void onSecond(wxTimerEvent& event);

    const MessageBoxRequest& request_;
    const BoxButtons set_;
    std::vector<Choice> choices_;
    wxSizer* messageRow_ = nullptr;
    HtmlView* message_ = nullptr;
    HtmlView* details_ = nullptr;
    wxButton* more_ = nullptr;
    wxUniChar moreKey_;
    wxCheckBox* dontShow_ = nullptr;
    wxTimer timer_;
    unsigned secondsLeft_ = 0;
    int answer_ = 0;
};

/// Shows the box, or answers at once what the user asked to be remembered.
int showMessageBox(const MessageBoxRequest& request);

}  // namespace korvant::ui
