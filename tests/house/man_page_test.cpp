// The man page tells every command and switch that the program has, and no other.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {

namespace {

using Switches = std::map<std::string, std::set<std::string>>;

std::set<std::string> matches(const std::string& text, const std::regex& pattern) {
    std::set<std::string> found;
    for (std::sregex_iterator one(text.begin(), text.end(), pattern), end; one != end; ++one)
        found.insert((*one)[1].str());
    return found;
}

const std::regex kLongSwitch("(--[a-z][a-z-]+)");

/// The switches that the program says it has, by command; "" for those before a command.
Switches helpOfProgram() {
    static const std::regex kCommand("\n  ([a-z]+) +[A-Z]");
    const std::string help = runKorvant({"--help"}).output;
    Switches found;
    found[""] = matches(help, kLongSwitch);
    for (const std::string& command : matches(help, kCommand)) {
        found[command] = matches(runKorvant({command, "--help"}).output, kLongSwitch);
        found[command].erase("--help");
    }
    return found;
}

/// The page as text: no font changes, dashes as they are typed.
std::string plainPage() {
    std::string page = readFile(korvant::test::sourceFolder() + "/packaging/korvant.1");
    page = std::regex_replace(page, std::regex("\\\\f[BRI]"), "");
    return std::regex_replace(page, std::regex("\\\\-"), "-");
}

/// Its sections by heading, in which a command's section holds that of the limits where it names
/// them.
Switches switchesOfPage() {
    static const std::regex kHeading("^\\.S[HS] (korvant )?(.*)$"), kUses("^\\.B LIMITS$");
    std::map<std::string, std::string> sections;
    std::istringstream page(plainPage());
    std::string current;
    std::smatch match;
    for (std::string line; std::getline(page, line);) {
        if (std::regex_match(line, match, kHeading)) current = match[2];
        sections[current] += line + "\n";
    }
    Switches found;
    for (const auto& [name, text] : sections) {
        if (!std::islower(static_cast<unsigned char>(name[0] ? name[0] : 'A'))) continue;
        const bool limits = text.find("\n.B LIMITS\n") != std::string::npos;
        found[name] = matches(text + (limits ? sections["LIMITS"] : ""), kLongSwitch);
    }
    found[""] = matches(sections["OPTIONS"], kLongSwitch);
    return found;
}

TEST(ManPage, NamesEveryCommandAndSwitchAndNoOther) {
    Switches program = helpOfProgram();
    Switches page = switchesOfPage();
    ASSERT_GE(program.size(), 8u);
    // The page says in words that `check` takes the first switches of the limits only.
    for (const std::string& name : program["check"]) EXPECT_TRUE(page["check"].count(name)) << name;
    program.erase("check");
    page.erase("check");
    EXPECT_EQ(page, program);
}

}  // namespace

}  // namespace korvant::test
