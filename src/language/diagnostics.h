// What is wrong with a script's text, and a service that finds it out while the user types.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

/// One message of the compiler. Lines and columns are as the compiler counts them: from 1, columns
/// in bytes. A message without a place has line 0. The end is behind the last byte of the word or
/// sign that the place points at, on the same line.
struct Diagnostic {
    enum class Kind : std::uint8_t { error, warning, information };
    std::int32_t line = 0;
    std::int32_t column = 0;
    std::int32_t endLine = 0;
    std::int32_t endColumn = 0;
    Kind kind = Kind::error;
    std::string text;     ///< the compiler's words, byte for byte
    std::string context;  ///< "Compiling int main()" where the compiler said so before; else empty
    bool operator==(const Diagnostic&) const = default;
};

struct CheckResult {
    std::uint64_t version = 0;  ///< what was given to check()
    /// False: there is no answer for this text, and `note` says why; what was shown before is old.
    bool complete = true;
    bool builds = false;
    std::vector<Diagnostic> diagnostics;  ///< in the compiler's order
    std::string note;  ///< one sentence for the user, once; for example that nothing can be checked
};

/// Checks texts beside the program, in a child process; nothing of a script is executed.
///
/// How a window uses it: make one service for each editor with a poster that runs a function later
/// on the window's thread (wx: CallAfter on the frame), call check() with a growing version number
/// when the user has paused for 250 ms, and show what arrives if its version is still the text's.
/// check() copies the text and returns at once. Of several texts that wait only the newest is
/// checked. The callback is run through the poster only, and never after the service is gone.
///
/// What the engine offers is read when the service is made: make another one when a host has
/// registered more.
///
///     service = makeCheckService(engine, poster);
///     service->onResult([this](const CheckResult& result) { problems_.show(result); });
///     service->check(++version_, editor_.text());
class CheckService {
  public:
    /// Runs `work` on the thread that owns the window, soon and in order. Called from any thread.
    using Poster = std::function<void(std::function<void()> work)>;
    using Callback = std::function<void(const CheckResult& result)>;

    virtual ~CheckService() = default;
    /// To be set before the first check, on the thread of the window.
    virtual void onResult(Callback callback) = 0;
    /// Thread-safe; never waits for the child.
    virtual void check(std::uint64_t version, std::string text) = 0;
};

/// On the thread of the engine, which the session has configured; takes milliseconds. The service
/// keeps no pointer to the engine. Its child is started at once and ends with it.
std::unique_ptr<CheckService> makeCheckService(asIScriptEngine& engine,
                                               CheckService::Poster poster);

}  // namespace korvant
