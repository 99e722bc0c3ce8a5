// The editor's help in the window: pop-ups over the text, marks in it, the pointer's part.
#pragma once

#include <wx/timer.h>

#include <memory>

#include "editor/assist/code_assist.h"
#include "editor/assist/outline.h"
#include "editor/control/live_help.h"
#include "editor/script_editor.h"
#include "ui/kit/look.h"

class wxFrame;
class wxMouseEvent;
class wxStyledTextCtrl;

namespace korvant::ui {

class ChoiceBox;
class RenameBox;
class SuggestionPopUp;
class TipPopUp;
class ValuePopUp;

class TextAssist : private AssistView {
  public:
    /// All outlive this. The pop-ups are made when they are needed first.
    TextAssist(wxFrame& frame, wxStyledTextCtrl& control, ScriptEditor& editor, const Look& look);
    ~TextAssist() override;
    TextAssist(const TextAssist&) = delete;
    TextAssist& operator=(const TextAssist&) = delete;

    /// Off: nothing is offered, and no process runs.
    void use(bool on);
    /// The colours have changed.
    void applyLook();
    void notified(const ControlNotification& notification);
    /// True: the key was for a pop-up.
    bool key(const KeyPress& key);
    /// Closes what is open; false when nothing was.
    bool escape();
    /// A command that is done here; false for any other.
    bool command(int id);
    /// Reads the text as it is, so that it can be listed and coloured. Done by itself soon after
    /// each change.
    void readText();
    /// The text has been read; `version` is the editor's text version of then.
    std::function<void(std::uint64_t version, const ScopeIndex& index)> onRead;
    /// It is too long for that.
    std::function<void()> onUnread;
    bool textIsLong() const { return editor_.textLength() > kLongestLive; }
    /// Another text is about to be in view, or is: the text by this number.
    void textLeaves();
    void textShown(std::uint64_t id);
    /// The outline as a list, in which a function is chosen; `atRight`: below the right end of what
    /// stands over the text.
    void chooseFunction(bool atRight = false);
    void setOutline(std::vector<OutlineEntry> entries) { outline_ = std::move(entries); }
    /// The script has gone on, or stands still elsewhere: values are others.
    void stopChanged();
    /// A jump that can be gone back from.
    void leavingPlace() { assist_.leavingPlace(); }

    SuggestionPopUp* suggestionPopUp() const { return suggestions_; }
    TipPopUp* tip() const { return tip_; }
    ValuePopUp* value() const { return value_; }

  private:
    void showSuggestions(const SuggestionList& list, int position) override;
    void hideSuggestions() override;
    void showSignatures(const Signatures& signatures, int position) override;
    void showDocumentation(const HoverText& help) override;
    bool showValue(const std::string& expression, ByteRange word) override;
    void say(const Sentence& sentence, int position) override;
    void hideTips() override;
    void choosePlace(bool uses, const std::string& name,
                     const std::vector<ListedPlace>& places) override;
    void chooseRepair(const std::vector<Repair>& repairs, int position) override;
    void askName(const std::string& name, ByteRange word) override;
    void refuseName(const Sentence& reason) override;
    void closeName() override;
    void markOccurrences(const std::vector<ByteRange>& places) override;
    void selectAll(const std::vector<ByteRange>& ranges) override;
    void goTo(std::size_t position) override;

    AssistService* service();
    void bindPointer();
    template <class Event>
    void hideFor(Event& event);
    void followPointer(wxMouseEvent& event);
    void readOncePainted(wxPaintEvent& event);
    void goByClick(wxMouseEvent& event);
    void mend();
    /// The line of a position on the screen, or in the text's window.
    wxRect onScreen(std::size_t position) const;
    /// The place of one character, and a little above and below it.
    wxRect lineAt(std::size_t position) const;
    TipPopUp& tipPopUp();
    ChoiceBox& choices();
    void mark(int indicator, const std::vector<ByteRange>& places);

    wxFrame& frame_;
    wxStyledTextCtrl& control_;
    ScriptEditor& editor_;
    const Look& look_;
    std::unique_ptr<AssistService> service_;
    CodeAssist assist_;
    wxTimer rest_;     ///< of the caret
    wxTimer changed_;  ///< the text, so long ago
    GrowingPause reading_;
    std::vector<OutlineEntry> outline_;
    SuggestionPopUp* suggestions_ = nullptr;
    TipPopUp* tip_ = nullptr;
    ValuePopUp* value_ = nullptr;
    ChoiceBox* choices_ = nullptr;
    RenameBox* rename_ = nullptr;
    wxRect hovered_;               ///< on the screen; of what a tip under the pointer is about
    std::uint64_t shownStop_ = 0;  ///< for which the value is
    int firstLine_ = 0;            ///< in view
    bool on_ = false;
};

}  // namespace korvant::ui
