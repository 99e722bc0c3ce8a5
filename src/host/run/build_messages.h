// What the compiler said about the last build.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace korvant {

struct BuildMessage {
    std::string text;         ///< message, " at line ", row, " column ", column, "\n"
    std::int32_t row = 0;     ///< 1-based; 0 or less: no line
    std::int32_t column = 0;  ///< 1-based
    enum class Kind { error, warning, information } kind = Kind::error;
    std::string plain;  ///< the compiler's text alone
};

/// Holds at most kCapacity messages; further ones are dropped.
class BuildMessages {
  public:
    static constexpr std::size_t kCapacity = 1000;
    void add(std::string text, std::int32_t row, std::int32_t column, BuildMessage::Kind kind);
    void clear() noexcept { messages_.clear(); }
    std::size_t count() const noexcept { return messages_.size(); }
    const std::vector<BuildMessage>& all() const noexcept { return messages_; }

  private:
    std::vector<BuildMessage> messages_;
};

}  // namespace korvant
