// Building texts in a child process.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "base/system/child_process.h"
#include "host/engine/limits.h"
#include "host/run/build_messages.h"
#include "language/worker_frames.h"

namespace korvant {

/// Where the program of the worker is; empty when it is nowhere.
std::string compileWorkerProgram();

/// One child at a time, started when it is needed and again when it has died. One thread uses an
/// object, but for interrupt().
class CompileWorker {
  public:
    struct Setup {
        std::string program = compileWorkerProgram();
        std::string api;            ///< description of the engine to mirror, as JSON
        Limits limits;              ///< those of building
        std::string libraryFolder;  ///< of the engine's library; empty: the worker's own
        std::uint32_t buildMs = 15000;
        /// True while something newer waits, for which a build is only given newerMs. Asked when
        /// interrupt() was called; from the thread that builds. May be empty.
        std::function<bool()> newer;
        std::uint32_t newerMs = 2000;
    };
    explicit CompileWorker(Setup setup) : setup_(std::move(setup)) {}

    enum class End {
        answered,
        died,         ///< the text killed the child, or somebody else did
        tooLong,      ///< the child was ended because it took longer than buildMs
        interrupted,  ///< the child was ended because of leave(), or something newer waited long
        impossible,   ///< no child can be started, or it cannot mirror the engine
    };
    struct Outcome {
        End end = End::impossible;
        BuildEnd build = BuildEnd::failed;
        BuildMessages messages;
    };
    Outcome build(const std::string& text);
    /// The same, once more when the child died: somebody may have ended it.
    Outcome buildTwice(const std::string& text);

    /// The answer to a question about a text, see assist_question.h; nothing when the child cannot
    /// be had, died or took longer than buildMs.
    std::optional<std::string> ask(const std::string& question);

    /// Waits until something newer is there, see interrupt(). A child that dies meanwhile is
    /// replaced at once, so that the next answer is quick; one that dies again and again is left
    /// alone until it is needed.
    void idle();
    /// False when idle() would return at once, because no child lives long enough.
    bool canIdle();
    /// Something newer is there, see Setup::newer. From any thread.
    void interrupt() noexcept;
    /// Ends what is under way, now and from now on. From any thread.
    void leave() noexcept;

    /// True when the child's engine is the hardened one; false before the first build.
    bool hardened() const noexcept { return hardened_; }
    const std::string& problem() const noexcept { return problem_; }  ///< of `impossible`
    std::int64_t childId() const noexcept;                            ///< -1: none

  private:
    bool start();
    void stop();
    Outcome await(std::uint64_t number);
    std::optional<Outcome> answerTo(std::uint64_t number);
    std::optional<std::string> awaitAnswer(std::uint64_t number);
    void noteReady(const WorkerFrame& frame);
    bool newer() const { return leave_ || (setup_.newer && setup_.newer()); }

    Setup setup_;
    mutable std::mutex mutex_;  ///< of child_ being another one, for interrupt()
    std::unique_ptr<ChildProcess> child_;
    WorkerFrames frames_;
    std::uint64_t number_ = 0;
    int deaths_ = 0;  ///< since the last answer
    bool hardened_ = false;
    std::atomic<bool> leave_{false};
    std::string problem_;
};

/// Where in `text` lies what kills its compiler, as an offset: the last statement, or else
/// declaration, that must stand for it to die. `dies` builds a text; it is asked some 30 times at
/// most.
std::size_t fatalPlace(const std::string& text,
                       const std::function<bool(const std::string&)>& dies);

}  // namespace korvant
