#include "language/checker.h"

#include <algorithm>
#include <string_view>

#include "host/engine/script_lexemes.h"
#include "language/text_document.h"

namespace korvant {

namespace {

constexpr std::string_view kCompiling = "Compiling ";

Diagnostic::Kind kindOf(BuildMessage::Kind kind) {
    switch (kind) {
        case BuildMessage::Kind::warning:
            return Diagnostic::Kind::warning;
        case BuildMessage::Kind::information:
            return Diagnostic::Kind::information;
        default:
            return Diagnostic::Kind::error;
    }
}

/// Bytes of the word or sign that begins here, of ".word" and "::word" both; 1 where there is none.
std::size_t wordBytes(std::string_view rest) {
    if (rest.empty()) return 0;
    const Lexeme lexeme = lexemeAt(rest, 0);
    const bool blank = lexeme.kind == Lexeme::Kind::blank || lexeme.kind == Lexeme::Kind::comment;
    const std::string_view sign = rest.substr(0, lexeme.size);
    const bool joins = (sign == "." || sign == "::") && sign.size() < rest.size();
    const Lexeme next = joins ? lexemeAt(rest, lexeme.size) : Lexeme{};
    if (joins && next.kind == Lexeme::Kind::name) return lexeme.size + next.size;
    return blank ? 1 : lexeme.size;
}

Diagnostic placed(const BuildMessage& message, const TextDocument& text) {
    Diagnostic diagnostic;
    diagnostic.kind = kindOf(message.kind);
    diagnostic.text = message.plain;
    if (message.row <= 0) return diagnostic;
    diagnostic.line = diagnostic.endLine = message.row;
    diagnostic.column = std::max(message.column, 1);
    const std::string_view line = text.lineText(static_cast<std::uint32_t>(message.row - 1));
    const auto begin = std::min(line.size(), static_cast<std::size_t>(diagnostic.column - 1));
    const std::size_t bytes = wordBytes(line.substr(begin));
    diagnostic.endColumn = diagnostic.column + static_cast<std::int32_t>(bytes);
    return diagnostic;
}

}  // namespace

std::vector<Diagnostic> diagnosticsOf(const BuildMessages& messages, const std::string& text) {
    std::vector<Diagnostic> result;
    const TextDocument document(text);
    std::string context;
    for (const BuildMessage& message : messages.all()) {
        const bool row = message.kind == BuildMessage::Kind::information &&
                         message.plain.starts_with(kCompiling);
        if (row) {
            context = message.plain;
            continue;
        }
        result.push_back(placed(message, document));
        if (message.row > 0) result.back().context = context;
    }
    return result;
}

CheckResult Checker::check(std::uint64_t version, const std::string& text) {
    CheckResult result;
    result.version = version;
    result.builds = session_.check(&engine_, text) == 1;
    result.diagnostics = diagnosticsOf(session_.buildMessages(), text);
    return result;
}

}  // namespace korvant
