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

void write(const std::string& path, const std::string& text) {
    korvant::FileOperations& files = korvant::systemFiles();
    korvant::OpenFile file(files);
    int error = files.create(path, false, file.handle());
    if (error == 0) error = korvant::writeFully(files, file.handle(), text);
    if (error == 0) error = file.close();
    if (error != 0) complain("could not write " + path + ": " + korvant::systemErrorText(error));
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
