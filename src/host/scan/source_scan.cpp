#include "host/scan/source_scan.h"

#include <algorithm>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

ScanRefusal refusalAt(std::string_view text, std::size_t offset, std::string reason) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    return {std::move(reason),
            static_cast<std::int32_t>(std::count(before.begin(), before.end(), '\n') + 1),
            static_cast<std::int32_t>(before.size() - lineStart + 1)};
}

ScanResult firstFinding(const TokenList& tokens, const Limits& limits, bool hardened) {
    const Outline outline(tokens);
    // The usual bound is for the buffer of other builds; another one is somebody's choice.
    const bool anyName = hardened && limits.nameBytes == Limits{}.nameBytes;
    const std::size_t longestName = anyName ? ~std::size_t{0} : limits.nameBytes;
    if (auto finding = checkNesting(tokens, outline, limits)) return finding;
    if (auto finding = checkNames(tokens, outline, longestName)) return finding;
    if (auto finding = checkMessages(tokens, outline, !hardened)) return finding;
    if (auto finding = hardened ? std::nullopt : checkHandles(tokens, outline)) return finding;
    if (auto finding = checkDefaultArguments(tokens, outline)) return finding;
    return checkWork(tokens, outline);
}

}  // namespace

std::optional<ScanRefusal> scanSource(std::string_view text, const Limits& limits, bool hardened) {
    if (text.size() > limits.scriptBytes)
        return refusalAt(
            text, 0, "The script is longer than " + std::to_string(limits.scriptBytes) + " bytes");
    const auto tokens = TokenList::of(text, limits.scriptTokens);
    if (!tokens)
        return refusalAt(
            text, 0,
            "The script has more than " + std::to_string(limits.scriptTokens) + " words and signs");
    auto finding = firstFinding(*tokens, limits, hardened);
    if (!finding) return std::nullopt;
    const std::size_t last = tokens->size() - 1;
    const std::size_t offset = (*tokens)[std::min(finding->token, last)].begin;
    return refusalAt(text, offset, std::move(finding->text));
}

}  // namespace korvant
