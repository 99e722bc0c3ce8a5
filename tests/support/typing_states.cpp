#include "support/typing_states.h"

#include <algorithm>
#include <iterator>

#include "language/tokens.h"

namespace korvant::test {

namespace {

constexpr std::size_t kLongest = 3000;

}  // namespace

TypingStates::TypingStates(std::vector<std::string> scripts, unsigned seed) : random_(seed) {
    for (std::string& script : scripts)
        if (!script.empty() && script.size() <= kLongest) scripts_.push_back(std::move(script));
}

const std::string& TypingStates::anyScript() {
    return scripts_[below(scripts_.size())];
}

std::string TypingStates::anyToken() {
    static const char* const kTokens[] = {"{",     "}",      "(",
                                          ")",     "[",      "]",
                                          ";",     ",",      "@",
                                          "&",     "null",   "const",
                                          "=",     "++",     "::",
                                          "<",     ">",      ".",
                                          "!",     "-",      "function",
                                          "class", "cast<",  "auto",
                                          "\"",    "'",      "/*",
                                          "int",   "return", "&in",
                                          "&out",  "+",      "{1, {2}}",
                                          "this",  "super",  "?",
                                          ":",     "is",     "0xFFFFFFFFFF",
                                          "1e999"};
    if (below(2) == 0) return kTokens[below(std::size(kTokens))];
    const std::string& script = anyScript();
    const auto tokens = scriptTokens(script);
    return tokens.empty() ? ";" : std::string(tokens[below(tokens.size())].text);
}

std::string TypingStates::next() {
    return below(3) == 0 ? typed() : broken();
}

std::string TypingStates::broken() {
    std::string text = anyScript();
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
        const auto tokens = scriptTokens(text);
        if (tokens.empty()) break;
        const ScriptToken token = tokens[below(tokens.size())];
        const auto begin = static_cast<std::size_t>(token.position);
        const std::size_t bytes = token.text.size();
        switch (below(4)) {
            case 0:
                text.erase(begin, bytes);
                break;
            case 1:
                text.replace(begin, bytes, anyToken());
                break;
            case 2:
                text.insert(begin, anyToken() + " ");
                break;
            default:
                text.resize(below(4) == 0 ? begin : text.size());
                break;
        }
    }
    return text;
}

/// A line of one script is typed into another, a letter a state.
std::string TypingStates::typed() {
    if (line_.empty()) {
        text_ = anyScript();
        const std::string& from = anyScript();
        const std::size_t begin = from.rfind('\n', below(from.size())) + 1;
        line_ = from.substr(begin, from.find('\n', begin) - begin);
        std::reverse(line_.begin(), line_.end());
        caret_ = text_.find('\n', below(text_.size()));
        caret_ = caret_ == std::string::npos ? text_.size() : caret_;
        text_.insert(caret_++, "\n");
    }
    if (!line_.empty()) {
        text_.insert(caret_++, 1, line_.back());
        line_.pop_back();
    }
    return text_;
}

}  // namespace korvant::test
