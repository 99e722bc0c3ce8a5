#include "editor/assist/place_history.h"

namespace korvant {

namespace {

constexpr std::size_t kMost = 100;

std::optional<std::size_t> take(std::vector<std::size_t>& from, std::vector<std::size_t>& to,
                                std::size_t position) {
    if (from.empty()) return std::nullopt;
    const std::size_t place = from.back();
    from.pop_back();
    to.push_back(position);
    return place;
}

}  // namespace

void PlaceHistory::leave(std::size_t position) {
    ahead_.clear();
    if (!behind_.empty() && behind_.back() == position) return;
    behind_.push_back(position);
    if (behind_.size() > kMost) behind_.erase(behind_.begin());
}

std::optional<std::size_t> PlaceHistory::back(std::size_t position) {
    return take(behind_, ahead_, position);
}

std::optional<std::size_t> PlaceHistory::forward(std::size_t position) {
    return take(ahead_, behind_, position);
}

void PlaceHistory::changed(std::size_t begin, std::size_t removed, std::size_t added) {
    for (auto* list : {&behind_, &ahead_})
        for (std::size_t& place : *list) {
            if (place >= begin + removed)
                place = place - removed + added;
            else if (place > begin)
                place = begin;
        }
}

void PlaceHistory::clear() {
    behind_.clear();
    ahead_.clear();
}

}  // namespace korvant
