// What the message box does once it stands.
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>

#include "ui/boxes/message_box_dialog.h"
#include "ui/boxes/remembered_answers.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/html_view.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"
#include "ui/kit/ui_texts.h"
#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kNarrowText = 180;
constexpr int kWideText = 460;
constexpr int kWidestText = 720;

bool isModifier(int key) {
    return key == WXK_SHIFT || key == WXK_CONTROL || key == WXK_ALT || key == WXK_NONE ||
           key == WXK_WINDOWS_LEFT || key == WXK_WINDOWS_RIGHT;
}

bool isCopy(const wxKeyEvent& event) {
    return event.GetModifiers() == wxMOD_CONTROL &&
           (event.GetKeyCode() == 'C' || event.GetKeyCode() == WXK_INSERT);
}

bool isReturn(int key) {
    return key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
}

}  // namespace

/// A button that goes while it has the keyboard tells of that, when its neighbours may be gone.
MessageBoxDialog::~MessageBoxDialog() {
    choices_.clear();
    DestroyChildren();
}

void MessageBoxDialog::markReturn(int id) {
    for (const Choice& choice : choices_) native::markDefault(*choice.button, choice.id == id);
}

/// The mark is where Return presses: on the button with the keyboard, else on the default one.
void MessageBoxDialog::connectMarks() {
    const auto mark = [this](wxWindow& button, int id) {
        button.Bind(wxEVT_SET_FOCUS, [this, id](wxFocusEvent& event) {
            markReturn(id);
            event.Skip();
        });
        button.Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
            markReturn(set_.defaultId);
            event.Skip();
        });
    };
    for (const Choice& choice : choices_) mark(*choice.button, choice.id);
    if (more_) mark(*more_, 0);
    markReturn(set_.defaultId);
}

void MessageBoxDialog::connect() {
    connectMarks();
    Bind(wxEVT_CHAR_HOOK, &MessageBoxDialog::onKey, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { choose(set_.closeId); });
    Bind(wxEVT_TIMER, &MessageBoxDialog::onSecond, this);
    for (const auto type : {wxEVT_LEFT_DOWN, wxEVT_RIGHT_DOWN, wxEVT_MIDDLE_DOWN})
        for (wxWindow* child : GetChildren())
            child->Bind(type, [this](wxMouseEvent& event) {
                stopCountdown();
                event.Skip();
            });
}

/// Width that the other parts of the box leave for the text anyway.
int MessageBoxDialog::roomBesideButtons() {
    message_->SetMinSize(wxSize(1, 1));
    return GetSizer()->ComputeFittingClientSize(this).x - messageRow_->GetMinSize().x;
}

/// Short texts get a small window. Long ones get wider lines before they get a scroll bar.
void MessageBoxDialog::fitToText() {
    const wxRect area = workArea(GetParent());
    const int tallest = area.height / 2;
    const int widest = std::min(FromDIP(kWidestText), area.width * 3 / 4);
    const int narrow = std::min(std::max(FromDIP(kNarrowText), roomBesideButtons()), widest);
    const int natural = message_->naturalWidth();
    int width = std::clamp(natural, narrow, std::max(narrow, std::min(FromDIP(kWideText), widest)));
    int height = message_->heightAt(width);
    if (height > width || message_->hasLongWords()) {
        width = std::max(width, std::min(widest, natural));
        height = message_->heightAt(width);
    }
    if (height > tallest) {
        width += wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
        native::keepScrollBarsVisible(*message_);
    } else {
        message_->hideScrollBars();
    }
    message_->SetMinSize(wxSize(width, std::min(height, tallest)));
    // beside a taller icon a line or two look lost at the top
    wxSizerItem* item = messageRow_->GetItem(message_);
    if (height < messageRow_->GetMinSize().y) item->SetFlag(wxALIGN_CENTER_VERTICAL);
    placeDialog(*this);
}

int MessageBoxDialog::ask() {
    for (const Choice& choice : choices_)
        if (choice.id == set_.defaultId) choice.button->SetFocus();
    native::showFocus(*this);
    startCountdown();
    answer_ = set_.closeId;
    const LoopGuard guard([this] { answer_ = set_.closeId; });
    const KeyboardClaim claim(*this);
    runModal([this] { ShowModal(); });
    return answer_;
}

bool MessageBoxDialog::dontShowAgain() const {
    return dontShow_ && dontShow_->IsChecked();
}

void MessageBoxDialog::choose(int id) {
    stopCountdown();
    answer_ = id;
    if (IsModal()) EndModal(wxID_OK);
}

void MessageBoxDialog::toggleDetails() {
    const bool shown = !details_->IsShown();
    details_->Show(shown);
    const wxString caption =
        buttonCaption(shown ? box_button::kLess : box_button::kMore, request_.captions);
    more_->SetLabel(escapeLabel(caption));
    refitInPlace(*this);
    Layout();
}

void MessageBoxDialog::onKey(wxKeyEvent& event) {
    if (!isModifier(event.GetKeyCode())) stopCountdown();
    if (!handleKey(event)) event.Skip();
}

bool MessageBoxDialog::handleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (isCopy(event)) {
        copyAll();
        return true;
    }
    if (event.GetModifiers() != wxMOD_NONE) return false;
    if (key == WXK_ESCAPE) {
        choose(set_.closeId);
        return true;
    }
    if (isReturn(key)) {
        if (FindFocus() == more_ && more_) return false;
        const Choice* focused = focusedChoice();
        choose(focused ? focused->id : set_.defaultId);
        return true;
    }
    if (key == WXK_LEFT || key == WXK_RIGHT) return moveAlongButtons(key == WXK_LEFT ? -1 : 1);
    return chooseByLetter(event);
}

bool MessageBoxDialog::chooseByLetter(const wxKeyEvent& event) {
    const wxUniChar typed(wxToupper(event.GetUnicodeKey()));
    if (typed == wxUniChar(0)) return false;
    for (const Choice& choice : choices_) {
        if (choice.key != typed) continue;
        choose(choice.id);
        return true;
    }
    if (!more_ || typed != moreKey_) return false;
    toggleDetails();
    return true;
}

const MessageBoxDialog::Choice* MessageBoxDialog::focusedChoice() const {
    const wxWindow* focus = FindFocus();
    for (const Choice& choice : choices_)
        if (choice.button == focus) return &choice;
    return nullptr;
}

bool MessageBoxDialog::moveAlongButtons(int step) {
    const Choice* focused = focusedChoice();
    if (!focused) return false;
    const auto count = static_cast<int>(choices_.size());
    const int next = static_cast<int>(focused - choices_.data()) + step;
    choices_[static_cast<std::size_t>((next + count) % count)].button->SetFocus();
    return true;
}

HtmlView* MessageBoxDialog::viewWithSelection() const {
    for (HtmlView* view : {message_, details_})
        if (view && view->hasSelection()) return view;
    return nullptr;
}

void MessageBoxDialog::copyAll() {
    if (HtmlView* view = viewWithSelection()) {
        view->copy();
        return;
    }
    wxString text = GetTitle() + wxT("\n\n") + message_->text();
    if (details_) text += wxT("\n\n") + details_->text();
    wxString captions;
    for (const Choice& choice : choices_) captions += wxT("[") + choice.caption + wxT("] ");
    copyToClipboard(text + wxT("\n\n") + captions.Trim());
}

void MessageBoxDialog::startCountdown() {
    secondsLeft_ = request_.countdownSeconds;
    if (secondsLeft_ == 0) return;
    showSeconds();
    timer_.Start(1000);
}

void MessageBoxDialog::stopCountdown() {
    if (secondsLeft_ == 0) return;
    timer_.Stop();
    secondsLeft_ = 0;
    showSeconds();
}

void MessageBoxDialog::onSecond(wxTimerEvent&) {
    if (secondsLeft_ == 0) return;
    if (--secondsLeft_ == 0)
        choose(set_.defaultId);
    else
        showSeconds();
}

void MessageBoxDialog::showSeconds() {
    for (const Choice& choice : choices_) {
        if (choice.id != set_.defaultId) continue;
        wxString label = escapeLabel(choice.caption);
        if (secondsLeft_ > 0) label += wxString::Format(wxT(" (%u)"), secondsLeft_);
        choice.button->SetLabel(label);
        Layout();
    }
}

int showMessageBox(const MessageBoxRequest& request) {
    if (request.offerDoNotShow) {
        const int kept = rememberedAnswer(request);
        const BoxButtons set = boxButtons(request.style, false);
        const bool known = std::find(set.ids.begin(), set.ids.end(), kept) != set.ids.end();
        if (known && mayBeRemembered(kept)) return kept;
    }
    const DialogOwner<MessageBoxDialog> box(new MessageBoxDialog(dialogParent(), request));
    const int answer = box->ask();
    if (box->dontShowAgain() && mayBeRemembered(answer)) rememberAnswer(request, answer);
    return answer;
}

}  // namespace korvant::ui
