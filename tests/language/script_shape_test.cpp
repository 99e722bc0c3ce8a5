// The shape of a script: outline, folds, growing selections, indentation.
#include "language/script_shape.h"

#include <gmock/gmock.h>

namespace korvant::test {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> outlineOf(const std::vector<OutlineItem>& items, std::string indent = "") {
    std::vector<std::string> lines;
    for (const OutlineItem& item : items) {
        lines.push_back(indent + item.name + " " + item.detail);
        const auto inside = outlineOf(item.children, indent + "-");
        lines.insert(lines.end(), inside.begin(), inside.end());
    }
    return lines;
}

TEST(ScriptShape, OutlinesWhatIsDeclaredOutsideOfCode) {
    const ScopeIndex index(
        "namespace a { enum E { one, two = 2 } int g = 1, h; }\n"
        "class C { int[] m; int p { get { return 1; } } C(int x) {} ~C() {}\n"
        "  void f(int a,\n     int b) const { int local; auto l = function(x) { }; } }\n"
        "interface I { void g(); }\nfuncdef void F();\nint main(int a\n");
    EXPECT_THAT(outlineOf(outlineTree(index)),
                ElementsAre("a ", "-E ", "--one ", "--two ", "-g int", "-h int", "C ", "-m int[]",
                            "-p int", "-C (int x)", "-~C ()", "-f (int a, int b)", "I ", "-g ()",
                            "F ()", "main (int a"));
    for (const OutlineItem& item : outlineTree(index)) {
        EXPECT_LE(item.whole.begin, item.nameRange.begin) << item.name;
        EXPECT_GE(item.whole.end, item.nameRange.end) << item.name;
    }
}

TEST(ScriptShape, FoldsBracesAndRemarksOfSeveralLines) {
    const ScopeIndex index(
        "/* one\n two */ class C {\n  void f() {\n    if (a) { b({\n        1}); }\n\n  }\n"
        "  void g() {\n  }\n}\n// one\n// two\nstring s = \"{\";\n/* open\n text");
    std::vector<std::string> folds;
    for (const FoldedLines& fold : foldingOf(index))
        folds.push_back(std::to_string(fold.first + 1) + "-" + std::to_string(fold.last + 1) +
                        (fold.remark ? " remark" : ""));
    EXPECT_THAT(folds, ElementsAre("1-2 remark", "2-9", "3-6", "14-15 remark"));
}

TEST(ScriptShape, SelectionsGrowFromAWordToTheWholeText) {
    const std::string text = "class C { void f() { if (a) { total = b + 1; } } }\nint x;\n";
    const ScopeIndex index(text);
    std::vector<std::string> chosen;
    for (const ByteRange& range : selectionsAt(index, text.find("total") + 2))
        chosen.push_back(text.substr(range.begin, range.size()));
    EXPECT_THAT(chosen, ElementsAre("total", "total = b + 1;", "{ total = b + 1; }",
                                    "() { if (a) { total = b + 1; } }",
                                    "void f() { if (a) { total = b + 1; } }",
                                    "{ void f() { if (a) { total = b + 1; } } }",
                                    "class C { void f() { if (a) { total = b + 1; } } }", text));
    EXPECT_EQ(selectionsAt(ScopeIndex(""), 0).size(), 1u);
}

std::string indented(const std::string& text, std::uint32_t first = 0, std::uint32_t last = 1000) {
    const ScopeIndex index(text);
    std::string result = text;
    const auto edits = indentationEdits(index, first, last);
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        result.replace(edit->range.begin, edit->range.size(), edit->blanks);
    return result;
}

TEST(ScriptShape, IndentsBySyntaxAndLeavesTextsAlone) {
    const std::string wanted =
        "class C\n{\n    int a;\n    void f(int x,\n        int y)\n    {\n        switch (x) {\n"
        "            case 1:\n                a = 1 +\n                    2;\n                "
        "break;\n"
        "            default:\n                f(1, 2);\n        }\n        if (x > 1)\n"
        "            a = 2;\n        else {\n            a = 3;\n        }\n        g({\n"
        "            1, 2\n        });\n        // remark\n        all.sort(function(p, q) {\n"
        "            return p < q;\n        });\n    }\n}\n";
    std::string flat;
    bool begins = true;
    for (const char byte : wanted) {
        if (!(begins && byte == ' ')) flat += byte;
        begins = byte == '\n' || (begins && byte == ' ');
    }
    EXPECT_EQ(indented(flat), wanted);
    EXPECT_EQ(indented(wanted), wanted);
    // Inside of texts and remarks over several lines nothing moves; blanks behind nothing go.
    const std::string kept = "string s = \"\"\"one\n   two\n\"\"\";\n/*\n     three\n*/\nint a;\n";
    EXPECT_EQ(indented(kept), kept);
    EXPECT_EQ(indented("void f() {\n\t\r\n\tg();\r\n  }\n"), "void f() {\n\r\n    g();\r\n}\n");
    EXPECT_EQ(indented("{\n{\na;\nb;\n", 2, 2), "{\n{\n        a;\nb;\n");
}

}  // namespace
}  // namespace korvant::test
