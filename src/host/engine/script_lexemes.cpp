#include "host/engine/script_lexemes.h"

#include <algorithm>
#include <new>

#include "host/engine/engine_compat.h"

namespace korvant {

namespace {

/// An engine that does nothing else, so that no host's settings change what a token is. Never
/// released: texts are read while the process ends, too.
const asIScriptEngine& tokenizer() {
    static asIScriptEngine* const engine = [] {
        asIScriptEngine* const made = asCreateScriptEngine();
        if (made == nullptr) throw std::bad_alloc();
        made->SetEngineProperty(asEP_ALLOW_UNICODE_IDENTIFIERS, true);
        return made;
    }();
    return *engine;
}

Lexeme::Kind kindOf(asETokenClass tokenClass) {
    switch (tokenClass) {
        case asTC_WHITESPACE:
            return Lexeme::Kind::blank;
        case asTC_COMMENT:
            return Lexeme::Kind::comment;
        case asTC_IDENTIFIER:
            return Lexeme::Kind::name;
        case asTC_KEYWORD:
            return Lexeme::Kind::keyword;
        case asTC_VALUE:
            return Lexeme::Kind::value;
        default:
            return Lexeme::Kind::unknown;
    }
}

}  // namespace

Lexeme lexemeAt(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    asUINT size = 0;
    const asETokenClass found = tokenizer().ParseToken(rest.data(), rest.size(), &size);
    const std::size_t bytes = std::clamp<std::size_t>(size, 1, rest.size());
    return {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(bytes), kindOf(found)};
}

}  // namespace korvant
