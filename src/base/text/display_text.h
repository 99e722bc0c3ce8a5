// Script text on its way to a terminal.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// Turns bytes into UTF-8 piece by piece: UTF-8 sequences stand, every other byte is read as
/// Windows Western. A sequence that breaks off at the end of a piece waits for the next one.
/// Control bytes that steer a terminal (escape, the C1 controls, shifts, answer-back) appear as
/// "^[" and the like, so that a script cannot change title, colours or clipboard of the user.
class DisplayText {
  public:
    void append(std::string_view bytes, std::string& shown);
    /// What still waits is not a sequence after all.
    void finish(std::string& shown);
    bool waiting() const noexcept { return !pending_.empty(); }

  private:
    std::string pending_;
};

/// True when a terminal shows the bytes as they stand.
bool isPlainText(std::string_view bytes) noexcept;

}  // namespace korvant
