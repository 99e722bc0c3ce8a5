#include "host/library/console_functions.h"

#include <cstring>
#include <string>
#include <string_view>

#include "host/engine/native_call.h"
#include "host/engine/script_string.h"
#include "host/library/input_scanner.h"
#include "host/library/run_files.h"
#include "host/library/script_console.h"
#include "host/run/quiet_frontend.h"
#include "host/run/script_session.h"

namespace korvant {

namespace {

// Files

bool openInputFile(const ScriptString* name) {
    return runFiles().openInput(name->text);
}

void closeInputFile() {
    runFiles().closeInput();
}

bool appendOutputFile(const ScriptString* name) {
    return runFiles().openOutput(name->text, OutputFile::Mode::append);
}

bool openOutputFile(const ScriptString* name) {
    return runFiles().openOutput(name->text, OutputFile::Mode::truncate);
}

void closeOutputFile() {
    runFiles().closeOutput();
}

// Printing

/// Calls `write` with the text in pieces, two percent signs in a row written as one.
template <class Write>
void writeText(std::string_view text, Write write) {
    if (std::memchr(text.data(), '%', text.size()) == nullptr) return write(text);
    for (auto mark = text.find("%%"); mark != std::string_view::npos; mark = text.find("%%")) {
        write(text.substr(0, mark + 1));
        text.remove_prefix(mark + 2);
    }
    write(text);
}

void print(const ScriptString* text) {
    if (OutputFile* const file = runFiles().output())
        writeText(text->text, [file](std::string_view part) { file->write(part, runShouldStop); });
    else
        writeText(text->text, [](std::string_view part) { scriptConsole().write(part); });
}

// Reading

/// Of a script that a debugger looks at: nobody is asked.
class RefusedInput final : public ByteSource {
    int readChar(StopQuery) override {
        raiseInScript(kQuietRefusal);
        return kStopped;
    }
    void unreadChar(int) override {}
};

/// With the option that the end of input ends the run, a script that catches the exception and
/// reads on is stopped.
void meetEndOfInput() {
    ScriptSession& session = moduleSession();
    if (!session.limits().endOfInputEndsRun) return;
    if (!runFiles().meetEnd()) return session.requestStop();
    raiseInScript("End of input");
}

void act(ScanState state) {
    if (state == ScanState::endOfInput) meetEndOfInput();
    if (state == ScanState::tooLong) raiseInScript("Out of memory");
}

/// Waiting for what a file or pipe of the script has to say is the script's own time; what was
/// read begins the limit anew.
template <class Scan>
ScanState readFile(InputFile& file, Scan scan) {
    const ScanState state = scan(file);
    if (state == ScanState::converted) moduleSession().restartLimit();
    return state;
}

/// Waiting for the user, or for whatever feeds the standard input, is not the script's time. Where
/// somebody types, the rest of a line that does not fit is dropped, so that they are asked again.
/// A read that took nothing and waited for nobody leaves the limit as it is: a loop around it ends.
template <class Scan>
ScanState readConsole(Scan scan) {
    const InteractionScope waiting;
    scriptConsole().ensure();
    Console& console = *moduleSession().services().console;
    const ScanState state = scan(console);
    if (state == ScanState::failed) console.dropTyped();
    if (!console.takeWaited() && state != ScanState::converted) moduleSession().noteUnattended();
    return state;
}

template <class Scan>
void readValue(Scan scan) {
    if (moduleSession().quiet()) {
        RefusedInput refused;
        scan(refused);
        return;
    }
    InputFile* const file = runFiles().input();
    act(file != nullptr ? readFile(*file, scan) : readConsole(scan));
}

void inputString(ScriptString* value) {
    std::string word;
    readValue([&](ByteSource& source) { return scanWord(source, runShouldStop, word); });
    if (!value->adopt(std::move(word))) raiseInScript("Out of memory");
}

void inputDouble(double* value) {
    double read = 0;
    readValue([&](ByteSource& source) { return scanDouble(source, runShouldStop, read); });
    putReal(value, read);
}

void inputFloat(float* value) {
    readValue([&](ByteSource& source) { return scanFloat(source, runShouldStop, *value); });
}

void inputInt(int* value) {
    readValue([&](ByteSource& source) { return scanInt(source, runShouldStop, *value); });
}

int inkey() {
    const InteractionScope waiting;
    if (moduleSession().quiet()) {
        raiseInScript(kQuietRefusal);
        return Console::kEndOfInput;
    }
    scriptConsole().ensure();
    Console& console = *moduleSession().services().console;
    const int key = console.readKey(runShouldStop);
    if (!console.takeWaited() && key < 0) moduleSession().noteUnattended();
    return key < 0 ? Console::kEndOfInput : key;
}

// The screen

constexpr std::uint32_t kBright = 0x08, kBackgroundBright = 0x80;

void clearScreen() {
    scriptConsole().clear();
}

void setColours(std::uint32_t foreground, std::uint32_t background) {
    std::uint32_t attributes = scriptConsole().attributes();
    // Deliberate: values above 7 spill into the intensity bits; scripts ask for bright colours so.
    attributes = foreground | (attributes & 0xF8);
    attributes = (background << 4) | (attributes & 0x8F);
    scriptConsole().setAttributes(static_cast<std::uint16_t>(attributes));
}

void setTextColor(const int* foreground, const int* background) {
    setColours(static_cast<std::uint32_t>(*foreground), static_cast<std::uint32_t>(*background));
}

void setBright(bool foreground, bool background) {
    std::uint32_t attributes = scriptConsole().attributes();
    attributes = foreground ? attributes | kBright : attributes & ~kBright;
    attributes = background ? attributes | kBackgroundBright : attributes & ~kBackgroundBright;
    scriptConsole().setAttributes(static_cast<std::uint16_t>(attributes));
}

void setTextBold(const bool* foreground, const bool* background) {
    setBright(*foreground, *background);
}

void resetText() {
    setBright(false, false);
    setColours(7, 0);
}

void goToXY(const int* column, const int* row) {
    scriptConsole().moveCursor(static_cast<std::int16_t>(static_cast<std::uint32_t>(*column)),
                               static_cast<std::int16_t>(static_cast<std::uint32_t>(*row)));
}

}  // namespace

std::span<const FunctionRow> fileFunctionRows() {
    static const FunctionRow rows[] = {
        functionRow<openInputFile>(
            "bool OpenInputFile( string &in )",
            "Opens a text file that Input reads from, in place of the one that was open.",
            "if (!OpenInputFile(\"samples.txt\")) Print(\"No samples.\\n\");",
            "Returns false when the file cannot be opened; then no input file is open."),
        functionRow<closeInputFile>("void CloseInputFile()",
                                    "Closes the input file; Input reads from the console again.",
                                    "CloseInputFile();"),
        // Deliberate: the name has one "p"; scripts spell it so.
        functionRow<appendOutputFile>(
            "bool ApendOutputFile( string &in )",
            "Opens a text file whose end Print writes to, in place of the one that was open. The "
            "name is spelled with one \"p\".",
            "if (ApendOutputFile(\"log.txt\")) Print(\"One more line.\\n\");",
            "Returns false when the file cannot be opened; then no output file is open."),
        functionRow<openOutputFile>(
            "bool OpenOutputFile( string &in )",
            "Creates or empties a text file that Print writes to, in place of the one that was "
            "open.",
            "if (!OpenOutputFile(\"table.txt\")) Error(\"Cannot write table.txt\");",
            "Returns false when the file cannot be opened; then no output file is open."),
        functionRow<closeOutputFile>(
            "void CloseOutputFile()", "Closes the output file; Print writes to the console again.",
            "CloseOutputFile();", "What could not be written is reported when the script ends."),
    };
    return rows;
}

std::span<const FunctionRow> consoleFunctionRows() {
    static const FunctionRow rows[] = {
        functionRow<print>("void Print( string &in )",
                           "Writes the text to the output file if one is open, else to the "
                           "console. \"%%\" writes one percent sign; no line feed is added.",
                           "Print(\"Recovery: \" + 93.5 + \" %%\\n\");",
                           "What could not be written is reported when the script ends."),
        functionRow<inputString>(
            "void Input( string &out )",
            "Reads one word, up to the next blank or line end, from the input file if one is "
            "open, else from the console.",
            "string name;\nInput(name);", "At the end of the input the word is empty."),
        functionRow<inputDouble>("void Input( double &out )",
                                 "Reads a number, from where Input reads words.",
                                 "double depth;\nInput(depth);",
                                 "Gives 0 for anything that is no number. In a file what stands "
                                 "there stays unread, so read it as a word to go on; where "
                                 "somebody types, the rest of the line is dropped."),
        functionRow<inputFloat>("void Input( float &out )",
                                "Reads a single-precision number, from where Input reads words.",
                                "float grade;\nInput(grade);",
                                "Gives 0 for anything that is no number, as for a double."),
        functionRow<inputInt>("void Input( int &out )",
                              "Reads an integer, from where Input reads words: 0x before "
                              "hexadecimal digits, a leading 0 before octal ones.",
                              "int count;\nInput(count);",
                              "Gives 0 for anything that is no integer, as for a double; beyond "
                              "32 bits the nearest integer."),
        functionRow<inkey>("int Inkey()",
                           "Waits for one key on the console and returns its character code; the "
                           "key is not shown. A key without a character gives 0 or 224 and then, "
                           "with the next call, its scan code.",
                           "Print(\"Press a key\\n\");\nint key = Inkey();",
                           "Returns -1 at the end of the input."),
        functionRow<clearScreen>(
            "void Clear()", "Clears the console; nothing before the first output.", "Clear();"),
        functionRow<setTextColor>(
            "void SetTextColor( int &in, int &in )",
            "Sets the colours of text and background, after the first output: 0 black, 1 blue, 2 "
            "green, 3 cyan, 4 red, 5 magenta, 6 yellow, 7 grey.",
            "SetTextColor(4, 0);\nPrint(\"Too deep\\n\");\nResetText();"),
        functionRow<setTextBold>("void SetTextBold( bool &in, bool &in )",
                                 "Makes the colours of text and background bright or normal.",
                                 "SetTextBold(true, false);"),
        functionRow<resetText>("void ResetText()", "Sets the text to normal grey on black.",
                               "ResetText();"),
        functionRow<goToXY>("void GoToXY( int &in, int &in )",
                            "Moves the console's cursor to a column and a row, both from 0.",
                            "GoToXY(0, 10);"),
    };
    return rows;
}

int registerFileFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, fileFunctionRows());
}

int registerConsoleFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, consoleFunctionRows());
}

}  // namespace korvant
