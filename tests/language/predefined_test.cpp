// What an engine offers, as a text that other tools read.
#include "language/predefined.h"

#include <gmock/gmock.h>

#include "language/scope_index.h"
#include "module/families.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

void doNothing(asIScriptGeneric*) {}

class Predefined : public ScriptFixture {
  protected:
    /// "kind path(parameters)" of everything that a reader finds.
    static std::vector<std::string> readBack(std::string text) {
        // Scripts have no templates of their own.
        if (const auto list = text.find("array<T> {"); list != std::string::npos)
            text.erase(list + 5, 3);
        const ScopeIndex index(text);
        std::vector<std::string> found;
        for (std::size_t i = 0; i < index.declarations().size(); ++i) {
            const Declaration& one = index.declarations()[i];
            if (one.kind == DeclarationKind::parameter) continue;
            found.push_back(std::to_string(static_cast<int>(one.kind)) + " " +
                            index.pathOf(static_cast<int>(i)) + index.oneLine(one.parameters));
        }
        return found;
    }
    static std::string row(DeclarationKind kind, const std::string& rest) {
        return std::to_string(static_cast<int>(kind)) + " " + rest;
    }
};

TEST_F(Predefined, HoldsWhatAHostHasRegisteredWhereItStands) {
    const auto native = asFUNCTION(doNothing);
    static double number = 0;
    engine()->SetDefaultNamespace("Deep::Inside");
    engine()->RegisterEnum("Colour");
    engine()->RegisterEnumValue("Colour", "red", -7);
    engine()->RegisterObjectType("Point", 8, asOBJ_VALUE | asOBJ_POD);
    engine()->RegisterObjectProperty("Point", "const int x", 0);
    engine()->RegisterObjectBehaviour("Point", asBEHAVE_CONSTRUCT, "void f(int x, int y = 2)",
                                      native, asCALL_GENERIC);
    engine()->RegisterGlobalFunction("int twice(int n = 1)", native, asCALL_GENERIC);
    engine()->RegisterGlobalProperty("const double pi", &number);
    engine()->SetDefaultNamespace("");
    engine()->RegisterObjectType("Node", 0, asOBJ_REF | asOBJ_NOCOUNT);
    engine()->RegisterObjectBehaviour("Node", asBEHAVE_FACTORY, "Node@ f(const string &in name)",
                                      native, asCALL_GENERIC);
    engine()->RegisterObjectMethod("Node", "int get_size() const property", native, asCALL_GENERIC);
    engine()->RegisterFuncdef("bool Test(const Deep::Inside::Point &in, Node@)");
    engine()->RegisterTypedef("real", "double");
    const std::string text = predefinedText(*engine(), allFamilies());
    using Kind = DeclarationKind;
    const std::vector<std::string> found = readBack(text);
    for (const std::string& wanted :
         {row(Kind::enumType, "Deep::Inside::Colour"),
          row(Kind::enumValue, "Deep::Inside::Colour::red"),
          row(Kind::constructor, "Deep::Inside::Point::Point(int x, int y = 2)"),
          row(Kind::memberVariable, "Deep::Inside::Point::x"),
          row(Kind::function, "Deep::Inside::twice(int n = 1)"),
          row(Kind::globalVariable, "Deep::Inside::pi"),
          row(Kind::constructor, "Node::Node(const string&in name)"),
          row(Kind::method, "Node::get_size()"), row(Kind::typeAlias, "real"),
          row(Kind::functionType, "Test(const Deep::Inside::Point&in, Node@)"),
          row(Kind::functionType, "array::less(const T&in a, const T&in b)"),
          row(Kind::constructor, "array::array(uint length)"),
          row(Kind::function, "Print(string&in)")})
        EXPECT_EQ(std::count(found.begin(), found.end(), wanted), 1) << wanted << "\n" << text;
    EXPECT_THAT(text, HasSubstr("red = -7"));
    EXPECT_THAT(text, HasSubstr("int get_size() const property;"));
    EXPECT_THAT(text, Not(HasSubstr("$")));
}

/// Each function with its sentence of the manual in front of it.
TEST_F(Predefined, HasTheManualsSentences) {
    const std::string text = predefinedText(*engine(), allFamilies());
    EXPECT_THAT(text, HasSubstr("    // The number of elements.\n    uint length() const;\n"));
    const std::vector<std::string> found = readBack(text);
    std::string missing;
    for (asUINT i = 0; i < engine()->GetGlobalFunctionCount(); ++i) {
        const std::string name = engine()->GetGlobalFunctionByIndex(i)->GetName();
        const std::string begin = row(DeclarationKind::function, name + "(");
        const auto is = [&](const std::string& one) { return one.starts_with(begin); };
        if (std::none_of(found.begin(), found.end(), is)) missing += name + " ";
    }
    EXPECT_EQ(missing, "");
}

}  // namespace
}  // namespace korvant::test
