// What the Find and Replace dialogs do; their windows hold layout and forwarding only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "editor/control/search.h"

namespace korvant {

/// The state of the check boxes, all clear at first.
struct SearchOptions {
    bool matchCase = false;
    bool wholeWords = false;
    bool regularExpressions = false;
};
std::uint32_t searchFlags(const SearchOptions& options);

/// The contents of the boxes when a dialog opens.
struct SearchFields {
    std::vector<std::string> searched;      ///< newest first
    std::vector<std::string> replacements;  ///< newest first
    std::string text;
    std::string replacement;
};

/// What became of a button.
struct SearchOutcome {
    bool found = false;
    bool insertOnTop = false;  ///< the search text goes to the top of the dialog's own list
};

/// The dialog "Search". Does nothing once the editor is gone.
class FindDialog {
  public:
    FindDialog(std::shared_ptr<Search> search, EditorWindow& window);
    virtual ~FindDialog() = default;

    virtual SearchFields open() const;
    /// Beeps when there is no match.
    SearchOutcome next(const std::string& text, const SearchOptions& options);
    SearchOutcome previous(const std::string& text, const SearchOptions& options);

  protected:
    /// The search, with its flags set; null once the editor is gone.
    std::shared_ptr<Search> begin(const SearchOptions& options);
    SearchOutcome find(const std::string& text, const SearchOptions& options, bool forward);
    bool beepUnless(bool found);

  private:
    std::weak_ptr<Search> search_;
    EditorWindow& window_;
};

/// The dialog "Search and replace".
class ReplaceDialog final : public FindDialog {
  public:
    using FindDialog::FindDialog;

    SearchFields open() const override;
    /// The check box "Replace in selection only". The window disables Next, Previous and Replace
    /// while it is set.
    void setInSelection(bool inSelection) noexcept { inSelection_ = inSelection; }
    bool inSelection() const noexcept { return inSelection_; }

    SearchOutcome next(const std::string& text, const SearchOptions& options);
    SearchOutcome previous(const std::string& text, const SearchOptions& options);
    /// Replaces the selection and goes on in the direction of the last search.
    SearchOutcome replace(const std::string& text, const std::string& replacement,
                          const SearchOptions& options);
    SearchOutcome replaceAll(const std::string& text, const std::string& replacement,
                             const SearchOptions& options);

  private:
    SearchOutcome findOnwards(const std::string& text, const SearchOptions& options, bool forward);

    bool forward_ = true;
    bool inSelection_ = false;
};

/// The number in the Go to line dialog's field; nothing when it is no whole number of 32 bits.
std::optional<std::int32_t> lineNumberOf(const std::string& field);
/// What to say then.
inline constexpr char kNotALine[] = "Please enter an integer.";

}  // namespace korvant
