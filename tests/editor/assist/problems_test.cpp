// The list of problems, and the outline of a script.
#include "editor/assist/problems.h"

#include <gtest/gtest.h>

#include "editor/assist/outline.h"

using namespace korvant;

namespace {

Diagnostic at(int line, int column, const std::string& text,
              Diagnostic::Kind kind = Diagnostic::Kind::error) {
    Diagnostic one;
    one.line = line;
    one.column = column;
    one.kind = kind;
    one.text = text;
    return one;
}

TEST(Problems, AreSortedWithWhatExplainsThemAndWalkedRound) {
    Problems problems;
    problems.set({at(42, 5, "second"), at(42, 5, "Candidate", Diagnostic::Kind::information),
                  at(20, 3, "first", Diagnostic::Kind::warning)});
    std::string order;
    for (const Diagnostic& one : problems.all()) order += one.text + " ";
    EXPECT_EQ(order, "first second Candidate ");
    EXPECT_EQ(problems.summary(), "1 error, 1 warning");
    EXPECT_EQ(problems.next(1, 1)->text, "first");
    EXPECT_EQ(problems.next(20, 3)->text, "second");
    EXPECT_EQ(problems.next(42, 5)->text, "first");
    EXPECT_EQ(problems.previous(20, 3)->text, "second");
    problems.set({at(14, 1, "Expected ';'"), at(14, 1, "Instead found '}'")});
    EXPECT_EQ(problems.summary(), "1 error");
    problems.clear();
    EXPECT_EQ(problems.next(1, 1), nullptr);
    EXPECT_EQ(problems.summary(), "No problems found");
}

TEST(Outline, ListsTypesAndFunctionsWithTheirPlaces) {
    const std::string text =
        "enum Rock { granite }\nclass Hole {\n  double grade() const { return 0; }\n}\n"
        "void report(int a) {}\n";
    const ScopeIndex index(text);
    const std::vector<OutlineEntry> entries = outlineEntries(index);
    std::string shown;
    for (const OutlineEntry& entry : entries)
        shown += std::to_string(entry.depth) + entry.name + ":" + entry.type + " ";
    EXPECT_EQ(shown, "0Rock: 0Hole: 1grade():double 0report(...):void ");
    EXPECT_EQ(entries[2].path, "Hole::grade");
    EXPECT_EQ(entryAt(entries, text.find("return")), 2);
    EXPECT_EQ(entryAt(entries, text.find("double")), 2);
    EXPECT_EQ(entryAt(entries, text.size()), -1);
    EXPECT_EQ(typeNamesOf(index), "Rock Hole");
}

}  // namespace
