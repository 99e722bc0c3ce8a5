#include "host/library/run_dialogs.h"

#include <utility>

#include "host/run/script_session.h"

namespace korvant {

/// A display whose thread did not end in time is not followed by a second: the script then goes on
/// without.
bool RunDialogs::beginProgress() {
    if (progress_) return true;
    if (!latest_.expired()) return false;
    Frontend* const frontend = &moduleSession().coveredFrontend();
    progress_ = CThreadedProgressText::begin(
        caption_, text_, [frontend] { return frontend->makeProgressWindow(); },
        [] { moduleSession().requestStop(); });
    latest_ = progress_;
    return true;
}

void RunDialogs::showProgress(const std::string& caption, const std::string& text) {
    if (!beginProgress()) return;
    // The display takes both texts over when the lower one is new, and shows itself last.
    writeProgress(caption_, caption);
    writeProgress(text_, text);
    progress_->setVisible(!text.empty());
}

void RunDialogs::endProgress() {
    if (const auto progress = std::move(progress_)) progress->end();
}

void RunDialogs::beginRun() {
    clearProgress(caption_);
    clearProgress(text_);
    boxesShown_ = 0;
    endProgress();
}

RunDialogs& runDialogs() {
    static RunDialogs* const dialogs = new RunDialogs;
    return *dialogs;
}

}  // namespace korvant
