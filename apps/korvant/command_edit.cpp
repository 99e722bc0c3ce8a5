// korvant edit [FILE]: opens the editor on a file's text and writes it back.
#include <csignal>
#include <memory>
#include <string>

#include "commands.h"
#include "edited_file.h"
#include "module_library.h"
#include "process_display.h"
#include "source_report.h"

namespace korvant_app {
namespace {

const ModuleFunctions* theModule = nullptr;

/// What came back, and the file that it was saved to; none while it has not been saved.
struct Editing {
    std::string text;
    std::string document;
};

/// Opens the editor and waits. Nothing when it could not be opened; the reason was given on
/// standard error. Ctrl+C on the terminal stops a script that runs; it does not take the editor's
/// text with it.
std::optional<Editing> edit(const std::string& text, const std::string& path) {
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = engine ? theModule->configure(engine) : nullptr;
    if (!context) {
        complain("the script engine could not be set up");
        return std::nullopt;
    }
    const auto previous = std::signal(SIGINT, [](int) { theModule->requestStop(); });
    Editing editing{text, {}};
    if (!path.empty()) theModule->setEditedFile(path.c_str());
    theModule->runEditor(engine, context, editing.text, path);
    const char* file = theModule->editedFile();
    if (file) editing.document = file;
    std::signal(SIGINT, previous);
    theModule->release(engine);
    return file ? std::optional(editing) : std::nullopt;
}

}  // namespace

int editFile(const std::string& path) {
    if (!hasDisplay()) {
        complain("there is no display to open the editor on");
        return kRunFailed;
    }
    std::optional<EditedFile> file = EditedFile::open(path);
    if (!file) return kCannotRead;
    theModule = loadModule();
    if (!theModule) return kRunFailed;
    const std::optional<Editing> edited = edit(file->text(), path);
    if (!edited) return kRunFailed;
    // A text that has a file has been written there by the editor.
    if (!path.empty() || !edited->document.empty()) return kFinished;
    if (edited->text == file->text()) return kFinished;
    return file->write(edited->text) ? kFinished : kRunFailed;
}

void addEditCommand(CLI::App& app, int& exitCode) {
    const auto path = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand(
        "edit", "Opens the editor on a file, which is written when its window is closed");
    command->add_option("FILE", *path, "script to edit; it may be a new one");
    command->callback([path, &exitCode] { exitCode = editFile(*path); });
}

}  // namespace korvant_app
