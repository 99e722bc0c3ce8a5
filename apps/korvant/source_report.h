// What a compiler and a run say about a source file.
#pragma once

#include <string>

#include "host/run/build_messages.h"
#include "host/run/script_session.h"

namespace korvant_app {

/// A script file as it was read.
struct Source {
    std::string name;
    std::string text;
};

/// "NAME:ROW:COLUMN: error: TEXT", the source line, and a caret below the place; one after the
/// other, to standard error.
void reportBuild(const Source& source, const korvant::BuildMessages& messages);

/// The run's message, "NAME:LINE" with the source line where it ended, and the calls that had not
/// returned; nothing for none.
void reportRun(const Source& source, const korvant::RunFailure& failure);

/// What the run could not write. A pipe whose reader has gone is not worth a word.
void reportUnwritten(const korvant::RunFailure& failure);

/// Why the script's question at `line` (from 1; 0 unknown) could not be answered, with that line.
void reportAnswer(const Source& source, const std::string& what, int line);

/// "korvant: TEXT" to standard error. Texts of scripts cannot steer a terminal there.
void complain(const std::string& text);
/// To standard output. False when it takes no more; what ends the program says so once.
bool writeOutput(std::string_view text);
/// Hands over what was written. 0, or the first error of the system with which standard output
/// failed.
int finishOutput();
/// For such an error; quiet about a pipe whose reader has gone.
void complainOfOutput(int systemError);

}  // namespace korvant_app
