// Where generators of texts get their choices from: a seed, or the bytes of a fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace korvant::test {

class Choices {
  public:
    virtual ~Choices() = default;
    /// 0 to end - 1; `end` is at least 1.
    virtual std::uint32_t below(std::uint32_t end) = 0;

    bool oneIn(std::uint32_t n) { return below(n) == 0; }

    template <class List>
    std::string one(const List& of) {
        return of[below(static_cast<std::uint32_t>(std::size(of)))];
    }
};

/// The same seed gives the same choices on every machine.
class SeededChoices final : public Choices {
  public:
    explicit SeededChoices(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ULL + 1) {}
    std::uint32_t below(std::uint32_t end) override {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<std::uint32_t>((state_ >> 16) % end);
    }

  private:
    std::uint64_t state_;
};

/// Two bytes a choice; 0 when they are used up.
class ByteChoices final : public Choices {
  public:
    ByteChoices(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}
    std::uint32_t below(std::uint32_t end) override {
        std::uint32_t value = 0;
        for (int i = 0; i < 2 && at_ != end_; ++i) value = value << 8 | *at_++;
        return value % end;
    }

  private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

}  // namespace korvant::test
