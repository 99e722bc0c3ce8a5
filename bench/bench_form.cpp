// A form of 5,000 properties with 5,000 conditions on a display, against a grid of the toolkit's
// that is given 5,000 rows of its own and does nothing else. Painting comes later, by the
// display's clock, and is of the rows in sight only; it is not measured.
#include <wx/frame.h>
#include <wx/propgrid/propgrid.h>
#include <wx/srchctrl.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "korvantide/script_object.h"
#include "object/form/edit_session.h"
#include "object/script/object_access.h"
#include "on_screen.h"
#include "ratio_table.h"
#include "ui/form/form_dialog.h"

RATIO_ROW("Windows", "opening a form of 5,000 / building the rows alone", 3, "form_open",
          "form_rows_plain");
RATIO_ROW("Windows", "a commit with its checks / building the rows alone", 1, "form_commit",
          "form_rows_plain");
RATIO_ROW("Windows", "filtering / building the rows alone", 0.5, "form_filter", "form_rows_plain");

namespace {

using korvant::EditSession;
using korvant_bench::onScreen;

constexpr int kCount = 5000;
constexpr int kInCategory = 100;

std::string nameOf(int index) {
    return "p" + std::to_string(index);
}

std::string labelOf(int index) {
    return "Property " + std::to_string(index);
}

ScriptObject& largeObject() {
    static ScriptObject* const object = [] {
        auto* made = new ScriptObject;
        made->setTitle("Large");
        for (int i = 0; i < kCount; ++i) {
            const std::string name = nameOf(i);
            if (i % kInCategory == 0) made->addCategory(labelOf(i / kInCategory));
            made->addProperty(name, labelOf(i), i * 0.5, "m", true);
            made->addErrorConstraint(name, name + "<" + nameOf((i + 1) % kCount) + "+5000",
                                     "Large");
        }
        return made;
    }();
    return *object;
}

/// Stands on the screen without a loop of its own.
class OpenForm : public korvant::ui::CListCtrlExDialog {
  public:
    explicit OpenForm(EditSession& session) : CListCtrlExDialog(nullptr, session) {
        showPage(0);
        pageShown();
        Show();
    }
    wxSearchCtrl& search() {
        for (wxWindow* child : GetChildren())
            if (auto* found = dynamic_cast<wxSearchCtrl*>(child)) return *found;
        std::abort();
    }
};

void rowsPlain(benchmark::State& state) {
    if (!onScreen(state)) return;
    for (auto _ : state) {
        auto frame = std::make_unique<wxFrame>(nullptr, wxID_ANY, "Plain");
        auto* grid = new wxPropertyGrid(frame.get());
        grid->Freeze();
        for (int i = 0; i < kCount; ++i) {
            if (i % kInCategory == 0)
                grid->Append(new wxPropertyCategory(labelOf(i / kInCategory)));
            grid->Append(new wxFloatProperty(labelOf(i), nameOf(i), i * 0.5));
        }
        grid->Thaw();
        state.PauseTiming();
        frame.reset();
        state.ResumeTiming();
    }
}

void formOpen(benchmark::State& state) {
    if (!onScreen(state)) return;
    const auto& model = korvant::ObjectAccess::model(largeObject());
    for (auto _ : state) {
        auto session = std::make_unique<EditSession>(model);
        auto form = std::make_unique<OpenForm>(*session);
        state.PauseTiming();
        form.reset();
        session.reset();
        state.ResumeTiming();
    }
}

void formCommit(benchmark::State& state) {
    if (!onScreen(state)) return;
    EditSession session(korvant::ObjectAccess::model(largeObject()));
    OpenForm form(session);
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        session.commitText(turn * 7919 % kCount, std::to_string(turn % 9000));
        form.showChanges();
    }
}

void formFilter(benchmark::State& state) {
    if (!onScreen(state)) return;
    EditSession session(korvant::ObjectAccess::model(largeObject()));
    OpenForm form(session);
    const char* const words[] = {"7", "property 49", "nothing has this", ""};
    std::size_t turn = 0;
    for (auto _ : state) {
        form.search().SetValue(words[turn++ % std::size(words)]);
    }
}

[[maybe_unused]] const bool registered = [] {
    const auto unit = benchmark::kMillisecond;
    benchmark::RegisterBenchmark("form_rows_plain", rowsPlain)->Unit(unit);
    benchmark::RegisterBenchmark("form_open", formOpen)->Unit(unit);
    benchmark::RegisterBenchmark("form_commit", formCommit)->Unit(unit);
    benchmark::RegisterBenchmark("form_filter", formFilter)->Unit(unit);
    return true;
}();

}  // namespace
