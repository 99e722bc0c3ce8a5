// The pane below the editor in which everything is reported.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "editor/control/line_number.h"
#include "editor/control/text_control.h"

namespace korvant {

/// What the pane says where there is none.
inline constexpr char kNoMemory[] = "Memory allocation error";

/// Where a line of the pane points into the script.
struct ReportedPlace {
    ScriptLine line;
    std::int32_t column = 1;  ///< 1-based, in bytes of the compiled text
};

/// Texts are UTF-8. The pane is left editable, so its text may be anything.
class OutputPane {
  public:
    /// The pane keeps this much of what was written last, and as much of notes.
    static constexpr std::size_t kLimit = std::size_t{1} << 20;

    explicit OutputPane(const TextControl& control) : control_(control) {}

    /// Replaces what stood there; notes stand below it.
    void show(std::string text);
    /// Puts a line before what stood there.
    void showAbove(const std::string& line);
    /// Adds a line behind what stands there, which stays until the pane is cleared.
    void note(const std::string& line);
    void clear();
    std::string text() const { return control_.text().value_or(std::string()); }

    std::string lineAt(int position) const;

  private:
    void put(const std::string& text);

    const TextControl& control_;
    std::string notes_;
};

/// The place that one line of the pane tells of: a message of the compiler or of the debugger;
/// nothing for any other line.
std::optional<ReportedPlace> reportedPlace(const std::string& line);

/// `text` cut to `limit` bytes, never inside a character.
std::string cutUtf8(std::string text, std::size_t limit);

}  // namespace korvant
