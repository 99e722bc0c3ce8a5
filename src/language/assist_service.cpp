#include "language/assist_service.h"

#include <thread>

#include "language/compile_worker.h"
#include "language/safe_compiler.h"
#include "language/window_work.h"

namespace korvant {

namespace {

/// So long may one answer take; a rename builds the text several times.
constexpr std::uint32_t kAnswerMs = 8000;
/// A text that kills the compiler so often is not asked about any more.
constexpr int kMostDeaths = 2;

class WorkerAssist final : public AssistService {
  public:
    WorkerAssist(asIScriptEngine& engine, CheckService::Poster poster)
        : work_(std::move(poster)), worker_(setupFor(engine)), thread_([this] { work(); }) {}

    ~WorkerAssist() override {
        work_.leave();
        worker_.leave();
        thread_.join();
    }

    void ask(std::shared_ptr<const std::string> text, AssistQuestion question,
             Answered answered) override {
        const auto place = static_cast<std::size_t>(question.kind);
        work_.put(place, {std::move(text), std::move(question), std::move(answered), {}});
    }

    void read(std::shared_ptr<const std::string> text, IndexRead read) override {
        work_.put(AssistQuestion::kKinds, {std::move(text), {}, {}, std::move(read)});
    }

  private:
    struct Job {
        std::shared_ptr<const std::string> text;
        AssistQuestion question;
        Answered answered;
        IndexRead read;
    };

    static CompileWorker::Setup setupFor(asIScriptEngine& engine) {
        CompileWorker::Setup setup = workerSetup(engine);
        setup.libraryFolder.clear();  // meanings are asked for on our build of the library alone
        setup.buildMs = kAnswerMs;
        return setup;
    }

    void work() {
        while (auto job = work_.next([] { return false; })) {
            if (job->read)
                readText(std::move(*job));
            else
                answer(std::move(*job));
        }
    }

    void readText(Job job) {
        auto index = std::make_shared<const ScopeIndex>(*job.text);
        work_.post([index = std::move(index), read = std::move(job.read)] { read(index); });
    }

    void answer(Job job) {
        std::optional<AssistAnswer> found;
        if (lethal_ == nullptr || *lethal_ != *job.text || deaths_ < kMostDeaths) {
            const auto bytes = worker_.ask(questionBytes(*job.text, job.question));
            if (bytes) found = readAnswer(*bytes);
            noteEnd(job.text, bytes.has_value());
        }
        work_.post([found = std::move(found), answered = std::move(job.answered)] {
            answered(found ? &*found : nullptr);
        });
    }

    void noteEnd(const std::shared_ptr<const std::string>& text, bool lives) {
        const bool same = lethal_ != nullptr && *lethal_ == *text;
        if (lives) {
            if (same) lethal_ = nullptr;
            return;
        }
        deaths_ = same ? deaths_ + 1 : 1;
        lethal_ = text;
    }

    WindowWork<Job, AssistQuestion::kKinds + 1> work_;
    std::shared_ptr<const std::string> lethal_;  ///< the text over which the child died last
    int deaths_ = 0;
    CompileWorker worker_;
    std::thread thread_;
};

}  // namespace

std::unique_ptr<AssistService> makeAssistService(asIScriptEngine& engine,
                                                 CheckService::Poster poster) {
    return std::make_unique<WorkerAssist>(engine, std::move(poster));
}

}  // namespace korvant
