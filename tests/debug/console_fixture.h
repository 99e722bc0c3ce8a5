// A debugger worked with lines of text, over a script that really runs.
#pragma once

#include <deque>
#include <memory>
#include <sstream>
#include <string>

#include "debug/debug_console.h"
#include "support/script_fixture.h"

namespace korvant::test {

class ConsoleFixture : public ScriptFixture {
  protected:
    /// What is to be seen when `commands` are typed, one a line, the script's output among it.
    std::string play(const std::string& script, const std::string& commands) {
        std::istringstream lines(commands);
        DebugConsole::Parts parts{session(), engine(), context(), "script.as", script, {}, {}, {}};
        parts.read = [&](const std::string&) -> std::optional<std::string> {
            std::string line;
            for (;;) {
                if (!std::getline(lines, line)) return std::nullopt;
                if (!line.empty() && line.front() != '#') break;
            }
            note("> " + line + "\n");
            return line;
        };
        parts.write = [&](const std::string& text) { note(text); };
        parts.report = [&] {
            note(messages());
            const RunFailure& failure = session().lastFailure();
            if (!failure.text.empty()) note("! " + failure.text + "\n");
        };
        seen_.clear();
        console.output.clear();
        DebugConsole debugger(std::move(parts));
        debugger.run();
        note("");
        return seen_;
    }

  private:
    void note(const std::string& text) {
        seen_ += console.output + text;
        console.output.clear();
    }

    std::string seen_;
};

}  // namespace korvant::test
