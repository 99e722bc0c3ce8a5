// What shows an editor's help: pop-ups over the text and marks in it.
#pragma once

#include <string>
#include <vector>

#include "editor/assist/suggestion_list.h"
#include "language/repairs.h"
#include "language/script_help.h"

namespace korvant {

/// One row of a list of places in the text.
struct ListedPlace {
    ByteRange range;
    int line = 0;      ///< 1-based
    std::string text;  ///< of the line, without the blanks around
};

/// The window's, or what a test puts in its place. Positions are bytes of the text. Nothing of it
/// takes the keyboard from the text but the boxes for a name or a choice.
class AssistView {
  public:
    virtual ~AssistView() = default;

    /// Below (or above) the word that begins at `position`; also when its rows have changed.
    virtual void showSuggestions(const SuggestionList& list, int position) = 0;
    virtual void hideSuggestions() = 0;

    virtual void showSignatures(const Signatures& signatures, int position) = 0;
    virtual void showDocumentation(const HoverText& help) = 0;
    /// The value of an expression of the stopped script; false when there is none to be shown.
    virtual bool showValue(const std::string& expression, ByteRange word) = 0;
    /// One sentence at a place, such as why something cannot be done.
    virtual void say(const Sentence& sentence, int position) = 0;
    virtual void hideTips() = 0;

    /// Uses of a name, or its declarations. The user chooses one, or none; see
    /// CodeAssist::placeChosen.
    virtual void choosePlace(bool uses, const std::string& name,
                             const std::vector<ListedPlace>& places) = 0;
    /// See CodeAssist::repairChosen.
    virtual void chooseRepair(const std::vector<Repair>& repairs, int position) = 0;
    /// See CodeAssist::renameTo.
    virtual void askName(const std::string& name, ByteRange word) = 0;
    /// The box stays open and says why the name cannot be taken.
    virtual void refuseName(const Sentence& reason) = 0;
    virtual void closeName() = 0;

    virtual void markOccurrences(const std::vector<ByteRange>& places) = 0;
    /// What is typed is written into all of them at once; one of them: plainly selected.
    virtual void selectAll(const std::vector<ByteRange>& ranges) = 0;
    /// The position is about to be in view; the text gets the keyboard.
    virtual void goTo(std::size_t position) = 0;
};

}  // namespace korvant
