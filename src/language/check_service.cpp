// The service behind diagnostics.h: a thread that feeds the compile worker.
#include <thread>

#include "language/checker.h"
#include "language/diagnostics.h"
#include "language/safe_compiler.h"
#include "language/window_work.h"

namespace korvant {

namespace {

class WorkerService final : public CheckService {
  public:
    WorkerService(asIScriptEngine& engine, Poster poster)
        : work_(std::move(poster)), compiler_(setupFor(engine)), thread_([this] { work(); }) {}

    ~WorkerService() override {
        work_.leave();
        compiler_.worker().leave();
        thread_.join();
    }

    void onResult(Callback callback) override { callback_ = std::move(callback); }

    void check(std::uint64_t version, std::string text) override {
        work_.put(0, {version, std::move(text)});
        compiler_.worker().interrupt();
    }

  private:
    struct Request {
        std::uint64_t version;
        std::string text;
    };

    CompileWorker::Setup setupFor(asIScriptEngine& engine) {
        CompileWorker::Setup setup = workerSetup(engine);
        setup.newer = [this] { return work_.waits(); };
        return setup;
    }

    void work() {
        const auto idle = [this] {
            if (!compiler_.worker().canIdle()) return false;
            compiler_.worker().idle();
            return true;
        };
        while (const auto request = work_.next(idle)) answer(*request);
    }

    void answer(const Request& request) {
        SafeCompiler::Outcome outcome = compiler_.build(request.text);
        CheckResult result;
        result.version = request.version;
        result.complete = outcome.known;
        result.builds = outcome.builds;
        if (outcome.known)
            result.diagnostics = diagnosticsOf(outcome.messages, request.text);
        else if (!compiler_.worker().problem().empty() && !said_)
            result.note = compiler_.worker().problem();
        said_ = said_ || !result.note.empty();
        work_.post([this, result = std::move(result)] {
            if (callback_) callback_(result);
        });
    }

    Callback callback_;  ///< on the window's thread only
    WindowWork<Request, 1> work_;
    bool said_ = false;
    SafeCompiler compiler_;
    std::thread thread_;
};

}  // namespace

std::unique_ptr<CheckService> makeCheckService(asIScriptEngine& engine,
                                               CheckService::Poster poster) {
    return std::make_unique<WorkerService>(engine, std::move(poster));
}

}  // namespace korvant
