// The debugging sessions of tests/editor, played on the real controls.
#include <wx/frame.h>
#include <wx/stc/stc.h>

#include "support/editor_fixture.h"
#include "support/transcript_runner.h"
#include "support/tree.h"
#include "support/ui_driver.h"
#include "ui/editor/editor_control.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::test {
namespace {

const std::filesystem::path kRoot =
    korvant::test::sourceFolder() + "/tests/editor/stops/transcripts";

/// The recording window, with the toolkit's controls in place of those without a screen.
class RealControls : public FakeEditorWindow {
  public:
    explicit RealControls(ControlWatch& controlWatch)
        : frame_(new wxFrame(nullptr, wxID_ANY, "Transcript")), watch_(controlWatch) {
        frame_->Show();
    }
    ~RealControls() override { frame_->Destroy(); }

    ControlSend createControl(ControlKind kind) override {
        const bool isEditor = kind == ControlKind::editor;
        wxStyledTextCtrl* control = ui::makeTextControl(frame_);
        ui::forwardNotifications(*control, [this, isEditor](const ControlNotification& n) {
            if (owner) isEditor ? owner->editorNotified(n) : owner->outputNotified(n);
        });
        (isEditor ? source : pane) = ui::sendTo(*control);
        return isEditor ? watch_.watch(source) : pane;
    }

    ScriptEditor* owner = nullptr;
    ControlSend source, pane;

  private:
    wxFrame* frame_;
    ControlWatch& watch_;
};

class RealTranscript : public ScriptFixture,
                       public ::testing::WithParamInterface<std::filesystem::path> {
  protected:
    TemporaryFolder folder;
};

TEST_P(RealTranscript, ShowsWhatIsExpected) {
    ASSERT_TRUE(ui::startToolkit());
    ControlWatch watch;
    RealControls window(watch);
    ScriptEditor editor({session(), window, systemFiles(), folder.file("data"), "/programs", {}});
    window.owner = &editor;
    editor.setHost(engine(), context());
    editor.setHostText(readFile(GetParam() / "script.as"));
    editor.initialise();
    TranscriptRunner runner({editor, TextControl(window.source), TextControl(window.pane), watch,
                             frontend, [&] { return window.errors; },
                             [&] { window.pump = [] { return true; }; }});
    const std::string shown = runner.run(readFile(GetParam() / "commands.txt"));
    EXPECT_EQ(readFile(GetParam() / "expected.txt"), shown);
    editor.closeBox();
    editor.closed();
    window.owner = nullptr;
}

INSTANTIATE_TEST_SUITE_P(All, RealTranscript, ::testing::ValuesIn(transcriptFolders(kRoot)),
                         [](const auto& folder) { return folder.param.filename().string(); });

}  // namespace
}  // namespace korvant::test
