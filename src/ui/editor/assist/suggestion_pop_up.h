// The names that fit, with what the chosen one is beside them.
#pragma once

#include "ui/editor/assist/help_card.h"

namespace korvant::ui {

class SuggestionRows;

class SuggestionPopUp : public PopUp {
  public:
    SuggestionPopUp(wxWindow* parent, const Look& look, std::function<void(std::size_t)> taken);

    /// `line`: the word's place on the screen, as high as its line.
    void show(const SuggestionList& list, const wxRect& line);
    /// The name whose documentation stands beside the list; empty for none.
    const wxString& described() const { return described_; }

  private:
    const Look& look_;
    SuggestionRows* rows_;
    HelpCard* card_;
    wxString described_;
};

}  // namespace korvant::ui
