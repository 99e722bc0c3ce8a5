// What the editor remembers of files that it had open, beside their texts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/system/file_operations.h"

namespace korvant {

struct RememberedBreakpoint {
    std::int32_t line = 0;  ///< 1-based
    std::string text;       ///< of the line, by which it is found again in a changed file
    bool enabled = true;
    std::int32_t passes = 0;
    std::string condition, prints, classicCondition;
    bool operator==(const RememberedBreakpoint&) const = default;
};

struct RememberedFile {
    std::int32_t caretLine = 1;  ///< 1-based
    std::int32_t caretByte = 0;  ///< in the line
    std::int32_t firstLine = 1;  ///< that was seen
    std::vector<std::int32_t> folds;
    std::vector<std::string> watches;
    std::vector<RememberedBreakpoint> breakpoints;
    bool operator==(const RememberedFile&) const = default;
};

/// A list on the disk, of the files that were left last. What cannot be read or written is as if
/// it had not been remembered.
class FileMemory {
  public:
    static constexpr std::size_t kMost = 100;  ///< files

    /// `listFile` empty: nothing is remembered. `files` must outlive it.
    FileMemory(FileOperations& files, std::string listFile);

    /// Nothing but defaults for an unknown file.
    RememberedFile recall(const std::string& path) const;
    void remember(const std::string& path, const RememberedFile& file);

  private:
    FileOperations& files_;
    std::string listFile_;
};

/// Puts the breakpoints on the lines that have their texts now, the nearest where there are
/// several; one whose text is gone stays on its line, and one beyond the last line goes. `lines`
/// are the texts of all lines.
void findAgain(std::vector<RememberedBreakpoint>& breakpoints,
               const std::vector<std::string>& lines);

}  // namespace korvant
