#include "ui/editor/assist/text_assist.h"

#include <wx/frame.h>
#include <wx/stc/stc.h>

#include <algorithm>
#include <exception>

#include "editor/control/fold_levels.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/assist/rename_box.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/tip_pop_up.h"
#include "ui/editor/assist/value_pop_up.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kOccurrence = 12, kHovered = 13;  // indicators
constexpr int kRestMilliseconds = 300, kReadMilliseconds = 150, kDwellMilliseconds = 400,
              kClassicDwell = 500;
constexpr int kLeaving = 8;  // pixels beside what is hovered
constexpr int kTintAlpha = 18, kTintOutline = 110;

Icon iconOf(OutlineEntry::Kind kind) {
    return kind == OutlineEntry::Kind::function    ? Icon::function
           : kind == OutlineEntry::Kind::classType ? Icon::classIcon
                                                   : Icon::enumIcon;
}

}  // namespace

template <class Event>
void TextAssist::hideFor(Event& event) {
    if (on_) assist_.hideAll();
    event.Skip();
}

TextAssist::TextAssist(wxFrame& frame, wxStyledTextCtrl& control, ScriptEditor& editor,
                       const Look& look)
    : frame_(frame),
      control_(control),
      editor_(editor),
      look_(look),
      assist_({editor.textControl(), *this, [this] { return service(); },
               [this] { return editor_.inspection().canLook(); }}),
      reading_(kReadMilliseconds) {
    rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (on_ && control_.HasFocus()) assist_.rested();
    });
    changed_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (on_) readText();
    });
    assist_.textExchanged(editor_.shownTab());
    bindPointer();
}

TextAssist::~TextAssist() {
    service_.reset();
    control_.Unbind(wxEVT_MOTION, &TextAssist::followPointer, this);
    control_.Unbind(wxEVT_LEFT_DOWN, &TextAssist::goByClick, this);
    control_.Unbind(wxEVT_PAINT, &TextAssist::readOncePainted, this);
    control_.Unbind(wxEVT_KILL_FOCUS, &TextAssist::hideFor<wxFocusEvent>, this);
    frame_.Unbind(wxEVT_MOVE, &TextAssist::hideFor<wxMoveEvent>, this);
    for (PopUp* popUp : std::initializer_list<PopUp*>{suggestions_, tip_, value_})
        if (popUp) popUp->Destroy();
}

void TextAssist::bindPointer() {
    control_.Bind(wxEVT_MOTION, &TextAssist::followPointer, this);
    control_.Bind(wxEVT_LEFT_DOWN, &TextAssist::goByClick, this);
    control_.Bind(wxEVT_KILL_FOCUS, &TextAssist::hideFor<wxFocusEvent>, this);
    frame_.Bind(wxEVT_MOVE, &TextAssist::hideFor<wxMoveEvent>, this);
}

void TextAssist::use(bool on) {
    if (!on) {
        assist_.hideAll();
        markOccurrences({});
        if (choices_) choices_->close();
        closeName();
        service_.reset();
        foldByLexer(editor_.textControl());
    }
    const bool begins = on && !on_;
    on_ = on;
    editor_.setAssistedByWindow(on);
    control_.SetMouseDwellTime(on ? kDwellMilliseconds : kClassicDwell);
    applyLook();
    if (begins) control_.Bind(wxEVT_PAINT, &TextAssist::readOncePainted, this);
}

void TextAssist::applyLook() {
    for (const int indicator : {kOccurrence, kHovered}) {
        control_.IndicatorSetStyle(indicator, wxSTC_INDIC_ROUNDBOX);
        control_.IndicatorSetForeground(indicator, colourOf(look_->text));
        control_.IndicatorSetAlpha(indicator, kTintAlpha);
        control_.IndicatorSetOutlineAlpha(indicator, indicator == kHovered ? kTintOutline : 0);
        control_.IndicatorSetUnder(indicator, true);
    }
}

/// What needs the whole text begins when the user sees it.
void TextAssist::readOncePainted(wxPaintEvent& event) {
    event.Skip();
    control_.Unbind(wxEVT_PAINT, &TextAssist::readOncePainted, this);
    changed_.StartOnce(1);
}

/// A computer that has no room for another process or thread still edits.
AssistService* TextAssist::service() {
    asIScriptEngine* const engine = editor_.engine();
    if (!on_ || !engine) return nullptr;
    try {
        if (!service_)
            service_ = makeAssistService(*engine, [this](std::function<void()> work) {
                frame_.CallAfter([work = std::move(work)] { work(); });
            });
    } catch (const std::exception&) {
        return nullptr;
    }
    return service_.get();
}

void TextAssist::notified(const ControlNotification& notification) {
    if (!on_) return;
    assist_.notified(notification);
    const int changes = sci::kModInsertText | sci::kModDeleteText;
    if (notification.code == sci::kModified && (notification.modificationType & changes) != 0)
        changed_.StartOnce(reading_.milliseconds());
    if (notification.code != sci::kUpdateUi) return;
    rest_.StartOnce(kRestMilliseconds);
    if (const int first = control_.GetFirstVisibleLine(); first != firstLine_) {
        firstLine_ = first;
        assist_.scrolled();
    }
}

bool TextAssist::key(const KeyPress& key) {
    if (!on_ || !control_.HasFocus()) return false;
    if (assist_.suggesting() && key == functionKeyPress(1)) {
        editor_.helpAt(toUtf8(suggestions_ ? suggestions_->described() : wxString()));
        return true;
    }
    return assist_.key(key);
}

void TextAssist::stopChanged() {
    const bool isOld = editor_.inspection().generation() != shownStop_;
    if (value_ && value_->IsShown() && isOld) assist_.hideAll();
}

bool TextAssist::escape() {
    if (!on_) return false;
    if (choices_ && choices_->IsShown()) return choices_->close(), true;
    if (rename_ && rename_->IsShown()) return rename_->close(), true;
    return assist_.escape();
}

bool TextAssist::command(int id) {
    using namespace command_id;
    if (!on_) return false;
    // The text of a script that runs stays as it is.
    const bool changes = id == kComplete || id == kRename || id == kMend || id == kReindent;
    if (changes && editor_.status().run == EditorStatus::Run::running) return true;
    switch (id) {
        case kComplete:
            return assist_.complete(), true;
        case kGoToFunction:
            return chooseFunction(), true;
        case kGoToDeclaration:
            return assist_.goToDeclaration(), true;
        case kFindReferences:
            return assist_.findReferences(), true;
        case kRename:
            return assist_.rename(), true;
        case kGoBack:
            return assist_.goBack(), true;
        case kGoForward:
            return assist_.goForward(), true;
        case kParameters:
            return assist_.showParameters(), true;
        case kDocumentation:
            return assist_.showDocumentation(), true;
        case kReindent:
            return assist_.reindent(), true;
        case kMend:
            return mend(), true;
        default:
            return false;
    }
}

/// The compiler counts the bytes of the file, of which one stands for each character where the file
/// is no UTF-8.
void TextAssist::mend() {
    const Diagnostic* const found = editor_.problemAtCaret();
    if (!found) return say({"There is no problem on this line."}, control_.GetCurrentPos());
    Diagnostic problem = *found;
    if (editor_.status().western) {
        const int begin = control_.PositionFromLine(problem.line - 1);
        problem.column = control_.PositionRelative(begin, problem.column - 1) - begin + 1;
    }
    assist_.mend(problem);
}

void TextAssist::readText() {
    if (!onRead) return;
    if (textIsLong()) return onUnread();
    reading_.begun();
    const auto take = [this, version = editor_.textVersion()](const ScopeIndex& index) {
        onRead(version, index);
        reading_.ended();
    };
    AssistService* const answers = service();
    if (!answers) return take(ScopeIndex(*assist_.text()));
    answers->read(assist_.text(), [take](const auto& index) { take(*index); });
}

wxRect TextAssist::onScreen(std::size_t position) const {
    const int at = static_cast<int>(position);
    const wxPoint place = control_.ClientToScreen(control_.PointFromPosition(at));
    return {place.x, place.y, 1, control_.TextHeight(control_.LineFromPosition(at))};
}

wxRect TextAssist::lineAt(std::size_t position) const {
    const int at = static_cast<int>(position), beyond = frame_.FromDIP(2);
    const wxPoint place = control_.PointFromPosition(at);
    const int height = control_.TextHeight(control_.LineFromPosition(at));
    return {place.x, place.y - beyond, 1, height + 2 * beyond};
}

void TextAssist::showSuggestions(const SuggestionList& list, int position) {
    if (!control_.HasFocus()) return;
    if (!suggestions_)
        suggestions_ = new SuggestionPopUp(
            &frame_, look_, [this](std::size_t index) { assist_.suggestionTaken(index); });
    suggestions_->show(list, onScreen(static_cast<std::size_t>(position)));
}

void TextAssist::hideSuggestions() {
    if (suggestions_) suggestions_->Hide();
}

TipPopUp& TextAssist::tipPopUp() {
    if (!tip_) tip_ = new TipPopUp(&frame_, look_);
    return *tip_;
}

void TextAssist::showSignatures(const Signatures& signatures, int position) {
    if (!control_.HasFocus()) return;
    hovered_ = {};
    tipPopUp().showSignatures(signatures, onScreen(static_cast<std::size_t>(position)));
}

void TextAssist::showDocumentation(const HoverText& help) {
    hovered_ = onScreen(help.range.begin).Union(onScreen(help.range.end));
    tipPopUp().showHelp(help, hovered_);
}

bool TextAssist::showValue(const std::string& expression, ByteRange word) {
    if (!value_) value_ = new ValuePopUp(&frame_, look_, editor_.inspection());
    const wxRect place = onScreen(word.begin).Union(onScreen(word.end));
    if (!value_->show(expression, place)) {
        value_->Hide();
        return false;
    }
    hovered_ = place;
    shownStop_ = editor_.inspection().generation();
    mark(kHovered, {word});
    return true;
}

namespace {

wxString inLanguage(const Sentence& sentence) {
    return fromUtf8(sentence.filled(toUtf8(words(sentence.pattern.c_str()))));
}

}  // namespace

void TextAssist::say(const Sentence& sentence, int position) {
    hovered_ = {};
    tipPopUp().say(toUtf8(inLanguage(sentence)), onScreen(static_cast<std::size_t>(position)));
}

void TextAssist::hideTips() {
    if (tip_) tip_->Hide();
    if (value_) value_->Hide();
    mark(kHovered, {});
    hovered_ = {};
}

ChoiceBox& TextAssist::choices() {
    if (!choices_) choices_ = new ChoiceBox(control_, look_);
    return *choices_;
}

void TextAssist::choosePlace(bool uses, const std::string& name,
                             const std::vector<ListedPlace>& places) {
    ChoiceBox::Content content;
    content.heading =
        wxString::Format(words(uses ? "Uses of %s" : "Declarations of %s"), fromUtf8(name)) +
        wxString::Format(" (%zu)", places.size());
    const int line = control_.GetCurrentLine() + 1;
    for (std::size_t i = 0; i < places.size(); ++i) {
        ChoiceBox::Choice choice;
        choice.name = places[i].text;
        choice.row.name = fromUtf8(places[i].text);
        choice.row.nameCode = true;
        choice.row.right = wxString::Format(words("line %d"), places[i].line);
        if (places[i].line == line && content.selected == 0) content.selected = static_cast<int>(i);
        content.choices.push_back(std::move(choice));
    }
    content.chosen = [this, places](std::size_t index) { assist_.placeChosen(places[index]); };
    choices().open(std::move(content));
}

void TextAssist::textLeaves() {
    assist_.hideAll();
    if (choices_) choices_->close();
    closeName();
    markOccurrences({});
}

void TextAssist::textShown(std::uint64_t id) {
    assist_.textExchanged(id);
    changed_.StartOnce(1);
}

void TextAssist::chooseFunction(bool atRight) {
    assist_.hideAll();
    ChoiceBox::Content content;
    content.heading = words("Function or class");
    const std::vector<OutlineEntry> entries =
        textIsLong() ? outlineEntries(ScopeIndex(*assist_.text())) : outline_;
    const int here = entryAt(entries, static_cast<std::size_t>(control_.GetCurrentPos()));
    for (const OutlineEntry& entry : entries) {
        ChoiceBox::Choice choice;
        choice.name = entry.path.empty() ? entry.name : entry.path;
        choice.row.icon = iconOf(entry.kind);
        choice.row.depth = entry.depth;
        choice.row.name = fromUtf8(entry.name);
        choice.row.remark = fromUtf8(entry.type);
        choice.row.right = wxString::Format(
            words("line %d"), control_.LineFromPosition(static_cast<int>(entry.nameBegin)) + 1);
        content.choices.push_back(std::move(choice));
    }
    content.selected = std::max(here, 0);
    content.chosen = [this, entries](std::size_t index) {
        assist_.leavingPlace();
        goTo(entries[index].nameBegin);
    };
    const wxRect right(control_.GetClientSize().x, -1, 1, 1);
    choices().open(std::move(content), atRight ? right : wxRect());
}

void TextAssist::chooseRepair(const std::vector<Repair>& repairs, int position) {
    ChoiceBox::Content content;
    content.heading = words("What mends this problem");
    for (const Repair& repair : repairs) {
        ChoiceBox::Choice choice;
        choice.row.name = inLanguage(repair.title);
        choice.name = toUtf8(choice.row.name);
        choice.row.icon = Icon::check;
        content.choices.push_back(std::move(choice));
    }
    content.chosen = [this, repairs](std::size_t index) { assist_.repairChosen(repairs[index]); };
    choices().open(std::move(content), lineAt(static_cast<std::size_t>(position)));
}

void TextAssist::askName(const std::string& name, ByteRange word) {
    if (!rename_)
        rename_ =
            new RenameBox(control_, look_, [this](const std::string& to) { assist_.renameTo(to); });
    rename_->open(fromUtf8(name), lineAt(word.begin));
}

void TextAssist::refuseName(const Sentence& reason) {
    if (rename_) rename_->refuse(inLanguage(reason));
}

void TextAssist::closeName() {
    if (rename_) rename_->close();
}

void TextAssist::mark(int indicator, const std::vector<ByteRange>& places) {
    control_.SetIndicatorCurrent(indicator);
    control_.IndicatorClearRange(0, control_.GetLength());
    for (const ByteRange& place : places)
        control_.IndicatorFillRange(static_cast<int>(place.begin), static_cast<int>(place.size()));
}

/// One place alone is where the caret is anyway.
void TextAssist::markOccurrences(const std::vector<ByteRange>& places) {
    mark(kOccurrence, places.size() > 1 ? places : std::vector<ByteRange>());
}

void TextAssist::selectAll(const std::vector<ByteRange>& ranges) {
    const bool several = ranges.size() > 1;
    control_.SetMultipleSelection(several);
    control_.SetAdditionalSelectionTyping(several);
    control_.SetSelection(static_cast<int>(ranges[0].begin), static_cast<int>(ranges[0].end));
    for (std::size_t i = 1; i < ranges.size(); ++i)
        control_.AddSelection(static_cast<int>(ranges[i].end), static_cast<int>(ranges[i].begin));
    if (several) control_.SetMainSelection(0);
}

void TextAssist::goTo(std::size_t position) {
    const int line = control_.LineFromPosition(static_cast<int>(position));
    editor_.gotoBytes(position);
    const int top = control_.GetFirstVisibleLine(), seen = control_.LinesOnScreen();
    const int at = control_.VisibleFromDocLine(line);
    if (at <= top || at >= top + seen - 1) control_.SetFirstVisibleLine(std::max(at - seen / 3, 0));
}

/// What is shown under the pointer goes when it has left that.
void TextAssist::followPointer(wxMouseEvent& event) {
    event.Skip();
    if (!on_ || hovered_.IsEmpty()) return;
    const int within = frame_.FromDIP(kLeaving);
    const wxPoint pointer = control_.ClientToScreen(event.GetPosition());
    const bool over = hovered_.Inflate(within).Contains(pointer) ||
                      (tip_ && tip_->holdsPointer(within)) ||
                      (value_ && value_->holdsPointer(within));
    if (!over) assist_.hideAll();
}

void TextAssist::goByClick(wxMouseEvent& event) {
    const int position = control_.PositionFromPointClose(event.GetX(), event.GetY());
    const bool plain = event.ControlDown() && !event.ShiftDown() && !event.AltDown();
    if (on_ && plain && position >= 0) {
        control_.SetFocus();
        return assist_.goToDeclarationAt(position);
    }
    if (on_) assist_.hideAll();
    event.Skip();
}

}  // namespace korvant::ui
