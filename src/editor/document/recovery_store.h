// Where unsaved texts wait for the next opening.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/system/file_io.h"
#include "editor/document/recovery_record.h"

namespace korvant {

/// A text that an earlier opening left behind. While one lives nobody else is offered it.
struct FoundRecord {
    std::string file;
    RecoveryRecord record;
    std::shared_ptr<OpenFile> lock;
};

/// One opening of the editor has one store. Each file is complete at any moment; the files of an
/// opening that is still alive, in this process or another, are never found.
class RecoveryStore {
  public:
    /// An empty folder name keeps nothing.
    RecoveryStore(FileOperations& files, std::string folder);
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore&) = delete;
    RecoveryStore& operator=(const RecoveryStore&) = delete;

    /// Replaces the copy of the text in the editor. 0 or the error number.
    int keepCurrent(const RecoveryRecord& record);
    void removeCurrent();
    /// Where that copy is; empty while there is none.
    std::string currentPath() const;
    /// Keeps a text that is about to be dropped from the editor, beside the current one.
    int keepDropped(const RecoveryRecord& record);

    /// What earlier openings left, newest first.
    std::vector<FoundRecord> find();
    void remove(const FoundRecord& found);

  private:
    int begin();
    void end();
    std::string pathOf(const std::string& name) const;
    std::shared_ptr<OpenFile> lockOf(const std::string& opening);

    FileOperations& files_;
    std::string folder_;
    std::string opening_;  ///< the first part of the names of our files
    OpenFile lock_;
    bool begun_ = false;
    int dropped_ = 0;
    bool holdsCurrent_ = false;
};

/// Says when a copy is due: before the unsaved changes are ten seconds old or 200 in number.
class RecoveryTimer {
  public:
    static constexpr std::uint64_t kLongestAge = 9000;  // milliseconds; looked at every second
    static constexpr int kMostChanges = 200;

    void changed(std::uint64_t now);
    bool due(std::uint64_t now) const;
    void done() { changes_ = 0; }
    bool pending() const { return changes_ > 0; }

  private:
    int changes_ = 0;
    std::uint64_t first_ = 0;
};

}  // namespace korvant
