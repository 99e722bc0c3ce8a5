// Conditions of one property.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "object/model/name_index.h"

namespace korvant {

struct Constraint {
    std::string expression;
    std::string message;  ///< shown when the condition does not hold; empty for enable conditions
};

/// Constraints in the order in which they were added, no expression twice.
class ConstraintList {
  public:
    bool holds(std::string_view expression) const;
    /// `expression` must not be in the list.
    void add(std::string_view expression, std::string_view message);

    std::size_t size() const noexcept { return list_.size(); }
    const Constraint& operator[](std::size_t index) const { return list_[index]; }
    auto begin() const noexcept { return list_.begin(); }
    auto end() const noexcept { return list_.end(); }

  private:
    /// Shorter lists are searched from the front.
    static constexpr std::size_t kIndexed = 16;
    void indexFrom(std::size_t first);

    std::vector<Constraint> list_;
    NameIndex index_;
};

}  // namespace korvant
