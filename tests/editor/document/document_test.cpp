// New, Open, Save, Save As, Exit and the close box, on real files.
#include <filesystem>

#include "base/system/user_folders.h"
#include "editor/assist/manual_place.h"
#include "module/families.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using namespace std::string_literals;

class Document : public EditorFixture {
  protected:
    void openFile(const std::string& path) {
        window->files.push_back(path);
        editor().command(command_id::kOpen);
    }
    std::string make(const std::string& name, const std::string& bytes) {
        writeFile(folder.path() / name, bytes);
        return folder.file(name);
    }
};

TEST_F(Document, AnyBytesSurviveALoadAndASaveWithoutAChange) {
    const std::vector<std::string> contents = {
        "int main() { return 0; }\n",
        "caf\xC3\xA9\r\nline\r\n",               // UTF-8, CR LF
        "\xEF\xBB\xBFwith a mark \xE2\x82\xAC",  // UTF-8 with byte-order mark
        "\xEF\xBB\xBF",                          // nothing but a mark
        "caf\xE9 \x80 \x81\x8D\x8F\x90\x9D",     // Windows Western, undefined bytes
        std::string("\xFF\xFE"
                    "i\0n\0t\0\0\0",
                    10),                                 // UTF-16, with a zero
        std::string("\xFE\xFF\xD8\x3D\xDE\x00\0\n", 8),  // the other one, with a pair
        std::string("\xFF\xFEi\0n", 5),                  // half a unit at its end
        std::string("\xFE\xFF\xDE\x00\0i", 6),           // half a pair
        "\xFF\xFE",                                      // nothing but its mark
        std::string("a\0b\0\0c", 6),                     // zero bytes
        std::string("\xC3\xA9 \xC3\x28 \xFF\0\xFE", 9),  // neither
    };
    for (const std::string& content : contents) {
        const std::string path = make("bytes.as", content);
        open();
        openFile(path);
        EXPECT_EQ(pane(), "");
        editor().command(command_id::kSave);
        EXPECT_EQ(readFile(path), content);
    }
}

TEST_F(Document, WesternTextIsEditedAsCharactersAndSavedAsBytes) {
    const std::string path = make("w.as", "caf\xE9");
    open();
    openFile(path);
    EXPECT_EQ(text(), "caf\xC3\xA9");
    setText("\xC3\xA9t\xC3\xA9 \xE2\x82\xAC");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "\xE9t\xE9 \x80");
    EXPECT_EQ(pane(), "");
}

TEST_F(Document, CharactersThatWesternLacksMakeTheFileUtf8) {
    const std::string path = make("w.as", "caf\xE9");
    open();
    openFile(path);
    setText("caf\xC3\xA9 \xE2\x86\x92");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "caf\xC3\xA9 \xE2\x86\x92");
    EXPECT_NE(pane().find("UTF-8"), std::string::npos);
}

TEST_F(Document, WesternBytesThatWouldReadAsUtf8AreNotWritten) {
    const std::string path = make("w.as", "\xE9");
    open();
    openFile(path);
    setText("\xC3\x83\xC2\xA9");  // two characters whose Western bytes are one of UTF-8
    editor().command(command_id::kSave);
    open();
    openFile(path);
    EXPECT_EQ(text(), "\xC3\x83\xC2\xA9");
}

TEST_F(Document, Utf16IsEditedAsCharactersAndStaysWhatItWas) {
    const std::string path = make("wide.as", std::string("\xFF\xFE\xE9\0\n\0", 6));
    open();
    openFile(path);
    EXPECT_EQ(text(), "\xC3\xA9\n");
    EXPECT_EQ(editor().status().encoding, "UTF-16 LE");
    setText("\xE2\x82\xAC\xF0\x9F\x98\x80");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "\xFF\xFE\xAC\x20\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(pane(), "");
    // Western bytes that would be taken for it the next time are not written.
    const std::string western = make("w.as", "\xFF");
    openFile(western);
    EXPECT_EQ(editor().status().encoding, "Windows-1252");
    setText("\xC3\xBF\xC3\xBEin");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(western), "\xC3\xBF\xC3\xBEin");
}

TEST_F(Document, CompilerGetsTheFilesBytesWithoutAMark) {
    EXPECT_EQ(encodeScript("caf\xC3\xA9", {false, false, DocumentEncoding::Wide::bigEndian}),
              "caf\xC3\xA9");
    EXPECT_EQ(encodeScript("caf\xC3\xA9", {true, false}), "caf\xE9");
    EXPECT_EQ(encodeScript("caf\xC3\xA9", {false, true}), "caf\xC3\xA9");
}

TEST_F(Document, OpenReportsWhatItCannotReadOverAnEmptyEditor) {
    const std::string empty = make("empty.as", "");
    const std::string big = make("big.as", "x");
    std::filesystem::resize_file(big, (256 << 20) + 1);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {folder.file("none.as"), "File does not exist"},
        {empty, "File of zero length"},
        {folder.path().string(), "Error opening file"},
        {big, "Memory allocation error"}};
    for (const auto& [path, message] : cases) {
        open("old text");
        openFile(path);
        EXPECT_EQ(pane(), message) << path;
        EXPECT_EQ(text(), "") << path;
        EXPECT_EQ(window->title, "Script Editor");
        editor().command(command_id::kUndo);
        EXPECT_EQ(text(), "old text");
    }
}

TEST_F(Document, TitleNamesTheFileAndMarksChanges) {
    const std::string path = make("deep.as", "int a;");
    open();
    openFile(path);
    EXPECT_EQ(window->title, "Script Editor - deep.as");
    window->editor.type("x");
    EXPECT_EQ(window->title, "Script Editor - deep.as*");
    editor().command(command_id::kSave);
    EXPECT_EQ(window->title, "Script Editor - deep.as");
    EXPECT_EQ(readFile(path), "xint a;");
}

TEST_F(Document, FileDialogsAskAsTheyShould) {
    open("x");
    editor().command(command_id::kOpen);
    editor().command(command_id::kSave);
    ASSERT_EQ(window->requests.size(), 2u);
    for (const FileDialogRequest& request : window->requests) {
        EXPECT_STREQ(request.title, "Open Source File");
        ASSERT_EQ(request.filters.size(), 2u);
        EXPECT_STREQ(request.filters[0].label, "Source Files (*.as)");
        EXPECT_STREQ(request.filters[1].pattern, "*.*");
        EXPECT_TRUE(request.fileMustExist && request.pathMustExist);
        EXPECT_EQ(request.longestPath, 1283u);
    }
    EXPECT_FALSE(window->requests[0].saving);
    EXPECT_TRUE(window->requests[1].saving);
    EXPECT_EQ(text(), "x");
}

TEST_F(Document, SaveAsTakesOnlyFilesThatExist) {
    const std::string path = make("there.as", "before");
    open();
    setText("after");
    window->files = {folder.file("missing.as"), path};
    editor().command(command_id::kSaveAs);
    ASSERT_EQ(window->errors.size(), 1u);
    EXPECT_NE(window->errors[0].find("missing.as"), std::string::npos);
    EXPECT_EQ(readFile(path), "after");
    EXPECT_EQ(window->title, "Script Editor - there.as");
    // What was overwritten without a question is kept.
    ASSERT_EQ(kept("backups").size(), 1u);
    EXPECT_EQ(readFile(dataFolder() + "/backups/" + kept("backups")[0]), "before");
}

TEST_F(Document, PathsBeyondTheDialogsBufferAreNotChosen) {
    open("old");
    openFile("/" + std::string(1283, 'x'));
    EXPECT_EQ(text(), "old");
}

TEST_F(Document, EmptyTextEmptiesTheFileAndStaysModified) {
    const std::string path = make("a.as", "content");
    open();
    openFile(path);
    setText("");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "");
    EXPECT_EQ(window->title, "Script Editor - a.as*");
    ASSERT_EQ(kept("backups").size(), 1u);
    EXPECT_EQ(readFile(dataFolder() + "/backups/" + kept("backups")[0]), "content");
}

TEST_F(Document, EmptyTextAfterASaveKeepsWhatWasSaved) {
    const std::string path = make("a.as", "content");
    open();
    openFile(path);
    window->editor.type("x");
    editor().command(command_id::kSave);
    setText("");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "");
    ASSERT_EQ(kept("backups").size(), 2u);
    EXPECT_EQ(readFile(dataFolder() + "/backups/" + kept("backups")[1]), "xcontent");
}

TEST_F(Document, FailedOpenAndThenSaveDoesNotLoseTheFileBefore) {
    const std::string path = make("a.as", "precious");
    open();
    openFile(path);
    window->editor.type("x");
    editor().command(command_id::kSave);
    openFile(folder.file("none.as"));
    EXPECT_EQ(window->title, "Script Editor - a.as*");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "");
    bool found = false;
    for (const std::string& name : kept("backups"))
        found = found || readFile(dataFolder() + "/backups/" + name) == "xprecious";
    EXPECT_TRUE(found);
}

TEST_F(Document, NewAsksOnlyForChangesAndCallsTheTextUntitled) {
    open("a");
    editor().command(command_id::kNew);
    EXPECT_TRUE(window->questions.empty());
    EXPECT_EQ(window->title, "Script Editor - Untitled");
    EXPECT_EQ(text(), "");
    window->editor.type("b");
    editor().command(command_id::kNew);
    EXPECT_EQ(window->questions, std::vector<std::string>{"Do You Want to Save Your Changes?"});
    EXPECT_EQ(window->title, "Script Editor - Untitled");
}

TEST_F(Document, UntitledIsWrittenInTheCurrentFolderOverNothingThatIsLost) {
    const std::string before = std::filesystem::current_path().string();
    std::filesystem::current_path(folder.path());
    make("Untitled", "somebody else's");
    open();
    editor().command(command_id::kNew);
    window->editor.type("mine");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(folder.path() / "Untitled"), "mine");
    editor().command(command_id::kNew);
    window->editor.type("second");
    editor().command(command_id::kSave);
    std::filesystem::current_path(before);
    EXPECT_EQ(readFile(folder.path() / "Untitled"), "second");
    std::set<std::string> contents;
    for (const std::string& name : kept("backups"))
        contents.insert(readFile(dataFolder() + "/backups/" + name));
    EXPECT_TRUE(contents.count("somebody else's") && contents.count("mine"));
}

TEST_F(Document, CloseBoxGivesTheTextToTheHostAndExitDoesNot) {
    open("given");
    setText("edited");
    EXPECT_TRUE(editor().closeBox());
    EXPECT_EQ(editor().hostText(), "edited");
    open("given");
    setText("edited");
    editor().command(command_id::kExit);
    EXPECT_TRUE(window->ended);
    EXPECT_EQ(editor().hostText(), "given");
}

TEST_F(Document, HostTextComesBackByteForByte) {
    for (const std::string& bytes :
         {std::string("caf\xE9 \x81"), std::string("a\0b", 3), std::string("\xEF\xBB\xBFx")}) {
        open(bytes);
        EXPECT_TRUE(editor().closeBox());
        EXPECT_EQ(editor().hostText(), bytes);
    }
}

TEST_F(Document, TextThatDoesNotFitIntoTheControlIsNeverSaved) {
    const std::string path = make("a.as", "content");
    open();
    window->editor.insertsUntilFull = 0;
    openFile(path);
    EXPECT_EQ(pane(), "Memory allocation error");
    editor().command(command_id::kSave);
    window->files.push_back(path);
    editor().command(command_id::kSaveAs);
    EXPECT_EQ(pane(), "Memory allocation error");
    EXPECT_EQ(readFile(path), "content");
    open("the host's");
    window->editor.insertsUntilFull = 0;
    openFile(path);
    EXPECT_TRUE(editor().closeBox());
    EXPECT_EQ(editor().hostText(), "the host's");
}

TEST_F(Document, AnotherProgramsVersionIsKeptAndMentioned) {
    const std::string path = make("a.as", "first");
    open();
    openFile(path);
    window->editor.type("mine ");
    make("a.as", "theirs");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "mine first");
    EXPECT_NE(pane().find("changed by another program"), std::string::npos);
    const std::string shown = pane().substr(pane().find(folder.file("")));
    EXPECT_EQ(readFile(shown), "theirs");
    // A touched file with the same content is no other version.
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    window->editor.type("more ");
    window->output.text.clear();
    editor().command(command_id::kSave);
    EXPECT_EQ(pane(), "");
}

/// A file that is not what it was when its length was taken.
class UnsteadyFiles final : public ForwardingFiles {
  public:
    UnsteadyFiles() : ForwardingFiles(systemFiles()) {}
    std::uint64_t size = 0;
    std::function<std::int64_t()> reading;  ///< instead of reading

    int status(const std::string& path, FileStatus& found) override {
        const int error = ForwardingFiles::status(path, found);
        if (found.kind == FileStatus::Kind::regular) found.size = size;
        return error;
    }
    std::int64_t read(Handle handle, char* bytes, std::size_t count) override {
        return reading ? reading() : ForwardingFiles::read(handle, bytes, count);
    }
};

TEST_F(Document, WhatWasReadCountsWhateverTheLengthWas) {
    auto& unsteady = useFiles<UnsteadyFiles>();
    const std::string path = make("a.as", "four");
    for (const std::uint64_t size : {1u, 4u, 400'000u}) {
        unsteady.size = size;
        open();
        openFile(path);
        EXPECT_EQ(text(), "four") << size;
    }
    writeFile(path, "");
    open("old");
    openFile(path);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(window->title, "Script Editor - a.as");
}

TEST_F(Document, FailuresWhileReadingAreReportedAndContained) {
    auto& unsteady = useFiles<UnsteadyFiles>();
    unsteady.size = 10;
    const std::string path = make("a.as", "content");
    const std::vector<std::pair<std::function<std::int64_t()>, std::string>> cases = {
        {[] { return -EIO; }, "Error while reading file"},
        {[]() -> std::int64_t { throw std::runtime_error("x"); }, "Error while reading file"},
        {[]() -> std::int64_t { throw std::bad_alloc(); }, "Memory allocation error"}};
    for (const auto& [reading, message] : cases) {
        unsteady.reading = reading;
        open();
        openFile(path);
        EXPECT_EQ(pane(), message);
        unsteady.reading = nullptr;
    }
}

TEST_F(Document, RecentFilesOpenFromTheMenuAndOutliveTheEditor) {
    const std::string a = make("a.as", "A");
    const std::string b = make("b.as", "B");
    open();
    openFile(a);
    openFile(b);
    EXPECT_EQ(window->recent, (std::vector<std::string>{b, a}));
    editor().command(command_id::kRecentFileFirst + 1);
    EXPECT_EQ(text(), "A");
    open();
    EXPECT_EQ(window->recent, (std::vector<std::string>{a, b}));
    editor().command(command_id::kRecentFileFirst + 9);
    EXPECT_EQ(text(), "");
}

TEST_F(Document, HelpOpensTheManualOrSaysThatItIsMissing) {
    open();
    editor().functionKey(1);
    EXPECT_EQ(window->opened, std::vector<std::string>{manualPage("/programs")});
    window->documentsOpen = false;
    editor().functionKey(1);
    ASSERT_EQ(window->errors.size(), 1u);
    EXPECT_TRUE(window->errors[0].starts_with("Documentation files not found."));
}

TEST_F(Document, WithoutABrowserHelpNamesPageAndHeading) {
    programFolder = folder.path().string();
    std::filesystem::create_directories(folder.path() / "scripting_manual");
    make("scripting_manual/index.html", "<h1>Manual</h1>");
    open();
    window->documentsOpen = false;
    const std::string place = manualPlaceOf(allFamilies(), "StrFind");
    const std::string page =
        (folder.path() / "scripting_manual" / place.substr(0, place.find('#'))).string();
    editor().helpAt("StrFind");
    EXPECT_TRUE(window->errors.back().ends_with("index.html")) << "its page is not there";
    writeFile(page, "<h3 id=\"StrFind\">StrFind</h3>");
    editor().helpAt("StrFind");
    EXPECT_TRUE(window->errors.back().ends_with(page + "\n\nIt is told there under the heading "
                                                       "\"StrFind\"."));
    writeFile(page, "<h1>Others</h1>");
    editor().helpAt("StrFind");
    EXPECT_TRUE(window->errors.back().ends_with(page));
    EXPECT_EQ(window->errors.back().find("not found"), std::string::npos);
}

TEST_F(Document, AboutComesFromTheMenuAndTheSystemMenu) {
    open();
    editor().command(32790);
    editor().command(16);
    EXPECT_EQ(window->abouts, 2);
}

}  // namespace
}  // namespace korvant::test
