#include "ui/editor/editor_dialog.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/iconbndl.h>
#include <wx/stc/stc.h>
#include <wx/utils.h>
#include <wx/windowptr.h>

#include <algorithm>

#include "base/system/file_operations.h"
#include "base/system/user_folders.h"
#include "editor/control/control_setup.h"
#include "ui/editor/editor_control.h"
#include "ui/editor/editor_ending.h"
#include "ui/editor/editor_keys.h"
#include "ui/editor/editor_native.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_runtime.h"
#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kFirstWidth = 1280, kFirstHeight = 884;
constexpr int kClassicWidth = 900, kClassicHeight = 720;
constexpr int kTickMilliseconds = 1000;
constexpr char kSystemMenuAbout[] = "&About Script Editor...";

wxSize firstSize(const wxFrame& frame, bool classic) {
    const wxSize wanted = frame.FromDIP(classic ? wxSize(kClassicWidth, kClassicHeight)
                                                : wxSize(kFirstWidth, kFirstHeight));
    const wxRect area = workArea(nullptr);
    return {std::min(wanted.x, area.width), std::min(wanted.y, area.height)};
}

/// What tells two white controls apart.
wxWindow* makeRule(wxWindow& parent) {
    auto* rule = new wxWindow(&parent, wxID_ANY);
    rule->SetCanFocus(false);
    rule->SetBackgroundColour(currentTheme().rule);
    return rule;
}

}  // namespace

CEditorDlg::CEditorDlg(std::span<const FunctionFamily> families)
    : wxFrame(nullptr, wxID_ANY, "Script Editor"),
      menus_(
          *this, [this](int command) { onCommand(command); },
          [this](const EditorCommand& command) { return editor_.enabled(command); }),
      editor_({moduleSession(), *this, systemFiles(), userDataFolder(), programFolder(), families}),
      timer_(this) {}

CEditorDlg::~CEditorDlg() {
    timer_.Stop();
    workbench_.reset();
    editor_.closed();
    DestroyChildren();
}

void CEditorDlg::connect() {
    Bind(wxEVT_CHAR_HOOK, &CEditorDlg::onKey, this);
    Bind(wxEVT_CLOSE_WINDOW, &CEditorDlg::onClose, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { layOutControls(); });
    Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
        layOutControls();
        event.Skip();
    });
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { editor_.tick(); });
    Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        if (workbench_ && !ended_) workbench_->refresh();
        event.Skip();
    });
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        if (workbench_ && !ended_) workbench_->systemColoursChanged();
        event.Skip();
    });
}

void CEditorDlg::initialise() {
    SetIcons(native::editorIcons());
    native::addSystemMenuItem(*this, kSystemMenuAbout,
                              [this] { editor_.command(command_id::kSystemAbout); });
    connect();
    editor_.initialise();
    workbench_ = std::make_unique<Workbench>(*this, editor_,
                                             EditorControls{editorControl_, outputControl_, rule_},
                                             [this](int command) { onCommand(command); });
    workbench_->showChecked = [this](int command, bool checked) { menus_.check(command, checked); };
    placeFrame();
    workbench_->begin();
}

/// Where the user left it, if it can be seen there.
void CEditorDlg::placeFrame() {
    const EditorSettings& settings = workbench_->settings();
    SetMinSize(FromDIP(wxSize(kSmallestWidth, kSmallestHeight)));
    const wxRect kept(settings.left, settings.top, settings.width, settings.height);
    const wxRect area = workArea(nullptr);
    if (!workbench_->classic() && kept.width > 0 && area.Intersects(kept)) {
        SetSize(kept.Intersect(area));
        if (settings.maximised) Maximize();
        return;
    }
    SetSize(firstSize(*this, workbench_->classic()));
    CentreOnScreen();
}

void CEditorDlg::runModal() {
    wxEventLoop loop;
    const LoopGuard guard([this] { onDisplayLost(); });
    initialise();
    const wxWindowDisabler others(this);
    const native::OnlyWindow only(*this);
    ending_ = std::make_unique<native::EndingWatch>(*this, [this] { editor_.endingSoon(); });
    Show();
    activate();
    focusEditor();
    timer_.Start(kTickMilliseconds);
    CallAfter([this] { editor_.shown(); });
    if (!ended_) {
        loop_ = &loop;
        loop.Run();
        loop_ = nullptr;
    }
    timer_.Stop();
    workbench_->keepSettings();
    ending_.reset();
    Hide();
}

ControlSend CEditorDlg::createControl(ControlKind kind) {
    const bool isEditor = kind == ControlKind::editor;
    wxStyledTextCtrl*& control = isEditor ? editorControl_ : outputControl_;
    control = makeTextControl(this);
    if (!control) return {};
    forwardNotifications(*control, [this, isEditor](const ControlNotification& notification) {
        isEditor ? editor_.editorNotified(notification) : editor_.outputNotified(notification);
        if (isEditor && workbench_) workbench_->textNotified(notification);
        if (isEditor && workbench_ && notification.code == sci::kUpdateUi) workbench_->textMoved();
    });
    if (isEditor)
        control->Bind(wxEVT_CONTEXT_MENU, &CEditorDlg::onContextMenu, this);
    else
        rule_ = makeRule(*control);
    if (!isEditor) return sendTo(*control);
    return [this, send = sendTo(*control)](unsigned message, std::uintptr_t w, std::intptr_t l) {
        const bool taken = workbench_ && workbench_->takesMessage(message, w, l);
        return taken ? std::intptr_t{0} : send(message, w, l);
    };
}

void CEditorDlg::layOutControls() {
    if (workbench_) workbench_->layOut();
}

/// What is the window's own can be done while a script runs, too.
void CEditorDlg::onCommand(int command) {
    const EditorCommand* record = findCommand(command);
    if (workbench_ && workbench_->takesCommand(command)) return;
    if (record && !record->handler)
        windowCommand(command);
    else
        editor_.command(command);
}

/// The one place for keys, of this window and of those that belong to it. A key that means a
/// command ends here: what it opened had an event loop of its own, and a key that went on after
/// that would be handled once more. F10 ends here too, since it would open the menu bar.
void CEditorDlg::onKey(wxKeyEvent& event) {
    const std::optional<KeyPress> key = keyPressOf(event);
    const bool inText = editorControl_ && FindFocus() == editorControl_;
    if (key && inText && workbench_ && workbench_->takesKey(*key)) return;
    const bool isTab = event.GetKeyCode() == WXK_TAB && !event.ControlDown() && !event.AltDown();
    if (isTab && workbench_ && workbench_->tab(event.ShiftDown())) return;
    const EditorCommand* record = key ? commandOfKey(*key, inText) : nullptr;
    if (workbench_ && workbench_->keyIsForConsole(event, record)) return event.Skip();
    if (record && workbench_ && workbench_->takesCommand(record->id)) return;
    if (record && !record->handler) return windowCommand(record->id);
    if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers() && workbench_ &&
        workbench_->escape())
        return;
    if (key && editor_.key(*key, inText)) return;
    if (key != functionKeyPress(10)) event.Skip();
}

void CEditorDlg::onClose(wxCloseEvent& event) {
    if (event.CanVeto()) event.Veto();
    if (editor_.closeBox()) endModal();
}

void CEditorDlg::onContextMenu(wxContextMenuEvent& event) {
    const wxPoint asked = event.GetPosition();
    const wxPoint place = asked == wxDefaultPosition
                              ? editorControl_->PointFromPosition(editorControl_->GetCurrentPos())
                              : editorControl_->ScreenToClient(asked);
    if (asked != wxDefaultPosition && workbench_ && workbench_->marginMenu(place)) return;
    menus_.showContextMenu(*editorControl_, place);
}

/// Nobody can use the window any more: as if it had been closed.
void CEditorDlg::onDisplayLost() {
    if (editor_.closeBox()) endModal();
}

/// Every event is for the user: only the script waits.
void CEditorDlg::waitWhileHeld(const std::function<bool()>& goesOn) {
    activate();
    focusEditor();
    wxGUIEventLoop loop;
    const wxEventLoopActivator active(&loop);
    const LoopGuard guard([this] { onDisplayLost(); });
    while (!goesOn()) {
        // In a host with a loop of its own nobody else does it here.
        wxTheApp->ProcessPendingEvents();
        if (goesOn() || (!loop.Pending() && loop.ProcessIdle())) continue;
        loop.Dispatch();
    }
}

void CEditorDlg::endModal() {
    ended_ = true;
    if (loop_) loop_->ScheduleExit();
}

}  // namespace korvant::ui
