// What keeps something for the length of a run.
#pragma once

namespace korvant {

class BuildMessages;

/// Whoever owns state that begins and ends with runs: a console, open files, a progress display.
/// The session calls these on the script's thread, in the order in which participants joined, and
/// knows nothing else of them. None may throw.
class RunParticipant {
  public:
    virtual ~RunParticipant() = default;
    /// A further engine is being configured.
    virtual void beginConfiguration() {}
    /// A build is over, with these messages; they may be changed afterwards.
    virtual void built(const BuildMessages&) {}
    /// A run is about to begin; an earlier one may have been left suspended. Failed writes of it
    /// that are noted now belong to the new run.
    virtual void beginRun() {}
    /// The run is about to be ended or reported in a box.
    virtual void beforeReport() {}
    /// The script stands still in the middle of a statement, for a debugger: what was printed must
    /// be seen now.
    virtual void beginHold() {}
    virtual void endHold() {}
    /// A continuation of the run has come to an end, whichever.
    virtual void endContinuation() {}
    /// The first execution of the run has come to an end, whichever.
    virtual void endRun() {}
};

}  // namespace korvant
