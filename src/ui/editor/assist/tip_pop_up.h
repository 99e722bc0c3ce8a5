// What is said beside the text: documentation, parameters, or why something cannot be done.
#pragma once

#include "language/script_help.h"
#include "ui/editor/assist/help_card.h"

namespace korvant::ui {

class SignatureCard;

class TipPopUp : public PopUp {
  public:
    TipPopUp(wxWindow* parent, const Look& look);

    /// `line`: the place on the screen that it is about, as high as its line.
    void showHelp(const HoverText& help, const wxRect& line);
    void showSignatures(const Signatures& signatures, const wxRect& line);
    void say(const std::string& sentence, const wxRect& line);
    /// Everything that is shown, for tests and readers.
    wxString words() const;

  private:
    void showCard(const wxRect& line);

    HelpCard* card_;
    SignatureCard* signatures_;
};

}  // namespace korvant::ui
