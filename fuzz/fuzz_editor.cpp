// The editor without a window under any sequence of commands, keys, notifications and edits. It
// must never reach outside its texts, and the host's text must come back whole.
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "editor/document/scramble.h"
#include "editor/script_editor.h"
#include "support/fake_editor_window.h"

namespace {

using namespace korvant;
using namespace korvant::test;

/// Nothing can be read or written.
class NoFiles final : public ForwardingFiles {
  public:
    NoFiles() : ForwardingFiles(systemFiles()) {}
    int status(const std::string&, FileStatus&) override { return EIO; }
    int resolve(const std::string&, std::string&) override { return EIO; }
    int openRead(const std::string&, Handle&) override { return EIO; }
    int create(const std::string&, bool, Handle&) override { return EIO; }
    int makeFolder(const std::string&) override { return EIO; }
    int list(const std::string&, std::vector<std::string>&) override { return EIO; }
    int lock(const std::string&, Handle&) override { return EIO; }
};

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}
    bool empty() const { return rest_.empty(); }
    int byte() {
        if (rest_.empty()) return 0;
        const int value = static_cast<unsigned char>(rest_[0]);
        rest_.remove_prefix(1);
        return value;
    }
    std::string text() {
        const std::size_t size =
            std::min<std::size_t>(static_cast<std::size_t>(byte()), rest_.size());
        const std::string value(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return value;
    }

  private:
    std::string_view rest_;
};

void search(FakeEditorWindow& window, Input& input) {
    const int choice = input.byte();
    const SearchOptions options{(choice & 1) != 0, (choice & 2) != 0, false};
    const std::string what = input.text();
    if (window.find)
        (choice & 8 ? window.find->next(what, options) : window.find->previous(what, options));
    if (!window.replace || window.editor.text.size() > 10'000) return;
    window.replace->setInSelection((choice & 16) != 0);
    if (choice & 32)
        window.replace->replaceAll(what, input.text(), options);
    else
        window.replace->replace(what, input.text(), options);
}

void step(ScriptEditor& editor, FakeEditorWindow& window, Input& input) {
    MemoryControl& control = window.editor;
    const auto commands = editorCommands();
    switch (input.byte() % 7) {
        case 0: {
            const EditorCommand& command =
                commands[static_cast<std::size_t>(input.byte()) % commands.size()];
            if (command.id != command_id::kExit) editor.command(command.id);
            break;
        }
        case 1:
            control.type(input.text());
            break;
        case 2: {
            const int length = static_cast<int>(control.text.size());
            control.anchor = input.byte() % (length + 1);
            control.caret = input.byte() % (length + 1);
            break;
        }
        case 3: {
            ControlNotification notification;
            notification.code = 2000 + static_cast<unsigned>(input.byte() % 32);
            notification.position = input.byte() - 10;
            notification.character = input.byte();
            notification.margin = input.byte() % 4;
            // Changes are told by the control itself.
            if (notification.code != sci::kModified) editor.editorNotified(notification);
            notification.position = std::max(notification.position, 0);
            editor.outputNotified(notification);
            break;
        }
        case 4:
            editor.functionKey(input.byte() % 14);
            break;
        case 5:
            search(window, input);
            break;
        default:
            window.line = input.byte() - 100;
            window.answers.push_back(input.byte() & 1 ? Answer::yes : Answer::no);
            editor.tick();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static NoFiles files;
    Input input(data, size);
    FakeEditorWindow window;
    ScriptEditor editor({moduleSession(), window, files, "", "", {}});
    window.editor.notify = [&](const ControlNotification& n) { editor.editorNotified(n); };
    const std::string given = input.text();
    editor.setHostText(given);
    editor.initialise();
    if (!editor.closeBox() || editor.hostText() != given) std::abort();

    ScriptEditor second({moduleSession(), window, files, "", "", {}});
    window.editor.notify = [&](const ControlNotification& n) { second.editorNotified(n); };
    second.setHostText(given);
    second.initialise();
    second.shown();
    while (!input.empty() && window.editor.text.size() < 100'000) step(second, window, input);
    for (const unsigned message : window.editor.unknown)
        std::fprintf(stderr, "the control without a window does not know %u\n", message);
    if (!window.editor.unknown.empty()) std::abort();
    second.closeBox();
    second.closed();
    return 0;
}
