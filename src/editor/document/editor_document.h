// The text in the editor as a document: read from a file or given by the host, and written back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "editor/control/output_pane.h"
#include "editor/control/text_control.h"
#include "editor/document/document_encoding.h"
#include "editor/document/recovery_record.h"
#include "editor/document/safe_save.h"
#include "host/engine/limits.h"

namespace korvant {

/// What loading and saving work with; each must outlive the document.
struct DocumentParts {
    const TextControl& editor;
    OutputPane& output;
    FileOperations& files;
    BackupStore& backups;
};

/// Every failure is one line in the output pane and leaves the editor usable.
class EditorDocument {
  public:
    static constexpr std::size_t kLargestFile = scaledMebibytes(256);

    explicit EditorDocument(const DocumentParts& parts);

    /// Empty while the text was neither read from a file nor saved.
    const std::string& path() const noexcept { return path_; }
    void setPath(std::string path) { path_ = std::move(path); }
    /// What a text is called that has no file; empty: the host's own.
    void setName(std::string name) { name_ = std::move(name); }
    /// Of the file, else the text's own or "Untitled". UTF-8.
    std::string name() const;
    bool modified() const noexcept { return modified_; }
    void setModified(bool modified) noexcept { modified_ = modified; }
    const DocumentEncoding& encoding() const noexcept { return encoding_; }
    /// The control could not hold the text that it was given.
    bool incomplete() const noexcept { return incomplete_; }
    /// What stands in the window's title bar, UTF-8.
    std::string title() const;

    static constexpr char kUntitled[] = "Untitled";
    /// The question before changes go.
    static constexpr char kSaveChanges[] = "Do You Want to Save Your Changes?";

    /// Puts the host's text into the editor, unmodified. `path`: the file that it is the content
    /// of, which need not exist yet; empty for none.
    void begin(const std::string& hostBytes, const std::string& path);
    /// The text as bytes in the document's encoding; nothing when there is no memory for them, or
    /// when the editor holds less than it was given.
    std::optional<std::string> bytes();
    /// The same for the compiler.
    std::optional<std::string> scriptBytes();

    void makeEmpty();
    /// Reads a file into the editor, which the caller has emptied. False when nothing was read; the
    /// document is then still the one before.
    bool load(const std::string& path);
    /// False when the file was not written, or when there was nothing to write: the file is then
    /// empty, and the document stays modified and keeps its path.
    bool saveTo(const std::string& path);

    RecoveryRecord snapshot();
    /// Puts a recovered text into the editor, as a modified document.
    void adopt(const RecoveryRecord& record);

  private:
    bool put(std::string_view text);
    bool fail(const char* message);
    bool saved(const std::string& path, SaveResult& result, bool becameUtf8);

    const TextControl& editor_;
    OutputPane& output_;
    FileOperations& files_;
    SafeSave saver_;
    std::string path_;
    std::string name_;
    DocumentEncoding encoding_;
    FileMark mark_;
    std::uint64_t hostHash_ = 0;
    bool modified_ = false;
    bool incomplete_ = false;
};

}  // namespace korvant
