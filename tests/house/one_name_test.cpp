// One name, one type: two definitions of a qualified name are undefined behaviour that no linker
// reports, and end a program far from where they stand.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "house/source_tree.h"

namespace fs = std::filesystem;

namespace {

/// The text without comments, literals and lines of the preprocessor.
std::string bareCode(const std::string& text) {
    static const std::regex kNoCode(
        R"re(//[^\n]*|/\*[^]*?\*/|R"(\w*)\([^]*?\)\1"|"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')re"
        R"re(|\n[ \t]*#(?:[^\\\n]|\\[^])*)re");
    return std::regex_replace(text, kNoCode, " ");
}

/// Follows the braces of a file and collects the types that its namespaces define.
class Definitions {
  public:
    std::vector<std::string> of(const std::string& code) {
        std::string statement;
        for (const char c : code) {
            if (c == '{') open(statement);
            if (c == '}' && !scopes_.empty()) scopes_.pop_back();
            if (c == '{' || c == '}' || c == ';')
                statement.clear();
            else
                statement += c;
        }
        return found_;
    }

  private:
    static constexpr char kClosed[] = "{}";  ///< a function, or a namespace without a name

    void open(const std::string& statement) {
        static const std::regex kSpace(R"re(^\s*(?:inline\s+)?namespace\s+([\w:]+)\s*$)re");
        static const std::regex kType(
            R"re((?:^|\s)(?:struct|class|union|enum)\s+(?:class\s+|struct\s+)?(?:alignas\s*\([^]*?\)+\s*)?([\w:]+)\s*(?:final\s*)?(?::[^:=][^=()]*)?$)re");
        std::smatch match;
        const bool reached = scopes_.empty() || scopes_.back() != kClosed;
        if (reached && std::regex_search(statement, match, kSpace)) {
            scopes_.push_back(qualified(match[1]));
        } else if (reached && statement.find("template <>") == std::string::npos &&
                   std::regex_search(statement, match, kType)) {
            found_.push_back(qualified(match[1]));
            scopes_.push_back(found_.back());
        } else {
            scopes_.push_back(kClosed);
        }
    }
    std::string qualified(const std::string& name) const {
        return scopes_.empty() ? name : scopes_.back() + "::" + name;
    }

    std::vector<std::string> scopes_;
    std::vector<std::string> found_;
};

std::vector<std::string> definitionsIn(const std::string& text) {
    return Definitions().of(bareCode("\n" + text));
}

/// Two files for two systems may define the same: one of them is compiled.
std::string withoutSystem(std::string path) {
    static const std::regex kSystem("_(posix|win32)(?=\\.)");
    return std::regex_replace(path, kSystem, "");
}

TEST(OneName, StandsForOneType) {
    std::map<std::string, std::string> places;
    for (const char* folder : {"src", "apps", "include"})
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            const auto extension = entry.path().extension();
            if (extension != ".cpp" && extension != ".h") continue;
            std::stringstream text;
            text << std::ifstream(entry.path()).rdbuf();
            const std::string place =
                withoutSystem(fs::relative(entry.path(), kRoot).generic_string());
            for (const std::string& name : definitionsIn(text.str())) {
                const auto [known, isNew] = places.emplace(name, place);
                EXPECT_TRUE(isNew || known->second == place)
                    << name << " is defined in " << known->second << " and in " << place;
            }
        }
    EXPECT_EQ(places.count("korvant::ScriptSession::Impl"), 1u);
    EXPECT_GT(places.size(), 300u);
}

TEST(OneName, IsReadThroughNamespacesAndBodies) {
    const std::vector<std::string> expected = {"a::b::One", "a::b::One::Inner", "a::Two", "Three"};
    EXPECT_EQ(definitionsIn(
                  "namespace a { namespace b {\n"
                  "struct One : Base<int> { enum class Inner { x }; int f() { struct L {}; } };\n"
                  "struct Later; }\n namespace { class Hidden {}; }\n"
                  "#define LINE struct No {\n"
                  "template <class T> class Two final { const char* s = \"struct S {\"; };\n"
                  "void g(struct One& one) { } }\n"
                  "// struct Comment {\n"
                  "struct Three { };\n"),
              expected);
}

}  // namespace
