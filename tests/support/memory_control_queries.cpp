// What the control without a screen answers about its text, lines and selection.
#include <algorithm>
#include <cstring>

#include "support/memory_control.h"
#include "support/memory_control_bytes.h"

namespace korvant::test {

bool MemoryControl::query(unsigned message, std::intptr_t& result) const {
    switch (message) {
        case sci::kGetLength:
        case sci::kGetTextLength:
            result = length();
            return true;
        case sci::kGetCurrentPos:
            result = caret;
            return true;
        case sci::kGetAnchor:
            result = anchor;
            return true;
        case sci::kGetSelectionStart:
            result = std::min(caret, anchor);
            return true;
        case sci::kGetSelectionEnd:
            result = std::max(caret, anchor);
            return true;
        case sci::kGetTargetStart:
            result = target_.start;
            return true;
        case sci::kGetTargetEnd:
            result = target_.end;
            return true;
        case sci::kGetStatus:
            result = status_;
            return true;
        case sci::kGetStyleAt:
            result = 0;
            return true;
        case sci::kGetModify:
            result = text != saved_;
            return true;
        case sci::kCanUndo:
            result = !undo_.empty();
            return true;
        case sci::kCanRedo:
            result = !redo_.empty();
            return true;
        case sci::kCallTipActive:
            result = tipShown_;
            return true;
        case sci::kAutoCActive:
            result = listShown_;
            return true;
        default:
            return false;
    }
}

bool MemoryControl::queryText(unsigned message, std::intptr_t w, std::intptr_t l,
                              std::intptr_t& result) const {
    switch (message) {
        case sci::kTextWidth:
            result = textWidth * static_cast<int>(std::strlen(textAt(l)));
            return true;
        case sci::kWordStartPosition:
            result = wordEdge(static_cast<int>(w), -1);
            return true;
        case sci::kWordEndPosition:
            result = wordEdge(static_cast<int>(w), 1);
            return true;
        case sci::kBraceMatch:
            result = braceMatch(static_cast<int>(w));
            return true;
        case sci::kGetCharAt:
            result = w >= 0 && w < length() ? text[static_cast<std::size_t>(w)] : 0;
            return true;
        case sci::kGetSelText: {
            const std::string selected = selectedText();
            if (l != 0) {
                std::memcpy(reinterpret_cast<char*>(l), selected.c_str(), selected.size() + 1);
                longestRead = std::max(longestRead, selected.size());
            }
            result = selected.empty() ? 0 : static_cast<std::intptr_t>(selected.size()) + 1;
            return true;
        }
        case sci::kGetText: {
            const std::size_t count = std::min(static_cast<std::size_t>(w - 1), text.size());
            std::memcpy(reinterpret_cast<char*>(l), text.data(), count);
            reinterpret_cast<char*>(l)[count] = '\0';
            result = static_cast<std::intptr_t>(count);
            return true;
        }
        case sci::kGetTextRange: {
            const auto& range = *reinterpret_cast<const sci::TextRange*>(l);
            const std::string part = text.substr(static_cast<std::size_t>(range.from),
                                                 static_cast<std::size_t>(range.to - range.from));
            std::memcpy(range.text, part.c_str(), part.size() + 1);
            longestRead = std::max(longestRead, part.size());
            return true;
        }
        default:
            return false;
    }
}

bool MemoryControl::queryLines(unsigned message, std::intptr_t w, std::intptr_t l,
                               std::intptr_t& result) const {
    const int argument = static_cast<int>(w);
    const auto has = [&](int line) {
        for (const int marker : lineMarkers_[static_cast<std::size_t>(line)])
            if ((l >> marker & 1) != 0) return true;
        return false;
    };
    result = -1;
    switch (message) {
        case sci::kGetLineCount:
            result = lineCount();
            return true;
        case sci::kGetFirstVisibleLine:
            result = firstVisibleLine;
            return true;
        case sci::kVisibleFromDocLine:
        case sci::kDocLineFromVisible:
            result = argument;
            return true;
        case sci::kGetXOffset:
            result = columnOffset;
            return true;
        case sci::kContractedFoldNext: {
            const auto next = closedFolds.lower_bound(argument);
            if (next != closedFolds.end()) result = *next;
            return true;
        }
        case sci::kGetMarginWidthN:
            result = marginWidths.count(argument) ? marginWidths.at(argument) : 0;
            return true;
        case sci::kLineFromPosition:
            result = lineOf(argument);
            return true;
        case sci::kPositionFromLine:
            result = startOf(argument);
            return true;
        case sci::kGetLineEndPosition:
            result = endOf(argument);
            return true;
        case sci::kMarkerGet:
            result = 0;
            if (argument >= 0 && argument < lineCount())
                for (const int marker : lineMarkers_[static_cast<std::size_t>(argument)])
                    result |= std::intptr_t{1} << marker;
            return true;
        case sci::kMarkerNext:
            for (int line = std::max(argument, 0); line < lineCount() && result < 0; ++line)
                if (has(line)) result = line;
            return true;
        case sci::kMarkerPrevious:
            for (int line = std::min(argument, lineCount() - 1); line >= 0 && result < 0; --line)
                if (has(line)) result = line;
            return true;
        case sci::kPositionRelative: {
            int position = argument;
            for (std::intptr_t left = l; left > 0 && position < length(); --left) {
                do ++position;
                while (position < length() &&
                       (static_cast<unsigned char>(text[static_cast<std::size_t>(position)]) &
                        0xC0) == 0x80);
            }
            result = position;
            return true;
        }
        default:
            return false;
    }
}

std::vector<int> MemoryControl::markedLines(int marker) const {
    std::vector<int> lines;
    for (std::size_t i = 0; i < lineMarkers_.size(); ++i)
        if (std::count(lineMarkers_[i].begin(), lineMarkers_[i].end(), marker) > 0)
            lines.push_back(static_cast<int>(i) + 1);
    return lines;
}

std::string MemoryControl::selectedText() const {
    const auto start = static_cast<std::size_t>(std::min(caret, anchor));
    return text.substr(start, static_cast<std::size_t>(std::max(caret, anchor)) - start);
}

int MemoryControl::lineOf(int position) const {
    const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), position);
    return std::max(static_cast<int>(after - lineStarts_.begin()) - 1, 0);
}

int MemoryControl::startOf(int line) const {
    if (line < 0) return 0;
    return line < lineCount() ? lineStarts_[static_cast<std::size_t>(line)] : length();
}

int MemoryControl::endOf(int line) const {
    int end = startOf(line + 1);
    if (line + 1 >= lineCount()) return end;
    const auto at = [&](int position) { return text[static_cast<std::size_t>(position)]; };
    if (end > 0 && at(end - 1) == '\n') --end;
    if (end > 0 && at(end) == '\n' && at(end - 1) == '\r') --end;
    return end < startOf(line + 1) ? end : end - 1;
}

int MemoryControl::wordEdge(int position, int step) const {
    const auto wordAt = [&](int place) {
        return place >= 0 && place < length() && isWordByte(text[static_cast<std::size_t>(place)]);
    };
    while (wordAt(step > 0 ? position : position - 1)) position += step;
    return position;
}

int MemoryControl::braceMatch(int position) const {
    constexpr std::string_view kBraces = "()[]{}<>";
    if (position < 0 || position >= length()) return -1;
    const char brace = text[static_cast<std::size_t>(position)];
    const auto index = kBraces.find(brace);
    if (index == std::string_view::npos) return -1;
    const char partner = kBraces[index ^ 1];
    int depth = 0;
    for (int i = position; i >= 0 && i < length(); i += index % 2 == 0 ? 1 : -1) {
        if (text[static_cast<std::size_t>(i)] == brace) ++depth;
        if (text[static_cast<std::size_t>(i)] == partner && --depth == 0) return i;
    }
    return -1;
}

}  // namespace korvant::test
