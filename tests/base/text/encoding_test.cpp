// Bytes, what people see of them, and what keys stand for.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/system/key_codes.h"
#include "base/text/display_text.h"
#include "base/text/text_encoding.h"

namespace korvant {
namespace {

using namespace std::string_literals;

TEST(Encoding, EveryByteThatIsNoUtf8SurvivesTheRoundTrip) {
    for (int high = 0x80; high <= 0xFF; ++high) {
        const std::string bytes = "a"s + static_cast<char>(high) + "b";
        ASSERT_FALSE(isValidUtf8(bytes));
        EXPECT_TRUE(isValidUtf8(decodeForDisplay(bytes)));
        EXPECT_EQ(bytes, encodeWestern(decodeForDisplay(bytes))) << high;
    }
}

TEST(Encoding, TheWesternTableHasItsKnownCharacters) {
    EXPECT_EQ("€Ÿ‘”™é\u0081", decodeWestern("\x80\x9F\x91\x94\x99\xE9\x81"));
    EXPECT_EQ("?", encodeWestern("→"));
    EXPECT_TRUE(fitsWestern("Größe €"));
    EXPECT_FALSE(fitsWestern("Größe →"));
}

TEST(Encoding, Utf8IsToldFromWhatOnlyLooksLikeIt) {
    const struct {
        const char* bytes;
        int length;
    } cases[] = {
        {"a", 1},
        {"é", 2},
        {"€", 3},
        {"\xF0\x9F\x98\x80", 4},
        {"\xC0\xAF", 0},          // overlong
        {"\xE0\x80\x80", 0},      // overlong
        {"\xED\xA0\x80", 0},      // surrogate
        {"\xF4\x90\x80\x80", 0},  // beyond the last code point
        {"\x80", 0},
        {"\xE2\x82", -1},
        {"\xE2x", 0},
        {"\xF5\x80\x80\x80", 0},
    };
    for (const auto& each : cases) EXPECT_EQ(each.length, utf8SequenceLength(each.bytes));
}

TEST(Encoding, WhatWasTypedIsShownAsWhatWasTyped) {
    for (const std::string typed : {"plain", "é", "5 €", "→", "Ã©", "naïve → text"})
        EXPECT_EQ(typed, decodeForDisplay(encodeTyped(typed)));
    EXPECT_EQ("\xE9", encodeTyped("é"));
}

TEST(Encoding, Utf16ComesBackUnlessHalfACharacterIsAlone) {
    const std::string text("a\0é→\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", 15);
    for (const bool big : {false, true}) EXPECT_EQ(decodeUtf16(encodeUtf16(text, big), big), text);
    const std::string high("\xD8\x00", 2), low("\xDC\x00", 2), letter("\0a", 2);
    for (const std::string& bad :
         {high, low, high + letter, high + high + low, low + high, letter + "\n"})
        EXPECT_FALSE(decodeUtf16(bad, true)) << bad.size();
}

std::string shown(std::initializer_list<std::string> pieces) {
    DisplayText display;
    std::string result;
    for (const std::string& piece : pieces) display.append(piece, result);
    display.finish(result);
    return result;
}

TEST(DisplayText, DecodesAcrossPieces) {
    EXPECT_EQ("é", shown({"\xC3", "\xA9"}));
    EXPECT_EQ("Ãx", shown({"\xC3", "x"}));
    EXPECT_EQ("café\n", shown({"caf\xE9", "\n"}));
    EXPECT_EQ("â‚", shown({"\xE2\x82"}));
    EXPECT_EQ("é is é", shown({"é is \xE9"}));
}

TEST(DisplayText, NothingAScriptPrintsSteersTheTerminal) {
    EXPECT_EQ("^[]0;title\a", shown({"\x1b]0;title\a"}));
    EXPECT_EQ("^[[31m", shown({"\xC2\x9B"s + "31m"}));  // one-character form of the same
    EXPECT_EQ("^[]52", shown({"\x9D"
                              "52"}));
    EXPECT_EQ("^N^O^E", shown({"\x0E\x0F\x05"}));
    EXPECT_EQ("tab\tline\n\r\b", shown({"tab\tline\n\r\b"}));
}

TEST(KeyCodes, AreThoseOfTheConsole) {
    const struct {
        const char* bytes;
        std::vector<int> codes;
    } cases[] = {
        {"a", {97}},           {"\r", {13}},          {"\x7f", {8}},
        {"\x1b", {27}},        {"é", {0xE9}},         {"→", {226, 134, 146}},
        {"\x1b[A", {224, 72}}, {"\x1bOD", {224, 75}}, {"\x1b[3~", {224, 83}},
        {"\x1bOP", {0, 59}},   {"\x1b[21~", {0, 68}}, {"\x1b[99~", {27, 91, 57, 57, 126}},
    };
    for (const auto& each : cases) EXPECT_EQ(each.codes, keyCodes(each.bytes)) << each.bytes;
}

TEST(KeyCodes, AKeyIsReadToItsEndAndNoFurther) {
    for (const char* whole : {"a", "é", "\x1b[A", "\x1bOP", "\x1b[15~", "\x1bx"}) {
        const std::string bytes = whole;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            EXPECT_TRUE(keyGoesOn(bytes.substr(0, i))) << whole << " at " << i;
        EXPECT_FALSE(keyGoesOn(bytes)) << whole;
    }
    EXPECT_FALSE(keyGoesOn("\x1b[" + std::string(40, '1')));
}

}  // namespace
}  // namespace korvant
