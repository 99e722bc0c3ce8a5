// The editor's window on a large script: how long it takes to open, and then to take a key.
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/stc/stc.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <ctime>
#include <string>

#include "module/families.h"
#include "on_screen.h"
#include "ratio_table.h"
#include "ui/editor/editor_dialog.h"
#include "ui/editor/editor_run.h"

COUNTER_ROW("Windows", "the editor opens 10 MB, milliseconds of processor", 0, "editor_large",
            "open");
COUNTER_ROW("Windows", "and takes and paints a key, milliseconds of processor", 50, "editor_large",
            "key");

namespace {

using korvant_bench::millisecondsSince;

constexpr std::size_t kScriptBytes = 10'000'000;
constexpr int kLookEvery = 1;  // milliseconds

const std::string& largeScript() {
    static const std::string script = [] {
        std::string text;
        for (int i = 0; text.size() < kScriptBytes; ++i)
            text += "double depthOf" + std::to_string(i) +
                    "(int hole) {\n    // metres below the collar\n    return hole * 0.3048;\n}\n";
        return text;
    }();
    return script;
}

/// Opens the editor, presses one key in it and closes it again.
class OneKey : public wxTimer {
  public:
    void run() {
        std::string text = largeScript();
        start_ = std::clock();
        Start(kLookEvery);
        korvant::ui::runScriptEditor({nullptr, nullptr, text, "", korvant::allFamilies()});
        Stop();
        taken_ = text.size() == largeScript().size() + 1;
    }
    double opened() const { return opened_; }
    double key() const { return key_; }
    bool taken() const { return taken_; }

  private:
    void Notify() override {
        wxTopLevelWindow* frame = editorFrame();
        auto* control = dynamic_cast<wxStyledTextCtrl*>(wxWindow::FindFocus());
        if (!frame || !frame->IsActive() || !control) return;
        Stop();
        control->Update();
        opened_ = millisecondsSince(start_);
        start_ = std::clock();
        wxUIActionSimulator().Char('/');
        while (!control->GetModify()) wxEventLoopBase::GetActive()->Dispatch();
        control->Update();
        key_ = millisecondsSince(start_);
        frame->Close();
    }

    static wxTopLevelWindow* editorFrame() {
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* found = dynamic_cast<korvant::ui::CEditorDlg*>(window);
                found && found->IsShown())
                return found;
        return nullptr;
    }

    std::clock_t start_ = 0;
    double opened_ = 0, key_ = 0;
    bool taken_ = false;
};

void editorLarge(benchmark::State& state) {
    if (!korvant_bench::onScreen(state)) return;
    const korvant_bench::OwnFolders folders;
    double open = 0, key = 0;
    std::int64_t rounds = 0;
    for ([[maybe_unused]] auto _ : state) {
        OneKey round;
        round.run();
        if (!round.taken()) state.SkipWithError("the key did not arrive");
        open += round.opened();
        key += round.key();
        ++rounds;
    }
    state.counters["open"] = open / static_cast<double>(rounds);
    state.counters["key"] = key / static_cast<double>(rounds);
}
BENCHMARK(editorLarge)->Name("editor_large")->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
