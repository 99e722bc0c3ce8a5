// Names that fit, parameters of calls, and what is read of half-written scripts.
#include "language/completion.h"

#include <gmock/gmock.h>

#include "language/tokens.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr char kScript[] = R"(// int commented;
/* class Hidden {} */
enum Colour { red, green = 5, blue }
class Well
{
    string name;
    double[] depths;
    Well@ next;
    double depthAt(int index, bool fromTop = true) { return depths[index]; }
}
int counter, total = 0;
Well@ findWell(const string &in name) { return null; }
int main()
{
    int localNumber = 1, localSecond;
    Well firstWell;
    array<Well@> wells;
    string text = "int quoted; // no comment";
    for (int index = 0; index < 10; index++) { }
    |
}
)";

/// The script up to "|", where the caret is, with `typed` there.
std::string before(const std::string& typed) {
    const std::string script = kScript;
    return script.substr(0, script.find('|')) + typed;
}

SymbolTable tableOf(const std::string& text) {
    static const std::vector<Symbol> none;
    return {none, scriptSymbols(text), static_cast<int>(text.size())};
}

std::vector<std::string> completed(const std::string& typed) {
    return tableOf(before(typed)).completions(wordBefore(before(typed), false));
}

TEST(Completion, FindsWhatTheScriptDeclares) {
    EXPECT_THAT(completed("local"), ElementsAre("localNumber", "localSecond"));
    EXPECT_THAT(completed("LOCALN"), ElementsAre("localNumber"));
    EXPECT_THAT(completed("co"), ElementsAre("Colour", "counter"));
    EXPECT_THAT(completed("tot"), ElementsAre("total"));
    EXPECT_THAT(completed("ind"), Contains("index"));
    EXPECT_THAT(completed("gre"), ElementsAre("green"));
    for (const char* absent : {"commented", "quoted", "Hidden", "no", "return", "depthAt"})
        EXPECT_THAT(completed(absent), IsEmpty()) << absent;
}

TEST(Completion, FollowsMembersThroughCallsAndIndexes) {
    const auto members = ElementsAre("depthAt", "depths", "name", "next");
    for (const char* chain :
         {"firstWell.", "firstWell.next.", "firstWell.next.next.", "findWell(\"a\").", "wells[0].",
          "findWell(text).next.", "x = (firstWell."})
        EXPECT_THAT(completed(chain), members) << chain;
    EXPECT_THAT(completed("firstWell.de"), ElementsAre("depthAt", "depths"));
    for (const char* unknown : {"nothing.", "localNumber.", "firstWell.none.", "5.", ".", "]."})
        EXPECT_THAT(completed(unknown), IsEmpty()) << unknown;
    EXPECT_EQ(tableOf(before("")).typeOf({{"firstWell", false, 0}, {"depths", false, 1}}),
              "double");
}

TEST(Completion, InsideAClassItsMembersNeedNoPrefix) {
    const std::string text = "class A { int value; void f() { this.";
    EXPECT_THAT(tableOf(text).completions(wordBefore(text, false)), ElementsAre("f", "value"));
    const std::string bare = "class A { int value; void f() { va";
    EXPECT_THAT(tableOf(bare).completions(wordBefore(bare, false)), ElementsAre("value"));
}

TEST(Completion, NothingIsOfferedInCommentsAndTexts) {
    for (const char* typed : {"// loc", "/* loc", "\"loc", "'loc", "\"a\\\"loc"})
        EXPECT_THAT(completed(typed), IsEmpty()) << typed;
    EXPECT_THAT(completed("\"a\" + loc"), Not(IsEmpty()));
    EXPECT_FALSE(wordBefore("still in it", true).writable);
    EXPECT_EQ(wordBefore("until */ here", true).word, "here");
}

TEST(Completion, CallsAreFoundThroughNestedBrackets) {
    const auto call = [](const std::string& text) { return callBefore(text, false); };
    EXPECT_EQ(call("f(").function.word, "f");
    EXPECT_EQ(call("f(a, g(1, 2), ").argument, 2);
    EXPECT_EQ(call("f(a, g(1, ").function.word, "g");
    EXPECT_EQ(call("w.depthAt(1, ").function.chain.size(), 1u);
    EXPECT_EQ(call("f(\"(\", ").argument, 1);
    for (const char* text : {"return f(", "x = f(", "else f(", "a > f(", "@h = @f("})
        EXPECT_EQ(call(text).function.word, "f") << text;
    for (const char* text : {"f(1)", "f(1);", "(", "f(1; ", "{", "f(\"", "// f("})
        EXPECT_LT(call(text).bracket, 0) << text;
    // What is being declared has no parameters yet that could be shown.
    for (const char* text : {"int f(", "Well@ f(", "int[] f(", "void f(int a, "})
        EXPECT_LT(call(text).bracket, 0) << text;
}

TEST(Completion, ParametersArePlacedInTheDeclaration) {
    const std::string declaration = "double f(int index, bool fromTop = g(1, 2), string s)";
    const auto part = [&](int argument) {
        const ParameterPlace place = parameterPlace(declaration, argument);
        return declaration.substr(static_cast<std::size_t>(place.begin),
                                  static_cast<std::size_t>(place.end - place.begin));
    };
    EXPECT_EQ(part(0), "int index");
    EXPECT_EQ(part(1), "bool fromTop = g(1, 2)");
    EXPECT_EQ(part(2), "string s");
    EXPECT_EQ(part(3), "");
    EXPECT_EQ(parameterPlace("void f()", 0).end, 0);
}

TEST(Completion, BrokenTextsAreReadInLinearTime) {
    for (const char* piece :
         {"a<", "int a(", "int a, ", "class A {", "x.y(", "\"", "/*", "enum E {"}) {
        std::string text;
        for (int i = 0; i < 20'000; ++i) text += piece;
        const SymbolTable table = tableOf(text);
        table.completions(wordBefore(text, false));
        callBefore(text, false);
    }
}

class Assisting : public EditorFixture {};

TEST_F(Assisting, ListsAfterThreeLettersWithWhatTheEngineKnows) {
    open("int main()\n{\n");
    window->editor.caret = window->editor.anchor = static_cast<int>(text().size());
    window->editor.type("St");
    EXPECT_EQ(window->editor.completions, "");
    window->editor.type("r");
    EXPECT_NE(window->editor.completions.find("StrFind"), std::string::npos);
    window->editor.completions.clear();
    window->editor.type("F");
    EXPECT_EQ(window->editor.completions, "");  // the list that is open narrows down by itself
    window->editor.type(" ");
    editor().command(command_id::kComplete);
    EXPECT_NE(window->editor.completions.find("while"), std::string::npos);
    EXPECT_NE(window->editor.completions.find("main"), std::string::npos);
}

TEST_F(Assisting, ListsMembersOfEngineTypesAfterADot) {
    open("int main()\n{\n\tObject form;\n\tint[] numbers;\n\t");
    window->editor.caret = window->editor.anchor = static_cast<int>(text().size());
    window->editor.type("form.");
    EXPECT_NE(window->editor.completions.find("addTranslation"), std::string::npos);
    EXPECT_EQ(window->editor.completions.find("StrFind"), std::string::npos);
    window->editor.type("; numbers.");
    EXPECT_NE(window->editor.completions.find("length"), std::string::npos);
}

TEST_F(Assisting, TipsShowTheParameterThatIsBeingWritten) {
    open("int add(int first, int second) { return first + second; }\nint main()\n{\n\t");
    window->editor.caret = window->editor.anchor = static_cast<int>(text().size());
    window->editor.type("add(");
    EXPECT_EQ(window->editor.callTip, "int add(int first, int second)");
    const auto highlighted = [&] {
        const auto [begin, end] = window->editor.callTipHighlight;
        return window->editor.callTip.substr(static_cast<std::size_t>(begin),
                                             static_cast<std::size_t>(end - begin));
    };
    EXPECT_EQ(highlighted(), "int first");
    window->editor.type("1,");
    EXPECT_EQ(highlighted(), "int second");
    window->editor.type(" 2)");
    EXPECT_EQ(TextControl(window->editor.send()).tipActive(), false);
}

TEST_F(Assisting, TipsFollowTheCaretAndGoWhenItLeavesTheCall) {
    open("void add(int first,  // metres\n         int second) {}\nvoid half(int a\n{\n\t");
    const auto end = static_cast<int>(text().size());
    window->editor.caret = window->editor.anchor = end;
    window->editor.type("add(1,");
    EXPECT_EQ(window->editor.callTip, "void add(int first, int second)");
    const auto caretAt = [&](int position) {
        window->editor.caret = window->editor.anchor = position;
        editor().editorNotified({.code = sci::kUpdateUi});
    };
    const int second = window->editor.callTipHighlight.first;
    caretAt(end + 5);
    EXPECT_LT(window->editor.callTipHighlight.first, second);
    EXPECT_TRUE(TextControl(window->editor.send()).tipActive());
    caretAt(0);
    EXPECT_FALSE(TextControl(window->editor.send()).tipActive());
    caretAt(end + 6);
    window->editor.type("half(");
    EXPECT_EQ(window->editor.callTip, "void half(...)");
}

TEST_F(Assisting, ArrowsLeadThroughOverloads) {
    open("int main()\n{\n\t");
    window->editor.caret = window->editor.anchor = static_cast<int>(text().size());
    window->editor.type("Input(");
    const std::string first = window->editor.callTip;
    EXPECT_NE(first.find('\n'), std::string::npos) << "no help below " << first;
    EXPECT_TRUE(first.starts_with("\001 1 of 4 \002 ")) << first;
    editor().editorNotified({.code = sci::kCallTipClick, .position = 2});
    EXPECT_TRUE(window->editor.callTip.starts_with("\001 2 of 4 \002 "));
    editor().editorNotified({.code = sci::kCallTipClick, .position = 1});
    EXPECT_EQ(window->editor.callTip, first);
}

}  // namespace
}  // namespace korvant::test
