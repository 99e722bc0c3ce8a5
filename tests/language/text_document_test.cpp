// Lines and columns as bytes and as UTF-16, and edits that keep the line table right.
#include "language/text_document.h"

#include <gtest/gtest.h>

#include <random>

#include "base/text/text_encoding.h"

namespace korvant::test {
namespace {

TEST(TextDocument, CountsAsTheCompilerAndAsEditorsDo) {
    // a umlaut, emoji (two UTF-16 units), a lone byte of another encoding, Windows line end.
    const TextDocument text("a\xC3\xA4\xF0\x9F\x98\x80z\r\n\xE4!\n");
    EXPECT_EQ(text.lineCount(), 3u);
    EXPECT_EQ(text.lineText(0), "a\xC3\xA4\xF0\x9F\x98\x80z");
    EXPECT_EQ(text.lineText(2), "");
    EXPECT_EQ(text.positionOf(7), (TextPosition{0, 7}));
    EXPECT_EQ(text.utf16PositionOf(7), (TextPosition{0, 4}));
    EXPECT_EQ(text.offsetOfUtf16({0, 4}), 7u);
    EXPECT_EQ(text.offsetOfUtf16({0, 3}), 3u) << "inside the pair";
    EXPECT_EQ(text.utf16PositionOf(11), (TextPosition{1, 1}));
    EXPECT_EQ(text.offsetOf({0, 99}), 8u) << "the line end is no column";
    EXPECT_EQ(text.offsetOf({99, 0}), text.size());
    EXPECT_EQ(text.positionOf(999), (TextPosition{2, 0}));
}

TEST(TextDocument, ManyEditsLeaveTheSameLinesAsReadingAnew) {
    std::mt19937 random(7);
    const std::string pieces[] = {"", "x", "\n", "\r\n", "ab\ncd\n\n", "\xC3\xA4"};
    TextDocument text("first\nsecond\n");
    for (int i = 0; i < 3000; ++i) {
        const std::size_t begin = random() % (text.size() + 1);
        const std::size_t bytes = random() % 5;
        text.replace({begin, begin + bytes}, pieces[random() % std::size(pieces)]);
        const TextDocument anew(text.text());
        ASSERT_EQ(text.lineCount(), anew.lineCount());
        for (std::uint32_t line = 0; line < text.lineCount(); ++line)
            ASSERT_EQ(text.lineStart(line), anew.lineStart(line)) << i;
    }
    EXPECT_EQ(text.version(), 3000u);
}

/// Units of a line up to an offset, counted one by one.
std::uint32_t counted(std::string_view line) {
    std::uint32_t units = 0;
    for (std::size_t at = 0; at < line.size();) {
        const int bytes = std::max(1, utf8SequenceLength(line.substr(at)));
        units += bytes == 4 ? 2 : 1;
        at += static_cast<std::size_t>(bytes);
    }
    return units;
}

TEST(TextDocument, UnitsAreThoseThatOneCounts) {
    std::mt19937 random(11);
    const std::string pieces[] = {"x",        "\n",           "\r\n",
                                  "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                  "\xE4",     "\xF0\x9F",     "ab"};
    for (int i = 0; i < 300; ++i) {
        TextDocument text;
        for (int j = 0; j < 25; ++j) {
            const std::size_t place = random() % (text.size() + 1);
            text.replace({place, place}, pieces[random() % std::size(pieces)]);
        }
        for (std::uint32_t line = 0; line < text.lineCount(); ++line) {
            const std::string_view content = text.lineText(line);
            for (std::size_t end = 0; end <= content.size();) {
                const TextPosition place{line, counted(content.substr(0, end))};
                ASSERT_EQ(text.utf16PositionOf(text.lineStart(line) + end), place) << text.text();
                ASSERT_EQ(text.offsetOfUtf16(place), text.lineStart(line) + end) << text.text();
                if (end == content.size()) break;
                end +=
                    static_cast<std::size_t>(std::max(1, utf8SequenceLength(content.substr(end))));
            }
        }
    }
}

}  // namespace
}  // namespace korvant::test
