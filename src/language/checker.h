// The compiler's messages about a text, without anything of the text being executed.
#pragma once

#include <string>
#include <vector>

#include "host/run/script_session.h"
#include "language/diagnostics.h"

namespace korvant {

/// What the messages of a build of `text` mean for whoever reads the text: with ends, and with the
/// "Compiling ..." rows as contexts of the messages that follow them.
std::vector<Diagnostic> diagnosticsOf(const BuildMessages& messages, const std::string& text);

/// Builds texts with an engine that the session has configured. For the thread of the session. The
/// module "main" of the engine is gone afterwards.
class Checker {
  public:
    Checker(ScriptSession& session, asIScriptEngine& engine) : session_(session), engine_(engine) {}

    /// `version` is handed through.
    CheckResult check(std::uint64_t version, const std::string& text);

  private:
    ScriptSession& session_;
    asIScriptEngine& engine_;
};

}  // namespace korvant
