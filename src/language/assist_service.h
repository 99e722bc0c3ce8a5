// Answers to an editor's questions from a process beside it, without the editor ever waiting.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "language/assist_question.h"
#include "language/diagnostics.h"

namespace korvant {

/// The compiler says what names mean; it runs in a child process of its own, so that a text that
/// kills it takes nothing along. All of this is called on the thread of the window, and so are the
/// callbacks, later; none is called after the service is gone.
class AssistService {
  public:
    /// `answer` is null where there is none: the worker cannot be had, or took too long.
    using Answered = std::function<void(const AssistAnswer* answer)>;
    using IndexRead = std::function<void(std::shared_ptr<const ScopeIndex> index)>;

    virtual ~AssistService() = default;
    /// Of questions of one kind that wait only the newest is asked; the callback of the others is
    /// not called.
    virtual void ask(std::shared_ptr<const std::string> text, AssistQuestion question,
                     Answered answered) = 0;
    /// Reads the text as far as no compiler is needed for it; of texts that wait the newest.
    virtual void read(std::shared_ptr<const std::string> text, IndexRead read) = 0;
};

/// As makeCheckService(). The child is started with the first question.
std::unique_ptr<AssistService> makeAssistService(asIScriptEngine& engine,
                                                 CheckService::Poster poster);

}  // namespace korvant
