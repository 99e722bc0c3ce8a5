#include "language/assist_service.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

#include "language/compile_worker.h"
#include "language/safe_compiler.h"

namespace korvant {

namespace {

/// So long may one answer take; a rename builds the text several times.
constexpr std::uint32_t kAnswerMs = 8000;
/// A text that kills the compiler so often is not asked about any more.
constexpr int kMostDeaths = 2;

struct Gone {
    bool gone = false;  ///< on the window's thread only
};

class WorkerAssist final : public AssistService {
  public:
    WorkerAssist(asIScriptEngine& engine, CheckService::Poster poster)
        : poster_(std::move(poster)), worker_(setupFor(engine)), thread_([this] { work(); }) {}

    ~WorkerAssist() override {
        gone_->gone = true;
        {
            const std::lock_guard lock(mutex_);
            quit_ = true;
        }
        wake_.notify_one();
        worker_.leave();
        thread_.join();
    }

    void ask(std::shared_ptr<const std::string> text, AssistQuestion question,
             Answered answered) override {
        const auto place = static_cast<std::size_t>(question.kind);
        put(place, {std::move(text), std::move(question), std::move(answered), {}});
    }

    void read(std::shared_ptr<const std::string> text, IndexRead read) override {
        put(AssistQuestion::kKinds, {std::move(text), {}, {}, std::move(read)});
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

    void put(std::size_t place, Job job) {
        {
            const std::lock_guard lock(mutex_);
            if (!jobs_[place]) order_.push_back(place);
            jobs_[place] = std::move(job);
        }
        wake_.notify_one();
    }

    /// In the order in which they were asked first.
    std::optional<Job> next() {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return quit_ || !order_.empty(); });
        if (quit_) return std::nullopt;
        auto& place = jobs_[order_.front()];
        order_.pop_front();
        auto job = std::move(place);
        place.reset();
        return job;
    }

    void work() {
        while (auto job = next()) {
            if (job->read)
                readText(std::move(*job));
            else
                answer(std::move(*job));
        }
    }

    void readText(Job job) {
        auto index = std::make_shared<const ScopeIndex>(*job.text);
        poster_([gone = gone_, index = std::move(index), read = std::move(job.read)] {
            if (!gone->gone) read(index);
        });
    }

    void answer(Job job) {
        std::optional<AssistAnswer> found;
        if (lethal_ == nullptr || *lethal_ != *job.text || deaths_ < kMostDeaths) {
            const auto bytes = worker_.ask(questionBytes(*job.text, job.question));
            if (bytes) found = readAnswer(*bytes);
            noteEnd(job.text, bytes.has_value());
        }
        poster_([gone = gone_, found = std::move(found), answered = std::move(job.answered)] {
            if (!gone->gone) answered(found ? &*found : nullptr);
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

    CheckService::Poster poster_;
    std::shared_ptr<Gone> gone_ = std::make_shared<Gone>();
    std::mutex mutex_;
    std::condition_variable wake_;
    std::array<std::optional<Job>, AssistQuestion::kKinds + 1> jobs_;
    std::deque<std::size_t> order_;
    bool quit_ = false;
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
