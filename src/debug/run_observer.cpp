#include "debug/run_observer.h"

#include "base/system/file_io.h"
#include "base/system/os_file.h"

namespace korvant {

namespace {

/// In place of a file that stands there, whose readers see the old or the new content; as it comes
/// to a device or a pipe.
int put(std::string path, const std::string& text) {
    using Kind = FileStatus::Kind;
    FileOperations& files = systemFiles();
    FileStatus status;
    if (files.status(path, status) != 0) status.kind = Kind::none;
    const bool there = status.kind != Kind::none;
    OpenFile file(files);
    if (there && status.kind != Kind::regular) {
        const int error = files.openWrite(path, file.handle());
        return error != 0 ? error : writeFully(files, file.handle(), text);
    }
    // A link stays one.
    if (std::string target; there && files.resolve(path, target) == 0) path = target;
    const std::string fresh = there ? temporaryBeside(path) : path;
    int error = files.create(fresh, false, file.handle());
    if (error != 0) return error;
    error = writeFully(files, file.handle(), text);
    if (const int closing = file.close(); error == 0) error = closing;
    if (error == 0 && there) error = files.rename(fresh, path);
    if (error != 0) files.remove(fresh);
    return error;
}

void write(const std::string& path, const std::string& text, std::vector<std::string>& failures) {
    if (const int error = put(path, text); error != 0)
        failures.push_back("could not write " + path + ": " + systemErrorText(error));
}

}  // namespace

void RunObserver::watch(DebugSession& session) {
    coverage_.clear();
    profiler_.clear();
    session.setCoverage(files_.coverage.empty() ? nullptr : &coverage_);
    session.setProfiler(files_.profile.empty() ? nullptr : &profiler_);
}

RunObserver::Report RunObserver::finish(DebugSession& session, const std::string& mainPath) {
    session.setCoverage(nullptr);
    session.setProfiler(nullptr);
    Report report;
    const auto code = session.code();
    if (!code) return report;
    if (!files_.coverage.empty()) {
        write(files_.coverage, coverage_.lcov(*code, mainPath), report.failures);
        report.summary += "coverage: " + coverage_.summary(*code) + "\n";
    }
    if (!files_.profile.empty()) {
        write(files_.profile, profiler_.collapsed(), report.failures);
        report.summary += profiler_.summary();
    }
    return report;
}

}  // namespace korvant
