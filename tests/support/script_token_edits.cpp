// Editing scripts token by token.
#include <algorithm>
#include <cctype>

#include "support/script_generators.h"

namespace korvant::test {

namespace {

bool isWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

constexpr std::string_view kSigns[] = {
    ">>>=", "**=", "<<=", ">>=", ">>>", "!is", "::", "==", "!=", "<=", ">=", "&&", "||", "^^",
    "++",   "--",  "+=",  "-=",  "*=",  "/=",  "%=", "&=", "|=", "^=", "<<", ">>", "**"};

std::size_t endOfText(std::string_view script, std::size_t at) {
    const char quote = script[at];
    std::size_t end = at + 1;
    while (end < script.size() && script[end] != quote && script[end] != '\n')
        end += script[end] == '\\' ? 2 : 1;
    return std::min(end + 1, script.size());
}

std::size_t endOfComment(std::string_view script, std::size_t at) {
    const bool line = script[at + 1] == '/';
    const std::size_t end = script.find(line ? "\n" : "*/", at + 2);
    return end == std::string_view::npos ? script.size() : end + (line ? 0 : 2);
}

std::size_t endOfToken(std::string_view script, std::size_t at) {
    const char c = script[at];
    std::size_t end = at + 1;
    if (c == '"' || c == '\'') return endOfText(script, at);
    if (c == '/' && end < script.size() && (script[end] == '/' || script[end] == '*'))
        return endOfComment(script, at);
    if (isWord(c)) {
        const bool number = std::isdigit(static_cast<unsigned char>(c)) != 0;
        while (end < script.size() && (isWord(script[end]) || (number && script[end] == '.')))
            ++end;
        return end;
    }
    if (std::isspace(static_cast<unsigned char>(c)) != 0) {
        while (end < script.size() && std::isspace(static_cast<unsigned char>(script[end])) != 0)
            ++end;
        return end;
    }
    for (const std::string_view sign : kSigns)
        if (script.substr(at, sign.size()) == sign) return at + sign.size();
    return end;
}

bool isBlank(const std::string& token) {
    return std::isspace(static_cast<unsigned char>(token[0])) != 0 || token.rfind("//", 0) == 0 ||
           token.rfind("/*", 0) == 0;
}

constexpr const char* kOthers[] = {"null",
                                   "{",
                                   "}",
                                   "(",
                                   ")",
                                   "[",
                                   "]",
                                   "<",
                                   ">",
                                   ";",
                                   ",",
                                   "@",
                                   "&",
                                   "&in",
                                   "&out",
                                   "=",
                                   "==",
                                   "is",
                                   ".",
                                   "::",
                                   "?",
                                   ":",
                                   "+",
                                   "-",
                                   "!",
                                   "~",
                                   "++",
                                   "--",
                                   "const",
                                   "int",
                                   "string",
                                   "void",
                                   "class",
                                   "auto",
                                   "cast",
                                   "return",
                                   "case",
                                   "default",
                                   "function",
                                   "this",
                                   "super",
                                   "0",
                                   "1",
                                   "-1",
                                   "1.5",
                                   "\"s\"",
                                   "'",
                                   "\"",
                                   "true",
                                   "private",
                                   "shared",
                                   "get",
                                   "set",
                                   "final",
                                   "override",
                                   "mixin",
                                   "interface",
                                   "enum",
                                   "funcdef",
                                   "namespace",
                                   "typedef",
                                   "import",
                                   "from",
                                   "external",
                                   "array",
                                   "bool",
                                   "int8",
                                   "uint64",
                                   "**",
                                   ">>>",
                                   "^^",
                                   "and",
                                   "not",
                                   "break",
                                   "continue",
                                   "#",
                                   "@+",
                                   "&+",
                                   "if_handle_then_const",
                                   "try",
                                   "catch",
                                   "\x80",
                                   "0x",
                                   "1e",
                                   "..."};

std::string joined(const std::vector<std::string>& tokens) {
    std::string text;
    for (const std::string& token : tokens) text += token;
    return text;
}

}  // namespace

std::vector<std::string> tokenTexts(std::string_view script) {
    std::vector<std::string> tokens;
    for (std::size_t at = 0; at < script.size();) {
        const std::size_t end = endOfToken(script, at);
        tokens.emplace_back(script.substr(at, end - at));
        at = end;
    }
    return tokens;
}

std::string editedScript(std::string_view script, Choices& choices) {
    std::vector<std::string> tokens = tokenTexts(script);
    std::vector<std::size_t> solid;
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (!isBlank(tokens[i])) solid.push_back(i);
    if (solid.empty()) return std::string(script);
    const auto any = [&] { return solid[choices.below(static_cast<std::uint32_t>(solid.size()))]; };
    const std::size_t at = any();
    switch (choices.below(8)) {
        case 0:
            tokens[at].clear();
            break;
        case 1:
            tokens[at] += " " + tokens[at];
            break;
        case 2:
            std::swap(tokens[at], tokens[any()]);
            break;
        case 3:
            tokens[at] = tokens[any()];
            break;
        case 4:
            tokens[at] += " " + tokens[any()];
            break;
        case 5:
            tokens.resize(at + 1);  // as far as it has been typed
            break;
        case 6:
            tokens[at] += std::string(" ") + choices.one(kOthers);
            break;
        default:
            tokens[at] = choices.one(kOthers);
            break;
    }
    return joined(tokens);
}

}  // namespace korvant::test
