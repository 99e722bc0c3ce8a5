// Programs as a test starts them: with a time limit, plainly or on a terminal of their own.
#pragma once

#include <sys/types.h>
#include <termios.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/tree.h"

namespace korvant::test {

struct ProcessResult {
    int exitCode = -1;  ///< -1: it did not end by itself
    int signal = 0;     ///< that ended it; 0 for none
    bool timedOut = false;
    std::string output;
    std::string errors;
    int milliseconds = 0;  ///< from start to end
};

struct ProcessOptions {
    std::string input;                     ///< all of standard input
    std::string folder;                    ///< working folder; empty: the test's own
    std::string outputFile;                ///< standard output goes there, for instance /dev/full
    bool outputClosed = false;             ///< standard output is a pipe that nobody reads any more
    bool outputIgnored = false;            ///< standard output is a pipe that nobody reads
    int seconds = 30;                      ///< then it is killed
    std::vector<std::string> environment;  ///< NAME=VALUE, added
};

ProcessResult runProcess(const std::vector<std::string>& arguments,
                         const ProcessOptions& options = {});

/// The program that the build made; KORVANT_PROGRAM in the environment names another.
inline std::string korvantProgram() {
    const char* const given = std::getenv("KORVANT_PROGRAM");
    return given ? given : korvant::test::binFolder() + "/korvant";
}

/// `korvant` with these arguments.
inline ProcessResult runKorvant(std::vector<std::string> arguments,
                                const ProcessOptions& options = {}) {
    arguments.insert(arguments.begin(), korvantProgram());
    return runProcess(arguments, options);
}

/// A program on a pseudo terminal of 80 by 25. Standard input, output and errors lead there unless
/// `pipeOutput`; then output is read by nobody's eyes.
class TerminalProcess {
  public:
    explicit TerminalProcess(const std::vector<std::string>& arguments, bool pipeOutput = false);
    ~TerminalProcess();
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    /// Reads until `text` has appeared behind what was awaited before; false after ten seconds.
    bool await(const std::string& text);
    void type(const std::string& keys);
    void send(int signal);
    /// Reads to the end; the exit code, or minus the signal that ended it.
    int finish();
    /// Everything that appeared so far.
    const std::string& screen() const { return screen_; }
    /// The settings of the terminal as they are now, and as they were before the program.
    termios settings() const;
    bool restored() const;

  private:
    bool readSome(int milliseconds);
    [[noreturn]] static void beShell(const std::string& terminal, int report,
                                     const std::vector<std::string>& arguments, bool pipeOutput);

    int terminal_ = -1;
    int other_ = -1;      ///< our own handle of the program's side, so that the terminal lives on
    pid_t shell_ = -1;    ///< stands where a shell would, so that the program can be stopped
    pid_t process_ = -1;  ///< the program
    termios before_{};
    std::string screen_;
    std::size_t awaited_ = 0;
};

}  // namespace korvant::test
