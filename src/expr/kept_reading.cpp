#include "expr/kept_reading.h"

namespace korvant::expr {

void RecallTable::remember(std::string_view text, KeptReading& kept) noexcept {
    forget(kept);
    kept.recallPlace = static_cast<std::uint32_t>(placeOf(text.data()) & mask_);
    places_[kept.recallPlace] = {text.data(), &kept};
}

void RecallTable::forget(const KeptReading& kept) noexcept {
    Place& place = places_[kept.recallPlace & mask_];
    if (place.kept == &kept) place = {};
}

void RecallTable::grow(std::size_t places) {
    if (places <= places_.size()) return;
    places_ = std::vector<Place>(places);
    mask_ = places - 1;
}

}  // namespace korvant::expr
