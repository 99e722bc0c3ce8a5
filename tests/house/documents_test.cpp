// What the documents tell a reader to do works.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "document_blocks.h"
#include "house/source_tree.h"
#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace fs = std::filesystem;

namespace korvant::test {

namespace {

const std::string kBin = korvant::test::binFolder();

/// A folder like the one a reader sits in: examples/, and a `dev` that runs what is built already.
class ReadersFolder : public TemporaryFolder {
  public:
    ReadersFolder() {
        fs::copy(kRoot / "examples", path() / "examples", fs::copy_options::recursive);
        fs::create_directory_symlink(fs::path(kBin).parent_path(), path() / "build");
        writeFile(path() / "dev",
                  "#!/bin/sh\n[ \"$1\" = run ] || exit 0\nshift\n"
                  "[ $# -gt 0 ] || set -- run examples/tour.as\n"
                  "exec korvant \"$@\"\n");
        fs::permissions(path() / "dev", fs::perms::owner_all);
    }
};

bool isInstalled(const DocumentBlock& block) {
    return block.mark == "install";
}

ProcessResult runBlock(const DocumentBlock& block, const ReadersFolder& folder) {
    const std::string script = "set -euo pipefail\nexport PATH=" + kBin + ":$PATH\n";
    ProcessOptions options;
    options.folder = folder.path().string();
    options.seconds = 120;
    options.environment = {"HOME=" + folder.file("home")};
    std::vector<std::string> command = {"/bin/bash", "-c", script + block.text};
    if (block.mark == "display") {
        const std::string display = (kRoot / "tests/support/with_display.sh").string();
        command.insert(command.begin(), {display, "--seconds", "100"});
    }
    return runProcess(command, options);
}

class Document : public ::testing::TestWithParam<std::string> {};

TEST_P(Document, EveryCommandWorks) {
    static const std::string kFile = "file ";
    const ReadersFolder folder;
    for (const DocumentBlock& block : blocksOf(GetParam())) {
        if (block.mark.rfind(kFile, 0) == 0)
            writeFile(folder.path() / block.mark.substr(kFile.size()), block.text);
        if (block.language != "sh") continue;
        if (isInstalled(block) && !fs::exists(kBin + "/libkorvantide.so")) continue;
        const ProcessResult result = runBlock(block, folder);
        EXPECT_EQ(result.exitCode, 0) << block.place() << "\n"
                                      << block.text << result.output << result.errors;
    }
}

TEST_P(Document, EveryWholeScriptBuilds) {
    const TemporaryFolder folder;
    for (const DocumentBlock& block : blocksOf(GetParam())) {
        if (block.language != "angelscript" || block.text.find("int main()") == std::string::npos)
            continue;
        writeFile(folder.path() / "script.as", block.text);
        const ProcessResult result = runKorvant({"check", folder.file("script.as")});
        EXPECT_EQ(result.exitCode, 0) << block.place() << "\n" << result.errors;
    }
}

TEST_P(Document, LinksLeadToFilesThatAreThere) {
    static const std::regex kLink("\\]\\(([^)#:]+)\\)");
    const std::string text = readFile(kRoot / GetParam());
    const fs::path folder = (kRoot / GetParam()).parent_path();
    for (std::sregex_iterator link(text.begin(), text.end(), kLink), end; link != end; ++link)
        EXPECT_TRUE(fs::exists(folder / (*link)[1].str())) << GetParam() << ": " << (*link)[1];
}

TEST_P(Document, NamesNoCommandOfDevThatIsNotThere) {
    static const std::regex kCommand("\\./dev ([a-z]+)");
    static const std::string help = runProcess({(kRoot / "dev").string(), "help"}).output;
    const std::string text = readFile(kRoot / GetParam());
    for (std::sregex_iterator use(text.begin(), text.end(), kCommand), end; use != end; ++use)
        EXPECT_TRUE(std::regex_search(help, std::regex("(/dev|\\|) " + (*use)[1].str() + "\\b")))
            << GetParam() << ": ./dev " << (*use)[1];
}

std::string nameOf(const ::testing::TestParamInfo<std::string>& info) {
    return std::regex_replace(info.param, std::regex("[^A-Za-z]+"), "_");
}

INSTANTIATE_TEST_SUITE_P(All, Document, ::testing::ValuesIn(documents()), nameOf);

/// "Suite" and "Suite.Name" of every test in the sources.
std::set<std::string> namesOfTests() {
    static const std::regex kTest("TEST(?:_F|_P)?\\((\\w+),\\s*(\\w+)\\)");
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / "tests")) {
        if (entry.path().extension() != ".cpp") continue;
        const std::string text = readFile(entry.path());
        for (std::sregex_iterator test(text.begin(), text.end(), kTest), end; test != end; ++test) {
            names.insert((*test)[1].str());
            names.insert((*test)[1].str() + "." + (*test)[2].str());
        }
    }
    return names;
}

TEST(Documents, EveryTestThatTheTablesNameExists) {
    static const std::regex kName("`([A-Z]\\w+(\\.[A-Z]\\w+)?)`");
    const std::set<std::string> tests = namesOfTests();
    std::string text = readFile(kRoot / "docs/robustness.md");
    text = text.substr(text.find("\n| #"));
    int named = 0;
    for (std::sregex_iterator name(text.begin(), text.end(), kName), end; name != end; ++name) {
        EXPECT_TRUE(tests.count((*name)[1])) << (*name)[1];
        ++named;
    }
    EXPECT_GT(named, 100);
}

/// The cells of the tables in docs/robustness.md, row by row; without their heads.
std::vector<std::vector<std::string>> dangers() {
    std::vector<std::vector<std::string>> rows;
    std::istringstream text(readFile(kRoot / "docs/robustness.md"));
    for (std::string line; std::getline(text, line);) {
        if (line.size() < 3 || !std::isdigit(static_cast<unsigned char>(line[2]))) continue;
        std::vector<std::string> cells;
        std::istringstream cut(line.substr(2));
        for (std::string cell; std::getline(cut, cell, '|');) cells.push_back(cell);
        rows.push_back(cells);
    }
    return rows;
}

TEST(Documents, EveryDangerHasATestOrAReason) {
    static const std::regex kFuzzTarget("fuzz target `(\\w+)`");
    EXPECT_GT(dangers().size(), 80u);
    for (const std::vector<std::string>& cells : dangers()) {
        ASSERT_EQ(cells.size(), 4u) << cells[0];
        const std::string& test = cells[3];
        EXPECT_TRUE(test.find('`') != std::string::npos || test.rfind(" open: ", 0) == 0) << test;
        std::smatch target;
        if (std::regex_search(test, target, kFuzzTarget)) {
            const std::string program = "fuzz/fuzz_" + target[1].str() + ".cpp";
            EXPECT_TRUE(fs::exists(kRoot / program)) << program;
        }
    }
}

TEST(Documents, TheHostOnThePageIsTheOneThatIsBuilt) {
    std::string shown;
    for (const DocumentBlock& block : blocksOf("docs/embedding.md"))
        if (block.language == "cpp") shown += block.text;
    EXPECT_EQ(shown, readFile(kRoot / "examples/small_host.cpp"));
    EXPECT_LT(std::count(shown.begin(), shown.end(), '\n'), 125);
}

TEST(Documents, TheHostOnThePageSaysHowARunWent) {
    const std::string host = kBin + "/small_host";
    if (!fs::exists(host)) GTEST_SKIP() << "built without windows";
    const TemporaryFolder folder;
    ProcessOptions options;
    options.environment = {"DISPLAY=", "WAYLAND_DISPLAY="};
    const ProcessResult greeting = runProcess({host}, options);
    EXPECT_EQ(greeting.output, "1450 turns a minute\n");
    EXPECT_EQ(greeting.errors, "note: asking P-7\n");

    writeFile(folder.path() / "typo.as", "int main() {\n  return pump();\n}\n");
    const ProcessResult typo = runProcess({host, folder.file("typo.as")}, options);
    EXPECT_EQ(typo.exitCode, 1);
    EXPECT_THAT(typo.errors,
                ::testing::HasSubstr("line 2, column 10: error: No matching symbol 'pump'"));

    writeFile(folder.path() / "bad.as", "int main() {\n  string s;\n  s[9] = 1;\n  return 0;\n}\n");
    const ProcessResult bad = runProcess({host, folder.file("bad.as")}, options);
    EXPECT_EQ(bad.exitCode, 6);
    EXPECT_THAT(bad.errors, ::testing::HasSubstr("line 3: "));

    const ProcessResult none = runProcess({host, folder.file("none.as")}, options);
    EXPECT_EQ(none.exitCode, 66);
    EXPECT_THAT(none.errors, ::testing::HasSubstr("none.as: No such file"));
}

}  // namespace

}  // namespace korvant::test
