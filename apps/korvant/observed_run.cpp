#include "observed_run.h"

#include <cstdio>

#include "base/system/file_io.h"
#include "base/system/os_file.h"
#include "base/system/user_folders.h"
#include "debug/debug_session.h"

namespace korvant_app {

namespace {

/// Stops nowhere.
class Passer final : public korvant::DebugListener {
    void onStopped(const korvant::StopInfo&) override {}
};

/// In place of a file that stands there, whose readers see the old or the new content; as it comes
/// to a device or a pipe.
int put(std::string path, const std::string& text) {
    using Kind = korvant::FileStatus::Kind;
    korvant::FileOperations& files = korvant::systemFiles();
    korvant::FileStatus status;
    if (files.status(path, status) != 0) status.kind = Kind::none;
    const bool there = status.kind != Kind::none;
    korvant::OpenFile file(files);
    if (there && status.kind != Kind::regular) {
        const int error = files.openWrite(path, file.handle());
        return error != 0 ? error : korvant::writeFully(files, file.handle(), text);
    }
    // A link stays one.
    if (std::string target; there && files.resolve(path, target) == 0) path = target;
    const std::string fresh = there ? korvant::temporaryBeside(path) : path;
    int error = files.create(fresh, false, file.handle());
    if (error != 0) return error;
    error = korvant::writeFully(files, file.handle(), text);
    if (const int closing = file.close(); error == 0) error = closing;
    if (error == 0 && there) error = files.rename(fresh, path);
    if (error != 0) files.remove(fresh);
    return error;
}

void write(const std::string& path, const std::string& text) {
    if (const int error = put(path, text); error != 0)
        complain("could not write " + path + ": " + korvant::systemErrorText(error));
}

}  // namespace

void runObserved(asIScriptEngine* engine, asIScriptContext* context, const Source& source,
                 const Observation& wanted) {
    Passer passer;
    korvant::DebugSession session(korvant::moduleSession(), passer);
    korvant::Coverage coverage("script");
    korvant::Profiler profiler;
    if (!wanted.coverage.empty()) session.setCoverage(&coverage);
    if (!wanted.profile.empty()) session.setProfiler(&profiler);
    session.start(engine, context, source.text);
    const auto code = session.code();
    if (!code) return;
    if (!wanted.coverage.empty()) {
        write(wanted.coverage, coverage.lcov(*code, korvant::absolutePath(source.name)));
        std::fprintf(stderr, "coverage: %s\n", coverage.summary(*code).c_str());
    }
    if (!wanted.profile.empty()) {
        write(wanted.profile, profiler.collapsed());
        std::fputs(profiler.summary().c_str(), stderr);
    }
}

}  // namespace korvant_app
