// Scrambling: the same sequence everywhere, and back again.
#include "editor/document/scramble.h"

#include <cstdlib>

#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

TEST(Scramble, NumbersAreThoseOfTheOldGenerator) {
    ScrambleNumbers numbers(1);
    for (const int expected : {41, 18467, 6334, 26500, 19169, 15724})
        EXPECT_EQ(numbers.next(), expected);
    ScrambleNumbers zero(0);
    for (const int expected : {38, 7719, 21238}) EXPECT_EQ(zero.next(), expected);
}

TEST(Scramble, BytesChangeAsTheSequenceSays) {
    std::string text = "int main()";
    scramble(text, 1);
    std::string expected = "int main()";
    const int draws[] = {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358, 26962, 24464};
    for (std::size_t i = 0; i < expected.size(); ++i)
        expected[i] = static_cast<char>(expected[i] ^ draws[i] % 31);
    EXPECT_EQ(text, expected);
}

TEST(Scramble, IsItsOwnInverseForEveryByteAndKey) {
    std::string all;
    for (int i = 0; i < 1024; ++i) all += static_cast<char>(i);
    for (const std::int32_t key : {0, 1, -1, 12345, std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()}) {
        std::string text = all;
        scramble(text, key);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(all[i]);
            if (byte < 32 || byte > 127)
                EXPECT_EQ(text[i], all[i]) << i;
            else
                EXPECT_TRUE(text[i] >= 32) << i;
        }
        EXPECT_NE(text, all);
        std::string other = text;
        scramble(other, key ^ 2);
        EXPECT_NE(other, all);
        scramble(text, key);
        EXPECT_EQ(text, all);
    }
}

class Scrambling : public EditorFixture {};

TEST_F(Scrambling, RestoresTheTextAndKeepsBreakpoints) {
    const std::string script = "int main()\n{\n\treturn 0; // caf\xC3\xA9\r\n}\n";
    open(script);
    caretToLine(3);
    editor().command(command_id::kToggleBreakpoint);
    frontend.number = 42;
    editor().command(command_id::kCrypt);
    EXPECT_EQ(frontend.labels.back(), "Key:");
    EXPECT_NE(text(), script);
    EXPECT_EQ(marks(), std::vector<int>{3});
    frontend.number.reset();  // Cancel runs with the key as it was
    editor().command(command_id::kCrypt);
    EXPECT_EQ(text(), script);
    EXPECT_EQ(marks(), std::vector<int>{3});
}

TEST_F(Scrambling, OneUndoBringsTheTextBackWithOrWithoutBreakpoints) {
    for (const bool breakpoint : {false, true}) {
        open("one\ntwo\nthree");
        caretToLine(2);
        if (breakpoint) editor().command(command_id::kToggleBreakpoint);
        frontend.number = 5;
        editor().command(command_id::kCrypt);
        EXPECT_NE(text(), "one\ntwo\nthree");
        editor().command(command_id::kUndo);
        EXPECT_EQ(text(), "one\ntwo\nthree");
        EXPECT_EQ(marks(), breakpoint ? std::vector<int>{2} : std::vector<int>{});
    }
}

TEST_F(Scrambling, ZeroBytesAndTheHostsGeneratorAreLeftAlone) {
    const std::string bytes("a\0b\0c", 5);
    open(bytes);
    std::srand(7);
    const int expected = std::rand();
    std::srand(7);
    frontend.number = 3;
    editor().command(command_id::kCrypt);
    EXPECT_EQ(std::rand(), expected);
    EXPECT_EQ(text().size(), 5u);
    editor().command(command_id::kCrypt);
    EXPECT_EQ(text(), bytes);
}

TEST_F(Scrambling, AnEmptyDocumentIsLeftAloneAndTheKeyIsRemembered) {
    open();
    frontend.number = 99;
    editor().command(command_id::kCrypt);
    EXPECT_EQ(rememberedScrambleKey(), 99);
    EXPECT_TRUE(text().empty() && pane().empty());
}

}  // namespace
}  // namespace korvant::test
