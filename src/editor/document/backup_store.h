// Where the content of files goes before something else takes its place.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/system/file_operations.h"

namespace korvant {

/// Keeps each previous content of a file once, the newest kVersions of every file, in one folder
/// that only this user may read.
class BackupStore {
  public:
    static constexpr std::size_t kVersions = 10;

    /// An empty folder name keeps nothing.
    BackupStore(FileOperations& files, std::string folder)
        : files_(files), folder_(std::move(folder)) {}

    /// Copies what stands at `path`; `kept` is where it is afterwards. 0 or the error number.
    int keep(const std::string& path, std::string& kept);
    /// The same with a copy beside the file where the folder cannot be written to.
    int keepSomewhere(const std::string& path, std::string& kept);
    /// Keeps a text that no file holds, under `name`.
    int keepText(const std::string& name, std::string_view bytes);

  private:
    int copy(const std::string& path, const std::string& target, std::uint64_t& hash);
    int adopt(const std::string& temporary, const std::string& prefix, std::uint64_t hash,
              const std::string& name, std::string& kept);
    std::string keptAlready(const std::string& prefix, std::uint64_t hash);
    void dropOldest(const std::string& prefix);
    std::vector<std::string> versions(const std::string& prefix);

    FileOperations& files_;
    std::string folder_;
};

}  // namespace korvant
