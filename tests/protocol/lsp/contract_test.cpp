// What clients of the language server rely on beside the places of names.
#include <chrono>
#include <cstdlib>
#include <random>

#include "base/text/text_encoding.h"
#include "protocol/lsp/language_client.h"
#include "support/own_time.h"
#include "support/script_files.h"

namespace korvant::test {
namespace {

constexpr char kUri[] = "file:///script.as";

Json document(const std::string& uri = kUri) {
    return {{"textDocument", {{"uri", uri}}}};
}

Json at(int line, int character) {
    Json params = document();
    params["position"] = {{"line", line}, {"character", character}};
    return params;
}

Json rangeOf(int line, int begin, int end) {
    return {{"start", {{"line", line}, {"character", begin}}},
            {"end", {{"line", line}, {"character", end}}}};
}

TEST(LanguageServer, HasALifeInItsOrder) {
    LanguageClient client(Json::object(), false);
    EXPECT_EQ(client.ask("textDocument/hover", at(0, 0))["error"]["code"], -32002);
    client.ask("initialize", {{"capabilities", Json::object()}});
    EXPECT_EQ(client.ask("textDocument/unheardOf", at(0, 0))["error"]["code"], -32601);
    EXPECT_TRUE(client.ask("textDocument/hover", at(0, 0))["result"].is_null());
    EXPECT_TRUE(client.ask("shutdown", nullptr)["result"].is_null());
    EXPECT_EQ(client.ask("textDocument/hover", at(0, 0))["error"]["code"], -32600);
    client.tell("exit", nullptr);
    EXPECT_EQ(client.left(), 0);

    LanguageClient hasty;
    hasty.tell("exit", nullptr);
    EXPECT_EQ(hasty.left(), 1);
    LanguageClient gone;
    EXPECT_EQ(gone.finish(), 1);
}

TEST(LanguageServer, WhatIsNoMessageIsPassedOver) {
    LanguageClient client;
    const std::string noise[] = {"Content-Length: 99999999999999999999\r\n\r\n{}",
                                 "Content-Length: 4000000000\r\n\r\n{}",
                                 "Content-Length: -5\r\n\r\n{}",
                                 "Content-Length: abc\r\n\r\n{}",
                                 "X: " + std::string(std::size_t{1} << 20, 'a') + "\r\n\r\n",
                                 rpc::framed("{\"a\":\xFF\xFE}"),
                                 rpc::framed(std::string("{\"a\":\0}", 7)),
                                 rpc::framed(std::string(100000, '[') + std::string(100000, ']'))};
    for (const std::string& bytes : noise) {
        EXPECT_EQ(client.noise(bytes).value("code", 0), -32700) << bytes.substr(0, 40);
        EXPECT_TRUE(client.ask("textDocument/hover", at(0, 0))["result"].is_null());
    }
    client.ask("shutdown", nullptr);
    client.tell("exit", nullptr);
    EXPECT_EQ(client.left(), 0);
}

TEST(LanguageServer, TellsWhatIsWrongAndTakesItBack) {
    LanguageClient client;
    client.open(kUri, "int main() {\n    string s = \"\xF0\x9F\x98\x80\" + wrong;\n}\n");
    const Json found = client.diagnosticsOf(kUri);
    ASSERT_EQ(found.size(), 1u) << found.dump();
    EXPECT_EQ(found[0]["range"], rangeOf(1, 22, 27)) << "columns count UTF-16";
    EXPECT_EQ(found[0]["severity"], 1);
    EXPECT_EQ(found[0]["message"], "No matching symbol 'wrong'");
    client.tell("textDocument/didClose", document());
    EXPECT_TRUE(client.diagnosticsOf(kUri).empty());

    LanguageClient bytes(Json::parse(R"({"general":{"positionEncodings":["utf-8","utf-16"]}})"));
    EXPECT_EQ(bytes.initialized()["capabilities"]["positionEncoding"], "utf-8");
    bytes.open(kUri, "int main() {\n    string s = \"\xF0\x9F\x98\x80\" + wrong;\n}\n");
    EXPECT_EQ(bytes.diagnosticsOf(kUri)[0]["range"], rangeOf(1, 24, 29));
    LanguageClient units(Json::parse(R"({"general":{"positionEncodings":["utf-16","utf-8"]}})"));
    EXPECT_EQ(units.initialized()["capabilities"]["positionEncoding"], "utf-16");
}

TEST(LanguageServer, AnExpensiveTextHoldsNothingUp) {
    LanguageClient client;
    std::string text = "int small = 1;\nint main() { int a = 0;\n";
    for (int i = 0; i < 150'000; ++i) text += "a=a+1;\n";
    client.open(kUri, text + "return a; }\n");
    client.open("file:///other.as", "int main() { return wrong; }");
    // While its messages are still being found, in the other process.
    EXPECT_EQ(client.ask("textDocument/definition", at(0, 5))["result"]["range"], rangeOf(0, 4, 9));
    EXPECT_EQ(client.diagnosticsOf("file:///other.as").size(), 1u);
}

TEST(LanguageServer, DeepAndEndlessTextsAreAnswered) {
    LanguageClient client;
    int version = 0;
    const auto many = [](const std::string& part, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += part;
        return text;
    };
    constexpr int kMany = 30'000;
    for (const std::string& text : std::vector<std::string>{
             "int x = " + many("(", kMany) + "1" + many(")", kMany) + ";",
             "int x = " + many("-", kMany) + "1;", many("class A {", kMany),
             many("namespace a {", kMany), "array<" + many("array<", kMany) + "int x;",
             "int x = a" + many("[a", kMany) + ";", "int x = " + many("true ? 1 : ", kMany) + "2;",
             "class A { A@ a; } A@ q; int x = q" + many(".a", kMany) + ";",
             "int main() " + many("{", kMany),
             "interface A : B, C {} interface B : A, C {}"
             " interface C : A, B {} void f(A@ a) { a.b(); }",
             "int x = 1" + many("+1", kMany) + ";"}) {
        client.open(kUri, text + "\nint main() { return x; }\n", ++version);
        for (const char* method : {"hover", "completion", "definition", "references",
                                   "documentSymbol", "semanticTokens/full", "foldingRange"})
            EXPECT_FALSE(
                client.ask(std::string("textDocument/") + method, at(1, 20)).contains("error"))
                << method << " " << text.substr(0, 40);
    }
}

/// Whose work grows with the square of the classes took minutes.
TEST(LanguageServer, ALongLineOfClassesIsAnsweredSoon) {
    constexpr int kClasses = 5000;
    std::string text = "class C0 { void f() {} }\n";
    for (int i = 1; i < kClasses; ++i)
        text +=
            "class C" + std::to_string(i) + " : C" + std::to_string(i - 1) + " { void f() {} }\n";
    LanguageClient client;
    client.open(kUri, text);
    const auto began = std::chrono::steady_clock::now();
    for (const int line : {0, kClasses / 2, kClasses - 1}) {
        const std::string before = text.substr(0, text.find("f()"));
        const auto column =
            line == 0 ? before.size() : std::string("class C2500 : C2499 { void ").size();
        const auto found =
            client.ask("textDocument/references", at(line, static_cast<int>(column)));
        EXPECT_EQ(found["result"].size(), static_cast<std::size_t>(kClasses));
        EXPECT_EQ(
            client.ask("textDocument/implementation", at(line, static_cast<int>(column)))["result"]
                .size(),
            static_cast<std::size_t>(kClasses));
    }
    EXPECT_EQ(client.ask("textDocument/implementation", at(0, 7))["result"].size(), kClasses - 1u);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(10 * kSlowdown));
}

/// A text as a client keeps it, edited at random.
class EditedText {
  public:
    explicit EditedText(std::string text, unsigned seed)
        : document_(std::move(text)), random_(seed) {}

    const std::string& text() const { return document_.text(); }
    Json edit() {
        const auto anywhere = [&] {
            const std::size_t offset = random_() % (text().size() + 1);
            const TextPosition place = document_.utf16PositionOf(offset);
            return std::pair(document_.offsetOfUtf16(place), place);
        };
        auto first = anywhere();
        auto last = random_() % 3 == 0 ? anywhere() : first;
        if (last.first < first.first) std::swap(first, last);
        if (last.first - first.first > 40) last = first;
        static constexpr const char* kPieces[] = {"",   "x",  "\xF0\x9D\x84\x9E", "\r\n", "\t",
                                                  "é",  "\n", "int a = 1;\r\n",   "\"",   "/*",
                                                  "*/", "{}"};
        const std::string with = kPieces[random_() % std::size(kPieces)];
        document_.replace({first.first, last.first}, with);
        const auto json = [](TextPosition place) {
            return Json{{"line", place.line}, {"character", place.column}};
        };
        return {{"range", {{"start", json(first.second)}, {"end", json(last.second)}}},
                {"text", with}};
    }

  private:
    TextDocument document_;
    std::mt19937 random_;
};

TEST(LanguageServer, EditsAndWholeTextsComeToTheSame) {
    LanguageClient client;
    EditedText text(
        "// \xF0\x9F\x98\x80\r\nclass A {\r\n\tint b;\r\n}\r\nint main() { return 0; }\n", 7);
    const std::string whole = "file:///whole.as";
    client.open(kUri, text.text());
    for (int round = 1; round <= 40; ++round) {
        Json changes = Json::array();
        for (int i = 0; i < 25; ++i) changes.push_back(text.edit());
        client.tell("textDocument/didChange",
                    {{"textDocument", {{"uri", kUri}, {"version", round + 1}}},
                     {"contentChanges", changes}});
        client.open(whole, text.text(), round);
        for (const char* method : {"semanticTokens/full", "foldingRange", "documentSymbol"})
            EXPECT_EQ(
                client.ask(std::string("textDocument/") + method, document())["result"].size(),
                client.ask(std::string("textDocument/") + method, document(whole))["result"].size())
                << method << " in round " << round;
        EXPECT_EQ(client.ask("textDocument/semanticTokens/full", document())["result"],
                  client.ask("textDocument/semanticTokens/full", document(whole))["result"]);
    }
}

std::string applied(const std::string& text, const Json& edits) {
    const TextDocument document(text);
    std::string result = text;
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        const auto offset = [&](const char* name) {
            const Json& place = (*edit)["range"][name];
            return document.offsetOfUtf16({place["line"], place["character"]});
        };
        result.replace(offset("start"), offset("end") - offset("start"), (*edit)["newText"]);
    }
    return result;
}

std::string withoutBlanks(const std::string& text) {
    std::string rest;
    for (const char byte : text)
        if (byte != ' ' && byte != '\t') rest += byte;
    return rest;
}

TEST(LanguageServer, FormattingMovesBlanksAloneAndOnce) {
    LanguageClient client;
    int version = 0;
    for (const ScriptFile& file : allScriptFiles()) {
        if (!isValidUtf8(file.text)) continue;
        for (const std::string& text : {file.text, file.text.substr(0, file.text.size() / 2)}) {
            const auto formatted = [&](const std::string& before) {
                client.open(kUri, before, ++version);
                return applied(before, client.ask("textDocument/formatting", document())["result"]);
            };
            const std::string once = formatted(text);
            EXPECT_EQ(withoutBlanks(once), withoutBlanks(text)) << file.name;
            EXPECT_EQ(formatted(once), once) << file.name;
        }
    }
}

/// What this machine is to one that is idle, by a work of known cost: 1 or more.
double slowness() {
    constexpr double kUsualMs = 25;
    std::string text;
    for (int i = 0; i < 20'000; ++i) text += "int a = f(1, 2); ";
    const auto began = std::chrono::steady_clock::now();
    const ScopeIndex index(text);
    const std::chrono::duration<double, std::milli> ms = std::chrono::steady_clock::now() - began;
    return index.tokens().empty() ? 1 : std::max(1.0, ms.count() / kUsualMs);
}

/// What a request may take: its goal for large scripts twice over.
double mostMs(const std::string& method) {
    const bool all = method == "rename" || method == "references" ||
                     method == "documentHighlight" || method == "semanticTokens/full";
    return all ? 300 : 100;
}

class BrokenTexts {
  public:
    explicit BrokenTexts(bool timed) : timed_(timed) {}

    void ask(const std::string& text, std::uint32_t line, std::size_t column) {
        client_.open(kUri, text, ++version_);
        Json params = at(static_cast<int>(line), static_cast<int>(column));
        params["newName"] = "fresh";
        params["context"] = {{"includeDeclaration", true}, {"diagnostics", Json::array()}};
        params["positions"] = {params["position"]};
        params["range"] = {{"start", {{"line", 0}, {"character", 0}}}, {"end", params["position"]}};
        for (const char* method :
             {"hover", "completion", "signatureHelp", "definition", "references", "rename",
              "documentHighlight", "documentSymbol", "semanticTokens/full", "inlayHint",
              "selectionRange", "formatting", "implementation", "typeDefinition"}) {
            const double most = mostMs(method);
            double best = answered(method, params, text);
            if (!timed_) continue;
            // What is slow three times is slow by itself; each time the text is new.
            for (int again = 0; again < 2 && best > most; ++again) {
                client_.open(kUri, text, ++version_);
                best = std::min(best, answered(method, params, text));
            }
            EXPECT_TRUE(best <= most || best <= most * slowness())
                << method << ": " << best << " ms\n"
                << text;
        }
    }

  private:
    double answered(const std::string& method, const Json& params, const std::string& text) {
        const auto began = std::chrono::steady_clock::now();
        EXPECT_TRUE(client_.ask("textDocument/" + method, params).contains("id")) << text;
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - began)
            .count();
    }

    LanguageClient client_;
    int version_ = 0;
    bool timed_;
};

/// Each script with each of its lines cut, doubled and emptied where KORVANT_BROKEN_TEXTS is set,
/// and then within its time, too. Else a few of them.
TEST(LanguageServer, BrokenTextsAreAnswered) {
    const bool whole = std::getenv("KORVANT_BROKEN_TEXTS") != nullptr;
    BrokenTexts texts(whole);
    std::mt19937 random(3);
    for (const ScriptFile& file : allScriptFiles()) {
        if (!isValidUtf8(file.text)) continue;
        const TextDocument text(file.text);
        for (std::uint32_t line = 0; line < text.lineCount(); ++line) {
            if (!whole && random() % 40 != 0) continue;
            const std::string content(text.lineText(line));
            for (const std::string& with :
                 {content.substr(0, content.size() / 2), content + "\n" + content, std::string()}) {
                TextDocument broken(file.text);
                broken.replace(text.lineRange(line), with);
                texts.ask(broken.text(), line, content.size() / 2);
                if (::testing::Test::HasFailure()) return;
            }
        }
    }
}

}  // namespace
}  // namespace korvant::test
