// A complete host: it runs a script with limits and says how that went, or opens the editor on it.
//   small_host [SCRIPT.as]          runs the script, or a small one of its own
//   small_host --edit SCRIPT.as     opens it in the editor
#include <korvantide/host_interface.h>
#include <korvantide/korvantide.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

const char kGreeting[] = "int main() { Print(pumpSpeed() + \" turns a minute\\n\"); return 0; }";

/// What this application lets scripts ask.
int pumpSpeed() {
    return 1450;
}

std::string readText(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void setLimits() {
    KorvantLimits limits{};
    limits.size = sizeof limits;
    GetStrictScriptLimits(&limits);
    limits.hardCeilingMs = 10 * 60 * 1000;  // this host's users may think for ten minutes
    SetScriptLimits(&limits);
}

void printBuildMessages() {
    for (uint32_t i = 0; i < CountBuildMessages(); ++i) {
        KorvantBuildMessage message{};
        message.size = sizeof message;
        GetBuildMessage(i, &message);
        std::fprintf(stderr, "line %d: %s\n", message.row, message.text);
    }
}

int run(asIScriptEngine* engine, asIScriptContext* context, const std::string& script) {
    RunApplication(engine, context, script, nullptr);
    KorvantRunResult result{};
    result.size = sizeof result;
    GetLastRunResult(&result);
    if (result.end == KORVANT_RUN_NOT_BUILT)
        printBuildMessages();
    else if (result.end != KORVANT_RUN_FINISHED)
        std::fprintf(stderr, "line %d: %s\n", result.line, result.message);
    return result.end;
}

void edit(asIScriptEngine* engine, asIScriptContext* context, const char* path) {
    std::string script = readText(path);
    RunScriptEditor(engine, context, script, path);
    const char* file = GetEditedFile();  // another file's text is not this one's
    if (file && !*file) std::ofstream(path, std::ios::binary) << script;
}

}  // namespace

int main(int argc, char** argv) {
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = ConfigureScriptEngine(engine);
    if (!context) return 100;
    engine->RegisterGlobalFunction("int pumpSpeed()", asFUNCTION(pumpSpeed), asCALL_CDECL);
    setLimits();
    int result = 0;
    if (argc == 3 && std::string(argv[1]) == "--edit")
        edit(engine, context, argv[2]);
    else
        result = run(engine, context, argc > 1 ? readText(argv[1]) : kGreeting);

    ReleaseScriptEngine(engine);
    context->Release();
    engine->ShutDownAndRelease();
    return result;
}
