// Changes of the text in the control without a screen, and how they are undone.
#include <algorithm>

#include "support/memory_control.h"
#include "support/memory_control_bytes.h"

namespace korvant::test {

namespace {

constexpr int kNoMemory = 2;

}  // namespace

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
            saved_ = text;
            return true;
        case sci::kSetSavePoint:
            saved_ = text;
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

void MemoryControl::replaceSelection(std::string_view bytes) {
    const std::string inserted(bytes);
    const int start = std::min(caret, anchor);
    ++openGroups_;
    erase(start, std::max(caret, anchor) - start);
    insert(start, inserted);
    if (--openGroups_ == 0) ++group_;
    caret = anchor = start + static_cast<int>(inserted.size());
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

void MemoryControl::modified(bool inserted, int position, int size, int linesAdded) {
    changed_ = true;
    const int type = inserted ? sci::kModInsertText : sci::kModDeleteText;
    if (!notify || (type & modifiedMask_) == 0) return;
    ControlNotification notification;
    notification.code = sci::kModified;
    notification.position = position;
    notification.modificationType = type;
    notification.length = size;
    notification.linesAdded = linesAdded;
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

}  // namespace korvant::test
