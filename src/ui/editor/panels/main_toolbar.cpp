#include "ui/editor/panels/main_toolbar.h"

#include <algorithm>

#include "editor/control/command_ids.h"
#include "ui/editor/panels/time_used.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kMargin = 8, kGap = 2, kLineRoom = 7, kLineHeight = 20, kButton = 32, kBehindMain = 6,
              kTimeGap = 4;
constexpr std::uint32_t kTimeShownFrom = 1000;

constexpr unsigned bit(EditorStatus::Run run) {
    return 1U << static_cast<unsigned>(run);
}
constexpr unsigned kIdle = bit(EditorStatus::Run::idle), kRunning = bit(EditorStatus::Run::running),
                   kStopped = bit(EditorStatus::Run::stopped) | bit(EditorStatus::Run::exception),
                   kAlways = kIdle | kRunning | kStopped;

}  // namespace

MainToolbar::MainToolbar(wxWindow* parent, const Look& look, std::function<void(int)> command)
    : PaintedWindow(parent, look, false),
      command_(std::move(command)),
      time_(new TimeUsed(this, look)) {
    addFileButtons();
    addRunButtons();
    addWindowButtons();
    makeShown();
    time_->Hide();
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        place();
        event.Skip();
    });
    native::setAccessibleRole(*this, native::AccessibleRole::toolbar);
    setAccessibleName(words("Toolbar"));
}

void MainToolbar::add(int command, PaintedButton::Kind kind, PaintedButton::Face face,
                      unsigned shownIn, bool isStep, bool atRight) {
    const bool hasWords = !face.label.empty();
    const auto make = [this, command, kind, face = std::move(face)] {
        auto* button = new PaintedButton(this, look(), kind, face, [this, command] {
            command_(command == command_id::kContinue ? command_id::kExecute : command);
        });
        button->Bind(wxEVT_KEY_DOWN, &MainToolbar::onKey, this);
        button->showWords(!face.label.empty());
        return buttons_[command] = button;
    };
    items_.push_back(
        {nullptr, make, shownIn, isStep, atRight, hasWords, kind == PaintedButton::Kind::main});
}

void MainToolbar::addLine(unsigned shownIn, bool atRight) {
    items_.push_back({nullptr, {}, shownIn, false, atRight, false, false});
}

/// Those of a run come with the first one, in their places.
void MainToolbar::makeShown() {
    wxWindow* before = nullptr;
    for (Item& item : items_) {
        if (!item.button && item.make && isShown(item)) {
            item.button = item.make();
            if (before) item.button->MoveAfterInTabOrder(before);
        }
        if (item.button) before = item.button;
    }
}

void MainToolbar::addFileButtons() {
    using Kind = PaintedButton::Kind;
    const auto icon = [this](int command, Icon picture, const wxString& name, const wxString& key) {
        add(command, Kind::plain, {picture, {}, key, name}, kAlways);
    };
    icon(command_id::kNew, Icon::newFile, words("New"), "Ctrl+N");
    icon(command_id::kOpen, Icon::open, words("Open"), "Ctrl+O");
    icon(command_id::kSave, Icon::save, words("Save"), "Ctrl+S");
    addLine(kAlways);
    icon(command_id::kUndo, Icon::undo, words("Undo"), "Ctrl+Z");
    icon(command_id::kRedo, Icon::redo, words("Redo"), "Ctrl+Y");
    addLine(kAlways);
}

void MainToolbar::addRunButtons() {
    using Kind = PaintedButton::Kind;
    add(command_id::kExecute, Kind::main, {Icon::run, words("Run"), "F5", words("Run (Execute)")},
        kIdle);
    add(command_id::kBuild, Kind::plain,
        {Icon::check, words("Check"), "F7", words("Check (Build)")}, kIdle);
    add(command_id::kContinue, Kind::main,
        {Icon::goOn, words("Continue"), "F5", words("Continue (Execute)")}, kStopped);
    add(command_id::kStepOver, Kind::plain,
        {Icon::stepOver, words("Step over"), {}, words("Step over, F11")}, kStopped, true);
    add(command_id::kStepInto, Kind::plain,
        {Icon::stepInto, words("Step into"), {}, words("Step into, F12")}, kStopped, true);
    add(command_id::kStepOut, Kind::plain,
        {Icon::stepOut, words("Step out"), {}, words("Step out, Shift+F11")}, kStopped, true);
    addLine(kStopped);
    add(command_id::kRestart, Kind::plain,
        {Icon::restart, words("Restart"), {}, words("Restart, Ctrl+Shift+F5")}, kStopped, true);
    add(command_id::kPause, Kind::plain, {Icon::pause, words("Pause"), "F6", {}}, kRunning);
    add(command_id::kStop, Kind::plain,
        {Icon::stop, words("Stop"), "Shift+F5", {}, &ThemeTable::error}, kRunning | kStopped);
    addLine(kRunning);
}

void MainToolbar::addWindowButtons() {
    const auto icon = [this](int command, Icon picture, const wxString& name, const wxString& key) {
        add(command, PaintedButton::Kind::plain, {picture, {}, key, name}, kAlways, false, true);
    };
    icon(command_id::kFind, Icon::find, words("Find"), "Ctrl+F");
    addLine(kAlways, true);
    icon(command_id::kShowOutline, Icon::panelLeft, words("Outline"), "Ctrl+7");
    icon(command_id::kShowBottom, Icon::panelBottom, words("Bottom panes"), "Ctrl+J");
    icon(command_id::kShowSide, Icon::panelRight, words("Debug panel"), "Ctrl+Shift+D");
    icon(command_id::kHelp, Icon::help, words("Help"), "F1");
}

PaintedButton* MainToolbar::button(int command) const {
    const auto found = buttons_.find(command);
    return found == buttons_.end() ? nullptr : found->second;
}

void MainToolbar::setState(const ToolbarState& state) {
    if (state == state_ && !lines_.empty()) return;
    state_ = state;
    makeShown();
    const bool isException = state.run == EditorStatus::Run::exception;
    for (const int command : {command_id::kNew, command_id::kOpen})
        buttons_[command]->Enable(state.canOpen);
    buttons_[command_id::kSave]->Enable(state.canSave);
    buttons_[command_id::kUndo]->Enable(state.canUndo);
    buttons_[command_id::kRedo]->Enable(state.canRedo);
    for (const int command : {command_id::kStepOver, command_id::kStepInto, command_id::kStepOut})
        if (PaintedButton* const step = button(command)) step->Enable(!isException);
    buttons_[command_id::kFind]->setPressed(state.find);
    buttons_[command_id::kShowOutline]->setPressed(state.outline);
    buttons_[command_id::kShowBottom]->setPressed(state.bottom);
    buttons_[command_id::kShowSide]->setPressed(state.side);
    time_->setTime(state.runMilliseconds, state.limitMilliseconds);
    if (GetClientSize().x == 0) return;  // it will be placed
    place();
    Refresh();
}

bool MainToolbar::isShown(const Item& item) const {
    return (item.shownIn & bit(state_.run)) != 0;
}

int MainToolbar::widthOf(const Item& item) const {
    if (item.make) return item.button->wantedWidth() + dip(kGap);
    return 2 * dip(kLineRoom) + 1 - dip(kGap);
}

bool MainToolbar::showsTime() const {
    return state_.run == EditorStatus::Run::running && state_.runMilliseconds >= kTimeShownFrom;
}

int MainToolbar::widthWanted() const {
    int width = 2 * dip(kMargin) + dip(kBehindMain);
    for (const Item& item : items_)
        if (isShown(item)) width += widthOf(item);
    return showsTime() ? width + dip(kTimeGap) + time_->wantedWidth() : width;
}

void MainToolbar::fitWords() {
    struct Words {
        bool ofMain, ofOthers;
    };
    for (const Words words : {Words{true, true}, Words{true, false}, Words{false, false}}) {
        for (const Item& item : items_)
            if (item.hasWords && item.button)
                item.button->showWords(
                    item.isMain ? words.ofMain : words.ofOthers && (!item.isStep || state_.words));
        if (widthWanted() <= GetClientSize().x) return;
    }
}

void MainToolbar::place() {
    fitWords();
    lines_.clear();
    const int y = (GetClientSize().y - dip(kButton)) / 2;
    int left = dip(kMargin), right = GetClientSize().x - dip(kMargin) + dip(kGap);
    for (const Item& item : items_)
        if (item.atRight && isShown(item)) right -= widthOf(item);
    for (const Item& item : items_) {
        const bool shown = isShown(item);
        if (item.button) item.button->Show(shown);
        if (!shown) continue;
        int& x = item.atRight ? right : left;
        if (item.button)
            item.button->SetSize(x, y, item.button->wantedWidth(), dip(kButton));
        else
            lines_.push_back(x - dip(kGap) + dip(kLineRoom));
        x += widthOf(item);
        if (item.button && item.button == button(command_id::kExecute)) left += dip(kBehindMain);
        if (item.button && item.button == button(command_id::kContinue)) left += dip(kBehindMain);
    }
    time_->Show(showsTime());
    time_->SetSize(left + dip(kTimeGap), y, time_->wantedWidth(), dip(kButton));
    const wxWindow* stop = tabStop();
    for (const Item& item : items_)
        if (item.button) item.button->setTabStop(item.button == stop);
}

void MainToolbar::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    fill(context, {0, size.y - 1, size.x, 1}, look()->border);
    for (const int x : lines_)
        fill(context, {x, (size.y - dip(kLineHeight)) / 2, 1, dip(kLineHeight)}, look()->border);
}

/// What has the focus, else what to press next.
wxWindow* MainToolbar::tabStop() const {
    wxWindow* first = nullptr;
    for (const Item& item : items_) {
        if (!item.button || !item.button->IsShown() || !item.button->IsEnabled()) continue;
        if (item.button->HasFocus()) return item.button;
        if (!first) first = item.button;
    }
    for (const int command : {command_id::kExecute, command_id::kContinue, command_id::kPause})
        if (PaintedButton* main = button(command); main && main->IsShown()) return main;
    return first;
}

void MainToolbar::moveFocus(int step) {
    std::vector<PaintedButton*> usable;
    for (const Item& item : items_)
        if (item.button && item.button->IsShown() && item.button->IsEnabled())
            usable.push_back(item.button);
    const auto current = std::find(usable.begin(), usable.end(), wxWindow::FindFocus());
    if (current == usable.end()) return;
    const auto count = static_cast<int>(usable.size());
    const int next = (static_cast<int>(current - usable.begin()) + step + count) % count;
    usable[static_cast<std::size_t>(next)]->SetFocus();
}

void MainToolbar::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (event.HasAnyModifiers() || (code != WXK_LEFT && code != WXK_RIGHT)) return event.Skip();
    moveFocus(code == WXK_RIGHT ? 1 : -1);
}

}  // namespace korvant::ui
