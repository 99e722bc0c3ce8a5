#include "ui/editor/panels/live_check.h"

#include <wx/event.h>

#include <exception>

#include "editor/script_editor.h"

namespace korvant::ui {

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
        service_->check(editor_.textVersion(), std::move(*text));
    } catch (const std::exception&) {
        service_.reset();
    }
}

bool LiveCheck::isCurrent() const {
    return answered_ == editor_.textVersion();
}

/// What the user has typed meanwhile is checked after the next pause.
void LiveCheck::take(const CheckResult& result) {
    if (!result.note.empty() && onNote) onNote(result.note);
    if (!result.complete || result.version != editor_.textVersion()) return;
    answered_ = result.version;
    editor_.setProblems(result.diagnostics);
    if (onAnswer) onAnswer();
}

}  // namespace korvant::ui
