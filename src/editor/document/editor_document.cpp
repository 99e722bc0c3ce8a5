#include "editor/document/editor_document.h"

#include <cerrno>
#include <chrono>
#include <new>

#include "base/system/file_io.h"
#include "base/system/user_folders.h"
#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr char kTitle[] = "Script Editor";
constexpr char kNoFile[] = "File does not exist";
constexpr char kCannotOpen[] = "Error opening file";
constexpr char kEmptyFile[] = "File of zero length";
constexpr char kReadError[] = "Error while reading file";
constexpr char kCannotCreate[] = "Error creating file";
constexpr char kWriteError[] = "Error while writing file";
constexpr char kBecameUtf8[] =
    "Saved as UTF-8, since the text has characters that Windows Western lacks.";
constexpr char kOtherVersion[] =
    "The file had been changed by another program. That version is kept in ";

std::int64_t secondsNow() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

bool outOfMemory(int error) {
    return error == ENOMEM || error == EFBIG;
}

}  // namespace

EditorDocument::EditorDocument(const DocumentParts& parts)
    : editor_(parts.editor),
      output_(parts.output),
      files_(parts.files),
      saver_(parts.files, parts.backups) {}

std::string EditorDocument::title() const {
    if (path_.empty() && name_.empty()) return kTitle;
    return std::string(kTitle) + " - " + name() + (modified_ ? "*" : "");
}

std::string EditorDocument::name() const {
    if (!path_.empty()) return decodeForDisplay(nameOf(path_));
    return name_.empty() ? kUntitled : name_;
}

bool EditorDocument::fail(const char* message) {
    output_.show(message);
    return false;
}

bool EditorDocument::put(std::string_view text) {
    incomplete_ = !editor_.replaceText(text);
    return !incomplete_;
}

void EditorDocument::begin(const std::string& hostBytes, const std::string& path) {
    const DecodedDocument document = decodeDocument(hostBytes);
    hostHash_ = contentHash(hostBytes);
    encoding_ = document.encoding;
    editor_.send(sci::kSetUndoCollection, 0);
    if (!put(document.text)) fail(kNoMemory);
    editor_.send(sci::kSetUndoCollection, 1);
    editor_.send(sci::kEmptyUndoBuffer);
    modified_ = false;
    path_ = path;
    FileStatus status;
    if (!path.empty() && files_.status(path, status) == 0) mark_ = {path, status, hostHash_, false};
}

std::optional<std::string> EditorDocument::bytes() {
    const std::optional<std::string> text = editor_.text();
    // A control that could not be made holds nothing, which is not the text.
    if (!text || incomplete_ || !editor_.exists()) return std::nullopt;
    return encodeDocument(*text, encoding_);
}

std::optional<std::string> EditorDocument::scriptBytes() {
    const std::optional<std::string> text = editor_.text();
    return text ? std::optional(encodeScript(*text, encoding_)) : std::nullopt;
}

void EditorDocument::makeEmpty() {
    put({});
    encoding_ = {};
    // What comes next is another text, even when it is saved under the same name.
    mark_ = {};
}

bool EditorDocument::load(const std::string& path) try {
    FileStatus status;
    if (files_.status(path, status) != 0) return fail(kCannotOpen);
    if (status.kind == FileStatus::Kind::none) return fail(kNoFile);
    if (status.kind != FileStatus::Kind::regular) return fail(kCannotOpen);
    OpenFile file(files_);
    if (files_.openRead(path, file.handle()) != 0) return fail(kCannotOpen);
    if (status.size == 0) return fail(kEmptyFile);
    if (status.size > kLargestFile) return fail(kNoMemory);
    std::string content;
    if (const int error = readAll(files_, file.handle(), kLargestFile, content))
        return fail(outOfMemory(error) ? kNoMemory : kReadError);
    const DecodedDocument document = decodeDocument(content);
    if (!content.empty() && !put(document.text)) return fail(kNoMemory);
    encoding_ = document.encoding;
    mark_ = {path, status, contentHash(content), false};
    path_ = path;
    modified_ = false;
    return true;
} catch (const std::bad_alloc&) {
    return fail(kNoMemory);
} catch (...) {
    return fail(kReadError);
}

bool EditorDocument::saveTo(const std::string& path) try {
    const DocumentEncoding before = encoding_;
    const std::optional<std::string> content = bytes();
    if (!content) return fail(kNoMemory);
    SaveResult result = saver_.write(path, *content, mark_);
    if (result.failure == SaveFailure::cannotCreate) return fail(kCannotCreate);
    if (result.failure == SaveFailure::whileWriting) return fail(kWriteError);
    // Deliberate: saving an empty text leaves the file empty and the document as it was.
    if (editor_.length() == 0) return false;
    return saved(path, result, before.western && !encoding_.western);
} catch (const std::bad_alloc&) {
    return fail(kNoMemory);
} catch (...) {
    return fail(kWriteError);
}

bool EditorDocument::saved(const std::string& path, SaveResult& result, bool becameUtf8) {
    modified_ = false;
    path_ = path;
    mark_ = std::move(result.mark);
    if (!result.otherVersion.empty())
        output_.show(kOtherVersion + decodeForDisplay(result.otherVersion));
    else if (becameUtf8)
        output_.show(kBecameUtf8);
    return true;
}

RecoveryRecord EditorDocument::snapshot() {
    RecoveryRecord record;
    record.path = absolutePath(path_);
    record.text = editor_.text().value_or(std::string());
    record.encoding = encoding_;
    record.fileHash = mark_.path == path_ ? mark_.hash : 0;
    record.hostHash = hostHash_;
    record.time = secondsNow();
    return record;
}

void EditorDocument::adopt(const RecoveryRecord& record) {
    if (!put(record.text)) fail(kNoMemory);
    encoding_ = record.encoding;
    path_ = record.path;
    // Status unknown: whether the file is still the one that was edited is seen by its content.
    mark_ = {record.path, {}, record.fileHash, false};
    modified_ = true;
}

}  // namespace korvant
