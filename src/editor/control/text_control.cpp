#include "editor/control/text_control.h"

#include <algorithm>
#include <new>

namespace korvant {

namespace {

std::intptr_t pointerValue(const void* pointer) {
    return reinterpret_cast<std::intptr_t>(pointer);
}

}  // namespace

std::intptr_t TextControl::send(unsigned message, std::uintptr_t w, std::intptr_t l) const {
    return send_ ? send_(message, w, l) : 0;
}

std::intptr_t TextControl::send(unsigned message, std::uintptr_t w, const char* text) const {
    return send(message, w, pointerValue(text));
}

int TextControl::answer(unsigned message, std::intptr_t w, std::intptr_t l) const {
    return static_cast<int>(send(message, word(w), l));
}

std::optional<std::string> TextControl::text() const {
    const std::size_t bytes = static_cast<std::size_t>(std::max(length(), 0));
    try {
        std::string result(bytes + 9, '\0');
        if (bytes > 0) send(sci::kGetText, bytes + 1, pointerValue(result.data()));
        result.resize(bytes);
        return result;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::string TextControl::textOf(TextSpan span) const {
    span.start = std::clamp(span.start, 0, length());
    span.end = std::clamp(span.end, span.start, length());
    if (span.empty()) return {};
    std::string result(static_cast<std::size_t>(span.end - span.start) + 1, '\0');
    sci::TextRange range{span.start, span.end, result.data()};
    send(sci::kGetTextRange, 0, pointerValue(&range));
    result.pop_back();
    return result;
}

bool TextControl::replaceText(std::string_view text) const {
    takeStatus();
    {
        const UndoStep step(*this);
        send(sci::kClearAll);
        if (!text.empty()) send(sci::kAddText, text.size(), pointerValue(text.data()));
    }
    select(0, 0);
    return takeStatus() && static_cast<std::size_t>(length()) == (exists() ? text.size() : 0);
}

bool TextControl::takeStatus() const {
    const int status = answer(sci::kGetStatus);
    if (status != 0) send(sci::kSetStatus, 0);
    return status == 0 || status >= sci::kStatusWarnStart;
}

std::string TextControl::selectedText(std::size_t limit) const {
    const std::size_t bytes =
        static_cast<std::size_t>(std::max(selectionEnd() - selectionStart(), 0));
    if (bytes > limit)
        return textOf({selectionStart(), selectionStart() + static_cast<int>(limit)});
    const std::size_t room = static_cast<std::size_t>(std::max(answer(sci::kGetSelText), 0));
    if (room == 0) return {};
    std::string result(room + 1, '\0');
    send(sci::kGetSelText, 0, pointerValue(result.data()));
    result.resize(room - 1);
    return result.substr(0, limit);
}

void TextControl::select(int anchor, int caretPosition) const {
    send(sci::kSetSel, word(anchor), caretPosition);
}

ControlLine TextControl::lineOf(int position) const {
    return {answer(sci::kLineFromPosition, position)};
}

TextSpan TextControl::wordAt(int position) const {
    return {answer(sci::kWordStartPosition, position, 1),
            answer(sci::kWordEndPosition, position, 1)};
}

void TextControl::addMarker(ControlLine line, int marker) const {
    send(sci::kMarkerAdd, word(line.index), marker);
}

void TextControl::deleteMarker(ControlLine line, int marker) const {
    send(sci::kMarkerDelete, word(line.index), marker);
}

bool TextControl::hasMarker(ControlLine line, int marker) const {
    return (answer(sci::kMarkerGet, line.index) >> marker & 1) != 0;
}

std::optional<ControlLine> TextControl::nextMarker(std::int32_t from, int mask) const {
    const int line = exists() ? answer(sci::kMarkerNext, from, mask) : -1;
    return line < 0 ? std::nullopt : std::optional(ControlLine{line});
}

std::optional<ControlLine> TextControl::previousMarker(std::int32_t from, int mask) const {
    const int line = exists() && from >= 0 ? answer(sci::kMarkerPrevious, from, mask) : -1;
    return line < 0 ? std::nullopt : std::optional(ControlLine{line});
}

std::optional<TextSpan> TextControl::find(std::uint32_t flags, int from, int to,
                                          const std::string& text) const {
    if (!exists() || text.empty()) return std::nullopt;
    const int end = length();
    sci::TextToFind request{std::clamp(from, 0, end), std::clamp(to, 0, end), text.c_str(), 0, 0};
    if (static_cast<int>(send(sci::kFindText, flags, pointerValue(&request))) < 0) {
        takeStatus();
        return std::nullopt;
    }
    return TextSpan{static_cast<int>(request.foundStart), static_cast<int>(request.foundEnd)};
}

void TextControl::setTarget(TextSpan span) const {
    send(sci::kSetTargetStart, word(span.start));
    send(sci::kSetTargetEnd, word(span.end));
}

TextSpan TextControl::target() const {
    return {answer(sci::kGetTargetStart), answer(sci::kGetTargetEnd)};
}

std::optional<int> TextControl::searchInTarget(std::string_view text) const {
    if (!exists() || text.empty()) return std::nullopt;
    const int hit = static_cast<int>(
        send(sci::kSearchInTarget, text.size(), pointerValue(std::string(text).c_str())));
    return hit < 0 ? std::nullopt : std::optional(hit);
}

int TextControl::replaceTarget(std::string_view text, bool regularExpression) const {
    const unsigned message = regularExpression ? sci::kReplaceTargetRe : sci::kReplaceTarget;
    return static_cast<int>(send(message, text.size(), pointerValue(std::string(text).c_str())));
}

void TextControl::showTip(int position, const std::string& text) const {
    send(sci::kCallTipShow, word(position), text.c_str());
}

}  // namespace korvant
