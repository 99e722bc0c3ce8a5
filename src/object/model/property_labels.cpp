#include "object/model/property_labels.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace korvant {

void PropertyLabels::reserve(std::size_t bytes) {
    const std::size_t needed = bytes_.size() + bytes;
    if (needed > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("labels");
    if (needed > bytes_.capacity()) bytes_.reserve(std::max(needed, bytes_.capacity() * 2));
    if (places_.size() == places_.capacity())
        places_.reserve(std::max<std::size_t>(8, places_.size() * 2));
}

PropertyLabels::Place PropertyLabels::append(std::string_view label, std::string_view unit) {
    reserve(label.size() + unit.size());
    const Place place = {static_cast<std::uint32_t>(bytes_.size()),
                         static_cast<std::uint32_t>(label.size()),
                         static_cast<std::uint32_t>(unit.size())};
    bytes_.append(label).append(unit);
    return place;
}

void PropertyLabels::add(std::string_view newLabel, std::string_view newUnit) {
    places_.push_back(append(newLabel, newUnit));
}

void PropertyLabels::set(std::size_t property, std::string_view newLabel,
                         std::string_view newUnit) {
    if (label(property) == newLabel && unit(property) == newUnit) return;
    places_[property] = append(newLabel, newUnit);
}

void PropertyLabels::cutTo(std::size_t count, std::size_t bytes) noexcept {
    if (places_.size() > count) places_.resize(count);
    if (bytes_.size() > bytes) bytes_.resize(bytes);
}

}  // namespace korvant
