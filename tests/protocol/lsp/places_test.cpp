// What the language server says of the names of 20 scripts. Each script in places/ has labels in
// front of its names and, behind it, a table of what a reader expects there.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "protocol/lsp/language_client.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

/// A script, its labels, and the rows of its table.
struct LabelledScript {
    explicit LabelledScript(const fs::path& path) : uri("file://" + path.string()) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream all;
        all << file.rdbuf();
        text = all.str();
        const TextDocument document(text);
        for (std::uint32_t line = 0; line < document.lineCount(); ++line) {
            const std::string content(document.lineText(line));
            if (content.starts_with("//: ")) {
                rows.push_back(content.substr(4));
                continue;
            }
            for (auto at = content.find("/*"); at != std::string::npos;
                 at = content.find("/*", at + 1)) {
                const auto end = content.find("*/", at);
                const std::string label = content.substr(at + 2, end - at - 2);
                const auto place = document.utf16PositionOf(document.lineStart(line) + end + 2);
                labels[label] = {{"line", place.line}, {"character", place.column}};
            }
        }
    }
    Json at(const std::string& label) const {
        EXPECT_TRUE(labels.count(label)) << "no label " << label;
        return {{"textDocument", {{"uri", uri}}}, {"position", labels.at(label)}};
    }
    std::string labelOf(const Json& range) const {
        for (const auto& [label, place] : labels)
            if (place == range["start"]) return label;
        return range["start"].dump();
    }
    std::vector<std::string> labelsOf(const Json& list) const {
        std::vector<std::string> found;
        for (const Json& one : list) found.push_back(labelOf(one["range"]));
        std::sort(found.begin(), found.end());
        return found;
    }

    std::string uri, text;
    std::map<std::string, Json> labels;
    std::vector<std::string> rows;
};

class Places : public ::testing::TestWithParam<fs::path> {
  protected:
    Places() : script_(GetParam()), client_(capabilities()) {
        client_.open(script_.uri, script_.text);
    }

    static Json capabilities() {
        return {
            {"textDocument", {{"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}}}}};
    }
    Json result(const std::string& method, const Json& params) {
        return client_.ask("textDocument/" + method, params)["result"];
    }

    /// `words` from the equals sign on; "*" stands for places without a label.
    static bool same(const std::vector<std::string>& found, const std::vector<std::string>& row) {
        const auto equals = std::find(row.begin(), row.end(), "=");
        std::vector<std::string> wanted(equals == row.end() ? row.end() : equals + 1, row.end());
        std::sort(wanted.begin(), wanted.end());
        const auto more = std::find(wanted.begin(), wanted.end(), "*");
        if (more == wanted.end()) return found == wanted;
        wanted.erase(more);
        return std::includes(found.begin(), found.end(), wanted.begin(), wanted.end());
    }

    void leadsTo(const std::string& method, const std::vector<std::string>& row) {
        const Json found = result(method, script_.at(row[1]));
        EXPECT_EQ(found.is_null() ? "-" : script_.labelOf(found["range"]), row[3]);
    }
    void references(const std::vector<std::string>& row) {
        Json params = script_.at(row[1]);
        const auto marked = script_.labelsOf(result("documentHighlight", params));
        params["context"] = {{"includeDeclaration", true}};
        const auto found = script_.labelsOf(result("references", params));
        EXPECT_TRUE(same(found, row)) << ::testing::PrintToString(found);
        EXPECT_EQ(marked, found);
    }
    void rename(const std::vector<std::string>& row) {
        Json params = script_.at(row[1]);
        params["newName"] = row[2];
        const Json answer = client_.ask("textDocument/rename", params);
        if (row[3] == "refused") {
            EXPECT_FALSE(answer.value("result", Json()).is_object()) << answer.dump();
            EXPECT_NE(answer["error"].value("message", ""), "");
            return;
        }
        ASSERT_TRUE(answer.contains("result")) << answer.dump();
        const auto found = script_.labelsOf(answer["result"]["changes"][script_.uri]);
        EXPECT_TRUE(same(found, row)) << ::testing::PrintToString(found);
    }
    void signature(const std::vector<std::string>& row, const std::string& text) {
        const Json found = result("signatureHelp", script_.at(row[1]));
        if (row[3] == "-") {
            EXPECT_TRUE(found.is_null());
            return;
        }
        ASSERT_TRUE(found.is_object());
        const Json& all = found["signatures"];
        EXPECT_EQ(std::to_string(all.size()), row[3]);
        EXPECT_EQ(found["activeSignature"].dump(), row[4]);
        EXPECT_EQ(found["activeParameter"].dump(), row[5]);
        const Json active = all.at(found["activeSignature"].get<std::size_t>());
        EXPECT_NE(active.value("label", "").find(text), std::string::npos) << active.dump();
    }
    void offers(const std::string& label, const std::string& list) {
        std::set<std::string> found;
        const Json answer = result("completion", script_.at(label));
        for (const Json& item : answer["items"]) found.insert(item.value("label", ""));
        for (const std::string& word : wordsOf(list)) {
            const bool absent = word[0] == '!';
            EXPECT_EQ(found.count(absent ? word.substr(1) : word), absent ? 0u : 1u) << word;
        }
    }
    static bool holds(const Json& tree, const std::vector<std::string>& row,
                      const std::string& owner) {
        return std::any_of(tree.begin(), tree.end(), [&](const Json& one) {
            const bool fits = one["name"] == row[1] && one["kind"].dump() == row[2] &&
                              owner == (row.size() > 3 ? row[3] : "");
            return fits || holds(one["children"], row, one.value("name", ""));
        });
    }

    void judge(const std::string& line) {
        SCOPED_TRACE(line);
        const std::vector<std::string> row = wordsOf(line);
        const auto colon = line.find(" : ");
        const std::string text = colon == std::string::npos ? "" : line.substr(colon + 3);
        if (row[0] == "def") return leadsTo("definition", row);
        if (row[0] == "tdef") return leadsTo("typeDefinition", row);
        if (row[0] == "refs") return references(row);
        if (row[0] == "rename") return rename(row);
        if (row[0] == "sign") return signature(row, text);
        if (row[0] == "offer") return offers(row[1], text);
        if (row[0] == "impl") {
            const auto found = script_.labelsOf(result("implementation", script_.at(row[1])));
            EXPECT_TRUE(same(found, row)) << ::testing::PrintToString(found);
        } else if (row[0] == "hover") {
            const Json found = result("hover", script_.at(row[1]));
            ASSERT_TRUE(found.is_object());
            EXPECT_NE(found["contents"].value("value", "").find(text), std::string::npos)
                << found.dump();
        } else {
            ASSERT_EQ(row[0], "symbol");
            const Json tree = result("documentSymbol", {{"textDocument", {{"uri", script_.uri}}}});
            EXPECT_TRUE(holds(tree, row, "")) << tree.dump();
        }
    }

    LabelledScript script_;
    LanguageClient client_;
};

TEST_P(Places, MeanWhatAReaderExpects) {
    for (const Json& one : client_.diagnosticsOf(script_.uri))
        EXPECT_EQ(one["severity"], 2) << one.dump();
    EXPECT_GT(script_.rows.size(), 7u);
    for (const std::string& row : script_.rows) judge(row);
}

std::vector<fs::path> scripts() {
    std::vector<fs::path> found;
    for (const auto& entry :
         fs::directory_iterator(korvant::test::sourceFolder() + "/tests/protocol/lsp/places"))
        found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

INSTANTIATE_TEST_SUITE_P(Language, Places, ::testing::ValuesIn(scripts()),
                         [](const auto& file) { return file.param.stem().string(); });

}  // namespace
}  // namespace korvant::test
