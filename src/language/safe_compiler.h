// What the compiler says of a text, also where it does not survive the text.
#pragma once

#include <memory>
#include <string>

#include "host/engine/engine_compat.h"
#include "language/compile_worker.h"

namespace korvant {

/// Builds in a child process that has the same engine library as this one. A text that kills the
/// child gets the messages of the hardened engine, or an error at the place that kills it.
class SafeCompiler {
  public:
    /// `newer` as in CompileWorker::Setup.
    explicit SafeCompiler(const CompileWorker::Setup& setup);

    struct Outcome {
        bool known = false;  ///< false: nothing is said of this text
        bool builds = false;
        bool died = false;  ///< this process' engine would not survive it, or not end
        BuildMessages messages;
    };
    Outcome build(const std::string& text);

    CompileWorker& worker() noexcept { return worker_; }

  private:
    Outcome explain(const std::string& text);

    CompileWorker worker_;
    std::unique_ptr<CompileWorker> hardened_;  ///< null where worker_ is it, or there is none
};

/// For a mirror of `engine` under the session's limits. On the engine's thread.
CompileWorker::Setup workerSetup(asIScriptEngine& engine);

}  // namespace korvant
