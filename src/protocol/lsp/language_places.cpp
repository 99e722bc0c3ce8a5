// Places and kinds as the protocol counts them.
#include <algorithm>

#include "protocol/lsp/language_server.h"

namespace korvant::lsp {

namespace {

/// What the compiler may be asked for one request; then the answer is what is known so far.
constexpr std::uint64_t kRequestMs = 1000;

/// Negative and huge numbers lie at the ends of the text.
std::uint32_t bounded(std::int64_t number) {
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(number, 0, 0x7fffffff));
}

TextPosition positionOf(const Json& position) {
    return {bounded(rpc::numberOf(position, "line")),
            bounded(rpc::numberOf(position, "character"))};
}

}  // namespace

OpenText* LanguageServer::textOf(const Json& params) {
    const auto text = texts_.find(rpc::textOf(rpc::memberOf(params, "textDocument"), "uri"));
    return text == texts_.end() ? nullptr : &text->second;
}

Meanings& LanguageServer::meaningsOf(OpenText& text) {
    if (!text.meanings)
        text.meanings =
            std::make_unique<Meanings>(engine_, std::make_shared<ScopeIndex>(text.document.text()));
    text.meanings->oracle().allow(kRequestMs);
    return *text.meanings;
}

std::size_t LanguageServer::offsetOf(const OpenText& text, const Json& position) const {
    const TextPosition place = positionOf(position);
    return utf8_ ? text.document.offsetOf(place) : text.document.offsetOfUtf16(place);
}

ByteRange LanguageServer::rangeOf(const OpenText& text, const Json& range) const {
    const std::size_t begin = offsetOf(text, rpc::memberOf(range, "start"));
    return {begin, std::max(begin, offsetOf(text, rpc::memberOf(range, "end")))};
}

Json LanguageServer::positionJson(const OpenText& text, std::size_t offset) const {
    const TextPosition place =
        utf8_ ? text.document.positionOf(offset) : text.document.utf16PositionOf(offset);
    return {{"line", place.line}, {"character", place.column}};
}

Json LanguageServer::rangeJson(const OpenText& text, ByteRange range) const {
    return {{"start", positionJson(text, range.begin)}, {"end", positionJson(text, range.end)}};
}

Json LanguageServer::locationJson(const OpenText& text, ByteRange range) const {
    return {{"uri", text.uri}, {"range", rangeJson(text, range)}};
}

bool LanguageServer::place(const Json& params, OpenText*& text, std::size_t& offset) {
    text = textOf(params);
    const Json& position = rpc::memberOf(params, "position");
    if (text == nullptr || !position.is_object()) return false;
    offset = offsetOf(*text, position);
    return true;
}

int symbolKindOf(DeclarationKind kind) {
    switch (kind) {
        case DeclarationKind::nameSpace:
            return 3;
        case DeclarationKind::classType:
        case DeclarationKind::mixinType:
            return 5;
        case DeclarationKind::method:
        case DeclarationKind::destructor:
            return 6;
        case DeclarationKind::property:
            return 7;
        case DeclarationKind::memberVariable:
            return 8;
        case DeclarationKind::constructor:
            return 9;
        case DeclarationKind::enumType:
            return 10;
        case DeclarationKind::interfaceType:
            return 11;
        case DeclarationKind::function:
        case DeclarationKind::functionType:
            return 12;
        case DeclarationKind::enumValue:
            return 22;
        case DeclarationKind::typeAlias:
            return 26;
        default:
            return 13;
    }
}

Json tokenTypes() {
    return {"namespace", "class",    "interface", "enum",     "enumMember",
            "parameter", "variable", "property",  "function", "method"};
}

Json tokenModifiers() {
    return {"declaration", "readonly"};
}

Json serverCapabilities(bool utf8) {
    return {{"positionEncoding", utf8 ? "utf-8" : "utf-16"},
            {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
            {"completionProvider", {{"triggerCharacters", {".", ":"}}, {"resolveProvider", true}}},
            {"hoverProvider", true},
            {"signatureHelpProvider",
             {{"triggerCharacters", {"(", ","}}, {"retriggerCharacters", {","}}}},
            {"definitionProvider", true},
            {"typeDefinitionProvider", true},
            {"implementationProvider", true},
            {"referencesProvider", true},
            {"documentHighlightProvider", true},
            {"documentSymbolProvider", true},
            {"workspaceSymbolProvider", true},
            {"renameProvider", {{"prepareProvider", true}}},
            {"semanticTokensProvider",
             {{"legend", {{"tokenTypes", tokenTypes()}, {"tokenModifiers", tokenModifiers()}}},
              {"full", true},
              {"range", true}}},
            {"foldingRangeProvider", true},
            {"selectionRangeProvider", true},
            {"inlayHintProvider", true},
            {"documentFormattingProvider", true},
            {"documentRangeFormattingProvider", true},
            {"codeActionProvider", {{"codeActionKinds", {"quickfix"}}}}};
}

}  // namespace korvant::lsp
