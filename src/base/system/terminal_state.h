// The settings of the user's terminal, which are given back whatever happens.
#pragma once

#include <cstdint>

namespace korvant {

/// Remembers the settings of the terminal and gives them back at the program's exit and before
/// any signal that ends or stops it. For a program of our own: it installs signal handlers where
/// the system's own stand. `input`, `output`: its handles; they stay open for the process. Once in
/// a process; further calls do nothing.
void guardTerminal(int input, int output);

struct TerminalSize {
    std::uint16_t columns = 80;
    std::uint16_t rows = 25;
};

/// The part of a terminal that is seen; 80 by 25 when it does not tell.
TerminalSize terminalSize(int handle);

/// The terminal takes control sequences; a plain one shows them. Makes it ready for them where the
/// system wants that said.
bool understandsSequences(int handle);

/// Keys come one by one and without echo from now on, so that a script that waits for keys shows
/// none of them, not even those typed meanwhile. Nothing without guardTerminal.
void enterSingleKeyMode();
/// Whole lines again.
void leaveSingleKeyMode();

/// Text attributes are to be put back in the end.
void noteColours(bool inUse);

/// `handler` is called for Ctrl+C and for the requests of the system to end (SIGTERM, SIGHUP);
/// waits end early. The third one in a row, which nobody has answered, ends the program.
void handleInterrupts(void (*handler)() noexcept);
/// They come here, whoever has asked for them, until it is null. `ends`: the system's, no Ctrl+C.
void ownInterrupts(void (*handler)(bool ends) noexcept) noexcept;
/// True when there was one since forgetInterrupts.
bool interrupted() noexcept;
/// The interrupts so far were answered.
void forgetInterrupts();

}  // namespace korvant
