// Breakpoints on every line of every script that there is, and the lines that really run.
#include <filesystem>
#include <set>

#include "debug/debug_fixture.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> scripts() {
    std::vector<fs::path> found;
    for (const char* folder : {"examples", "tests/scripts", "tests/debug/transcripts"})
        for (const auto& entry :
             fs::recursive_directory_iterator(fs::path(korvant::test::sourceFolder()) / folder))
            if (entry.path().extension() == ".as") found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

class EveryLine : public DebugFixture {
  protected:
    /// Lines that the engine reports, those of a breakpoint on each line, and lines with code.
    void play(const fs::path& path) {
        SCOPED_TRACE(path);
        const std::string text = readFile(path);
        Limits limits;
        limits.hardCeilingMs = 1000;
        limits.fileAccess = FileAccess::none;
        useLimits(limits);
        Coverage coverage(kMainSource);
        debug.setCoverage(&coverage);
        debug.breakpoints().clear();
        start(text);
        debug.setCoverage(nullptr);
        const auto code = debug.code();
        if (code == nullptr || session().lastFailure().kind == RunFailure::Kind::build) return;
        std::set<std::int32_t> ran;
        for (const Coverage::Line& line : coverage.lines(*code, {}))
            if (line.hits > 0) ran.insert(line.line);
        EXPECT_EQ(coverage.unknownLines(*code), "") << "lines that run without being known";
        const RunFailure first = session().lastFailure();
        setOnEveryLine(text);
        start(text);
        // Where time decides, two runs need not be the same.
        const bool same =
            first.kind != RunFailure::Kind::timeOut && first.line == session().lastFailure().line;
        if (same) expectStopsWhere(ran);
    }

    void setOnEveryLine(const std::string& text) {
        std::vector<BreakpointWish> wishes;
        for (std::int32_t line = 1; line <= 1 + std::count(text.begin(), text.end(), '\n');
             ++line) {
            BreakpointWish wish;
            wish.place.line = line;
            wish.logText = "x";
            wishes.push_back(wish);
        }
        debug.breakpoints().setLines({}, wishes);
    }

    void expectStopsWhere(const std::set<std::int32_t>& ran) {
        for (const Breakpoint& breakpoint : debug.breakpoints().all()) {
            if (!breakpoint.verified) continue;
            EXPECT_GE(breakpoint.resolved.line, breakpoint.wish.place.line);
            EXPECT_EQ(breakpoint.hits > 0, ran.count(breakpoint.resolved.line) > 0)
                << "line " << breakpoint.wish.place.line << " at " << breakpoint.resolved.line;
            if (ran.count(breakpoint.wish.place.line) > 0) {
                EXPECT_EQ(breakpoint.resolved.line, breakpoint.wish.place.line);
            }
        }
    }
};

TEST_F(EveryLine, StopsWhereItSaysAndNowhereElse) {
    for (const fs::path& path : scripts()) play(path);
}

}  // namespace
}  // namespace korvant::test
