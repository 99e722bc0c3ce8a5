// A folder for the files of one test.
#pragma once

#include <filesystem>
#include <string>

namespace korvant::test {

/// Exists from construction to destruction, empty at first.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).generic_string(); }

  private:
    std::filesystem::path path_;
};

/// Empty when the file cannot be read.
std::string readFile(const std::filesystem::path& path);
/// The same with every line ended by a line feed alone, however the system ends lines in its files.
std::string readText(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& bytes);

}  // namespace korvant::test
