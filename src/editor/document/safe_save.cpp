#include "editor/document/safe_save.h"

#include <cerrno>

#include "base/system/file_io.h"

namespace korvant {

namespace {

bool folderRefuses(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

}  // namespace

struct SafeSave::Target {
    std::string path;  ///< links resolved
    FileStatus status;
    std::string backup;  ///< where its content is kept, empty when nowhere
    bool changedByOthers = false;
};

bool SafeSave::failed(int error) {
    if (error != 0) error_ = error;
    return error != 0;
}

SaveResult SafeSave::write(const std::string& path, std::string_view bytes, const FileMark& known) {
    SaveResult result;
    Target target;
    error_ = 0;
    result.failure = put(path, bytes, known, target);
    if (result.failure != SaveFailure::none) {
        result.error = error_;
        return result;
    }
    if (target.changedByOthers) result.otherVersion = target.backup;
    result.mark = {path, {}, contentHash(bytes), true};
    files_.status(path, result.mark.status);
    return result;
}

SaveFailure SafeSave::put(const std::string& path, std::string_view bytes, const FileMark& known,
                          Target& target) {
    if (failed(files_.resolve(path, target.path)) ||
        failed(files_.status(target.path, target.status)))
        return SaveFailure::cannotCreate;
    if (target.status.kind == FileStatus::Kind::none) return writeNew(target, bytes);
    if (target.status.kind != FileStatus::Kind::regular) {
        failed(target.status.kind == FileStatus::Kind::folder ? EISDIR : EINVAL);
        return SaveFailure::cannotCreate;
    }
    if (failed(files_.mayWrite(target.path)) ||
        !keepPrevious(target, bytes, known, known.path == path))
        return SaveFailure::cannotCreate;
    return replace(target, bytes);
}

bool SafeSave::unchanged(const Target& target, const FileMark& known) {
    if (target.status == known.status) return true;
    std::string content;
    return target.status.size <= kLargestCompared &&
           readFile(files_, target.path, kLargestCompared, content) == 0 &&
           contentHash(content) == known.hash;
}

bool SafeSave::keepPrevious(Target& target, std::string_view bytes, const FileMark& known,
                            bool sameFile) {
    if (target.status.size == 0) return true;
    const bool same = sameFile && unchanged(target, known);
    target.changedByOthers = sameFile && !same;
    if (same && !bytes.empty()) {
        // The text was in the editor, so a full disk or a missing folder need not stop the save.
        if (!known.written) backups_.keep(target.path, target.backup);
        return true;
    }
    return !failed(backups_.keepSomewhere(target.path, target.backup));
}

SaveFailure SafeSave::writeNew(const Target& target, std::string_view bytes) {
    const std::string temporary = temporaryBeside(target.path);
    OpenFile file(files_);
    if (failed(files_.create(temporary, false, file.handle()))) return SaveFailure::cannotCreate;
    int error = writeFully(files_, file.handle(), bytes);
    if (error == 0) error = files_.flush(file.handle());
    const int closing = file.close();
    if (error == 0) error = closing;
    const bool written = error == 0;
    if (written) error = files_.rename(temporary, target.path);
    if (error != 0) files_.remove(temporary);
    files_.flushFolder(folderOf(target.path));
    if (!failed(error)) return SaveFailure::none;
    return written ? SaveFailure::cannotCreate : SaveFailure::whileWriting;
}

SaveFailure SafeSave::replace(const Target& target, std::string_view bytes) {
    if (target.status.links > 1) return writeThrough(target, bytes);
    const std::string temporary = temporaryBeside(target.path);
    OpenFile file(files_);
    if (const int error = files_.create(temporary, true, file.handle()); failed(error))
        return folderRefuses(error) ? writeThrough(target, bytes) : SaveFailure::cannotCreate;
    const Leftover leftover(files_, temporary);
    int error = writeFully(files_, file.handle(), bytes);
    const bool attributesKept = files_.copyAttributes(target.path, file.handle()) == 0;
    if (error == 0) error = files_.flush(file.handle());
    const int closing = file.close();
    if (error == 0) error = closing;
    if (failed(error)) return SaveFailure::whileWriting;
    if (!attributesKept) return writeThrough(target, bytes);
    if (failed(files_.rename(temporary, target.path))) return SaveFailure::cannotCreate;
    files_.flushFolder(folderOf(target.path));
    return SaveFailure::none;
}

SaveFailure SafeSave::writeThrough(const Target& target, std::string_view bytes) {
    std::string backup = target.backup;
    if (backup.empty() && target.status.size > 0 &&
        failed(backups_.keepSomewhere(target.path, backup)))
        return SaveFailure::cannotCreate;
    if (!failed(fill(target.path, bytes))) return SaveFailure::none;
    restore(target.path, backup);
    return SaveFailure::whileWriting;
}

int SafeSave::fill(const std::string& path, std::string_view bytes) {
    OpenFile file(files_);
    if (const int error = files_.openWrite(path, file.handle())) return error;
    int error = writeFully(files_, file.handle(), bytes);
    if (error == 0) error = files_.truncate(file.handle(), bytes.size());
    if (error == 0) error = files_.flush(file.handle());
    const int closing = file.close();
    return error != 0 ? error : closing;
}

void SafeSave::restore(const std::string& path, const std::string& backup) {
    std::string content;
    if (!backup.empty() && readFile(files_, backup, SIZE_MAX - 1, content) != 0) return;
    fill(path, content);
}

}  // namespace korvant
