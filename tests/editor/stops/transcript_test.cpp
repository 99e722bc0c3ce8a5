// Debugging sessions, played on a control without a screen.
#include "support/editor_fixture.h"
#include "support/transcript_runner.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

const std::filesystem::path kRoot =
    korvant::test::sourceFolder() + "/tests/editor/stops/transcripts";

class Transcript : public EditorFixture,
                   public ::testing::WithParamInterface<std::filesystem::path> {};

TEST_P(Transcript, ShowsWhatIsExpected) {
    ControlWatch controlWatch;
    watch = [&](ControlSend send) { return controlWatch.watch(std::move(send)); };
    open(readFile(GetParam() / "script.as"));
    TranscriptRunner runner({editor(), TextControl(window->editor.send()),
                             TextControl(window->output.send()), controlWatch, frontend,
                             [this] { return window->errors; },
                             [this] { window->pump = [] { return true; }; }});
    expectTranscript(GetParam(), runner.run(readFile(GetParam() / "commands.txt")));
    EXPECT_TRUE(window->editor.unknown.empty());
    editor().closeBox();
}

std::string nameOfFolder(const ::testing::TestParamInfo<std::filesystem::path>& info) {
    return info.param.filename().string();
}

INSTANTIATE_TEST_SUITE_P(All, Transcript, ::testing::ValuesIn(transcriptFolders(kRoot)),
                         nameOfFolder);

TEST(Transcripts, AreThere) {
    EXPECT_GE(transcriptFolders(kRoot).size(), 30u);
}

}  // namespace
}  // namespace korvant::test
