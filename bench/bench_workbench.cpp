// The editor's window with everything open around the text: typing, stepping, running and opening.
// What is worked in is used with real keys.
#include <angelscript.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/menu.h>
#include <wx/stc/stc.h>
#include <wx/timer.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "editor/editor_commands.h"
#include "host/engine/registration.h"
#include "host/run/script_session.h"
#include "module/families.h"
#include "on_screen.h"
#include "ratio_table.h"
#include "ui/editor/editor_dialog.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"
#include "ui/editor/panels/debug_panel.h"

// After the others: they define short macros.
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

COUNTER_ROW("Windows", "a key is painted in 10,000 lines, milliseconds of processor, median", 16,
            "workbench_key", "median");
COUNTER_ROW("Windows", "and at most", 33, "workbench_key", "most");
COUNTER_ROW("Windows", "a step is painted with 1,000 variables, milliseconds of processor", 50,
            "workbench_step", "median");
COUNTER_ROW("Windows", "pause is answered amid a million printed lines, milliseconds at most", 100,
            "workbench_print", "most");
RATIO_ROW("Windows", "opening the editor / opening its classic layout", 1.3, "workbench_open",
          "workbench_classic");

namespace {

using Clock = std::chrono::steady_clock;
using korvant::ui::CEditorDlg;
using korvant::ui::DebugPanel;
using korvant::ui::EditorLayoutWish;
using korvant_bench::millisecondsSince;

constexpr std::chrono::seconds kPatience{40};
constexpr int kLookEvery = 1;  // milliseconds

double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Of a connection of its own, so that the display can keep a key back while this thread is busy.
class Keyboard {
  public:
    ~Keyboard() {
        if (display_) XCloseDisplay(display_);
    }
    Keyboard() = default;
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    void press(KeySym key, std::chrono::milliseconds later = {}) {
        if (!display_) return;  // the display went away; the visit runs out of time
        const KeyCode code = XKeysymToKeycode(display_, key);
        XTestFakeKeyEvent(display_, code, True, static_cast<unsigned long>(later.count()));
        XTestFakeKeyEvent(display_, code, False, 0);
        XFlush(display_);
    }

  private:
    Display* display_ = XOpenDisplay(nullptr);
};

struct Host {
    asIScriptEngine* engine = nullptr;
    asIScriptContext* context = nullptr;
};

/// Works in an editor from a timer until the work is done or has taken too long.
class Visit : public wxTimer {
  public:
    /// False when the work was not done.
    bool run(std::string text, EditorLayoutWish layout, const Host& host = {}) {
        korvant::ui::setEditorLayout(layout);
        until_ = Clock::now() + kPatience;
        began_ = std::clock();
        Start(kLookEvery);
        korvant::ui::runScriptEditor({host.engine, host.context, text, "", korvant::allFamilies()});
        Stop();
        korvant::ui::setEditorLayout(EditorLayoutWish::users);
        return done_;
    }
    /// Processor time until the window was painted for the first time, in milliseconds.
    double opened() const { return opened_; }

  protected:
    /// One more step of the work in a window that is ready for it.
    virtual void work() = 0;
    void end() { done_ = true; }

    CEditorDlg* frame() const { return frame_; }
    wxStyledTextCtrl& text() const { return *text_; }
    template <class Part>
    Part* part() const {
        for (wxWindow* child : frame_->GetChildren())
            if (auto* found = dynamic_cast<Part*>(child)) return found;
        return nullptr;
    }
    /// Lets the window work until `holds`; processor time in milliseconds since the call.
    double after(const std::function<void()>& act, const std::function<bool()>& holds) {
        constexpr int kAtOnce = 50;  // milliseconds
        const std::clock_t start = std::clock();
        act();
        while (!holds() && Clock::now() < until_)
            wxEventLoopBase::GetActive()->DispatchTimeout(kAtOnce);
        text_->Update();
        return millisecondsSince(start);
    }
    Keyboard keyboard;

  private:
    void Notify() override {
        if (!findWindow()) return;
        if (opened_ == 0) {
            text_->Update();
            opened_ = millisecondsSince(began_);
        }
        if (!done_ && Clock::now() < until_) work();
        if (!done_ && Clock::now() < until_) return;
        frame_->Close();
    }
    bool findWindow() {
        frame_ = nullptr;
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* found = dynamic_cast<CEditorDlg*>(window); found && found->IsShown())
                frame_ = found;
        if (frame_ && !std::exchange(watched_, true))
            for (wxWindow* child : frame_->GetChildren())
                child->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
                    painted_ = true;
                    event.Skip();
                });
        if (!frame_ || !frame_->IsActive() || !painted_) return false;
        if (!text_) text_ = dynamic_cast<wxStyledTextCtrl*>(wxWindow::FindFocus());
        return text_ != nullptr;
    }

    CEditorDlg* frame_ = nullptr;
    wxStyledTextCtrl* text_ = nullptr;
    Clock::time_point until_;
    std::clock_t began_ = 0;
    double opened_ = 0;
    bool watched_ = false;
    bool painted_ = false;  ///< any part of the window has been
    bool done_ = false;
};

double medianOf(std::vector<double> all) {
    if (all.empty()) return 0;
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
    std::nth_element(all.begin(), middle, all.end());
    return *middle;
}

double mostOf(const std::vector<double>& all) {
    return all.empty() ? 0 : *std::max_element(all.begin(), all.end());
}

/// Everything that can be open is.
void openEverything() {
    korvant::ui::EditorSettings settings;
    settings.outline = true;
    settings.tour = false;
    settings.width = 1240;
    settings.height = 860;
    korvant::ui::saveEditorSettings(settings);
}

std::string functions(int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += "double depth" + std::to_string(i) +
               "(int hole) {\n    // metres below the collar\n    double depth = hole * 0.3048;\n"
               "    return depth;\n}\n";
    return all;
}

/// Types a statement in the middle of a text, one key after the other.
class Typing : public Visit {
  public:
    std::vector<double> keys;

  private:
    void work() override {
        static constexpr char kTyped[] =
            " depth = hole / 2; double more = depth; depth = more - 1;";
        if (keys.empty()) {
            const int line = text().GetLineCount() / 10 * 5 + 2;
            text().GotoPos(text().GetLineEndPosition(line));
        }
        const char key = kTyped[keys.size()];
        if (key == '\0') return end();
        const int before = text().GetCurrentPos();
        keys.push_back(after([&] { keyboard.press(static_cast<KeySym>(key)); },
                             [&] { return text().GetCurrentPos() != before; }));
    }
};

/// Presses "Step Over" in a frame with many variables.
class Stepping : public Visit {
  public:
    static constexpr int kVariables = 1000, kSteps = 20;
    static std::string script() {
        std::string all = "int main() {\n";
        for (int i = 0; i < kVariables; ++i) all += "    int v" + std::to_string(i) + " = 0;\n";
        for (int i = 0; i <= kSteps + 1; ++i) all += "    v" + std::to_string(i) + " = 7;\n";
        return all + "    return 0;\n}\n";
    }
    std::vector<double> steps;

  private:
    void work() override {
        constexpr int kStop = kVariables + 1;
        if (++turn_ == 1) {
            text().GotoLine(kStop);
            keyboard.press(XK_F9);
            keyboard.press(XK_F5);
        }
        auto* list =
            part<DebugPanel>() ? part<DebugPanel>()->list(DebugPanel::kVariables) : nullptr;
        if (!list || !list->IsShownOnScreen() || list->count() < kVariables) return;
        if (steps.size() == kSteps) return end();
        const int row = rowOf(*list, "v" + std::to_string(steps.size()));
        steps.push_back(after([&] { keyboard.press(XK_F11); },
                              [&] {
                                  if (list->count() <= row || list->row(row).value != "7")
                                      return false;
                                  list->Update();
                                  return true;
                              }));
    }
    static int rowOf(const korvant::ui::RowList& list, const std::string& name) {
        for (int i = 0; i < list.count(); ++i)
            if (list.row(i).name == name) return i;
        return list.count();
    }
    int turn_ = 0;
};

/// Pauses a script that prints again and again and lets it go on.
class Printing : public Visit {
  public:
    static constexpr char kScript[] =
        "int main() {\n"
        "    SetMaxRunTime(30000);\n"
        "    for (int i = 0; i < 1000000; i++)\n"
        "        Print(\"a line of text\\n\");\n"
        "    return 0;\n"
        "}\n";
    std::vector<double> pauses;

  private:
    /// No timer tells this while the script computes: it stands still, or has ended.
    void work() override {
        const Clock::time_point now = Clock::now();
        if (!begun_) return goOn();
        if (now < pressed_) return;
        if (enabled(korvant::command_id::kStepOver)) {
            pauses.push_back(milliseconds(now - pressed_));
            return goOn();
        }
        if (!enabled(korvant::command_id::kStop) && now > pressed_ + kArrival) end();
    }
    void goOn() {
        begun_ = true;
        keyboard.press(XK_F5);
        keyboard.press(XK_F6, kBefore);
        pressed_ = Clock::now() + kBefore;
    }
    bool enabled(int command) const {
        const wxString label = wxString(korvant::findCommand(command)->label).BeforeFirst('\t');
        wxMenuBar& bar = *frame()->GetMenuBar();
        for (std::size_t i = 0; i < bar.GetMenuCount(); ++i)
            for (const wxMenuItem* item : bar.GetMenu(i)->GetMenuItems())
                if (item->GetItemLabel() == label) return item->IsEnabled();
        return false;
    }
    static constexpr std::chrono::milliseconds kBefore{40}, kArrival{500};
    Clock::time_point pressed_;
    bool begun_ = false;
};

/// Only looks at the window that has opened.
class Opening : public Visit {
    void work() override { end(); }
};

const Host& host() {
    static const Host instance = [] {
        asIScriptEngine* const engine = asCreateScriptEngine();
        return Host{engine,
                    korvant::moduleSession().configure(engine, korvant::registrationOrder())};
    }();
    return instance;
}

/// Counts how long each of a visit's acts took; a visit that was not to its end counts nothing.
template <class Work>
void measure(benchmark::State& state, const std::string& script, std::vector<double> Work::*acts) {
    if (!korvant_bench::onScreen(state)) return;
    const korvant_bench::OwnFolders folders;
    openEverything();
    std::vector<double> all;
    for ([[maybe_unused]] auto _ : state) {
        Work visit;
        if (!visit.run(script, EditorLayoutWish::full, host()) || (visit.*acts).empty())
            state.SkipWithError("the editor did not come to the end of the work");
        all.insert(all.end(), (visit.*acts).begin(), (visit.*acts).end());
    }
    state.counters["median"] = medianOf(all);
    state.counters["most"] = mostOf(all);
}

void open(benchmark::State& state, EditorLayoutWish layout) {
    if (!korvant_bench::onScreen(state)) return;
    const korvant_bench::OwnFolders folders;
    openEverything();
    const std::string script = functions(40);
    for ([[maybe_unused]] auto _ : state) {
        Opening visit;
        if (!visit.run(script, layout)) state.SkipWithError("the editor did not open");
        state.SetIterationTime(visit.opened() / 1000);
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    const auto once = [](const char* name, auto function) {
        return benchmark::RegisterBenchmark(name, function)->Iterations(1)->UseRealTime();
    };
    once("workbench_key",
         [](benchmark::State& state) { measure(state, functions(2000), &Typing::keys); });
    once("workbench_step",
         [](benchmark::State& state) { measure(state, Stepping::script(), &Stepping::steps); });
    once("workbench_print", [](benchmark::State& state) {
        measure(state, Printing::kScript, &Printing::pauses);
    })->Repetitions(3);
    for (const auto& [name, layout] : {std::pair{"workbench_open", EditorLayoutWish::full},
                                       std::pair{"workbench_classic", EditorLayoutWish::classic}})
        benchmark::RegisterBenchmark(
            name, [layout = layout](benchmark::State& state) { open(state, layout); })
            ->Iterations(1)
            ->UseManualTime();
    return true;
}();

}  // namespace
