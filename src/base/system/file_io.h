// Reading and writing whole files over the file operations: short transfers and interruptions are
// dealt with here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/system/file_operations.h"

namespace korvant {

/// Closes what it holds.
class OpenFile {
  public:
    explicit OpenFile(FileOperations& files) : files_(files) {}
    ~OpenFile() { close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    FileOperations::Handle& handle() noexcept { return handle_; }
    /// 0 or the error number; a second call does nothing.
    int close();

  private:
    FileOperations& files_;
    FileOperations::Handle handle_ = -1;
};

/// Removes what stands at `path` at the end, however a function is left: what became a file under
/// another name is not there any more.
class Leftover {
  public:
    Leftover(FileOperations& files, const std::string& path) : files_(files), path_(path) {}
    ~Leftover() { files_.remove(path_); }
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;

  private:
    FileOperations& files_;
    const std::string& path_;
};

/// Everything up to the end. EFBIG above `limit` bytes, ENOMEM without memory; `bytes` then holds
/// what was read so far.
int readAll(FileOperations& files, FileOperations::Handle handle, std::size_t limit,
            std::string& bytes);
int readFile(FileOperations& files, const std::string& path, std::size_t limit, std::string& bytes);
int writeFully(FileOperations& files, FileOperations::Handle handle, std::string_view bytes);

/// A new file that only this user may read, on disk when 0 is returned and absent otherwise.
int writeSecretFile(FileOperations& files, const std::string& path, std::string_view bytes);
/// The same in place of whatever stands there: its readers see the old or the new content.
int replaceSecretFile(FileOperations& files, const std::string& path, std::string_view bytes);

std::string folderOf(const std::string& path);
/// What follows the last slash or backslash; the whole path without one.
std::string nameOf(const std::string& path);
std::string joinPath(const std::string& folder, const std::string& name);
/// The same, but nothing in no folder is nothing.
std::string joinPathIn(const std::string& folder, const std::string& name);
/// A name in the folder of `path` that no other process uses.
std::string temporaryBeside(const std::string& path);

/// Tells contents apart. Not for anything that somebody could want to forge.
std::uint64_t contentHash(std::string_view bytes) noexcept;
std::string hexText(std::uint64_t value);

}  // namespace korvant
