// Unsaved text: kept in time, offered again, and never a nuisance.
#include <gmock/gmock.h>

#include "editor/document/recovery_store.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using ::testing::HasSubstr;

TEST(RecoveryRecords, ReadBackWhatWasWrittenAndNothingElse) {
    RecoveryRecord record;
    record.path = "/tmp/a\nb.as";
    record.text = std::string("zero\0byte\n", 10);
    record.encoding = {true, false};
    record.fileHash = ~std::uint64_t{0};
    record.time = -5;
    const std::string bytes = writeRecord(record);
    EXPECT_EQ(readRecord(bytes), record);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(readRecord(bytes.substr(0, size))) << size;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string damaged = bytes;
        damaged[i] ^= 1;
        EXPECT_FALSE(readRecord(damaged)) << i;
    }
    EXPECT_FALSE(readRecord(bytes + "x"));
    for (const auto wide :
         {DocumentEncoding::Wide::littleEndian, DocumentEncoding::Wide::bigEndian}) {
        record.encoding = {false, false, wide};
        EXPECT_EQ(readRecord(writeRecord(record)), record);
    }
}

class Recovery : public EditorFixture {
  protected:
    Recovery() { useClock(&fakeClock); }
    std::string currentCopy() {
        for (const std::string& name : kept("recovery"))
            if (name.ends_with(".current"))
                if (auto record = readRecord(readFile(dataFolder() + "/recovery/" + name)))
                    return record->text;
        return "none";
    }
    void reopen(const std::string& hostText = {}) {
        open(hostText);
        editor().shown();
    }
};

TEST_F(Recovery, CopyIsAtMostTenSecondsOld) {
    open();
    window->editor.type("abc");
    EXPECT_EQ(currentCopy(), "none");
    for (int second = 0; second < 10; ++second) {
        fakeClock.advance(1000);
        editor().tick();
    }
    EXPECT_EQ(currentCopy(), "abc");
    window->editor.type("d");
    fakeClock.advance(10000);
    window->editor.type("e");
    EXPECT_EQ(currentCopy(), "abcde");
}

TEST_F(Recovery, CopyIsAtMostTwoHundredChangesOld) {
    open();
    for (int i = 0; i < 199; ++i) window->editor.type("x");
    EXPECT_EQ(currentCopy(), "none");
    window->editor.type("x");
    EXPECT_EQ(currentCopy(), std::string(200, 'x'));
}

TEST_F(Recovery, SaveRemovesTheCopy) {
    const std::string path = folder.file("a.as");
    writeFile(path, "a");
    open();
    window->files.push_back(path);
    editor().command(command_id::kOpen);
    window->editor.type("b");
    fakeClock.advance(10000);
    editor().tick();
    EXPECT_EQ(currentCopy(), "ba");
    editor().command(command_id::kSave);
    EXPECT_EQ(currentCopy(), "none");
}

TEST_F(Recovery, CopyOfACrashIsOfferedAndRestored) {
    const std::string path = folder.file("a.as");
    writeFile(path, "caf\xE9");
    open();
    window->files.push_back(path);
    editor().command(command_id::kOpen);
    window->editor.type("new ");
    fakeClock.advance(10000);
    editor().tick();
    open();
    window->answers.push_back(Answer::yes);
    editor().shown();
    ASSERT_EQ(window->questions.size(), 1u);
    EXPECT_THAT(window->questions[0], HasSubstr("\"a.as\""));
    EXPECT_THAT(window->questions[0], HasSubstr("It begins:\nnew caf\xC3\xA9\n"));
    EXPECT_EQ(text(), "new caf\xC3\xA9");
    EXPECT_EQ(window->title, "Script Editor - a.as*");
    // Until it is saved it is kept again, and the file's encoding is known still.
    EXPECT_EQ(currentCopy(), "new caf\xC3\xA9");
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "new caf\xE9");
    reopen();
    EXPECT_TRUE(window->questions.empty());
}

TEST_F(Recovery, NoMovesTheTextToTheBackupsAndCancelAsksAgain) {
    open();
    window->editor.type("typed");
    editor().command(command_id::kExit);
    for (const auto& [answer, questions] :
         {std::pair{Answer::cancel, 1u}, std::pair{Answer::no, 1u}, std::pair{Answer::no, 0u}}) {
        open();
        window->answers.push_back(answer);
        editor().shown();
        EXPECT_EQ(window->questions.size(), questions);
        EXPECT_EQ(text(), "");
    }
    ASSERT_EQ(kept("backups").size(), 1u);
    EXPECT_EQ(readFile(dataFolder() + "/backups/" + kept("backups")[0]), "typed");
    EXPECT_TRUE(kept("recovery").empty());
}

TEST_F(Recovery, ExitWithoutChangesLeavesNothing) {
    open("given");
    editor().command(command_id::kExit);
    close();
    EXPECT_TRUE(kept("recovery").empty());
}

TEST_F(Recovery, TextThatOpenDropsIsOfferedTheNextTime) {
    const std::string path = folder.file("a.as");
    writeFile(path, "file");
    open();
    window->editor.type("unsaved");
    window->files.push_back(path);
    editor().command(command_id::kOpen);
    EXPECT_EQ(text(), "file");
    editor().command(command_id::kExit);
    open();
    window->answers.push_back(Answer::yes);
    editor().shown();
    EXPECT_EQ(text(), "unsaved");
}

TEST_F(Recovery, TextThatTheHostReceivedIsOfferedOnlyIfTheHostLostIt) {
    const auto deliver = [&] {
        open("version 1");
        setText("version 2");
        EXPECT_TRUE(editor().closeBox());
    };
    deliver();
    reopen("version 2");
    EXPECT_TRUE(window->questions.empty());
    deliver();
    reopen("another script");
    EXPECT_TRUE(window->questions.empty());
    reopen("version 1");
    EXPECT_EQ(window->questions.size(), 1u);
}

TEST_F(Recovery, CopyOfACrashWhoseTextTheHostBringsIsNotOffered) {
    open("version 1");
    setText("version 2");
    fakeClock.advance(10000);
    editor().tick();
    ASSERT_EQ(currentCopy(), "version 2");
    reopen("version 2");
    EXPECT_TRUE(window->questions.empty());
}

TEST_F(Recovery, TextsThatHostsReceivedDoNotPileUp) {
    for (int i = 0; i < 10; ++i) {
        reopen("script " + std::to_string(i));
        window->editor.type("changed ");
        EXPECT_TRUE(editor().closeBox());
        EXPECT_TRUE(window->questions.empty());
    }
    close();
    EXPECT_EQ(kept("recovery").size(), 2u * 6);  // copies and their locks
    reopen("script 9");
    ASSERT_EQ(window->questions.size(), 1u);
    EXPECT_THAT(window->questions[0], HasSubstr("Unsaved text of \"Untitled\" from "));
}

TEST_F(Recovery, CopyWhoseTextTheFileHoldsIsNotOffered) {
    const std::string path = folder.file("a.as");
    writeFile(path, "a");
    open();
    window->files.push_back(path);
    editor().command(command_id::kOpen);
    window->editor.type("b");
    editor().command(command_id::kExit);
    writeFile(path, "ba");
    reopen();
    EXPECT_TRUE(window->questions.empty());
}

TEST_F(Recovery, RecoveredTextDoesNotOverwriteANewerFileWithoutABackup) {
    const std::string path = folder.file("a.as");
    writeFile(path, "a");
    open();
    window->files.push_back(path);
    editor().command(command_id::kOpen);
    window->editor.type("b");
    editor().command(command_id::kExit);
    writeFile(path, "newer");
    open();
    window->answers.push_back(Answer::yes);
    editor().shown();
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(path), "ba");
    EXPECT_THAT(pane(), HasSubstr("changed by another program"));
}

TEST_F(Recovery, CopiesOfAnEditorThatIsStillOpenAreNotOffered) {
    open();
    window->editor.type("in the first");
    fakeClock.advance(10000);
    editor().tick();
    RecoveryStore second(systemFiles(), dataFolder() + "/recovery");
    EXPECT_TRUE(second.find().empty());
    close();
    EXPECT_EQ(second.find().size(), 1u);
}

TEST_F(Recovery, AScrambledTextIsNotKeptUnlessTheUserAllows) {
    open();
    window->editor.type("secret");
    fakeClock.advance(10000);
    editor().tick();
    frontend.number = 7;
    editor().command(command_id::kCrypt);
    editor().command(command_id::kCrypt);  // readable again
    EXPECT_EQ(text(), "secret");
    fakeClock.advance(10000);
    editor().tick();
    EXPECT_EQ(currentCopy(), "none");
    EXPECT_FALSE(window->checked.at(command_id::kRecoveryCopies));
    editor().command(command_id::kRecoveryCopies);
    window->editor.type("x");
    fakeClock.advance(10000);
    editor().tick();
    EXPECT_EQ(currentCopy(), "xsecret");
}

TEST_F(Recovery, AFolderThatCannotBeMadeDisturbsNobody) {
    writeFile(folder.path() / "data", "a file where the folder should be");
    open();
    window->editor.type("abc");
    fakeClock.advance(10000);
    editor().tick();
    editor().command(command_id::kNew);
    editor().command(command_id::kExit);
    EXPECT_TRUE(window->ended);
    EXPECT_TRUE(window->errors.empty());
}

}  // namespace
}  // namespace korvant::test
