#include "edited_file.h"

#include "base/system/file_io.h"
#include "base/system/os_file.h"
#include "base/system/user_folders.h"
#include "source_report.h"

using korvant::FileStatus;
using korvant::systemFiles;

namespace korvant_app {
namespace {

constexpr std::size_t kLargestEdited = std::size_t{256} << 20;
constexpr int kMostNames = 1000;

std::string backupFolder() {
    return korvant::joinPathIn(korvant::userDataFolder(), "backups");
}

bool refuse(const std::string& path, const std::string& reason) {
    complain("cannot read " + path + ": " + reason);
    return false;
}

/// Nothing stands there, but something could.
bool isNew(const std::string& path) {
    FileStatus folder;
    const std::string parent = korvant::folderOf(path);
    const bool there = systemFiles().status(parent.empty() ? "." : parent, folder) == 0;
    return there && folder.kind == FileStatus::Kind::folder;
}

bool read(const std::string& path, FileStatus& status, std::string& text) {
    if (const int error = systemFiles().status(path, status))
        return refuse(path, korvant::systemErrorText(error));
    if (status.kind == FileStatus::Kind::none)
        return isNew(path) || refuse(path, korvant::systemErrorText(ENOENT));
    if (status.kind != FileStatus::Kind::regular) return refuse(path, "not a file");
    const int error = korvant::readFile(systemFiles(), path, kLargestEdited, text);
    return error == 0 || refuse(path, korvant::systemErrorText(error));
}

}  // namespace

std::optional<EditedFile> EditedFile::open(const std::string& path) {
    EditedFile file;
    file.path_ = path;
    if (path.empty()) return file;
    if (!read(path, file.mark_.status, file.text_)) return std::nullopt;
    file.mark_.path = path;
    file.mark_.hash = korvant::contentHash(file.text_);
    return file;
}

bool EditedFile::write(const std::string& text) {
    const bool isUnnamed = path_.empty();
    if (isUnnamed && !chooseName()) return keepElsewhere(text);
    korvant::BackupStore backups(systemFiles(), backupFolder());
    const korvant::SaveResult result =
        korvant::SafeSave(systemFiles(), backups).write(path_, text, mark_);
    if (result.failure != korvant::SaveFailure::none) return keepElsewhere(text);
    if (!result.otherVersion.empty())
        complain(path_ + " was changed meanwhile; that version is in " + result.otherVersion);
    if (isUnnamed) complain("the text is in " + path_);
    return true;
}

bool EditedFile::chooseName() {
    for (int number = 1; number <= kMostNames; ++number) {
        path_ = number == 1 ? "untitled.as" : "untitled-" + std::to_string(number) + ".as";
        if (systemFiles().status(path_, mark_.status) != 0) return false;
        if (mark_.status.kind == FileStatus::Kind::none) return true;
    }
    return false;
}

bool EditedFile::keepElsewhere(const std::string& text) {
    korvant::BackupStore backups(systemFiles(), backupFolder());
    const bool kept = backups.keepText(korvant::nameOf(path_), text) == 0;
    complain("cannot write " + path_ +
             (kept ? "; the text is in " + backupFolder() : std::string("; the text is lost")));
    return false;
}

}  // namespace korvant_app
