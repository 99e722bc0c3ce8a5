// The one input file and the one output file of a run.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/library/script_files.h"
#include "host/run/run_participant.h"

namespace korvant {

/// Script's thread only. A write that failed is noted with the session when its file is closed.
class RunFiles final : public RunParticipant {
  public:
    /// All three close the file of before, whether or not the new one can be opened.
    bool openInput(std::string_view name);
    void closeInput() { input_.reset(); }
    bool openOutput(std::string_view name, OutputFile::Mode mode);
    /// Waits for a reader that does not read until a stop, and some seconds beyond the time limit.
    void closeOutput();

    InputFile* input() const noexcept { return input_.get(); }     ///< null: the console
    OutputFile* output() const noexcept { return output_.get(); }  ///< null: the console

    /// The end of what is read was met; false when it had been met before, of the same file or of
    /// the console.
    bool meetEnd() noexcept { return !std::exchange(input_ ? fileEndMet_ : endMet_, true); }

    void beginRun() override { closeAll(); }
    void endRun() override { closeAll(); }

  private:
    void closeAll();

    std::unique_ptr<InputFile> input_;
    std::unique_ptr<OutputFile> output_;
    bool endMet_ = false;      ///< of the console
    bool fileEndMet_ = false;  ///< of the input file
};

/// The one of the module. Never destroyed.
RunFiles& runFiles();

}  // namespace korvant
