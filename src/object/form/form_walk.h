// Every element of every group, one after the other.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "object/form/edit_core.h"

namespace korvant {

/// Looks at the form as it is, and then at every element of every group, computed. Afterwards
/// the working copy is as it was.
class FormWalk {
  public:
    /// Told which rows to look at, with the elements that they show.
    using Visit = std::function<void(const std::vector<std::int32_t>& rows, const ElementPath&)>;

    explicit FormWalk(EditCore& core) : core_(core) {}
    /// `keepComputed`: the elements keep what was computed for them.
    void run(const Visit& visit, bool keepComputed);

  private:
    void visitForm(const Visit& visit);
    void visitGroup(int group, const Visit& visit);
    std::vector<std::int32_t> ownRows(int group) const;

    EditCore& core_;
    ElementPath path_;
};

}  // namespace korvant
