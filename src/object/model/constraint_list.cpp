#include "object/model/constraint_list.h"

#include <algorithm>

namespace korvant {

bool ConstraintList::holds(std::string_view expression) const {
    if (list_.size() < kIndexed) {
        const auto same = [expression](const Constraint& one) {
            return one.expression == expression;
        };
        return std::any_of(list_.begin(), list_.end(), same);
    }
    const auto expressionAt = [this](std::uint32_t number) -> std::string_view {
        return list_[number].expression;
    };
    return index_.find(expression, expressionAt) != NameIndex::kNone;
}

void ConstraintList::add(std::string_view expression, std::string_view message) {
    const std::size_t count = list_.size() + 1;
    if (count >= kIndexed) index_.reserve(count);
    list_.push_back({std::string(expression), std::string(message)});
    if (count == kIndexed) indexFrom(0);
    if (count > kIndexed) indexFrom(count - 1);
}

void ConstraintList::indexFrom(std::size_t first) {
    for (std::size_t i = first; i < list_.size(); ++i)
        index_.insert(list_[i].expression, static_cast<std::uint32_t>(i));
}

}  // namespace korvant
