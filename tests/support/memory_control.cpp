// Messages to the control without a screen.
#include <algorithm>

#include "support/memory_control.h"
#include "support/memory_control_bytes.h"

namespace korvant::test {

namespace {

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
    if (query(message, result) || queryText(message, w, l, result) ||
        queryLines(message, w, l, result))
        return result;
    record(message, w, l);
    if (exchange(message, l, result) || change(message, w, l, result) ||
        searchOrReplace(message, w, l, result) || mark(message, w, l, result))
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
        case sci::kFoldLine:
            closedFolds.insert(static_cast<int>(w));
            return true;
        case sci::kSetFirstVisibleLine:
            firstVisibleLine = static_cast<int>(w);
            return true;
        case sci::kSetXOffset:
            columnOffset = static_cast<int>(w);
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
                                                sci::kMoveSelectedLinesUp,
                                                sci::kMoveSelectedLinesDown,
                                                sci::kSetCodePage,
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
                                                sci::kSetWrapMode,
                                                sci::kCallTipSetBack,
                                                sci::kColourise,
                                                sci::kGetEndStyled,
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

}  // namespace korvant::test
