// What stands in a folder and is no file.
#include <sys/stat.h>

#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using SpecialFiles = EditorFixture;

TEST_F(SpecialFiles, AreNotOpened) {
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/null")}) {
        open("old text");
        window->files.push_back(path);
        editor().command(command_id::kOpen);
        EXPECT_EQ(pane(), "Error opening file") << path;
        EXPECT_EQ(text(), "");
    }
}

}  // namespace
}  // namespace korvant::test
