// Which context runs a script on the calling thread.
#pragma once

#include <angelscript.h>

namespace korvant {

/// The context that runs a script on this thread; null when none does. A library that has a copy of
/// the engine of its own is not told by it what the host's copy runs; then it is the context that
/// this library runs itself.
asIScriptContext* activeContext() noexcept;

/// While it lives, `context` is what this library runs on this thread.
class ExecutionMark {
  public:
    explicit ExecutionMark(asIScriptContext& context) noexcept;
    ~ExecutionMark();
    ExecutionMark(const ExecutionMark&) = delete;
    ExecutionMark& operator=(const ExecutionMark&) = delete;

  private:
    asIScriptContext* before_;
};

}  // namespace korvant
