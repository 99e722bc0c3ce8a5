// Writing a document so that the file always holds the old or the new text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/system/file_operations.h"
#include "editor/document/backup_store.h"

namespace korvant {

/// Contents above this are never compared by reading them.
inline constexpr std::size_t kLargestCompared = std::size_t{256} << 20;

/// What the editor knows of a file's content: as it was read, or as the editor wrote it.
struct FileMark {
    std::string path;
    FileStatus status;
    std::uint64_t hash = 0;
    bool written = false;  ///< by this editor, so that it needs no backup
};

enum class SaveFailure {
    none,
    cannotCreate,  ///< the file is as it was
    whileWriting   ///< the file is as it was
};

struct SaveResult {
    SaveFailure failure = SaveFailure::none;
    int error = 0;  ///< the system's, of a failure; 0 where it is none of the system's
    FileMark mark;  ///< of the file as written
    /// Set when another program had changed the file since the editor read or wrote it: where
    /// that program's version is now.
    std::string otherVersion;
};

class SafeSave {
  public:
    SafeSave(FileOperations& files, BackupStore& backups) : files_(files), backups_(backups) {}

    /// Replaces the content of `path`, through symbolic links, in one step. Mode, owner, group and
    /// access lists stay; where a replacement would break them or a hard link, the file is written
    /// through after its content went to the backup. A content that the editor did not write
    /// itself goes to the backup first. `known` is what the editor knows of the file.
    SaveResult write(const std::string& path, std::string_view bytes, const FileMark& known);

  private:
    struct Target;
    SaveFailure put(const std::string& path, std::string_view bytes, const FileMark& known,
                    Target& target);
    SaveFailure replace(const Target& target, std::string_view bytes);
    SaveFailure writeNew(const Target& target, std::string_view bytes);
    SaveFailure writeThrough(const Target& target, std::string_view bytes);
    bool keepPrevious(Target& target, std::string_view bytes, const FileMark& known, bool sameFile);
    bool unchanged(const Target& target, const FileMark& known);
    int fill(const std::string& path, std::string_view bytes);
    void restore(const std::string& path, const std::string& backup);
    /// Notes the error of a step.
    bool failed(int error);

    FileOperations& files_;
    BackupStore& backups_;
    int error_ = 0;  ///< the last that was noted
};

}  // namespace korvant
