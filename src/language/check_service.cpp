// The service behind diagnostics.h: a thread that feeds the compile worker.
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "language/checker.h"
#include "language/diagnostics.h"
#include "language/safe_compiler.h"

namespace korvant {

namespace {

/// Lives on while a result is on its way, so that one that comes too late finds nobody.
struct Listener {
    CheckService::Callback callback;
    bool gone = false;  ///< on the window's thread only
};

class WorkerService final : public CheckService {
  public:
    WorkerService(asIScriptEngine& engine, Poster poster)
        : poster_(std::move(poster)), compiler_(setupFor(engine)), thread_([this] { work(); }) {}

    ~WorkerService() override {
        listener_->gone = true;
        {
            const std::lock_guard lock(mutex_);
            quit_ = true;
        }
        wake_.notify_one();
        compiler_.worker().leave();
        thread_.join();
    }

    void onResult(Callback callback) override { listener_->callback = std::move(callback); }

    void check(std::uint64_t version, std::string text) override {
        {
            const std::lock_guard lock(mutex_);
            waiting_ = {version, std::move(text)};
        }
        wake_.notify_one();
        compiler_.worker().interrupt();
    }

  private:
    struct Request {
        std::uint64_t version;
        std::string text;
    };

    CompileWorker::Setup setupFor(asIScriptEngine& engine) {
        CompileWorker::Setup setup = workerSetup(engine);
        setup.newer = [this] {
            const std::lock_guard lock(mutex_);
            return quit_ || waiting_.has_value();
        };
        return setup;
    }

    void work() {
        while (const auto request = next()) answer(*request);
    }

    /// The newest text; nothing at the end.
    std::optional<Request> next() {
        for (;;) {
            {
                const std::lock_guard lock(mutex_);
                if (quit_) return std::nullopt;
                if (waiting_) {
                    auto request = std::move(waiting_);
                    waiting_.reset();
                    return request;
                }
            }
            if (compiler_.worker().canIdle()) {
                compiler_.worker().idle();
                continue;
            }
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return quit_ || waiting_; });
        }
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
        poster_([listener = listener_, result = std::move(result)] {
            if (!listener->gone && listener->callback) listener->callback(result);
        });
    }

    Poster poster_;
    std::shared_ptr<Listener> listener_ = std::make_shared<Listener>();
    std::mutex mutex_;
    std::condition_variable wake_;
    std::optional<Request> waiting_;
    bool quit_ = false;
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
