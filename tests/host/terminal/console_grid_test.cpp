// The grid behind a console window and the line that is typed on it.
#include "host/terminal/console_grid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/terminal/console_line.h"

using namespace korvant;

namespace {

std::string shown(const std::string& bytes) {
    ConsoleGrid grid;
    grid.write(bytes);
    return grid.text();
}

std::string rowText(const ConsoleGrid& grid, std::int64_t line) {
    return grid.text({line, 0}, {line, grid.columns()});
}

TEST(ConsoleGrid, ShowsWhatScriptsPrint) {
    struct Case {
        std::string bytes, text;
    };
    const Case cases[] = {
        {"one\ntwo", "one\ntwo\n"},
        {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t\xC3\xA9\n"},
        {"\xE9t\xE9\n", "\xC3\xA9t\xC3\xA9\n\n"},
        {"a\tb", "a       b\n"},
        {"abc\rX", "Xbc\n"},
        {"abc\b\bX", "aXc\n"},
        {std::string("a\0b", 3), "a b\n"},
        {"\x1B[31m", "\xE2\x90\x9B[31m\n"},
        {"bell\a", "bell\n"},
        {"e\xCC\x81", "e\n"},
        {"\x81\x8D", "\xC2\x81\xC2\x8D\n"},
        {"trailing   \nx", "trailing\nx\n"},
    };
    for (const Case& c : cases) EXPECT_EQ(shown(c.bytes), c.text);
}

TEST(ConsoleGrid, ASequenceMayArriveInPieces) {
    ConsoleGrid grid;
    for (const char c : std::string("\xE2\x82\xAC 5")) grid.write({&c, 1});
    EXPECT_EQ(grid.text(), "\xE2\x82\xAC 5\n");
    grid.write("\n\xE2\x82");
    EXPECT_EQ(rowText(grid, 1), "");
    grid.finishSequence();
    EXPECT_EQ(rowText(grid, 1), "\xC3\xA2\xE2\x80\x9A");
}

TEST(ConsoleGrid, WrapsBehindTheLastColumn) {
    ConsoleGrid grid(10, 5);
    grid.write("0123456789");
    EXPECT_EQ(grid.endLine(), 1) << "a full line needs no second one";
    grid.write("\nnext");
    EXPECT_EQ(rowText(grid, 1), "next");
    grid.write("\n0123456789AB");
    EXPECT_TRUE(grid.wrapped(2));
    EXPECT_EQ(grid.text({2, 0}, {3, 10}), "0123456789AB") << "a wrapped line is copied as one";
    grid.write("\n12345678\xE4\xB8\xAD\xE4\xB8\xAD");
    EXPECT_EQ(rowText(grid, 4), "12345678\xE4\xB8\xAD");
    EXPECT_EQ(grid.cursor(), (ConsolePlace{5, 2}));
}

TEST(ConsoleGrid, CursorStaysInsideTheBuffer) {
    ConsoleGrid grid;
    grid.moveCursor(79, 299);
    EXPECT_EQ(grid.cursor(), (ConsolePlace{299, 79}));
    for (const auto& [column, row] : {std::pair{80, 0}, {0, 300}, {-1, 0}, {0, -1}}) {
        grid.moveCursor(column, row);
        EXPECT_EQ(grid.cursor(), (ConsolePlace{299, 79})) << column << "," << row;
    }
    grid.write("ab");
    EXPECT_EQ(grid.topLine(), 1);
    EXPECT_EQ(rowText(grid, 300), "b");
}

TEST(ConsoleGrid, ClearBlanksWithTheCurrentColours) {
    ConsoleGrid grid;
    grid.write("old\nold");
    grid.setAttributes(0x1E);
    grid.clear();
    EXPECT_EQ(grid.cursor().line, grid.topLine());
    EXPECT_EQ(grid.text(), std::string(80, ' ') + "\n") << "coloured blanks are seen";
    EXPECT_EQ(grid.line(grid.topLine())[79].attributes, 0x1E);
    EXPECT_EQ(grid.firstLine(), grid.topLine());
}

TEST(ConsoleGrid, NothingIsLostInManyLines) {
    ConsoleGrid grid;
    std::string expected;
    for (int i = 0; i < 100'000; ++i) {
        const std::string line = "line " + std::to_string(i) + (i % 7 ? "" : " \xC3\xA9") + "\n";
        grid.setAttributes(i % 11 ? 7 : 12);
        grid.write(line);
        expected += line;
    }
    EXPECT_EQ(grid.text(), expected + "\n");
    EXPECT_EQ(grid.line(11)[0].attributes, 12);
    EXPECT_EQ(grid.line(99'990)[0].attributes, 12);
}

TEST(ConsoleGrid, ForgetsTheOldestLinesAtItsCapacity) {
    ConsoleGrid grid(10, 4, 6);
    for (int i = 0; i < 20; ++i) grid.write(std::to_string(i) + "\n");
    EXPECT_EQ(grid.firstLine(), 11);
    EXPECT_EQ(rowText(grid, 11), "11");
    EXPECT_TRUE(grid.line(10).empty());
    EXPECT_TRUE(grid.line(21).empty());
    EXPECT_EQ(grid.text({0, 0}, {12, 1}), "11\n1");
}

TEST(ConsoleGrid, LinesOfSeveralColoursKeepThemInTheHistory) {
    ConsoleGrid grid(20, 2);
    grid.write("grey ");
    grid.setAttributes(12);
    grid.write("red");
    grid.setAttributes(7);
    grid.write("\n\n\n");
    ASSERT_LT(0, grid.topLine());
    const auto cells = grid.line(0);
    ASSERT_EQ(cells.size(), 8U);
    EXPECT_EQ(cells[4].attributes, 7);
    EXPECT_EQ(cells[5].attributes, 12);
}

TEST(ConsoleGrid, FindsTheWordUnderThePointer) {
    ConsoleGrid grid;
    grid.write("depth 12.5 m");
    const auto word = grid.wordAt({0, 7});
    EXPECT_EQ(grid.text(word.first, word.second), "12.5");
    EXPECT_EQ(grid.wordAt({0, 50}).second.column, 51);
}

std::string typed(ConsoleLine& line, const std::vector<ConsoleKey>& keys) {
    line.begin();
    for (const ConsoleKey& key : keys)
        if (line.handle(key)) return line.result();
    return "not entered";
}

std::vector<ConsoleKey> letters(const std::string& text) {
    std::vector<ConsoleKey> keys;
    for (const char c : text)
        keys.push_back({ConsoleKey::Kind::character, static_cast<char32_t>(c), 0});
    return keys;
}

std::vector<ConsoleKey> operator+(std::vector<ConsoleKey> keys,
                                  const std::vector<ConsoleKey>& more) {
    keys.insert(keys.end(), more.begin(), more.end());
    return keys;
}

std::vector<ConsoleKey> operator+(std::vector<ConsoleKey> keys, ConsoleKey::Kind kind) {
    keys.push_back({kind, 0, 0});
    return keys;
}

TEST(ConsoleLine, IsEditedWithKeys) {
    using Kind = ConsoleKey::Kind;
    ConsoleGrid grid;
    ConsoleLine line(grid);
    struct Case {
        std::vector<ConsoleKey> keys;
        std::string entered;
    };
    const Case cases[] = {
        {letters("42") + Kind::enter, "42"},
        {letters("4") + Kind::left + Kind::left + letters("1") + Kind::enter, "14"},
        {letters("abc") + Kind::backspace + Kind::home + Kind::remove + Kind::enter, "b"},
        {letters("abc") + Kind::escape + letters("x") + Kind::enter, "x"},
        {letters("ac") + Kind::left + letters("b") + Kind::end + letters("d") + Kind::enter,
         "abcd"},
        {letters("new") + Kind::up + Kind::enter, "abcd"},
        {letters("new") + Kind::up + Kind::up + Kind::down + Kind::down + Kind::enter, "new"},
        {std::vector<ConsoleKey>{} + Kind::down + Kind::backspace + Kind::remove + Kind::enter, ""},
        {letters("a") + Kind::tab + Kind::right + Kind::pageUp + letters("b") + Kind::enter, "a b"},
    };
    for (const Case& c : cases) EXPECT_EQ(typed(line, c.keys), c.entered);
}

TEST(ConsoleLine, IsDrawnWhereItBegan) {
    using Kind = ConsoleKey::Kind;
    ConsoleGrid grid(10, 4);
    ConsoleLine line(grid);
    grid.write("n = ");
    line.begin();
    for (const ConsoleKey& key : letters("12345678") + Kind::home) line.handle(key);
    EXPECT_EQ(grid.text(), "n = 12345678\n");
    EXPECT_EQ(grid.cursor(), (ConsolePlace{0, 4}));
    for (int i = 0; i < 5; ++i) line.handle({Kind::remove, 0, 0});
    EXPECT_EQ(rowText(grid, 0), "n = 678");
    EXPECT_EQ(rowText(grid, 1), "") << "what was deleted is blanked on both lines";
    line.handle({Kind::enter, 0, 0});
    grid.write("done");
    EXPECT_EQ(rowText(grid, 1), "done");
}

TEST(ConsoleLine, GoesOnBehindALineThatIsExactlyFull) {
    using Kind = ConsoleKey::Kind;
    ConsoleGrid grid(10, 4);
    ConsoleLine line(grid);
    line.begin();
    for (const ConsoleKey& key : letters("0123456789A") + Kind::backspace + letters("B"))
        line.handle(key);
    EXPECT_EQ(grid.text({0, 0}, {1, 10}), "0123456789B");
}

TEST(ConsoleLine, LongLinesMoveTheBufferUp) {
    ConsoleGrid grid(10, 3);
    ConsoleLine line(grid);
    grid.write("\n\n> ");
    EXPECT_EQ(typed(line, letters(std::string(25, 'x')) + ConsoleKey::Kind::enter),
              std::string(25, 'x'));
    EXPECT_EQ(grid.text({2, 0}, {4, 10}), "> " + std::string(25, 'x'));
}

TEST(ConsoleLine, EndOfInputIsTypedOnAnEmptyLine) {
    for (const char32_t key : {char32_t{4}, char32_t{26}}) {
        ConsoleGrid grid;
        ConsoleLine line(grid);
        line.begin();
        line.handle({ConsoleKey::Kind::character, U'a', 0});
        EXPECT_FALSE(line.handle({ConsoleKey::Kind::character, key, 0}));
        line.handle({ConsoleKey::Kind::backspace, 0, 0});
        EXPECT_TRUE(line.handle({ConsoleKey::Kind::character, key, 0}));
        EXPECT_TRUE(line.endOfInput());
    }
}

TEST(ConsoleLine, StopsGrowingAtItsLimit) {
    ConsoleGrid grid;
    ConsoleLine line(grid);
    const std::string most(ConsoleLine::kLongest, '7');
    line.begin();
    for (const ConsoleKey& key : letters(most + "8")) {
        if (line.handle(key)) break;
    }
    line.handle({ConsoleKey::Kind::enter, 0, 0});
    EXPECT_EQ(line.result(), most);
}

TEST(ConsoleKeys, HaveTheCodesOfASystemConsole) {
    using Kind = ConsoleKey::Kind;
    struct Case {
        ConsoleKey key;
        std::vector<int> codes;
    };
    const Case cases[] = {
        {{Kind::character, U'a', 0}, {'a'}},
        {{Kind::character, 0xE9, 0}, {0xE9}},
        {{Kind::enter, 0, 0}, {13}},
        {{Kind::escape, 0, 0}, {27}},
        {{Kind::up, 0, 0}, {224, 72}},
        {{Kind::remove, 0, 0}, {224, 83}},
        {{Kind::function, 0, 1}, {0, 59}},
        {{Kind::function, 0, 10}, {0, 68}},
        {{Kind::function, 0, 12}, {224, 134}},
        {{Kind::function, 0, 13}, {}},
        {{Kind::character, 0x4E2D, 0}, {0xE4, 0xB8, 0xAD}},
    };
    for (const Case& c : cases) EXPECT_EQ(consoleKeyCodes(c.key), c.codes);
}

}  // namespace
