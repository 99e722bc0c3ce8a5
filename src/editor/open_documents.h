// The texts that are open in one editor: one of them is shown, the others wait behind it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/assist/problems.h"
#include "editor/control/control_text.h"
#include "editor/document/editor_document.h"
#include "editor/document/recovery_keeper.h"
#include "editor/stops/breakpoint_plan.h"
#include "editor/stops/breakpoints.h"

namespace korvant {

/// What all texts of an editor have in common; each must outlive them.
struct DocumentSurroundings {
    const TextControl& editor;
    OutputPane& output;
    EditorWindow& window;
    FileOperations& files;
    BackupStore& backups;
    Clock& clock;
    std::string recoveryFolder;
};

/// One text and all that belongs to it. What its parts do to the control is right only while the
/// control shows it.
class OpenDocument {
  public:
    OpenDocument(const DocumentSurroundings& surroundings, std::uint64_t id);

    /// No other text of this editor has or had it.
    const std::uint64_t id;
    EditorDocument document;
    Breakpoints breakpoints;
    BreakpointPlan plan;
    Problems problems;
    RecoveryKeeper recovery;
    ControlText text;
    std::vector<BreakpointWish> stops;  ///< where a run stops in it, while another text is shown
    std::vector<std::string> watches;   ///< while those of another text are looked at
    /// Of the text: another number after each change, and another one than that of any other text.
    std::uint64_t version = 0;
    std::optional<std::uint64_t> tour;  ///< the version that is the untouched tour
    bool savePoint = false;  ///< the control knows which state of the text is the unchanged one

    bool isTour() const noexcept { return tour == version; }
};

/// A text as lists show it.
struct DocumentTab {
    std::uint64_t id = 0;
    std::string name;    ///< UTF-8; of two equal ones each tells its folder
    std::string detail;  ///< the whole path, UTF-8; empty for a text without a file
    bool modified = false;
    bool operator==(const DocumentTab&) const = default;
};

/// Never empty. Order: as they were opened, until the user moves one.
class OpenDocuments {
  public:
    explicit OpenDocuments(const DocumentSurroundings& surroundings);

    std::size_t count() const noexcept { return all_.size(); }
    OpenDocument& at(std::size_t index) const { return *all_[index]; }
    OpenDocument& shown() noexcept { return *all_[shown_]; }
    const OpenDocument& shown() const noexcept { return *all_[shown_]; }
    /// Puts a text before the one that is at `index` now; at the end for count() and beyond.
    void move(std::uint64_t id, std::size_t index);
    /// Null when it is closed.
    OpenDocument* find(std::uint64_t id) const;
    /// The text of a file; null when it is not open. Two names of one file are one.
    OpenDocument* findFile(const std::string& path) const;
    /// The text that a script calls by this name: the file's path, or its name alone.
    OpenDocument* findSource(const std::string& source) const;
    /// The one `step` places further, beginning again at the other end.
    OpenDocument& neighbour(int step) const;

    /// A new text, which is shown, empty.
    OpenDocument& add();
    /// A text that goes out of sight is kept as far as it is not safe yet.
    void show(OpenDocument& document);
    /// Not the last one. One that was shown gives way to the one behind it, else before it.
    void remove(OpenDocument& document);
    /// The control is about to go.
    void release();

    /// Of a text that has changed, or is another one.
    void touch(OpenDocument& document) noexcept { document.version = ++versions_; }
    std::vector<DocumentTab> tabs() const;

  private:
    OpenDocument& make();
    void noteCopies() const;
    std::size_t indexOf(const OpenDocument& document) const;

    DocumentSurroundings surroundings_;
    std::vector<std::unique_ptr<OpenDocument>> all_;
    std::size_t shown_ = 0;
    std::uint64_t ids_ = 0;
    std::uint64_t versions_ = 0;
};

}  // namespace korvant
