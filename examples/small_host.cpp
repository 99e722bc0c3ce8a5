// A complete host: it runs a script with limits and says how that went, or opens the editor on it.
//   small_host [SCRIPT.as]          runs the script, or a small one of its own
//   small_host --edit SCRIPT.as     opens it in the editor
#include <korvantide/host_interface.h>
#include <korvantide/korvantide.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace {

const char kGreeting[] =
    "int main() { note(\"asking \" + pumpName(7));\n"
    "Print(pumpSpeed() + \" turns a minute\\n\"); return 0; }";

// What this application lets scripts ask. A text comes as std::string.
int pumpSpeed() {
    return 1450;
}

void note(const std::string& text) {
    std::fprintf(stderr, "note: %s\n", text.c_str());
}

/// A text for scripts is an object of theirs, which begins with a std::string. Its reference is the
/// script's from here on; null would be a null handle.
std::string* pumpName(int number) {
    asIScriptEngine* engine = asGetActiveContext()->GetEngine();
    void* made = engine->CreateScriptObject(engine->GetTypeInfoByName("string"));
    auto* name = static_cast<std::string*>(made);
    if (name) *name = "P-" + std::to_string(number);
    return name;
}

void registerFunctions(asIScriptEngine* engine) {
    engine->RegisterGlobalFunction("int pumpSpeed()", asFUNCTION(pumpSpeed), asCALL_CDECL);
    engine->RegisterGlobalFunction("void note(const string &in text)", asFUNCTION(note),
                                   asCALL_CDECL);
    engine->RegisterGlobalFunction("string@ pumpName(int number)", asFUNCTION(pumpName),
                                   asCALL_CDECL);
}

bool readText(const char* path, std::string& text) {
    std::FILE* file = std::fopen(path, "rb");
    char bytes[4096];
    for (size_t count = sizeof bytes; file && count == sizeof bytes;) {
        count = std::fread(bytes, 1, sizeof bytes, file);
        text.append(bytes, count);
    }
    const bool good = file && !std::ferror(file);
    if (!good) std::fprintf(stderr, "cannot read %s: %s\n", path, std::strerror(errno));
    if (file) std::fclose(file);
    return good;
}

void setLimits() {
    KorvantLimits limits{};
    limits.size = sizeof limits;
    GetStrictScriptLimits(&limits);
    limits.hardCeilingMs = 10 * 60 * 1000;  // this host's users may think for ten minutes
    SetScriptLimits(&limits);
}

void printBuildMessages() {
    static const char* const kKinds[] = {"error", "warning", "information"};
    for (uint32_t i = 0; i < CountBuildMessages(); ++i) {
        KorvantBuildMessage message{};
        message.size = sizeof message;
        GetBuildMessage(i, &message);
        std::fprintf(stderr, "line %d, column %d: %s: %s\n", message.row, message.column,
                     kKinds[message.kind], message.text);
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

int edit(asIScriptEngine* engine, asIScriptContext* context, const char* path) {
    std::string script;
    if (!readText(path, script)) return 66;
    RunScriptEditor(engine, context, script, path);
    const char* file = GetEditedFile();  // another file's text is not this one's
    if (file && !*file) std::ofstream(path, std::ios::binary) << script;
    return 0;
}

int runFile(asIScriptEngine* engine, asIScriptContext* context, const char* path) {
    std::string script;
    return readText(path, script) ? run(engine, context, script) : 66;
}

}  // namespace

int main(int argc, char** argv) {
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = ConfigureScriptEngine(engine);
    if (!context) return 100;
    registerFunctions(engine);
    setLimits();
    int result = 0;
    if (argc == 3 && std::string(argv[1]) == "--edit")
        result = edit(engine, context, argv[2]);
    else
        result = argc > 1 ? runFile(engine, context, argv[1]) : run(engine, context, kGreeting);

    ReleaseScriptEngine(engine);
    context->Release();
    engine->ShutDownAndRelease();
    return result;
}
