// Conditions stay with their markers.
#include "editor/stops/breakpoints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "editor/stops/line_shift.h"
#include "editor/stops/run_line_map.h"
#include "support/memory_control.h"

namespace korvant::test {
namespace {

class BreakpointLines : public ::testing::Test {
  protected:
    BreakpointLines() {
        control.notify = [this](const ControlNotification& notification) {
            if (notification.code != sci::kModified) return;
            const auto shift = lineShiftOf(source, notification);
            if (!shift) return;
            breakpoints.follow(*shift);
            lines.follow(*shift);
        };
    }
    void begin(int count) {
        std::string text;
        for (int i = 1; i < count; ++i) text += "line " + std::to_string(i) + "\n";
        source.replaceText(text);
        breakpoints.reset();
        lines.begin(count);
    }
    void add(int line, const std::string& condition) {
        breakpoints.ensure({line - 1});
        breakpoints.setCondition({line}, condition);
    }
    void replace(int from, int to, const std::string& with) {
        control.anchor = from;
        control.caret = to;
        control.press(with);
    }
    int start(int line) { return source.lineStart({line - 1}); }
    bool marked(int line) {
        const std::vector<int> all = control.markedLines(0);
        return std::find(all.begin(), all.end(), line) != all.end();
    }

    MemoryControl control;
    const TextControl source{control.send()};
    Breakpoints breakpoints{source};
    RunLineMap lines;
};

TEST_F(BreakpointLines, ConditionsFollowTheirMarkersThroughRandomEdits) {
    std::mt19937 random(7);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 50; ++round) {
        begin(30);
        for (const int line : {3, 8, 9, 20, 30}) add(line, "c");
        for (int edit = 0; edit < 60; ++edit) {
            const int length = static_cast<int>(control.text.size());
            const int from = below(length + 1);
            const int to = std::min(from + (below(2) ? below(30) : 0), length);
            const char* const texts[] = {"", "", "\n", "x\ny\n", "word"};
            replace(from, to, texts[below(5)]);
            for (int line = 1; line <= control.lineCount(); ++line)
                ASSERT_EQ(marked(line), !breakpoints.condition({line}).empty())
                    << "round " << round << " edit " << edit << " line " << line;
        }
    }
}

TEST_F(BreakpointLines, TheLineWhoseTextIsLeftKeepsItsCondition) {
    begin(10);
    add(2, "first");
    add(3, "second");
    replace(start(2), start(3), "");  // line 3 takes the place of line 2
    EXPECT_EQ(breakpoints.condition({2}), "second");
    begin(10);
    add(2, "first");
    add(3, "second");
    replace(start(2) + 1, start(3) + 1, "");  // line 3 joins line 2
    EXPECT_EQ(breakpoints.condition({2}), "first");
}

TEST_F(BreakpointLines, KeptLinesAndRunningLinesFollowToo) {
    begin(20);
    for (const int line : {5, 10, 15}) add(line, "");
    breakpoints.prepareRun();
    replace(start(7), start(7), "a\nb\n");
    replace(start(1), start(3), "");
    EXPECT_EQ(breakpoints.kept(), (std::vector<std::int32_t>{3, 10, 15}));
    EXPECT_EQ(lines.runningLines(breakpoints.kept()), (std::vector<std::int32_t>{5, 10, 15}));
    EXPECT_EQ(lines.editorLine({6}).number, 4);
    EXPECT_EQ(lines.editorLine({7}).number, 7);
    // A breakpoint on a line that the running script does not have stops nowhere.
    EXPECT_EQ(lines.runningLines({5, 6}), std::vector<std::int32_t>{});
    breakpoints.restore();
    EXPECT_EQ(control.markedLines(0), (std::vector<int>{3, 10, 15}));
}

TEST_F(BreakpointLines, EmptyingTheTextForgetsThem) {
    begin(5);
    add(2, "c");
    source.setText("other\ntext\n");
    for (int line = 1; line <= 5; ++line) EXPECT_EQ(breakpoints.condition({line}), "");
}

TEST_F(BreakpointLines, ConditionsAreCutAtTheirLimit) {
    breakpoints.setCondition({1}, std::string(100'000, '1'));
    EXPECT_EQ(breakpoints.condition({1}).size(), Breakpoints::kLongestCondition);
}

TEST_F(BreakpointLines, ToggleOnAnArrowBringsTheBreakpointsBack) {
    begin(10);
    add(4, "c");
    breakpoints.prepareRun();
    breakpoints.becomeCurrentLine();
    breakpoints.markCurrent({6});
    breakpoints.toggle({6});
    EXPECT_EQ(control.markedLines(0), std::vector<int>{4});
    EXPECT_EQ(breakpoints.condition({4}), "c");
    EXPECT_FALSE(breakpoints.markersAreArrows());
}

}  // namespace
}  // namespace korvant::test
