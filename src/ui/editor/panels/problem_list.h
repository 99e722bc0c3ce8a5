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
    const Diagnostic& at(int index) const;
    bool isCandidate(std::size_t place) const;
    void readRows();

    std::function<const Problems&()> problems_;
    std::vector<std::size_t> rows_;  ///< places in what problems_ gives
    const Problems* readFrom_ = nullptr;
    std::uint64_t read_ = 0;
};

}  // namespace korvant::ui
