// How bad rows, elements and pages are, the elements that are not looked at included.
#pragma once

#include <cstdint>
#include <vector>

#include "object/form/edit_core.h"

namespace korvant {

/// How bad the elements of groups are, seen from the elements that are current.
struct ElementMarks {
    std::vector<std::vector<Severity>> elements;  ///< by group and element
    std::vector<Severity> pages;                  ///< by page: the worst of all elements there
};

/// The marks of a form. They are those of the last refresh().
class EditMarks {
  public:
    explicit EditMarks(EditCore& core)
        : core_(core), shown_(core.layout.pages.size(), Severity::none) {}

    /// Looks at every element of every group; after values or groups changed.
    void refresh();
    /// The same after a step, which most often changes nothing but the element that is shown.
    void refresh(const EditStep& step);

    Severity ofPage(int page) const;
    Severity ofElement(int group, std::int32_t element) const;

    /// The pages whose mark or group bar is to be drawn again since the last call, ascending.
    std::vector<int> takePages();

  private:
    bool staysInElement(const EditStep& step) const;

    EditCore& core_;
    ElementMarks marks_;
    std::vector<Severity> shown_;  ///< by page, as last told
};

}  // namespace korvant
