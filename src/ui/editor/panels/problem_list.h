// The list of what is wrong with the script.
#pragma once

#include "editor/assist/problems.h"
#include "ui/kit/row_list.h"

namespace korvant::ui {

class ProblemList : public RowList {
  public:
    /// `problems`: those of the text in view.
    ProblemList(wxWindow* parent, const Look& look, std::function<const Problems&()> problems);
    std::function<void(const Diagnostic&)> onChosen;

  private:
    ListRow rowOf(int index) const;

    std::function<const Problems&()> problems_;
};

}  // namespace korvant::ui
