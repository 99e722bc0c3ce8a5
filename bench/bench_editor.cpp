// The editor's window on a large script: how long it takes to open, and then to take a key.
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/stc/stc.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

#include "module/families.h"
#include "ratio_table.h"
#include "ui/editor/editor_dialog.h"
#include "ui/editor/editor_run.h"
#include "ui/kit/ui_runtime.h"

COUNTER_ROW("Windows", "the editor opens 10 MB, milliseconds of processor", 0, "editor_large",
            "open");
COUNTER_ROW("Windows", "and takes and paints a key, milliseconds of processor", 50, "editor_large",
            "key");

namespace {

constexpr std::size_t kScriptBytes = 10'000'000;
constexpr int kLookEvery = 1;  // milliseconds

/// Of this process, so that a busy machine and a slow display do not count.
double millisecondsSince(std::clock_t start) {
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

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
    if (!korvant::ui::startToolkit()) {
        state.SkipWithError("no display");
        return;
    }
    const auto data = std::filesystem::temp_directory_path() / "korvant-bench-editor";
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
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
    std::error_code ignored;
    std::filesystem::remove_all(data, ignored);
    state.counters["open"] = open / static_cast<double>(rounds);
    state.counters["key"] = key / static_cast<double>(rounds);
}
BENCHMARK(editorLarge)->Name("editor_large")->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
