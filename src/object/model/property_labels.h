// How properties are shown: their labels and units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// A label and a unit for each property, by its index, one after the other in one block: they
/// hardly ever change, and reading a value does not need them.
class PropertyLabels {
  public:
    /// Valid until the next change.
    std::string_view label(std::size_t property) const noexcept {
        return {bytes_.data() + places_[property].begin, places_[property].labelSize};
    }
    /// Unit text, colour marker or file filter.
    std::string_view unit(std::size_t property) const noexcept {
        const Place& place = places_[property];
        return {bytes_.data() + place.begin + place.labelSize, place.unitSize};
    }
    /// Bytes in use, those of replaced texts included.
    std::size_t bytes() const noexcept { return bytes_.size(); }
    static constexpr std::size_t bytesOfOne() noexcept { return sizeof(Place); }

    /// After this an add() or a set() of so many bytes throws nothing. Throws std::bad_alloc or
    /// std::length_error.
    void reserve(std::size_t bytes);
    /// For the property behind the others. The texts must not be of this object.
    void add(std::string_view label, std::string_view unit);
    void set(std::size_t property, std::string_view label, std::string_view unit);
    /// Takes back what was added since there were `count` properties and bytes() gave `bytes`.
    void cutTo(std::size_t count, std::size_t bytes) noexcept;

  private:
    struct Place {
        std::uint32_t begin;
        std::uint32_t labelSize;
        std::uint32_t unitSize;
    };
    Place append(std::string_view label, std::string_view unit);

    std::vector<Place> places_;
    std::string bytes_;
};

}  // namespace korvant
