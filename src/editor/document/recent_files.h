// The files under File, newest first, kept between openings.
#pragma once

#include <string>
#include <vector>

#include "base/system/file_operations.h"

namespace korvant {

class RecentFiles {
  public:
    static constexpr std::size_t kMost = 10;

    /// `listFile` is where the list is kept; empty keeps nothing.
    RecentFiles(FileOperations& files, std::string listFile);

    const std::vector<std::string>& paths() const noexcept { return paths_; }
    /// Puts a path on top. Failures to keep the list are ignored.
    void add(const std::string& path);
    void remove(const std::string& path);

  private:
    void load();
    void save();

    FileOperations& files_;
    std::string listFile_;
    std::vector<std::string> paths_;
};

}  // namespace korvant
