// The texts of the control without a screen: one is in view, the others are held by whoever counts
// a reference to them.
#include <utility>

#include "support/memory_control.h"

namespace korvant::test {

void MemoryControl::swapWith(Hidden& hidden) {
    std::swap(text, hidden.text);
    std::swap(lineStarts_, hidden.lineStarts);
    std::swap(lineMarkers_, hidden.lineMarkers);
    std::swap(undo_, hidden.undo);
    std::swap(redo_, hidden.redo);
    std::swap(saved_, hidden.saved);
    std::swap(group_, hidden.group);
    std::swap(collecting_, hidden.collecting);
    std::swap(references_, hidden.references);
}

void MemoryControl::drop(std::intptr_t document) {
    if (document == document_)
        --references_;
    else if (--hidden_.at(document).references == 0)
        hidden_.erase(document);
}

/// What belongs to the view and not to the text begins anew: selection, folds.
bool MemoryControl::exchange(unsigned message, std::intptr_t l, std::intptr_t& result) {
    switch (message) {
        case sci::kGetDocPointer:
            result = document_;
            return true;
        case sci::kCreateDocument:
            result = ++documents_;
            hidden_[result].references = 1;
            return true;
        case sci::kAddRefDocument:
            ++(l == document_ ? references_ : hidden_.at(l).references);
            return true;
        case sci::kReleaseDocument:
            drop(l);
            return true;
        case sci::kSetDocPointer: {
            if (l == document_) return true;
            Hidden before = std::move(hidden_.at(l));
            hidden_.erase(l);
            ++before.references;
            swapWith(before);
            const std::intptr_t left = std::exchange(document_, l);
            if (--before.references > 0) hidden_[left] = std::move(before);
            caret = anchor = 0;
            closedFolds.clear();
            return true;
        }
        default:
            return false;
    }
}

}  // namespace korvant::test
