// The script type `string` against the engine's own std::string add-on and against a type whose
// operations do nothing; numbers as text against the C library.
#include <angelscript/scriptstdstring.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_map>

#include "base/text/number_text.h"
#include "host/engine/engine_compat.h"
#include "host/engine/native_call.h"
#include "host/engine/script_string.h"
#include "host/library/string_type.h"
#include "ratio_table.h"

RATIO_ROW("Strings", "our reference type / the engine's std::string value type", 0.83,
          "string_ours/", "string_addon/", "calls became cheap, copies of bytes did not");
RATIO_ROW("Strings", "our reference type / a type whose operations return at once", 1.08,
          "string_ours/", "string_nothing/", "calls of what does nothing became cheap");
RATIO_ROW("Strings", "a type whose operations return at once / the engine's value type", 0,
          "string_nothing/", "string_addon/");
RATIO_ROW("Strings", "double to text / \"%g\"", 0.25, "number_double", "number_percent_g");
RATIO_ROW("Strings", "int to text / \"%d\"", 0.15, "number_int", "number_percent_d");

namespace {

struct Statement {
    const char* name;
    const char* text;
};

const Statement kStatements[] = {
    {"assign", "s = a;"},
    {"assign_literal", "s = \"hello\";"},
    {"construct", "string t = a;"},
    {"construct_literal", "string t = \"hello\";"},
    {"add", "s = a + b;"},
    {"add_three", "s = a + b + c;"},
    {"add_long", "s = l + l;"},
    {"append", "s = \"\"; s += a; s += b;"},
    {"equal", "if (a == b) n++;"},
    {"less", "if (a < b) n++;"},
    {"read_index", "n += a[2];"},
    {"write_index", "a[2] = 65;"},
    {"length", "n += a.length();"},
    {"pass_native", "take(a);"},
    {"pass_literal", "take(\"hello\");"},
    {"pass_script", "n += size(a);"},
    {"return_script", "s = give(n);"},
};

std::string scriptOf(const Statement& statement) {
    return "uint size(const string &in s) { return s.length(); }\n"
           "string give(uint n) { return \"given\"; }\n"
           "void main() { string a = \"first\", b = \"second\", c = \"third\", s; uint n = 0;\n"
           "string l = \"a text that does not fit into the object itself but needs a buffer\";\n"
           "for (int i = 0; i < 2000; i++) { " +
           std::string(statement.text) + " } }";
}

void takeOurs(const korvant::ScriptString&) {}
void takeAddon(const std::string&) {}

void registerOurs(asIScriptEngine* engine) {
    korvant::registerStringType(engine);
    engine->RegisterGlobalFunction("void take(string &in)", asFUNCTION(takeOurs), asCALL_CDECL);
}

void registerAddon(asIScriptEngine* engine) {
    RegisterStdString(engine);
    engine->RegisterGlobalFunction("void take(string &in)", asFUNCTION(takeAddon), asCALL_CDECL);
}

/// Everything that the engine calls for a string, without doing it.
struct Nothing {
    std::uint8_t byte = 0;
    void count() {}
    Nothing* assign(const Nothing&) { return this; }
    bool equals(const Nothing&) const { return false; }
    int compare(const Nothing&) const { return 0; }
    Nothing* add(const Nothing&) { return this; }
    std::uint8_t* index(std::uint32_t) { return &byte; }
    std::uint32_t length() const { return 5; }
};

Nothing theOne;

Nothing* makeNothing() {
    return &theOne;
}
Nothing* copyNothing(const Nothing&) {
    return &theOne;
}
void takeNothing(const Nothing&) {}

struct NothingLiterals final : asIStringFactory {
    const void* GetStringConstant(const char*, asUINT) override { return &theOne; }
    int ReleaseStringConstant(const void*) override { return 0; }
    int GetRawStringData(const void*, char*, asUINT* length) const override {
        if (length != nullptr) *length = 0;
        return 0;
    }
};

void registerNothing(asIScriptEngine* engine) {
    static NothingLiterals literals;
    const auto method = [&](const char* declaration, asSFuncPtr function) {
        engine->RegisterObjectMethod("string", declaration, function, asCALL_THISCALL);
    };
    const auto behaviour = [&](asEBehaviours kind, const char* declaration, asSFuncPtr function,
                               asDWORD convention) {
        engine->RegisterObjectBehaviour("string", kind, declaration, function, convention);
    };
    engine->RegisterObjectType("string", 0, asOBJ_REF);
    behaviour(asBEHAVE_FACTORY, "string@ f()", asFUNCTION(makeNothing), asCALL_CDECL);
    behaviour(asBEHAVE_FACTORY, "string@ f(const string &in)", asFUNCTION(copyNothing),
              asCALL_CDECL);
    behaviour(asBEHAVE_ADDREF, "void f()", asMETHOD(Nothing, count), asCALL_THISCALL);
    behaviour(asBEHAVE_RELEASE, "void f()", asMETHOD(Nothing, count), asCALL_THISCALL);
    method("string &opAssign(const string &in)", asMETHOD(Nothing, assign));
    method("string &opAddAssign(const string &in)", asMETHOD(Nothing, assign));
    engine->RegisterStringFactory("string", &literals);
    method("bool opEquals(const string &in) const", asMETHOD(Nothing, equals));
    method("int opCmp(const string &in) const", asMETHOD(Nothing, compare));
    method("string@ opAdd(const string &in) const", asMETHOD(Nothing, add));
    method("uint8 &opIndex(uint)", asMETHOD(Nothing, index));
    method("uint length() const", asMETHOD(Nothing, length));
    engine->RegisterGlobalFunction("void take(string &in)", asFUNCTION(takeNothing), asCALL_CDECL);
}

void run(benchmark::State& state, const Statement& statement,
         void (*registerType)(asIScriptEngine*)) {
    asIScriptEngine* const engine = asCreateScriptEngine();
    registerType(engine);
    asIScriptModule* const module = engine->GetModule("main", asGM_ALWAYS_CREATE);
    const std::string text = scriptOf(statement);
    module->AddScriptSection("script", text.data(), text.size());
    if (module->Build() < 0) std::abort();
    asIScriptContext* const context = engine->CreateContext();
    for (auto _ : state) {
        context->Prepare(module->GetFunctionByName("main"));
        if (context->Execute() != asEXECUTION_FINISHED) std::abort();
    }
    context->Release();
    engine->ShutDownAndRelease();
}

const bool registered = [] {
    const std::pair<const char*, void (*)(asIScriptEngine*)> types[] = {
        {"string_ours/", registerOurs},
        {"string_addon/", registerAddon},
        {"string_nothing/", registerNothing}};
    for (const Statement& statement : kStatements)
        for (const auto& [name, type] : types)
            benchmark::RegisterBenchmark((std::string(name) + statement.name).c_str(),
                                         [&statement, type = type](benchmark::State& state) {
                                             run(state, statement, type);
                                         });
    return true;
}();

const double kNumbers[] = {0.5, 1234567.0, 3.14159265358979, 1e-7, 42.0, 123.456, 1e100, -0.001};
const int kIntegers[] = {0, 7, -42, 1234567, 2147483647, 100, 99999, -1};

void doubles(benchmark::State& state) {
    for (auto _ : state)
        for (const double number : kNumbers)
            benchmark::DoNotOptimize(korvant::formatGeneral(number));
}
BENCHMARK(doubles)->Name("number_double");

void percentG(benchmark::State& state) {
    char text[64];
    for (auto _ : state)
        for (const double number : kNumbers) {
            std::snprintf(text, sizeof text, "%g", number);
            benchmark::DoNotOptimize(std::string(text));
        }
}
BENCHMARK(percentG)->Name("number_percent_g");

void integers(benchmark::State& state) {
    for (auto _ : state)
        for (const int number : kIntegers) benchmark::DoNotOptimize(korvant::formatInt(number));
}
BENCHMARK(integers)->Name("number_int");

void percentD(benchmark::State& state) {
    char text[64];
    for (auto _ : state)
        for (const int number : kIntegers) {
            std::snprintf(text, sizeof text, "%d", number);
            benchmark::DoNotOptimize(std::string(text));
        }
}
BENCHMARK(percentD)->Name("number_percent_d");

}  // namespace
