// The scripting manual: complete, with links that lead somewhere and examples that build.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

#include "module/families.h"
#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace fs = std::filesystem;

namespace korvant::test {
namespace {

const fs::path kManual = fs::path(korvant::test::binFolder()) / "scripting_manual";

/// What the examples talk about without declaring it.
constexpr char kSurroundings[] =
    "double grade = 0, depth = 0;\n"
    "int code = 0, i = 0, index = 0, answer = 0;\n"
    "bool value = false;\n"
    "double[] values(3);\n"
    "string s, a, b, first, last, name, category, details;\n"
    "Object form, interval, other;\n";

std::map<std::string, std::string> pages() {
    std::map<std::string, std::string> all;
    for (const auto& entry : fs::directory_iterator(kManual))
        if (entry.path().extension() == ".html")
            all[entry.path().filename().string()] = readFile(entry.path());
    return all;
}

/// Every text between `begin` and `end`.
std::vector<std::string> between(const std::string& text, const std::string& begin,
                                 const std::string& end) {
    std::vector<std::string> found;
    for (std::size_t at = 0; (at = text.find(begin, at)) != std::string::npos;) {
        at += begin.size();
        const std::size_t stop = text.find(end, at);
        if (stop == std::string::npos) break;
        found.push_back(text.substr(at, stop - at));
    }
    return found;
}

std::string plain(std::string html) {
    for (const auto& [code, character] :
         {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}})
        for (std::size_t at = 0; (at = html.find(code, at)) != std::string::npos; ++at)
            html.replace(at, std::string(code).size(), character);
    return html;
}

TEST(Manual, EveryLinkAndPictureIsThere) {
    const auto all = pages();
    ASSERT_TRUE(all.count("index.html"));
    std::set<std::string> linked{"index.html"};
    for (const auto& [name, html] : all) {
        std::vector<std::string> targets = between(html, "href=\"", "\"");
        for (const std::string& picture : between(html, "src=\"", "\"")) targets.push_back(picture);
        for (const std::string& target : targets) {
            const std::size_t hash = target.find('#');
            const std::string file = hash == 0 ? name : target.substr(0, hash);
            EXPECT_TRUE(fs::is_regular_file(kManual / file)) << name << " leads to " << target;
            if (file != name) linked.insert(file);
            if (hash == std::string::npos || !all.count(file)) continue;
            const std::string anchor = "id=\"" + target.substr(hash + 1) + "\"";
            EXPECT_NE(all.at(file).find(anchor), std::string::npos) << name << " to " << target;
        }
        const std::vector<std::string> ids = between(html, "id=\"", "\"");
        EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size()) << name;
        EXPECT_EQ(html.find('@' + std::string("IMAGE")), std::string::npos) << name;
    }
    for (const auto& [name, html] : all) EXPECT_TRUE(linked.count(name)) << name;
}

TEST(Manual, EveryFunctionHasItsDeclarationMeaningExampleAndFailure) {
    std::string all;
    for (const auto& [name, html] : pages()) all += plain(html);
    for (const FunctionFamily& family : allFamilies())
        for (const FunctionRow& row : family.rows) {
            EXPECT_STRNE(row.help, "") << row.declaration;
            EXPECT_STRNE(row.example, "") << row.declaration;
            for (const char* text : {row.declaration, row.help, row.example, row.failure})
                EXPECT_NE(all.find(text), std::string::npos) << row.declaration << ": " << text;
        }
}

TEST(Manual, EveryExampleBuilds) {
    const TemporaryFolder folder;
    int number = 0;
    for (const auto& [name, html] : pages())
        for (const std::string& block : between(html, "<pre><code>", "</code></pre>")) {
            if (name == "expressions.html") continue;
            const std::string code = plain(block), file = folder.file(std::to_string(number++));
            const bool whole = code.find("int main()") != std::string::npos;
            std::vector<std::string> attempts{code};
            if (!whole)
                attempts = {kSurroundings + ("int main() {\n" + code) + "\nreturn 0;\n}\n",
                            kSurroundings + code + "\nint main() { return 0; }\n"};
            std::string errors;
            for (const std::string& attempt : attempts) {
                writeFile(file, attempt);
                const ProcessResult result = runKorvant({"check", file});
                if (result.exitCode == 0) {
                    errors.clear();
                    break;
                }
                errors += result.errors;
            }
            EXPECT_EQ(errors, "") << name << ":\n" << code;
        }
    EXPECT_GT(number, 100);
}

/// "double x = cos(0);  // 1"
TEST(Manual, ExamplesGiveWhatTheirRemarksSay) {
    std::string body, wanted;
    for (const auto& [name, html] : pages())
        for (const std::string& block : between(html, "<pre><code>", "</code></pre>")) {
            const std::string code = plain(block);
            const std::size_t equals = code.find(" = "), remark = code.find(";  // ");
            if (name.rfind("ref-", 0) != 0 || equals == std::string::npos ||
                remark == std::string::npos)
                continue;
            const std::size_t blank = code.rfind(' ', equals - 1);
            const std::size_t begin = blank == std::string::npos ? 0 : blank + 1;
            const std::string type = blank == std::string::npos ? "string " : "";
            body += "{ " + type + code.substr(0, remark) + "; Print(\"\" + " +
                    code.substr(begin, equals - begin) + " + \"\\n\"); }\n";
            wanted += code.substr(remark + 6) + "\n";
        }
    const TemporaryFolder folder;
    writeFile(folder.file("all.as"), "int main() {\n" + body + "return 0;\n}\n");
    const ProcessResult result = runKorvant({"run", folder.file("all.as")});
    EXPECT_EQ(result.output, wanted) << result.errors;
    EXPECT_GT(std::count(wanted.begin(), wanted.end(), '\n'), 30);
}

}  // namespace
}  // namespace korvant::test
