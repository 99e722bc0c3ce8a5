// A growing list of plain values that is used again and again.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

namespace korvant::expr {

/// Like a vector, for values without constructors: what push() gives is not set, and clear()
/// costs nothing. Readings are short and many, so this is where their time would go.
template <class Value>
class Scratch {
    static_assert(std::is_trivially_copyable_v<Value>);
    static_assert(alignof(Value) <= alignof(std::max_align_t));

  public:
    Scratch() = default;
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// One more value, not set.
    Value& push() {
        if (size_ == capacity_) [[unlikely]]
            growTo(std::max<std::size_t>(32, capacity_ * 2));
        return data()[size_++];
    }
    void pop() noexcept { --size_; }
    void shrinkTo(std::size_t size) noexcept { size_ = size; }
    void clear() noexcept { size_ = 0; }
    /// Room for `count` values in all. What is not pushed is not touched either, so room that
    /// is not needed costs no memory.
    void reserve(std::size_t count) {
        if (count > capacity_) growTo(count);
    }
    /// Gives the memory back if there is room for more than `kept` values.
    void releaseIfLarge(std::size_t kept = kLarge) {
        if (capacity_ <= kept) return;
        values_.reset();
        size_ = capacity_ = 0;
    }

    bool empty() const noexcept { return size_ == 0; }
    std::size_t size() const noexcept { return size_; }
    Value* data() noexcept { return reinterpret_cast<Value*>(values_.get()); }
    const Value* data() const noexcept { return reinterpret_cast<const Value*>(values_.get()); }
    Value& back() noexcept { return data()[size_ - 1]; }
    Value& operator[](std::size_t number) noexcept { return data()[number]; }
    const Value& operator[](std::size_t number) const noexcept { return data()[number]; }
    const Value* begin() const noexcept { return data(); }
    const Value* end() const noexcept { return data() + size_; }

  private:
    static constexpr std::size_t kLarge = 4096;

    void growTo(std::size_t capacity) {
        // Bytes, because members with initial values would be set otherwise.
        auto larger = std::make_unique_for_overwrite<std::byte[]>(capacity * sizeof(Value));
        if (size_ > 0) std::memcpy(larger.get(), data(), size_ * sizeof(Value));
        values_ = std::move(larger);
        capacity_ = capacity;
    }

    std::unique_ptr<std::byte[]> values_;
    std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace korvant::expr
