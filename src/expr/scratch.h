// A growing list of plain values that is used again and again.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace korvant::expr {

/// Like a vector, for values without constructors: what push() gives is not set, and clear()
/// costs nothing. Readings are short and many, so this is where their time would go.
template <class Value>
class Scratch {
    static_assert(std::is_trivially_copyable_v<Value>);

  public:
    Scratch() = default;
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// One more value, not set.
    Value& push() {
        if (size_ == capacity_) [[unlikely]]
            grow();
        return values_[size_++];
    }
    void pop() noexcept { --size_; }
    void shrinkTo(std::size_t size) noexcept { size_ = size; }
    void clear() noexcept { size_ = 0; }
    /// Gives the memory back if there is much of it.
    void releaseIfLarge() {
        if (capacity_ <= kLarge) return;
        values_.reset();
        size_ = capacity_ = 0;
    }

    bool empty() const noexcept { return size_ == 0; }
    std::size_t size() const noexcept { return size_; }
    Value* data() noexcept { return values_.get(); }
    const Value* data() const noexcept { return values_.get(); }
    Value& back() noexcept { return values_[size_ - 1]; }
    Value& operator[](std::size_t number) noexcept { return values_[number]; }
    const Value& operator[](std::size_t number) const noexcept { return values_[number]; }
    const Value* begin() const noexcept { return data(); }
    const Value* end() const noexcept { return data() + size_; }

  private:
    static constexpr std::size_t kLarge = 4096;

    void grow() {
        const std::size_t capacity = std::max<std::size_t>(32, capacity_ * 2);
        auto larger = std::make_unique_for_overwrite<Value[]>(capacity);
        std::copy(begin(), end(), larger.get());
        values_ = std::move(larger);
        capacity_ = capacity;
    }

    std::unique_ptr<Value[]> values_;
    std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace korvant::expr
