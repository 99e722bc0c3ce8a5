// Folders under transcripts/: a script, what is typed, and what is then to be seen.
#include "debug/console_fixture.h"
#include "support/temporary_folder.h"
#include "support/transcript_runner.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

class DebugTranscripts : public ConsoleFixture,
                         public ::testing::WithParamInterface<std::filesystem::path> {};

TEST_P(DebugTranscripts, AreAsWritten) {
    const std::filesystem::path& folder = GetParam();
    expectTranscript(folder,
                     play(readFile(folder / "script.as"), readFile(folder / "commands.txt")));
}

INSTANTIATE_TEST_SUITE_P(All, DebugTranscripts,
                         ::testing::ValuesIn(transcriptFolders(std::filesystem::path(
                             korvant::test::sourceFolder() + "/tests/debug/transcripts"))),
                         [](const auto& one) { return one.param.filename().string(); });

}  // namespace
}  // namespace korvant::test
