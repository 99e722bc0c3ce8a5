// What property objects take of the memory that a run may use.
#pragma once

#include <cstddef>
#include <utility>

namespace korvant {

/// A number of bytes that is counted against the limit of the run for as long as it lives, but for
/// what is added while no script runs. A copy counts the same again. Rough: the parts that grow
/// with what a script adds.
class ChargedBytes {
  public:
    ChargedBytes() = default;
    ChargedBytes(const ChargedBytes& other) { add(other.bytes_); }
    ChargedBytes(ChargedBytes&& other) noexcept
        : bytes_(std::exchange(other.bytes_, 0)), charged_(std::exchange(other.charged_, 0)) {}
    ChargedBytes& operator=(ChargedBytes other) noexcept {
        std::swap(bytes_, other.bytes_);
        std::swap(charged_, other.charged_);
        return *this;
    }
    ~ChargedBytes() { drop(bytes_); }

    /// Throws std::bad_alloc, and counts nothing, beyond the limit.
    void add(std::size_t bytes);
    void drop(std::size_t bytes) noexcept;
    std::size_t total() const noexcept { return bytes_; }

  private:
    std::size_t bytes_ = 0;
    std::size_t charged_ = 0;  ///< of them, against the limit
};

}  // namespace korvant
