// A text that was read and kept, and the quick way to it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/step.h"
#include "expr/text_hash.h"

namespace korvant::expr {

/// One text that was read. It stands in one block of memory: this, the text, the steps.
struct KeptReading {
    KeptReading* newer;  ///< the one that was kept next
    std::uint32_t hash, recallPlace, capacity, stepCount, textSize;
    std::uint32_t result : 31;    ///< step that holds the value, of steps as read
    std::uint32_t isProgram : 1;  ///< the steps are a program; else they are as read

    static constexpr std::size_t padded(std::size_t size) noexcept {
        return (size + 15) & ~std::size_t{15};
    }
    static std::size_t blockSize(std::size_t textSize, std::size_t stepCount) noexcept {
        return padded(sizeof(KeptReading)) + padded(textSize) + stepCount * sizeof(Step);
    }

    char* text() noexcept { return reinterpret_cast<char*>(this) + padded(sizeof(KeptReading)); }
    /// `size` is textSize, which who compared the text knows already.
    Step* steps(std::size_t size) noexcept {
        return reinterpret_cast<Step*>(text() + padded(size));
    }
};

/// Remembers at which address the text of a kept program stood when it was found. Who evaluates
/// a text again and again holds it in one place, so most texts are found here without a hash.
/// The text itself is compared all the same.
class RecallTable {
  public:
    RecallTable() : places_(1) {}

    /// The program of exactly this text, or null if it is not remembered.
    [[gnu::always_inline]] KeptReading* find(std::string_view text) const noexcept {
        const Place& place = places_[placeOf(text.data()) & mask_];
        if (!place.kept || place.address != text.data()) return nullptr;
        if (place.kept->textSize != text.size()) return nullptr;
        const bool same = sameBytes(place.kept->text(), text.data(), text.size());
        return same ? place.kept : nullptr;
    }
    void remember(std::string_view text, KeptReading& kept) noexcept;
    void forget(const KeptReading& kept) noexcept;
    /// Forgets all and has at least `places` places from now on, a power of two.
    void grow(std::size_t places);

  private:
    struct Place {
        const char* address = nullptr;
        KeptReading* kept = nullptr;
    };

    static std::size_t placeOf(const char* address) noexcept {
        return reinterpret_cast<std::uintptr_t>(address) >> 4;
    }

    std::vector<Place> places_;
    std::size_t mask_ = 0;
};

}  // namespace korvant::expr
