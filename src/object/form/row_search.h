// Which rows of a form pass the search.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "object/form/edit_core.h"
#include "object/form/row_filter.h"

namespace korvant {

/// Shows rows that hold every word in label, category, unit, hint or value.
class RowSearch {
  public:
    explicit RowSearch(const EditCore& core)
        : core_(core), visible_(core.layout.rows.size(), true) {}

    /// An empty text shows all rows.
    void setFilter(const std::string& words);
    bool visible(std::int32_t row) const { return visible_[EditCore::at(row)]; }

    /// Whether another text was set since the last call.
    bool takeChanged();

  private:
    void makeTexts();

    const EditCore& core_;
    RowFilter filter_;
    std::vector<bool> visible_;
    std::vector<std::string> texts_;  ///< by row, folded; made for the first filter
    bool changed_ = false;
};

}  // namespace korvant
