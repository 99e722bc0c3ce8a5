#include "language/documentation.h"

#include <algorithm>

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Engines lay declarations out in their own way, and name parameters or not.
std::string keyOf(std::string_view owner, std::string_view declaration) {
    std::string key(owner);
    key += "::";
    for (const char byte : declaration)
        if (byte != ' ') key += byte;
    return key;
}

std::string_view trimmed(std::string_view line) {
    const auto first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

/// A line of a remark without the signs in front of it.
std::string_view remarkLine(std::string_view line) {
    line = trimmed(line);
    for (const std::string_view sign : {"///", "//!", "//", "/**", "/*", "*/", "*"})
        if (line.starts_with(sign)) {
            line.remove_prefix(sign.size());
            break;
        }
    if (line.ends_with("*/")) line.remove_suffix(2);
    return trimmed(line);
}

}  // namespace

std::string FunctionHelp::markdown() const {
    std::string text = help;
    if (!failure.empty()) text += "\n\n" + failure;
    if (!example.empty()) text += "\n\n```angelscript\n" + example + "\n```";
    return text;
}

Documentation::Documentation(std::span<const FunctionFamily> families) {
    for (const FunctionFamily& family : families)
        for (const FunctionRow& row : family.rows)
            rows_.emplace(keyOf(family.objectType ? family.objectType : "", row.declaration), &row);
}

FunctionHelp Documentation::of(std::string_view owner, std::string_view declaration) const {
    const auto row = rows_.find(keyOf(owner, declaration));
    if (row == rows_.end()) return {};
    return {row->second->help, row->second->example, row->second->failure};
}

FunctionHelp Documentation::of(const asIScriptFunction& function) const {
    const char* const owner = function.GetObjectName();
    return of(owner == nullptr ? "" : owner, function.GetDeclaration(false, false, true));
}

std::string remarkAbove(const ScopeIndex& index, int declaration) {
    const TextDocument& text = index.document();
    std::uint32_t line = text.lineOf(index.declarations()[at(declaration)].whole.begin);
    std::vector<std::string> lines;
    bool block = false;
    while (line > 0) {
        const std::string_view above = trimmed(text.lineText(--line));
        if (above.ends_with("*/")) block = true;
        if (!block && !above.starts_with("//")) break;
        lines.emplace_back(remarkLine(above));
        if (block && above.find("/*") != std::string_view::npos) break;
    }
    std::reverse(lines.begin(), lines.end());
    std::string remark;
    for (const std::string& part : lines) remark += (remark.empty() ? "" : "\n") + part;
    return std::string(trimmed(remark));
}

namespace {

/// " const", " override" and the like of a method.
std::string wordsBehind(const ScopeIndex& index, const Declaration& function) {
    if (function.kind != DeclarationKind::method || function.parameters.empty()) return {};
    const std::size_t end = function.body.empty() ? function.whole.end : function.body.begin;
    if (end <= function.parameters.end) return {};
    std::string words = index.oneLine({function.parameters.end, end});
    while (!words.empty() && (words.back() == ';' || words.back() == ' ')) words.pop_back();
    return words.empty() ? words : " " + words;
}

}  // namespace

std::string headline(const ScopeIndex& index, int declaration) {
    const Declaration& one = index.declarations()[at(declaration)];
    std::string path = one.kind == DeclarationKind::local || one.kind == DeclarationKind::parameter
                           ? std::string(one.name)
                           : index.pathOf(declaration);
    if (one.kind == DeclarationKind::destructor) path.insert(path.size() - one.name.size(), "~");
    const std::string type = index.oneLine(one.type);
    switch (one.kind) {
        case DeclarationKind::nameSpace:
            return "namespace " + path;
        case DeclarationKind::classType:
            return "class " + path;
        case DeclarationKind::mixinType:
            return "mixin class " + path;
        case DeclarationKind::interfaceType:
            return "interface " + path;
        case DeclarationKind::enumType:
            return "enum " + path;
        case DeclarationKind::functionType:
            return "funcdef " + type + " " + path + index.oneLine(one.parameters);
        case DeclarationKind::typeAlias:
            return "typedef " + type + " " + path;
        default:
            return (type.empty() ? "" : type + " ") + path + index.oneLine(one.parameters) +
                   wordsBehind(index, one);
    }
}

}  // namespace korvant
