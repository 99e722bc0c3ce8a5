#include "object/form/edit_history.h"

#include <utility>

namespace korvant {

namespace {

/// The journals are in use for as long as it lives.
class Recording {
  public:
    Recording(EditCore& core, EditStep& step) : core_(core) {
        core.values.setJournal(&step.values);
        core.desk.setJournal(&step.groups);
    }
    ~Recording() {
        core_.values.setJournal(nullptr);
        core_.desk.setJournal(nullptr);
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

  private:
    EditCore& core_;
};

}  // namespace

EditStep EditHistory::transact(EditPlace place, std::int32_t edited, bool browse,
                               const std::function<void()>& change) {
    EditStep step;
    {
        const Recording recording(core_, step);
        change();
        core_.rules.pass(edited);
        for (const GroupChange& one : GroupJournal(step.groups)) core_.desk.markShown(one.group);
    }
    step.browse = browse;
    step.place = place;
    core_.noteChanges(step.groups);
    if (step.empty()) return step;
    if (done_.size() == kStepsKept) done_.erase(done_.begin());
    done_.push_back(step);
    undone_.clear();
    changed_ = true;
    return step;
}

/// Index of the step that undo takes back, with the looking around behind it; kNoStep: none.
std::size_t EditHistory::firstToUndo() const {
    for (std::size_t i = done_.size(); i > 0; --i)
        if (!done_[i - 1].browse) return i - 1;
    return kNoStep;
}

EditPlace EditHistory::undo() {
    const std::size_t first = firstToUndo();
    if (first == kNoStep) return {};
    while (done_.size() > first) {
        core_.revert(done_.back());
        undone_.push_back(std::move(done_.back()));
        done_.pop_back();
    }
    changed_ = true;
    return undone_.back().place;
}

/// Goes on to the looking around that came after the step, but not into the next one.
EditPlace EditHistory::redo() {
    EditPlace place;
    for (bool first = true; !undone_.empty() && (first || undone_.back().browse); first = false) {
        core_.repeat(undone_.back());
        if (!undone_.back().browse) place = undone_.back().place;
        done_.push_back(std::move(undone_.back()));
        undone_.pop_back();
    }
    changed_ = true;
    return place;
}

bool EditHistory::takeChanged() {
    return std::exchange(changed_, false);
}

}  // namespace korvant
