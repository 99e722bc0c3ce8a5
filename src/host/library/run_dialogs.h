// What dialogs and the progress display remember for the length of a run.
#pragma once

#include <memory>
#include <string>

#include "host/library/progress.h"
#include "host/run/run_participant.h"

namespace korvant {

/// Script's thread only.
class RunDialogs final : public RunParticipant {
  public:
    /// Counts one more message box; how many there were in this run before it.
    unsigned countBox() noexcept { return boxesShown_++; }
    /// The display exists from the first call of a run to the run's end. An empty text hides it.
    void showProgress(const std::string& caption, const std::string& text);

    void beginRun() override;
    /// So that no display stands beside the box that says how the run ended.
    void beforeReport() override { endProgress(); }
    void endContinuation() override { endProgress(); }
    void endRun() override { endProgress(); }

  private:
    bool beginProgress();
    void endProgress();

    unsigned boxesShown_ = 0;
    ProgressBuffer caption_;
    ProgressBuffer text_;
    std::shared_ptr<CThreadedProgressText> progress_;
    std::weak_ptr<CThreadedProgressText> latest_;
};

/// The one of the module. Never destroyed.
RunDialogs& runDialogs();

}  // namespace korvant
