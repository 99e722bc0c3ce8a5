// A host that links the module: an engine, a property object of its own, a worker thread, a run.
#include <korvantide/cthread.h>
#include <korvantide/host_interface.h>
#include <korvantide/korvantide.h>
#include <korvantide/script_array.h>
#include <korvantide/script_object.h>

#include <cstdio>

namespace {

class Worker : public CThread {
  public:
    ~Worker() { Stop(1); }

  protected:
    std::uint32_t Main() override { return CThread::Main(); }
};

int runSum(asIScriptEngine* engine, asIScriptContext* context) {
    if (CompileScript(engine, "int main() { Print(\"installed\\n\"); return 6 * 7; }") != 1)
        return 1;
    asIScriptFunction* function = engine->GetModule("main")->GetFunctionByDecl("int main()");
    context->Prepare(function);
    if (RunScript(context) != asEXECUTION_FINISHED) return 2;
    return context->GetReturnDWord() == 42 ? 0 : 3;
}

}  // namespace

int main() {
    KorvantLimits limits{};
    limits.size = sizeof limits;
    GetScriptLimits(&limits);
    limits.callDepth = 500;
    if (SetScriptLimits(&limits) != 1) return 4;

    ScriptObject object;
    object.addProperty("depth", "Depth", "m", 12, true);

    Worker worker;
    if (!worker.Start()) return 5;
    worker.Stop(1);

    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = ConfigureScriptEngine(engine);
    if (!context) return 6;
    ScriptArray* const depths = ScriptArray::Create(engine->GetTypeInfoByDecl("int[]"), 3);
    const bool filled = depths && depths->InsertLast(depths->At(0)) && depths->GetSize() == 4;
    if (depths) depths->Release();
    const int result = filled ? runSum(engine, context) : 7;
    ReleaseScriptEngine(engine);
    context->Release();
    engine->ShutDownAndRelease();
    if (result != 0) std::fprintf(stderr, "installed_host: %d\n", result);
    return result;
}
