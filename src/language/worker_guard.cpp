#include "language/worker_guard.h"

#include <cstdio>
#include <memory>

#include "host/engine/engine_build.h"
#include "language/safe_compiler.h"

namespace korvant {

namespace {

class WorkerGuard final : public BuildGuard {
  public:
    bool admits(asIScriptEngine& engine, const std::string& text,
                BuildMessages& messages) noexcept override {
        if (engineIsHardened(engine)) return true;
        try {
            return survives(engine, text, messages);
        } catch (...) {
            return true;  // without memory for a question there is none
        }
    }

  private:
    /// What builds and what the compiler has words for, it says itself: once more, and in full.
    bool survives(asIScriptEngine& engine, const std::string& text, BuildMessages& messages) {
        prepare(engine);
        const SafeCompiler::Outcome outcome = compiler_->build(text);
        if (!outcome.known) sayOnce(compiler_->worker().problem());
        if (!outcome.known || !outcome.died) return true;
        for (const BuildMessage& message : outcome.messages.all())
            messages.add(message.plain, message.row, message.column, message.kind);
        return false;
    }

    /// A host may have registered something since the last build.
    void prepare(asIScriptEngine& engine) {
        CompileWorker::Setup setup = workerSetup(engine);
        std::string made = setup.libraryFolder + '\n' + enginePayload(setup.limits, setup.api);
        if (compiler_ != nullptr && made == made_) return;
        compiler_.reset();
        compiler_ = std::make_unique<SafeCompiler>(setup);
        made_ = std::move(made);
    }

    void sayOnce(const std::string& problem) {
        if (said_) return;
        said_ = true;
        std::fprintf(stderr, "korvantide: %s Scripts are compiled without this protection.\n",
                     problem.c_str());
    }

    std::unique_ptr<SafeCompiler> compiler_;
    std::string made_;
    bool said_ = false;
};

}  // namespace

BuildGuard& workerGuard() {
    static auto* const guard = new WorkerGuard;
    return *guard;
}

}  // namespace korvant
