// A host with a C++ run-time library of its own beside the module's. It hands over and takes back
// nothing that one of them allocates: the engine's interface, numbers, and texts that stay where
// they are. Entry points that take std::string are not for it.
#include <korvantide/host_interface.h>
#include <korvantide/korvantide.h>

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

int problems = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    ++problems;
    std::fprintf(stderr, "other_runtime: %s\n", what);
}

/// Builds without an entry point that takes a std::string.
bool build(asIScriptEngine* engine, const std::string& text) {
    asIScriptModule* module = engine->GetModule("main", asGM_ALWAYS_CREATE);
    module->AddScriptSection("script", text.data(), text.size(), 0);
    return module->Build() >= 0;
}

int run(asIScriptEngine* engine, asIScriptContext* context) {
    context->Prepare(engine->GetModule("main")->GetFunctionByDecl("int main()"));
    return RunScript(context);
}

/// This host's own library throws, catches and allocates between the calls.
std::vector<std::string> own;

int addOwn(int number) {
    try {
        own.push_back("a text of this host that needs memory of its own " + std::to_string(number));
        if (number > 2) throw std::runtime_error(own.back());
    } catch (const std::exception& error) {
        return static_cast<int>(std::strlen(error.what()));
    }
    return number;
}

void runScripts(asIScriptEngine* engine, asIScriptContext* context) {
    expect(build(engine,
                 "int main() { string s; for (int i = 0; i < 5; i++) s += addOwn(i) + \",\";"
                 " int[] a = {3, 1, 2}; a.sortAsc(); Object o; o.addProperty(\"d\", \"D\","
                 " 1.5, \"m\", true); double d; o.getProperty(\"d\", d);"
                 " return s.length() + a[2] + int(2 * d); }"),
           "a script does not build");
    expect(run(engine, context) == asEXECUTION_FINISHED, "a script does not run");
    expect(context->GetReturnDWord() == 12 + 3 + 3, "a script has another result");

    expect(build(engine, "int main() { string s; s[7] = 1; return 0; }"), "another does not build");
    expect(run(engine, context) == asEXECUTION_EXCEPTION, "no exception");
    expect(std::strcmp(context->GetExceptionString(), "Out of range") == 0, "another exception");

    expect(!build(engine, "int main() { return pump(); }"), "a faulty script builds");
    KorvantBuildMessage message{};
    message.size = sizeof message;
    expect(CountBuildMessages() > 0 && GetBuildMessage(0, &message) == 1, "no message");
    expect(message.text && message.row == 1, "a message without place and text");
}

}  // namespace

int main() {
    KorvantLimits limits{};
    limits.size = sizeof limits;
    GetScriptLimits(&limits);
    limits.hardCeilingMs = 20000;
    expect(SetScriptLimits(&limits) == 1, "no limits");
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = ConfigureScriptEngine(engine);
    if (!context) return 2;
    engine->RegisterGlobalFunction("int addOwn(int)", asFUNCTION(addOwn), asCALL_CDECL);
    runScripts(engine, context);
    expect(own.size() == 5, "a call of the host was lost");
    ReleaseScriptEngine(engine);
    context->Release();
    engine->ShutDownAndRelease();
    return problems == 0 ? 0 : 1;
}
