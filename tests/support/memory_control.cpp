#include "support/memory_control.h"

#include <algorithm>
#include <cstring>

namespace korvant::test {

namespace {

constexpr int kNoMemory = 2;

bool isWordByte(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z') || byte == '_' || static_cast<signed char>(byte) < 0;
}

const char* textAt(std::intptr_t pointer) {
    return reinterpret_cast<const char*>(pointer);
}

std::uint32_t flagsOf(std::intptr_t value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace

MemoryControl::MemoryControl() = default;

ControlSend MemoryControl::send() {
    return [this](unsigned message, std::uintptr_t w, std::intptr_t l) {
        return handle(message, w, l);
    };
}

std::intptr_t MemoryControl::handle(unsigned message, std::uintptr_t word, std::intptr_t l) {
    const auto w = static_cast<std::intptr_t>(word);
    std::intptr_t result = 0;
    if (query(message, w, l, result) || queryLines(message, w, l, result)) return result;
    record(message, w, l);
    if (change(message, w, l, result) || searchOrReplace(message, w, l, result) ||
        mark(message, w, l, result))
        return result;
    if (!move(message, w, l) && !show(message, w, l) && !ignored(message)) unknown.insert(message);
    return 0;
}

void MemoryControl::record(unsigned message, std::intptr_t w, std::intptr_t l) {
    SentMessage entry{message, w, l, {}};
    switch (message) {
        case sci::kAddText:
            entry.text.assign(textAt(l), static_cast<std::size_t>(w));
            break;
        case sci::kSetProperty:
            entry.text = std::string(textAt(w)) + "=" + textAt(l);
            entry.w = entry.l = 0;
            break;
        case sci::kSetText:
        case sci::kSetKeywords:
        case sci::kStyleSetFont:
        case sci::kCallTipShow:
        case sci::kAutoCShow:
            entry.text = textAt(l);
            entry.l = 0;
            break;
        default:
            break;
    }
    sent.push_back(std::move(entry));
}

bool MemoryControl::query(unsigned message, std::intptr_t w, std::intptr_t l,
                          std::intptr_t& result) const {
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
        case sci::kCanUndo:
            result = !undo_.empty();
            return true;
        case sci::kCanRedo:
            result = !redo_.empty();
            return true;
        case sci::kCanPaste:
            result = !clipboard_.empty();
            return true;
        case sci::kCallTipActive:
            result = tipShown_;
            return true;
        case sci::kAutoCActive:
            result = listShown_;
            return true;
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
            if (l != 0)
                std::memcpy(reinterpret_cast<char*>(l), selected.c_str(), selected.size() + 1);
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

bool MemoryControl::change(unsigned message, std::intptr_t w, std::intptr_t l,
                           std::intptr_t& result) {
    switch (message) {
        case sci::kAddText: {
            const int before = length();
            insert(caret, {textAt(l), static_cast<std::size_t>(w)});
            caret = anchor = caret + length() - before;
            return true;
        }
        case sci::kSetText:
            ++openGroups_;
            erase(0, length());
            caret = anchor = 0;
            insert(0, textAt(l));
            if (--openGroups_ == 0) ++group_;
            result = 1;
            return true;
        case sci::kClearAll:
            erase(0, length());
            caret = anchor = firstVisibleLine = 0;
            return true;
        case sci::kBeginUndoAction:
            ++openGroups_;
            return true;
        case sci::kEndUndoAction:
            if (openGroups_ > 0 && --openGroups_ == 0) ++group_;
            return true;
        case sci::kSetUndoCollection:
            collecting_ = w != 0;
            return true;
        case sci::kEmptyUndoBuffer:
            undo_.clear();
            redo_.clear();
            return true;
        case sci::kUndo:
            undo();
            return true;
        case sci::kRedo:
            redo();
            return true;
        case sci::kCut:
            clipboard_ = selectedText();
            replaceSelection({});
            return true;
        case sci::kCopy:
            clipboard_ = selectedText();
            return true;
        case sci::kPaste:
            replaceSelection(clipboard_);
            return true;
        case sci::kSetStatus:
            status_ = static_cast<int>(w);
            return true;
        default:
            return false;
    }
}

bool MemoryControl::searchOrReplace(unsigned message, std::intptr_t w, std::intptr_t l,
                                    std::intptr_t& result) {
    const auto bytes = [&] { return std::string(textAt(l), static_cast<std::size_t>(w)); };
    switch (message) {
        case sci::kFindText: {
            auto& request = *reinterpret_cast<sci::TextToFind*>(l);
            const auto found = findText(flagsOf(w), static_cast<int>(request.from),
                                        static_cast<int>(request.to), request.text);
            result = found ? found->start : -1;
            if (found) request.foundStart = found->start, request.foundEnd = found->end;
            return true;
        }
        case sci::kSearchInTarget: {
            const auto found = findText(searchFlags_, target_.start, target_.end, bytes());
            result = found ? found->start : -1;
            if (found) target_ = *found;
            return true;
        }
        case sci::kSetTargetStart:
            target_.start = static_cast<int>(w);
            return true;
        case sci::kSetTargetEnd:
            target_.end = static_cast<int>(w);
            return true;
        case sci::kTargetFromSelection:
            target_ = {std::min(caret, anchor), std::max(caret, anchor)};
            return true;
        case sci::kReplaceTarget:
            result = replaceTarget(bytes());
            return true;
        case sci::kReplaceTargetRe:
            result = replaceTarget(substituted(bytes()));
            return true;
        default:
            return false;
    }
}

bool MemoryControl::mark(unsigned message, std::intptr_t w, std::intptr_t l,
                         std::intptr_t& result) {
    const int argument = static_cast<int>(w);
    const int value = static_cast<int>(l);
    const bool onLine = argument >= 0 && argument < lineCount();
    result = -1;
    switch (message) {
        case sci::kMarkerDefine:
            markerSymbols[argument] = value;
            return true;
        case sci::kMarkerSetFore:
            markerColours[argument].first = value;
            return true;
        case sci::kMarkerSetBack:
            markerColours[argument].second = value;
            return true;
        case sci::kMarkerAdd:
            if (onLine) lineMarkers_[static_cast<std::size_t>(argument)].push_back(value);
            return true;
        case sci::kMarkerDelete: {
            if (!onLine) return true;
            auto& markers = lineMarkers_[static_cast<std::size_t>(argument)];
            const auto found = std::find(markers.begin(), markers.end(), value);
            if (found != markers.end()) markers.erase(found);
            return true;
        }
        case sci::kMarkerDeleteAll:
            for (auto& markers : lineMarkers_) std::erase(markers, argument);
            return true;
        default:
            result = 0;
            return false;
    }
}

bool MemoryControl::move(unsigned message, std::intptr_t w, std::intptr_t l) {
    const int first = static_cast<int>(w);
    const int second = static_cast<int>(l);
    changed_ = true;
    switch (message) {
        case sci::kSetSel:
            caret = second < 0 ? length() : std::min(second, length());
            anchor = first < 0 ? caret : std::min(first, length());
            return true;
        case sci::kGotoPos:
            caret = anchor = std::clamp(first, 0, length());
            return true;
        case sci::kGotoLine:
            caret = anchor = startOf(std::clamp(first, 0, lineCount()));
            return true;
        case sci::kSelectAll:
            anchor = 0;
            caret = length();
            return true;
        case sci::kLineScroll:
            firstVisibleLine =
                std::clamp(firstVisibleLine + second, 0, std::max(lineCount() - linesOnScreen, 0));
            return true;
        default:
            return false;
    }
}

bool MemoryControl::show(unsigned message, std::intptr_t w, std::intptr_t l) {
    switch (message) {
        case sci::kCallTipShow:
            callTip = textAt(l);
            callTipPosition = static_cast<int>(w);
            tipShown_ = true;
            return true;
        case sci::kCallTipCancel:
            tipShown_ = false;
            return true;
        case sci::kCallTipSetHlt:
            callTipHighlight = {w, l};
            return true;
        case sci::kAutoCShow:
            completions = textAt(l);
            listShown_ = true;
            return true;
        case sci::kAutoCCancel:
            listShown_ = false;
            return true;
        case sci::kBraceHighlight:
            braces = {w, l};
            return true;
        case sci::kSetMarginWidthN:
            marginWidths[static_cast<int>(w)] = static_cast<int>(l);
            return true;
        case sci::kToggleFold:
            toggledFolds.push_back(static_cast<int>(w));
            return true;
        case sci::kSetModEventMask:
            modifiedMask_ = static_cast<int>(w);
            return true;
        case sci::kZoomIn:
            ++zoom;
            return true;
        case sci::kZoomOut:
            --zoom;
            return true;
        case sci::kSetZoom:
            zoom = static_cast<int>(w);
            return true;
        default:
            return false;
    }
}

/// What shows on a screen only.
bool MemoryControl::ignored(unsigned message) {
    static const std::set<unsigned> messages = {sci::kConvertEols,
                                                sci::kSetEolMode,
                                                sci::kSetTabWidth,
                                                sci::kStyleClearAll,
                                                sci::kStyleSetFore,
                                                sci::kStyleSetBack,
                                                sci::kStyleSetSize,
                                                sci::kStyleSetFont,
                                                sci::kSetSelFore,
                                                sci::kSetSelBack,
                                                sci::kSetCaretFore,
                                                sci::kSetStyleBits,
                                                sci::kSetCaretLineBack,
                                                sci::kSetCaretLineVisible,
                                                sci::kAutoCSetIgnoreCase,
                                                sci::kAutoCSetMaxHeight,
                                                sci::kSetFoldMarginColour,
                                                sci::kSetFoldMarginHiColour,
                                                sci::kAutoCSetOrder,
                                                sci::kCallTipSetFore,
                                                sci::kCallTipSetForeHlt,
                                                sci::kSetIndentationGuides,
                                                sci::kSetFoldFlags,
                                                sci::kSetMarginMaskN,
                                                sci::kSetMarginSensitiveN,
                                                sci::kSetMouseDwellTime,
                                                sci::kSetLexer,
                                                sci::kSetProperty,
                                                sci::kSetKeywords,
                                                sci::kEnsureVisible,
                                                sci::kUsePopUp};
    return messages.count(message) > 0;
}

void MemoryControl::type(std::string_view bytes) {
    for (const char byte : bytes) {
        replaceSelection({&byte, 1});
        listShown_ = listShown_ && isWordByte(byte);
        ControlNotification added;
        added.code = sci::kCharAdded;
        added.character = static_cast<unsigned char>(byte);
        if (notify) notify(added);
        idle();
    }
}

void MemoryControl::idle() {
    if (!changed_ || !notify) return;
    changed_ = false;
    ControlNotification update;
    update.code = sci::kUpdateUi;
    notify(update);
}

void MemoryControl::replaceSelection(std::string_view bytes) {
    const std::string inserted(bytes);
    const int start = std::min(caret, anchor);
    ++openGroups_;
    erase(start, std::max(caret, anchor) - start);
    insert(start, inserted);
    if (--openGroups_ == 0) ++group_;
    caret = anchor = start + static_cast<int>(inserted.size());
}

void MemoryControl::insert(int position, std::string_view bytes, bool undoing) {
    if (bytes.empty()) return;
    if (insertsUntilFull >= 0 && insertsUntilFull-- == 0) {
        insertsUntilFull = 0;
        status_ = kNoMemory;
        return;
    }
    const int line = lineOf(position);
    const bool atStart = startOf(line) == position;
    const int before = lineCount();
    text.insert(static_cast<std::size_t>(position), bytes);
    readLines();
    const int added = lineCount() - before;
    lineMarkers_.insert(lineMarkers_.begin() + line + (atStart ? 0 : 1),
                        static_cast<std::size_t>(std::max(added, 0)), {});
    lineMarkers_.resize(lineStarts_.size());
    for (int* place : {&caret, &anchor})
        if (*place > position) *place += static_cast<int>(bytes.size());
    if (!undoing) remember(true, position, bytes);
    modified(true, position, static_cast<int>(bytes.size()), added);
}

void MemoryControl::erase(int position, int count, bool undoing) {
    if (count <= 0) return;
    const std::string bytes =
        text.substr(static_cast<std::size_t>(position), static_cast<std::size_t>(count));
    const bool everything = count == length();
    const int line = lineOf(position);
    const int before = lineCount();
    text.erase(static_cast<std::size_t>(position), static_cast<std::size_t>(count));
    readLines();
    const int removed = std::max(before - lineCount(), 0);
    for (int i = 0; i < removed; ++i) {
        const auto next = lineMarkers_.begin() + line + 1;
        auto& kept = lineMarkers_[static_cast<std::size_t>(line)];
        kept.insert(kept.end(), next->begin(), next->end());
        lineMarkers_.erase(next);
    }
    if (everything) lineMarkers_.assign(1, {});
    lineMarkers_.resize(lineStarts_.size());
    for (int* place : {&caret, &anchor})
        if (*place > position) *place = std::max(*place - count, position);
    if (!undoing) remember(false, position, bytes);
    modified(false, position, count, lineCount() - before);
}

void MemoryControl::readLines() {
    lineStarts_.assign(1, 0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || (text[i] == '\r' && !pair))
            lineStarts_.push_back(static_cast<int>(i) + 1);
    }
}

void MemoryControl::modified(bool inserted, int position, int count, int linesAdded) {
    changed_ = true;
    const int type = inserted ? sci::kModInsertText : sci::kModDeleteText;
    if (!notify || (type & modifiedMask_) == 0) return;
    ControlNotification notification;
    notification.code = sci::kModified;
    notification.position = position;
    notification.modificationType = type;
    notification.linesAdded = linesAdded;
    static_cast<void>(count);
    notify(notification);
}

void MemoryControl::remember(bool inserted, int position, std::string_view bytes) {
    redo_.clear();
    if (!collecting_) return;
    if (openGroups_ == 0) ++group_;
    undo_.push_back({inserted, position, std::string(bytes), group_});
}

void MemoryControl::apply(const Change& step, bool inverse) {
    if (step.insert != inverse)
        insert(step.position, step.text, true);
    else
        erase(step.position, static_cast<int>(step.text.size()), true);
    caret = anchor = step.position;
}

void MemoryControl::undo() {
    if (undo_.empty()) return;
    for (const int group = undo_.back().group; !undo_.empty() && undo_.back().group == group;) {
        redo_.push_back(undo_.back());
        undo_.pop_back();
        apply(redo_.back(), true);
    }
}

void MemoryControl::redo() {
    if (redo_.empty()) return;
    for (const int group = redo_.back().group; !redo_.empty() && redo_.back().group == group;) {
        undo_.push_back(redo_.back());
        redo_.pop_back();
        apply(undo_.back(), false);
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

std::intptr_t MemoryControl::replaceTarget(std::string_view with) {
    const std::string bytes(with);
    ++openGroups_;
    erase(target_.start, target_.end - target_.start);
    insert(target_.start, bytes);
    if (--openGroups_ == 0) ++group_;
    target_.end = target_.start + static_cast<int>(bytes.size());
    return static_cast<std::intptr_t>(bytes.size());
}

}  // namespace korvant::test
