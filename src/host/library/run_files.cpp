#include "host/library/run_files.h"

#include "host/run/script_session.h"

namespace korvant {

namespace {

/// What the script has printed is written out even when its time is up; but then a pipe whose
/// reader does not read holds the host up no longer than this.
constexpr std::uint64_t kClosingMilliseconds = 3000;
std::uint64_t closingBegan = 0;

bool closingMustEnd() {
    ScriptSession& session = moduleSession();
    if (session.stopRequested()) return true;
    const std::uint64_t now = session.services().clock->monotonic();
    return session.shouldStop() && now - closingBegan > kClosingMilliseconds;
}

FileRules fileRules() {
    const Limits& limits = moduleSession().limits();
    return {limits.fileAccess, limits.fileFolder};
}

}  // namespace

bool RunFiles::openInput(std::string_view name) {
    input_.reset();
    fileEndMet_ = false;
    input_ = InputFile::open(name, fileRules());
    return input_ != nullptr;
}

/// Deliberate: the file of before is closed even when the new one cannot be opened; scripts that
/// go on printing then reach the console.
bool RunFiles::openOutput(std::string_view name, OutputFile::Mode mode) {
    closeOutput();
    output_ = OutputFile::open(name, mode, fileRules(), runShouldStop);
    return output_ != nullptr;
}

void RunFiles::closeOutput() {
    const std::unique_ptr<OutputFile> file = std::move(output_);
    if (!file) return;
    ScriptSession& session = moduleSession();
    closingBegan = session.services().clock->monotonic();
    file->close(closingMustEnd);
    if (file->failure() != 0) session.noteWriteFailure(file->name(), file->failure());
}

void RunFiles::closeAll() {
    input_.reset();
    endMet_ = false;
    closeOutput();
}

RunFiles& runFiles() {
    static RunFiles* const files = new RunFiles;
    return *files;
}

}  // namespace korvant
