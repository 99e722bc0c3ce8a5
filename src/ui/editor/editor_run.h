// Opening the editor for a host.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/engine/engine_compat.h"
#include "host/engine/registration.h"

namespace korvant::ui {

/// What a host opens the editor with.
struct EditorOpening {
    asIScriptEngine* engine = nullptr;
    asIScriptContext* context = nullptr;
    std::string& text;
    const std::string& title;
    /// The run-time library's functions, for the help in call tips; may be empty.
    std::span<const FunctionFamily> families = {};
    /// The file that the text is the content of; empty: the host's own text.
    std::string file = {};
};

/// Opens the editor on the text and puts what the user made of it there when it has been closed by
/// its close box. Returns at once, with the text as it was, without a display, while an editor is
/// open already (which then comes to the front), and while a script runs.
void runScriptEditor(const EditorOpening& opening);

/// The path of the document that the last editor ended with, empty when it was the host's text;
/// nothing when the last call opened no editor.
const std::optional<std::string>& lastEditedFile();

}  // namespace korvant::ui
