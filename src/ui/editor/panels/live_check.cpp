#include "ui/editor/panels/live_check.h"

#include <wx/event.h>

#include <exception>

#include "editor/script_editor.h"

namespace korvant::ui {
namespace {

/// What the compiler says of a text in which nothing is declared, as it is when one begins.
constexpr char kNothingYet[] = "Nothing was built in the module";

}  // namespace

/// A computer that has no room for another process or thread still edits.
void LiveCheck::begin() {
    asIScriptEngine* engine = editor_.engine();
    auto text = editor_.scriptBytes();
    if (!engine || !text) return;
    try {
        if (!service_) {
            service_ = makeCheckService(*engine, [this](std::function<void()> work) {
                window_.CallAfter([work = std::move(work)] { work(); });
            });
            service_->onResult([this](const CheckResult& result) { take(result); });
        }
        checking_.begun();
        service_->check(asked_ = editor_.textVersion(), std::move(*text));
    } catch (const std::exception&) {
        service_.reset();
    }
}

bool LiveCheck::isCurrent() const {
    return answered_ == editor_.textVersion();
}

/// What the user has typed meanwhile is checked after the next pause.
void LiveCheck::take(const CheckResult& result) {
    if (result.version == asked_) checking_.ended();
    if (!result.note.empty() && onNote) onNote(result.note);
    if (!result.complete || result.version != editor_.textVersion()) return;
    answered_ = result.version;
    found_ = result.diagnostics;
    std::erase_if(found_, [](const Diagnostic& one) {
        return one.line == 0 && one.text.starts_with(kNothingYet);
    });
    tell();
}

void LiveCheck::tellRest() {
    if (heldBack_ && isCurrent() && growing().line == 0) tell();
}

/// What explains a message goes with it.
void LiveCheck::tell() {
    const WordPlace place = growing ? growing() : WordPlace();
    std::vector<Diagnostic> told;
    bool holds = false;
    heldBack_ = false;
    for (const Diagnostic& one : found_) {
        if (one.kind != Diagnostic::Kind::information)
            holds = place.line > 0 && one.line == place.line && one.column <= place.column &&
                    place.column <= one.endColumn;
        heldBack_ = heldBack_ || holds;
        if (!holds) told.push_back(one);
    }
    editor_.setProblems(std::move(told));
    if (onAnswer) onAnswer();
}

}  // namespace korvant::ui
