#include "limit_options.h"

#include <map>

namespace korvant_app {

namespace {

using korvant::FileAccess;
using korvant::Limits;

constexpr char kBuildGroup[] = "Limits of the script's text";
constexpr char kRunGroup[] = "Limits of the run";

/// Sizes are given in MiB.
CLI::Option* addSize(CLI::App& command, const char* name, std::size_t& bytes, const char* help) {
    constexpr std::size_t kMiB = std::size_t{1} << 20;
    const auto assign = [&bytes](const std::size_t& mib) { bytes = mib * kMiB; };
    return command.add_option_function<std::size_t>(name, assign, help)
        ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 20))
        ->default_str(std::to_string(bytes / kMiB))
        ->type_name("MIB");
}

std::string checkCount(const std::string& text) {
    const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
    return digits && !text.empty() ? "" : "must be a whole number from 0";
}

template <class Number>
CLI::Option* addCount(CLI::App& command, const char* name, Number& value, const char* help) {
    return command.add_option(name, value, help)
        ->check(checkCount)
        ->type_name("N")
        ->capture_default_str();
}

const std::map<std::string, FileAccess> kFileAccess = {
    {"all", FileAccess::all}, {"read-only", FileAccess::readOnly}, {"none", FileAccess::none}};

void setFileAccess(Limits& limits, const std::string& word) {
    const auto named = kFileAccess.find(word);
    limits.fileAccess = named == kFileAccess.end() ? FileAccess::oneFolder : named->second;
    if (limits.fileAccess == FileAccess::oneFolder) limits.fileFolder = word;
}

std::string checkFileAccess(const std::string& word) {
    if (kFileAccess.count(word) != 0) return {};
    return CLI::ExistingDirectory(word).empty() ? std::string()
                                                : "must be all, read-only, none or a folder";
}

/// Read before the other switches take effect, so that each of them can loosen one bound.
void addStrict(CLI::App& command, Limits& limits) {
    command
        .add_flag_function(
            "--strict", [&limits](std::int64_t) { limits = korvant::strictLimits(); },
            "bounds for scripts that nobody has read; other switches loosen one of them")
        ->trigger_on_parse()
        ->group(kBuildGroup);
}

}  // namespace

void addBuildLimitOptions(CLI::App& command, Limits& limits) {
    addStrict(command, limits);
    addSize(command, "--script-limit", limits.scriptBytes, "longest text")->group(kBuildGroup);
    addCount(command, "--token-limit", limits.scriptTokens, "words and signs")->group(kBuildGroup);
    addCount(command, "--nesting-limit", limits.nesting, "brackets inside each other")
        ->group(kBuildGroup);
    addCount(command, "--name-limit", limits.nameBytes, "bytes of a name")->group(kBuildGroup);
    command
        .add_flag_function(
            "--unguarded", [&limits](std::int64_t) { limits.guardBuilds = false; },
            "an engine that some texts kill compiles without a child process trying first")
        ->group(kBuildGroup);
}

void addRunLimitOptions(CLI::App& command, Limits& limits) {
    addCount(command, "--call-depth", limits.callDepth, "calls inside each other")
        ->group(kRunGroup);
    addSize(command, "--string-limit", limits.stringBytes, "one string")->group(kRunGroup);
    addSize(command, "--memory-limit", limits.runBytes, "all strings and objects")
        ->group(kRunGroup);
    addCount(command, "--ceiling", limits.hardCeilingMs,
             "milliseconds for the whole run, waiting included; 0: none")
        ->group(kRunGroup);
    addCount(command, "--boxes", limits.boxesBeforeStopButton,
             "message boxes until one offers to stop the script; 0: never")
        ->group(kRunGroup);
    command
        .add_option_function<std::string>(
            "--file-access", [&limits](const std::string& word) { setFileAccess(limits, word); },
            "files that the script may open: all, read-only, none, or inside a folder")
        ->check(CLI::Validator(checkFileAccess, ""))
        ->type_name("WHICH")
        ->default_str("all")
        ->group(kRunGroup);
    command
        .add_flag("--end-of-input-ends-run", limits.endOfInputEndsRun,
                  "reading past the end of the console's input or of a file ends the script")
        ->group(kRunGroup);
}

}  // namespace korvant_app
