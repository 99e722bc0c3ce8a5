// An editor that is killed at any moment of an edit and save loop.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <random>

#include "editor/document/recovery_store.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

constexpr int kChangesBetweenSaves = 450;

/// What parent and child share: how far the child has come.
struct Progress {
    std::atomic<int> saved{0};    ///< versions whose save has returned
    std::atomic<int> changes{0};  ///< changes made to the version in the editor
};

/// A text that names its version and can be seen to be whole.
std::string version(int number) {
    return "version " + std::to_string(number) + "\n" +
           std::string(static_cast<std::size_t>(20000 + number * 37 % 5000), 'x') + "\nend " +
           std::to_string(number) + "\n";
}

int numberOf(const std::string& text) {
    int number = -1;
    if (std::sscanf(text.c_str(), "version %d", &number) != 1) return -1;
    return text == version(number) ? number : -1;
}

class KilledEditor : public EditorFixture {
  protected:
    KilledEditor() {
        void* memory = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        progress = new (memory) Progress;
    }
    ~KilledEditor() override { ::munmap(progress, sizeof(Progress)); }

    [[noreturn]] void editForEver(const std::string& path) {
        open();
        window->files.push_back(path);
        editor().command(command_id::kOpen);
        for (int number = 1;; ++number) {
            progress->changes = 0;
            setText(version(number));
            for (int change = 1; change < kChangesBetweenSaves; ++change) {
                window->editor.caret = window->editor.anchor = static_cast<int>(text().size());
                window->editor.type("y");
                progress->changes = change + 1;
            }
            setText(version(number));
            editor().command(command_id::kSave);
            progress->saved = number;
        }
    }

    Progress* progress;
};

TEST_F(KilledEditor, LeavesTheOldOrTheNewTextAndARecentCopy) {
    std::mt19937 random(20240501);
    const std::string path = folder.file("a.as");
    for (int round = 0; round < 40; ++round) {
        writeFile(path, version(0));
        std::filesystem::remove_all(dataFolder());
        progress->saved = progress->changes = 0;
        const pid_t child = ::fork();
        if (child == 0) editForEver(path);
        ::usleep(random() % 60'000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);

        const int onDisk = numberOf(readFile(path));
        EXPECT_GE(onDisk, progress->saved.load());
        EXPECT_LE(onDisk, progress->saved.load() + 1);
        RecoveryStore store(systemFiles(), dataFolder() + "/recovery");
        // Beyond 200 changes there is a copy, and it is at most 200 changes behind.
        const int changes = progress->changes;
        const std::vector<FoundRecord> found = store.find();
        if (changes > RecoveryTimer::kMostChanges && onDisk == progress->saved) {
            ASSERT_EQ(found.size(), 1u) << changes;
            const std::string& copy = found[0].record.text;
            const auto typed = static_cast<int>(copy.size() - copy.find_last_not_of('y')) - 1;
            EXPECT_GE(typed, changes - 1 - RecoveryTimer::kMostChanges) << round;
        }
    }
}

}  // namespace
}  // namespace korvant::test
