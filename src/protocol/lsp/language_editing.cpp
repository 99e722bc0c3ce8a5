// What is shown and offered while a text is written.
#include <algorithm>

#include "language/repairs.h"
#include "language/script_colours.h"
#include "language/script_help.h"
#include "language/script_shape.h"
#include "language/suggestions.h"
#include "protocol/lsp/language_server.h"

namespace korvant::lsp {

namespace {

/// Source: the protocol's CompletionItemKind.
int completionKindOf(Suggestion::Kind kind) {
    switch (kind) {
        case Suggestion::Kind::keyword:
            return 14;
        case Suggestion::Kind::snippet:
            return 15;
        case Suggestion::Kind::nameSpace:
            return 9;
        case Suggestion::Kind::classType:
            return 7;
        case Suggestion::Kind::interfaceType:
            return 8;
        case Suggestion::Kind::enumType:
            return 13;
        case Suggestion::Kind::enumValue:
            return 20;
        case Suggestion::Kind::function:
            return 3;
        case Suggestion::Kind::method:
            return 2;
        case Suggestion::Kind::field:
            return 5;
        default:
            return 6;
    }
}

Json markdown(const std::string& text) {
    return {{"kind", "markdown"}, {"value", text}};
}

/// How many units of the client's encoding a range has.
std::size_t unitsOf(const Json& range) {
    return static_cast<std::size_t>(rpc::numberOf(range["end"], "character") -
                                    rpc::numberOf(range["start"], "character"));
}

}  // namespace

LanguageServer::Reply LanguageServer::completion(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Json items = Json::array();
    completionTexts_.clear();
    for (const Suggestion& one : suggestionsAt(meaningsOf(*text), documentation_, offset)) {
        if (one.snippet && !snippets_) continue;
        Json item = {{"label", one.label}, {"kind", completionKindOf(one.kind)}};
        if (!one.detail.empty()) item["detail"] = one.detail;
        if (one.snippet) {
            item["insertText"] = one.insert;
            item["insertTextFormat"] = 2;
        }
        if (!one.documentation.empty()) {
            const std::string key = one.label + "\n" + one.detail;
            completionTexts_.emplace(key, one.documentation);
            item["data"] = key;
        }
        items.push_back(std::move(item));
    }
    return {{{"isIncomplete", false}, {"items", std::move(items)}}, 0, {}};
}

LanguageServer::Reply LanguageServer::resolveCompletion(const Json& params) {
    Json item = params;
    const auto known = completionTexts_.find(rpc::textOf(params, "data"));
    if (known != completionTexts_.end()) item["documentation"] = markdown(known->second);
    return {std::move(item), 0, {}};
}

LanguageServer::Reply LanguageServer::hover(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    const auto found = hoverAt(meaningsOf(*text), documentation_, offset);
    if (!found) return {};
    std::string shown = "```angelscript\n" + found->declaration + "\n```";
    if (!found->documentation.empty()) shown += "\n\n" + found->documentation;
    return {{{"contents", markdown(shown)}, {"range", rangeJson(*text, found->range)}}, 0, {}};
}

LanguageServer::Reply LanguageServer::signatureHelp(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    const Signatures found = signaturesAt(meaningsOf(*text), documentation_, offset);
    if (found.all.empty()) return {};
    Json list = Json::array();
    for (const SignatureText& one : found.all) {
        Json parameters = Json::array();
        for (const ByteRange& range : one.parameters)
            parameters.push_back({{"label", one.label.substr(range.begin, range.size())}});
        Json signature = {{"label", one.label}, {"parameters", std::move(parameters)}};
        if (!one.documentation.empty()) signature["documentation"] = markdown(one.documentation);
        list.push_back(std::move(signature));
    }
    return {{{"signatures", std::move(list)},
             {"activeSignature", found.active},
             {"activeParameter", found.parameter}},
            0,
            {}};
}

LanguageServer::Reply LanguageServer::semanticTokens(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr) return {};
    ByteRange range{0, text->document.size()};
    if (rpc::memberOf(params, "range").is_object())
        range = rangeOf(*text, rpc::memberOf(params, "range"));
    Json data = Json::array();
    std::int64_t line = 0, column = 0;
    for (const ColouredName& name : colouredNames(meaningsOf(*text), range)) {
        const Json place = rangeJson(*text, name.range);
        const std::int64_t nextLine = rpc::numberOf(place["start"], "line");
        const std::int64_t nextColumn = rpc::numberOf(place["start"], "character");
        data.push_back(nextLine - line);
        data.push_back(nextLine == line ? nextColumn - column : nextColumn);
        data.push_back(unitsOf(place));
        data.push_back(static_cast<int>(name.colour));
        data.push_back((name.declares ? 1 : 0) + (name.readOnly ? 2 : 0));
        line = nextLine;
        column = nextColumn;
    }
    return {{{"data", std::move(data)}}, 0, {}};
}

LanguageServer::Reply LanguageServer::foldingRanges(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr) return {};
    Json list = Json::array();
    for (const FoldedLines& fold : foldingOf(meaningsOf(*text).index())) {
        Json one = {{"startLine", fold.first}, {"endLine", fold.last}};
        if (fold.remark) one["kind"] = "comment";
        list.push_back(std::move(one));
    }
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::selectionRanges(const Json& params) {
    OpenText* const text = textOf(params);
    const Json& positions = rpc::memberOf(params, "positions");
    if (text == nullptr || !positions.is_array()) return {};
    Json list = Json::array();
    for (const Json& position : positions) {
        Json chain;
        const std::vector<ByteRange> ranges =
            selectionsAt(meaningsOf(*text).index(), offsetOf(*text, position));
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
            Json one = {{"range", rangeJson(*text, *range)}};
            if (!chain.is_null()) one["parent"] = std::move(chain);
            chain = std::move(one);
        }
        list.push_back(std::move(chain));
    }
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::inlayHints(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr || !rpc::memberOf(params, "range").is_object()) return {};
    Json list = Json::array();
    for (const InlayHint& hint :
         hintsIn(meaningsOf(*text), rangeOf(*text, rpc::memberOf(params, "range"))))
        list.push_back({{"position", positionJson(*text, hint.offset)},
                        {"label", hint.text},
                        {"kind", hint.isType ? 1 : 2},
                        {"paddingRight", !hint.isType}});
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::formatting(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr) return {};
    std::uint32_t first = 0, last = text->document.lineCount();
    if (rpc::memberOf(params, "range").is_object()) {
        const ByteRange range = rangeOf(*text, rpc::memberOf(params, "range"));
        first = text->document.lineOf(range.begin);
        last = text->document.lineOf(range.end);
    }
    Json edits = Json::array();
    for (const BlankEdit& edit : indentationEdits(meaningsOf(*text).index(), first, last))
        edits.push_back({{"range", rangeJson(*text, edit.range)}, {"newText", edit.blanks}});
    return {edits, 0, {}};
}

LanguageServer::Reply LanguageServer::codeActions(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr || !rpc::memberOf(params, "range").is_object()) return {};
    awaitAnswer(*text);
    const ByteRange range = rangeOf(*text, rpc::memberOf(params, "range"));
    const std::uint32_t first = text->document.lineOf(range.begin);
    const std::uint32_t last = text->document.lineOf(range.end);
    Json list = Json::array();
    for (const Diagnostic& one : text->diagnostics) {
        const auto line = static_cast<std::uint32_t>(std::max(0, one.line - 1));
        if (line < first || line > last) continue;
        for (const Repair& repair : repairsFor(meaningsOf(*text), one)) {
            const Json edit = {{"range", rangeJson(*text, repair.range)}, {"newText", repair.with}};
            list.push_back({{"title", repair.title.text()},
                            {"kind", "quickfix"},
                            {"edit", {{"changes", {{text->uri, Json::array({edit})}}}}}});
        }
    }
    return {list, 0, {}};
}

}  // namespace korvant::lsp
