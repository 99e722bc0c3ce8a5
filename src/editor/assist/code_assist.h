// Help while one writes and reads: names that fit, parameters, documentation, places, new names.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "editor/assist/assist_view.h"
#include "editor/assist/place_history.h"
#include "editor/assist/snippet.h"
#include "editor/control/key_press.h"
#include "editor/control/text_control.h"
#include "language/assist_service.h"

namespace korvant {

/// What is known about names comes from a service that answers later; nothing here waits. An answer
/// about a text that has changed meanwhile is dropped, but for names while their word grows.
class CodeAssist {
  public:
    struct Surroundings {
        const TextControl& editor;
        AssistView& view;
        /// Null when nothing can be known, for example without an engine.
        std::function<AssistService*()> service;
        /// A script stands still and can be looked at.
        std::function<bool()> stopped;
    };
    explicit CodeAssist(Surroundings surroundings);

    // What happens in the text.
    void notified(const ControlNotification& notification);
    /// True: the key was for a pop-up, and nobody else is to see it.
    bool key(const KeyPress& key);
    /// Closes the topmost pop-up; false when there was none.
    bool escape();
    /// The user has paused.
    void rested();
    /// The pointer rests over a position; negative: over no text.
    void restedAt(int position);
    /// The text has been scrolled: the list goes with its word, tips go.
    void scrolled();
    /// Another text is in view, the one by this number. Each has places of its own to go back to.
    void textExchanged(std::uint64_t id);
    /// The text has lost the keyboard.
    void hideAll();

    // Commands.
    void complete();
    void showParameters();
    void showDocumentation();
    void goToDeclaration() { goToDeclarationAt(editor_.caret()); }
    void goToDeclarationAt(int position);
    void findReferences();
    void rename();
    void goBack();
    void goForward();
    void mend(const Diagnostic& problem);
    /// Of the lines that are selected, or of all.
    void reindent();

    // What the user does in pop-ups.
    void suggestionTaken(std::size_t index);
    void placeChosen(const ListedPlace& place);
    void repairChosen(const Repair& repair);
    void renameTo(const std::string& name);
    /// A jump made elsewhere, which can be gone back from.
    void leavingPlace() { history_.leave(caret()); }

    const SuggestionList& suggestions() const noexcept { return list_; }
    bool suggesting() const noexcept { return listOpen_; }
    /// The text as the service gets it.
    std::shared_ptr<const std::string> text();

  private:
    using Kind = AssistQuestion::Kind;

    void characterAdded(int character);
    /// Whether anything is asked that the user has not asked for.
    bool asksItself() const;
    void caretMoved();
    void textModified(const ControlNotification& notification);
    bool listKey(const KeyPress& key);
    bool takeChosen();
    void take(const SuggestionList::Row& row);
    void insertSnippet(const Suggestion& snippet);
    void askNames(bool byHand);
    void namesCame(const AssistAnswer* answer);
    void updateList();
    void closeList();
    void openTip();
    void askSignatures();
    void showPlaces(const AssistAnswer& answer, Kind kind);
    void listReferences(int position);
    void apply(const std::vector<ByteRange>& ranges, const std::string& with);
    void goTo(std::size_t position);
    /// Asks about the text as it is; `then` gets the answer if the text is still the same.
    void ask(AssistQuestion question, std::function<void(const AssistAnswer&)> then);
    std::size_t caret() const { return static_cast<std::size_t>(editor_.caret()); }
    int wordStart(int position) const;
    std::string wordBeforeCaret() const;
    void selectStop();

    const TextControl& editor_;
    AssistView& view_;
    std::function<AssistService*()> service_;
    std::function<bool()> stopped_;
    std::shared_ptr<const std::string> text_;  ///< null: to be read anew
    std::uint64_t version_ = 0;
    SuggestionList list_;
    bool listOpen_ = false;
    bool listWanted_ = false;  ///< asked for, and not come yet
    bool listByHand_ = false;
    int wordBegin_ = -1;  ///< of the word that the list is for
    int callBegin_ = -1;  ///< the open bracket whose parameters are shown; -1: none
    bool tipOpen_ = false;
    int seenCaret_ = -1;
    std::uint64_t seenVersion_ = 0;
    ByteRange renamed_;
    SnippetPlaces snippet_;
    PlaceHistory history_;
    std::map<std::uint64_t, PlaceHistory> otherHistories_;  ///< of texts that are not in view
    std::uint64_t textId_ = 0;
    std::vector<ByteRange> occurrences_;
    bool changing_ = false;  ///< it is us who change the text
};

}  // namespace korvant
