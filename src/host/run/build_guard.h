// Who is asked ahead of the compiler whether it survives a text.
#pragma once

#include <string>

#include "host/engine/engine_compat.h"
#include "host/run/build_messages.h"

namespace korvant {

class BuildGuard {
  public:
    virtual ~BuildGuard() = default;
    /// False: the text must not reach the compiler of this engine, and `messages` say why. Called
    /// on the engine's thread. Nothing is thrown.
    virtual bool admits(asIScriptEngine& engine, const std::string& text,
                        BuildMessages& messages) noexcept = 0;
};

}  // namespace korvant
