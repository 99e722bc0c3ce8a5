// The file behind the text of "korvant edit".
#pragma once

#include <optional>
#include <string>

#include "editor/document/safe_save.h"

namespace korvant_app {

/// Reads a script file, and writes it back so that the file always holds the old or the new text.
class EditedFile {
  public:
    /// Reads the file; one that is not there has an empty text. Nothing when it cannot be edited:
    /// the reason was given on standard error. An empty path is a text that has no file yet.
    static std::optional<EditedFile> open(const std::string& path);

    const std::string& text() const { return text_; }
    /// Writes a changed text. A text without a file gets one in the current folder, and standard
    /// error says where. False when nothing could be written; the text is then in the user's
    /// backups, and standard error says so.
    bool write(const std::string& text);

  private:
    bool chooseName();
    bool keepElsewhere(const std::string& text);

    std::string path_;
    std::string text_;
    korvant::FileMark mark_;
};

}  // namespace korvant_app
