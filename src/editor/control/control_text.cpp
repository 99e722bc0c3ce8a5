#include "editor/control/control_text.h"

#include <algorithm>

#include "editor/control/control_setup.h"

namespace korvant {

namespace {

std::uintptr_t word(int value) {
    return static_cast<std::uintptr_t>(value);
}

}  // namespace

TextView viewOf(const TextControl& control) {
    TextView view;
    view.caret = control.caret();
    view.anchor = static_cast<int>(control.send(sci::kGetAnchor));
    view.firstLine = static_cast<int>(
        control.send(sci::kDocLineFromVisible,
                     static_cast<std::uintptr_t>(control.send(sci::kGetFirstVisibleLine))));
    view.columnOffset = static_cast<int>(control.send(sci::kGetXOffset));
    if (!control.exists()) return view;
    for (std::intptr_t line = 0;
         (line = control.send(sci::kContractedFoldNext, static_cast<std::uintptr_t>(line))) >= 0;
         ++line)
        view.folds.push_back(static_cast<int>(line));
    return view;
}

void restoreView(const TextControl& control, const TextView& view) {
    for (const int line : view.folds)
        if (line < control.lineCount()) control.send(sci::kFoldLine, word(line), std::intptr_t{0});
    const int length = control.length();
    control.select(std::min(view.anchor, length), std::min(view.caret, length));
    control.send(sci::kSetFirstVisibleLine, static_cast<std::uintptr_t>(control.send(
                                                sci::kVisibleFromDocLine, word(view.firstLine))));
    control.send(sci::kSetXOffset, word(view.columnOffset));
}

void ControlText::hide() {
    view_ = viewOf(control_);
    if (document_ != 0) return;
    document_ = control_.send(sci::kGetDocPointer);
    control_.send(sci::kAddRefDocument, 0, document_);
}

void ControlText::show() {
    const bool isNew = document_ == 0;
    if (isNew) document_ = control_.send(sci::kCreateDocument);
    control_.send(sci::kSetDocPointer, 0, document_);
    if (isNew) setUpFurtherText(control_);
    restoreView(control_, view_);
}

void ControlText::release() {
    if (document_ != 0) control_.send(sci::kReleaseDocument, 0, document_);
    document_ = 0;
}

}  // namespace korvant
