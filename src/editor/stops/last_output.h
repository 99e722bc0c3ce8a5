// What the last run printed, kept after its console is gone.
#pragma once

#include <string>

#include "host/library/script_console.h"

namespace korvant {

class LastOutput final : private PrintListener {
  public:
    static constexpr std::size_t kLimit = std::size_t{1} << 20;  ///< what was printed last

    LastOutput() { scriptConsole().addListener(*this); }
    ~LastOutput() { scriptConsole().removeListener(*this); }
    LastOutput(const LastOutput&) = delete;
    LastOutput& operator=(const LastOutput&) = delete;

    void clear() { bytes_.clear(); }
    /// Bytes as scripts give them; from the beginning of a line where something was dropped.
    std::string text() const;

  private:
    void printed(std::string_view bytes) override;

    std::string bytes_;
};

}  // namespace korvant
