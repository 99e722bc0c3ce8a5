// The editor without memory: nothing typed is lost, and it goes on when there is memory again.
#include <gtest/gtest.h>

#include "editor/control/command_ids.h"
#include "editor/control/control_messages.h"
#include "failing_memory.h"
#include "support/editor_fixture.h"

namespace korvant::test {

namespace {

using Whose = MemoryOf::Whose;

const std::string kText =
    "int twice(int a) { return a * 2; }\n"
    "int main() {\n"
    "    string name = \"a name that needs memory of its own\";\n"
    "    for (int i = 0; i < 3; i++)\n"
    "        Print(name + twice(i));\n"
    "    return 0;\n"
    "}\n";

class ShortMemoryInEditor : public EditorFixture, public ::testing::WithParamInterface<Shortage> {
  protected:
    /// The control is somebody else's code, which calls the editor back.
    void openWatched() {
        around = [](ControlSend send) -> ControlSend {
            return [send](unsigned message, std::uintptr_t w, std::intptr_t l) {
                const MemoryOf memory(Whose::others);
                return send(message, w, l);
            };
        };
        useFiles<QuickFiles>();
        open(kText);
        const auto notify = window->editor.notify;
        window->editor.notify = [notify](const ControlNotification& notification) {
            const MemoryOf memory(Whose::ours);
            notify(notification);
        };
    }

    static std::size_t openFiles() {
        namespace fs = std::filesystem;
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
    }

    void caretTo(int line) {
        const MemoryOf memory(Whose::others);
        caretToLine(line);
    }

    void commands(std::initializer_list<int> ids) {
        for (const int id : ids) editor().command(id);
    }

  private:
    /// Nobody pulls the plug here.
    class QuickFiles final : public ForwardingFiles {
      public:
        QuickFiles() : ForwardingFiles(systemFiles()) {}
        int flush(Handle) override { return 0; }
        int flushFolder(const std::string&) override { return 0; }
    };
};

TEST_P(ShortMemoryInEditor, TheTextStaysAndDebuggingGoesOnLater) {
    openWatched();
    const auto scenario = [&] {
        caretTo(5);
        commands({command_id::kToggleBreakpoint, command_id::kExecute, command_id::kStepOver,
                  command_id::kStepInto, command_id::kExecute, command_id::kStop,
                  command_id::kDeleteBreakpoints});
        editor().tick();
    };
    const auto check = [&] {
        EXPECT_EQ(text(), kText);
        commands({command_id::kStop, command_id::kDeleteBreakpoints});
        caretTo(5);
        commands({command_id::kToggleBreakpoint, command_id::kExecute});
        EXPECT_TRUE(editor().debugging());
        commands({command_id::kStop, command_id::kDeleteBreakpoints});
        window->output.text.clear();
        frontend.boxes.clear();
    };
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check), 50u);
}

/// Until it is gone, another folder is the current one.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::filesystem::path& folder) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() { std::filesystem::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_P(ShortMemoryInEditor, ASaveWritesTheWholeTextOrNothing) {
    const CurrentFolder here(folder.path());  // where an untitled text is saved
    const std::string path = folder.file("kept.as");
    const std::string old = "// what was there before\n", typed = old + "// more\n";
    writeFile(path, old);
    openWatched();
    const auto scenario = [&] { commands({command_id::kOpen, command_id::kSave}); };
    const auto check = [&] {
        EXPECT_EQ(readFile(path), old);
        window->files.assign(8, path);
        commands({command_id::kOpen});
        EXPECT_EQ(text(), old);
        setText(typed);
        commands({command_id::kSave});
        EXPECT_EQ(readFile(path), typed);
        writeFile(path, old);
        commands({command_id::kNew});
        window->files.assign(8, path);
        window->answers.assign(8, Answer::no);
    };
    check();
    const std::size_t before = openFiles();
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check, 1000), 30u);
    EXPECT_LE(openFiles(), before + 1);  // the lock of the recovery copies may have come
    EXPECT_LE(kept("backups").size(), 4u);
}

INSTANTIATE_TEST_SUITE_P(All, ShortMemoryInEditor,
                         ::testing::Values(Shortage::once, Shortage::lasting),
                         [](const auto& one) { return shortageName(one.param); });

}  // namespace

}  // namespace korvant::test
