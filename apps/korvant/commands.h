// The subcommands of the program; each file command_NAME.cpp adds one.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace korvant_app {

/// Exit codes that every command shares.
enum ExitCode : int {
    kFinished = 0,
    kRunFailed = 1,
    kBuildFailed = 2,
    kNoMain = 3,
    kWrongUsage = 64,
    kCannotRead = 66
};

/// Each adds its subcommand to `app`; the command writes its exit code when it is chosen.
void addRunCommand(CLI::App& app, int& exitCode);
void addDebugCommand(CLI::App& app, int& exitCode);
void addCheckCommand(CLI::App& app, int& exitCode);
void addEvalCommand(CLI::App& app, int& exitCode);
void addObjectCommand(CLI::App& app, int& exitCode);
void addCryptCommand(CLI::App& app, int& exitCode);
void addEditCommand(CLI::App& app, int& exitCode);
void addDocCommand(CLI::App& app, int& exitCode);
void addDapCommand(CLI::App& app, int& exitCode);
void addLspCommand(CLI::App& app, int& exitCode);
void addApiCommand(CLI::App& app, int& exitCode);

/// What the command "edit" does; an empty path is a new text. The exit code.
int editFile(const std::string& path);

}  // namespace korvant_app
