// Breakpoints on every line of every script that there is, and the lines that really run.
#include <filesystem>
#include <set>

#include "debug/debug_fixture.h"
#include "language/scope_index.h"
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
        for (const std::int32_t line : ran) EXPECT_TRUE(code->hasCode({}, line)) << line;
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

/// What is told of variables goes by the places of statements in the text.
TEST_F(EveryLine, StatementsOfTheEngineAreThoseOfTheText) {
    constexpr std::size_t kMostStops = 2000;
    Limits limits;
    limits.fileAccess = FileAccess::none;
    useLimits(limits);
    debug.rules().entry = true;
    for (const fs::path& path : scripts()) {
        SCOPED_TRACE(path);
        const ScopeIndex index(readFile(path));
        std::set<std::string> strange;
        stops.clear();
        atStop = [&](const StopInfo& info) {
            const std::size_t place =
                index.document().offsetOf({static_cast<std::uint32_t>(info.place.line - 1),
                                           static_cast<std::uint32_t>(info.place.column - 1)});
            const std::string text = index.document().text().substr(place, 20);
            const bool ofText = info.place.source.empty() && index.functionAt(place) != kNoIndex;
            const bool known = std::any_of(
                index.statements().begin(), index.statements().end(), [&](const Statement& one) {
                    // The condition behind a loop's body stands behind its word.
                    return one.range.begin == place ||
                           (one.range.contains(place) &&
                            index.document().text().compare(one.range.begin, 5, "while") == 0);
                });
            const bool opens = text.starts_with("try") || text.starts_with("do") ||
                               text[0] == '{' || text.starts_with(";;");  // of a "for"
            const bool ends = place > 0 && index.document().text()[place - 1] == '}';
            if (ofText && !known && !opens && !ends)
                strange.insert(std::to_string(info.place.line) + ": " + text);
            if (stops.size() < kMostStops)
                debug.stepInto(StepBy::statement);
            else
                debug.stopRun();
        };
        start(index.document().text());
        for (const std::string& text : strange) ADD_FAILURE() << text;
    }
}

TEST_F(EveryLine, StopsWhereItSaysAndNowhereElse) {
    for (const fs::path& path : scripts()) play(path);
}

}  // namespace
}  // namespace korvant::test
