// Breakpoints kept in files, and found again in a text that was edited elsewhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/system/file_operations.h"
#include "debug/breakpoint_book.h"

namespace korvant {

class BreakpointStore {
  public:
    static constexpr std::size_t kMost = 1000;  ///< kept of one script

    /// `folder` holds one file for each script; made when needed; empty: nothing is kept.
    BreakpointStore(FileOperations& files, std::string folder)
        : files_(files), folder_(std::move(folder)) {}

    /// What is wanted, with the text of the lines and a hash of those around. False when it could
    /// not be written. Without wishes the script's file goes.
    bool save(const std::string& scriptPath, std::string_view text,
              const std::vector<BreakpointWish>& wishes);
    /// At the lines where they are in `text` now; one whose line is gone stays at its number.
    std::vector<BreakpointWish> load(const std::string& scriptPath, std::string_view text);

  private:
    std::string fileOf(const std::string& scriptPath) const;

    FileOperations& files_;
    std::string folder_;
};

}  // namespace korvant
