// Steps of undo.
#pragma once

#include <functional>
#include <vector>

#include "object/form/edit_core.h"

namespace korvant {

/// What was done to a working copy, to be taken back and done again. Keeps the last 1000 steps.
class EditHistory {
  public:
    explicit EditHistory(EditCore& core) : core_(core) {}

    /// Runs `change` and the rules after it as one step at `place`; `edited` is the row that the
    /// user changed. An empty step, which nothing changed, is not kept.
    EditStep transact(EditPlace place, std::int32_t edited, bool browse,
                      const std::function<void()>& change);

    bool canUndo() const { return firstToUndo() != kNoStep; }
    bool canRedo() const { return !undone_.empty(); }
    /// Where the step was made; nowhere when there is none.
    EditPlace undo();
    EditPlace redo();

    /// Whether canUndo() or canRedo() may answer differently since the last call.
    bool takeChanged();

  private:
    static constexpr std::size_t kNoStep = ~std::size_t{0};
    static constexpr std::size_t kStepsKept = 1000;

    std::size_t firstToUndo() const;

    EditCore& core_;
    std::vector<EditStep> done_;
    std::vector<EditStep> undone_;
    bool changed_ = false;
};

}  // namespace korvant
