// A mirror of an engine says of every text what the engine itself says, and runs nothing.
#include "language/checker.h"

#include <angelscript/scriptany.h>
#include <angelscript/scriptdictionary.h>
#include <angelscript/scriptgrid.h>
#include <angelscript/scripthandle.h>
#include <angelscript/weakref.h>
#include <gmock/gmock.h>

#include "language/api_description.h"
#include "module/families.h"
#include "support/script_files.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

void doNothing(asIScriptGeneric*) {}

/// What a host may have besides: enumerations, constructors, properties, namespaces, masks.
void registerHostTypes(asIScriptEngine* engine) {
    const auto native = asFUNCTION(doNothing);
    static double number = 0;
    RegisterScriptDictionary(engine);
    RegisterScriptAny(engine);
    RegisterScriptGrid(engine);
    RegisterScriptHandle(engine);
    RegisterScriptWeakRef(engine);
    ASSERT_GE(engine->RegisterObjectType("Point", 8, asOBJ_VALUE | asOBJ_POD), 0);
    engine->RegisterObjectProperty("Point", "const int x", 0);
    engine->RegisterObjectProperty("Point", "int y", 4);
    engine->RegisterObjectBehaviour("Point", asBEHAVE_CONSTRUCT, "void f(int x, int y = 2)", native,
                                    asCALL_GENERIC);
    engine->RegisterObjectBehaviour("Point", asBEHAVE_CONSTRUCT, "void f(double) explicit", native,
                                    asCALL_GENERIC);
    engine->RegisterObjectBehaviour("Point", asBEHAVE_LIST_CONSTRUCT, "void f(int&in) {int, int}",
                                    native, asCALL_GENERIC);
    engine->RegisterInterface("Shape");
    engine->RegisterInterfaceMethod("Shape", "double area(int parts = 3) const");
    engine->RegisterEnum("Colour");
    engine->RegisterEnumValue("Colour", "red", 7);
    engine->RegisterFuncdef("bool Test(const Point &in, Shape@)");
    engine->RegisterTypedef("real", "double");
    engine->SetDefaultNamespace("Deep::Inside");
    engine->RegisterGlobalFunction("int twice(int n = 1)", native, asCALL_GENERIC);
    engine->RegisterGlobalProperty("const double pi", &number);
    engine->SetDefaultNamespace("");
    engine->RegisterGlobalFunction("int get_size() property", native, asCALL_GENERIC);
    engine->SetDefaultAccessMask(2);
    engine->RegisterGlobalFunction("void hidden()", native, asCALL_GENERIC);
    engine->SetDefaultAccessMask(~0u);
}

class Checking : public ScriptFixture {
  protected:
    ~Checking() override {
        if (mirror_ != nullptr) {
            session().release(mirror_);
            mirror_->ShutDownAndRelease();
        }
    }
    /// A mirror by way of JSON, as another process makes it.
    asIScriptEngine& mirror() {
        if (mirror_ != nullptr) return *mirror_;
        const auto api = apiFromJson(apiToJson(describeEngine(*engine())));
        EXPECT_TRUE(api.has_value());
        mirror_ = asCreateScriptEngine();
        session().configure(mirror_, registrationOrder())->Release();
        EXPECT_EQ(mirrorEngine(*api, *mirror_), 0) << messages();
        return *mirror_;
    }
    std::string checked(const std::string& text) {
        session().check(&mirror(), text);
        return messages();
    }
    std::string compiled(const std::string& text) {
        session().compile(engine(), text);
        return messages();
    }

  private:
    asIScriptEngine* mirror_ = nullptr;
};

TEST_F(Checking, SaysWhatTheCompilerSaysOfEveryScript) {
    std::size_t checkedTexts = 0;
    for (const ScriptFile& file : allScriptFiles()) {
        // As they are, and with one thing broken in each.
        std::vector<std::string> texts{file.text};
        if (const auto middle = file.text.find(';', file.text.size() / 2);
            middle != std::string::npos) {
            texts.push_back(file.text);
            texts.back().erase(middle, 1);
            texts.push_back(file.text.substr(0, middle));
            texts.push_back(file.text);
            texts.back().insert(middle, " + unknownName");
        }
        for (const std::string& text : texts) {
            const std::string wanted = compiled(text);
            // What only running tells.
            if (wanted.find("aborted before") != std::string::npos ||
                wanted.find("Failed to initialize") != std::string::npos)
                continue;
            EXPECT_EQ(checked(text), wanted) << file.name;
            ++checkedTexts;
        }
    }
    EXPECT_GT(checkedTexts, 40u);
}

TEST_F(Checking, KnowsWhatTheHostHasRegistered) {
    registerHostTypes(engine());
    for (const char* body :
         {"Point p(1); p.x = 2; p.y = 3;", "Point p = {1, 2}; Point q = 2.5; Point r(2.5);",
          "dictionary d = {{\"a\", 1}, {\"b\", 2.5}}; int a = int(d[\"a\"]); d.no();",
          "grid<int> g(2, 3); g[1, 1] = 5; string s = g[0, 0]; g = 1;",
          "ref@ r; any a(5); weakref<Object> w; weakref<int> v;",
          "Colour c = red; c = 5; int i = c; i = Colour::blue;", "real r = Deep::Inside::pi;",
          "Deep::Inside::pi = 2; Deep::Inside::twice(\"x\"); twice();", "hidden();",
          "size = 3; int s = size + size();",
          "Test@ t = function(p, s) { return s.area() > p.x; };",
          "array<void> a; void[] b; int[] c = {1, \"x\"}; c.sort(function(a, b) { return a; });",
          "string s = 5; string t = \"a\" + 1 + \"b\"; t.noMethod(); s = t * 2; Print(1);"})
        EXPECT_EQ(checked(std::string("class S : Shape { }\nint main() {\n") + body + "\n}"),
                  compiled(std::string("class S : Shape { }\nint main() {\n") + body + "\n}"))
            << body;
}

TEST_F(Checking, RangesCoverTheWord) {
    for (const auto& [text, word] : std::vector<std::pair<std::string, std::string>>{
             {"int main() { return wrong; }", "wrong"},
             {"class W { int a; }\nint f(W w) { return w.other; }", ".other"},
             {"int main() {\n  Object o;\n  o . gone();\n}", "gone"},
             {"int main() { return nowhere::x; }", "nowhere"},
             {"int x = \"\xF0\x9F\x98\x80\";", "\"\xF0\x9F\x98\x80\""},
             {"Missing@ m;", "Missing"}}) {
        session().check(engine(), text);
        const auto found = diagnosticsOf(session().buildMessages(), text);
        ASSERT_FALSE(found.empty()) << text;
        const TextDocument document(text);
        const auto line = document.lineText(static_cast<std::uint32_t>(found[0].line - 1));
        const auto begin = static_cast<std::size_t>(found[0].column - 1);
        EXPECT_EQ(line.substr(begin, static_cast<std::size_t>(found[0].endColumn) - 1 - begin),
                  word)
            << text << "\n"
            << found[0].text;
    }
}

TEST_F(Checking, NothingOfAScriptIsExecuted) {
    const std::string script =
        "class C { C() { Print(\"made\"); } ~C() { Print(\"gone\"); } }\nC c;\n"
        "int said = say();\nint say() { Print(\"said\"); return 1; }\nint endless = f();\n"
        "int f() { while (true) {} return 1; }\nint main() { return 0; }\n";
    EXPECT_EQ(session().check(engine(), script), 1);
    EXPECT_EQ(console.output, "");
    EXPECT_EQ(engine()->GetModule("main"), nullptr);
}

TEST_F(Checking, GivesEachMessageItsPlaceAndItsContext) {
    Checker checker(session(), *engine());
    const CheckResult result =
        checker.check(3,
                      "int main() {\n  int a = unknownName + 1;\n  float b = 1.0;\n"
                      "  uint c = -1;\n  return a\n}\nvoid f(");
    EXPECT_EQ(result.version, 3u);
    EXPECT_FALSE(result.builds);
    ASSERT_FALSE(result.diagnostics.empty());
    for (const Diagnostic& diagnostic : result.diagnostics)
        EXPECT_EQ(diagnostic.text.find("Compiling"), std::string::npos);
    const CheckResult named =
        checker.check(4, "int main() {\n  int a = unknownName + 1;\n  return a;\n}\n");
    ASSERT_FALSE(named.diagnostics.empty());
    EXPECT_EQ(named.diagnostics[0],
              (Diagnostic{2, 11, 2, 22, Diagnostic::Kind::error, "No matching symbol 'unknownName'",
                          "Compiling int main()"}));
}

}  // namespace
}  // namespace korvant::test
