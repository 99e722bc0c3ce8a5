#include "language/worker_program.h"

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "base/system/child_process.h"
#include "host/engine/engine_build.h"
#include "host/engine/engine_memory.h"
#include "host/run/script_session.h"
#include "language/api_description.h"
#include "language/assist_question.h"
#include "language/worker_frames.h"

namespace korvant {

namespace {

/// Every build uses numbers of types up, of which an engine has 26 bits.
constexpr int kBuildsOfAnEngine = 2000;

/// What has come and is not done; the reader fills it, the compiler's thread empties it.
class Inbox {
  public:
    void put(WorkerFrame frame) {
        const std::lock_guard lock(mutex_);
        auto& place = frame.kind == WorkerFrame::Kind::engine ? engine_
                      : frame.kind == WorkerFrame::Kind::ask  ? ask_
                                                              : build_;
        place = std::move(frame);
        wake_.notify_one();
    }
    /// An engine comes before the texts that are for it.
    WorkerFrame take() {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return engine_ || build_ || ask_; });
        auto& place = engine_ ? engine_ : ask_ ? ask_ : build_;
        WorkerFrame frame = std::move(*place);
        place.reset();
        return frame;
    }

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    std::optional<WorkerFrame> engine_, build_, ask_;
};

/// The process ends with the channel, in the middle of a build too.
void readFrames(Inbox& inbox) {
    WorkerFrames frames;
    char piece[64 << 10];
    while (const std::size_t got = readFromParent(piece, sizeof piece)) {
        frames.incoming().append(piece, got);
        while (auto frame = frames.next()) inbox.put(std::move(*frame));
        if (frames.broken()) break;
    }
    std::_Exit(0);
}

class Worker {
  public:
    Worker(asIScriptContext* (*configure)(asIScriptEngine*),
           std::span<const FunctionFamily> families)
        : configure_(configure), library_(families) {}

    void serve(const WorkerFrame& frame) {
        if (frame.kind == WorkerFrame::Kind::engine) {
            description_ = frame.payload;
            drop();
            forget();
        } else if (frame.kind == WorkerFrame::Kind::ask) {
            if (const auto request = readBuild(frame.payload)) answer(*request);
        } else if (const auto request = readBuild(frame.payload)) {
            build(*request);
        }
    }

  private:
    void build(const BuildRequest& request) {
        if (engine_ == nullptr || ++builds_ > kBuildsOfAnEngine) make();
        if (engine_ == nullptr) return;
        ScriptSession& session = moduleSession();
        const bool built = session.check(engine_, std::string(request.text)) == 1;
        const bool broken = session.broken(engine_);
        const BuildEnd end = broken  ? BuildEnd::endedByLimits
                             : built ? BuildEnd::built
                                     : BuildEnd::failed;
        writeToParent(frameBytes(WorkerFrame::Kind::built,
                                 builtPayload(request.number, end, session.buildMessages())));
        if (broken) drop();
    }

    /// What the names of the last text mean is kept: most questions are about the same text.
    void answer(const BuildRequest& request) {
        const auto asked = readQuestion(request.text);
        if (!asked) return fail("A question cannot be read");
        if (oracle_ == nullptr || ++texts_ > kBuildsOfAnEngine) {
            forget();
            asIScriptEngine* const engine = mirror();
            if (engine == nullptr) return;
            oracle_ = std::make_unique<OracleEngine>(engine, [this] { return mirror(); });
        }
        if (meanings_ == nullptr || meanings_->index().document().text() != asked->text) {
            meanings_ = nullptr;
            meanings_ = std::make_unique<Meanings>(
                *oracle_, std::make_shared<ScopeIndex>(std::string(asked->text)));
        }
        const AssistAnswer found = answerQuestion(*oracle_, *meanings_, library_, asked->question);
        writeToParent(frameBytes(WorkerFrame::Kind::answer,
                                 buildPayload(request.number, answerBytes(found))));
    }

    void forget() {
        meanings_ = nullptr;
        oracle_ = nullptr;
        texts_ = 0;
    }

    void make() {
        drop();
        engine_ = mirror();
    }

    /// Null, and the reason is told, when the engine cannot be had.
    asIScriptEngine* mirror() {
        Limits limits;
        const auto json = readEngine(description_, limits);
        const auto api = json ? apiFromJson(*json) : std::nullopt;
        asIScriptEngine* const engine = api ? asCreateScriptEngine() : nullptr;
        if (engine == nullptr) return fail("The engine's description cannot be read"), nullptr;
        limits.guardBuilds = false;  // this is the guard
        moduleSession().setLimits(limits);
        asIScriptContext* const context = configure_(engine);
        if (context != nullptr) context->Release();
        if (context == nullptr || mirrorEngine(*api, *engine) < 0)
            return fail("The engine cannot be mirrored"), nullptr;
        return engine;
    }

    static void fail(std::string_view reason) {
        writeToParent(frameBytes(WorkerFrame::Kind::failed, reason));
    }

    /// An engine whose compiler was ended is left lying.
    void drop() {
        builds_ = 0;
        if (engine_ == nullptr) return;
        const bool broken = moduleSession().broken(engine_);
        moduleSession().release(engine_);
        if (!broken) engine_->ShutDownAndRelease();
        engine_ = nullptr;
    }

    asIScriptContext* (*configure_)(asIScriptEngine*);
    Documentation library_;
    std::string description_;
    asIScriptEngine* engine_ = nullptr;
    int builds_ = 0;
    std::unique_ptr<OracleEngine> oracle_;  ///< for questions, on an engine of its own
    std::unique_ptr<Meanings> meanings_;
    int texts_ = 0;
};

}  // namespace

int runCompileWorker(asIScriptContext* (*configure)(asIScriptEngine*),
                     std::span<const FunctionFamily> families) {
    ownEngineMemory();
    const char hardened = engineIsHardened() ? 1 : 0;
    writeToParent(frameBytes(WorkerFrame::Kind::ready, {&hardened, 1}));
    static Inbox inbox;
    std::thread(readFrames, std::ref(inbox)).detach();
    for (Worker worker(configure, families);;) worker.serve(inbox.take());
}

}  // namespace korvant
