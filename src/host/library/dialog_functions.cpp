#include "host/library/dialog_functions.h"

#include <string>

#include "host/engine/native_call.h"
#include "host/engine/script_string.h"
#include "host/library/run_dialogs.h"
#include "host/library/script_console.h"

namespace korvant {

namespace {

/// One of the module's own boxes, for a text of the script.
int showBox(const ScriptString* text, std::uint32_t style) {
    const InteractionScope waiting;
    MessageBoxRequest request;
    request.caption = kModuleCaption;
    request.text = text->text;
    request.style = style;
    request.plain = true;
    return showScriptBox(std::move(request));
}

void error(const ScriptString* text) {
    showBox(text, box_style::kOk | box_style::kIconError);
}
void warning(const ScriptString* text) {
    showBox(text, box_style::kOk | box_style::kIconWarning);
}

void information(const ScriptString* text) {
    showBox(text, box_style::kOk | box_style::kIconInformation);
}

bool question(const ScriptString* text) {
    return showBox(text, box_style::kYesNo | box_style::kIconQuestion) == box_button::kYes;
}

/// `ask` on the front end; a script that is to end asks nothing more.
template <class Value, class Ask>
Value prompt(const Value& initial, Ask ask) {
    if (moduleSession().stopRequested()) return initial;
    PromptScope scope;
    return ask(scope.frontend());
}

int promptInt(const ScriptString* label, const int* initial) {
    return prompt(*initial, [&](Frontend& f) { return f.promptInt(label->text, *initial); });
}

float promptFloat(const ScriptString* label, const float* initial) {
    return prompt(*initial, [&](Frontend& f) { return f.promptFloat(label->text, *initial); });
}

double promptDouble(const ScriptString* label, const double* initial) {
    const double number = realAt(initial);
    return prompt(number, [&](Frontend& f) { return f.promptDouble(label->text, number); });
}

ScriptString* promptString(const ScriptString* label, const ScriptString* initial) {
    return returnResultString(prompt(
        initial->text, [&](Frontend& f) { return f.promptString(label->text, initial->text); }));
}

void progressText(const ScriptString* text) {
    runDialogs().showProgress(text->text, text->text);
}

void progressBoth(const ScriptString* caption, const ScriptString* text) {
    runDialogs().showProgress(caption->text, text->text);
}

void setMaxRunTime(const int* milliseconds) {
    moduleSession().setMaxRunTime(*milliseconds);
}

asUINT getSystemTime() {
    return moduleSession().services().clock->tick();
}

}  // namespace

UiScopeGuard::UiScopeGuard() : scope_(moduleSession().services().uiScope) {
    if (scope_) scope_(true);
}

UiScopeGuard::~UiScopeGuard() {
    if (scope_) scope_(false);
}

PromptScope::PromptScope() {
    scriptConsole().flush();
}

PromptScope::~PromptScope() {
    if (!frontend().attended()) moduleSession().noteUnattended();
}

Frontend& PromptScope::frontend() {
    return *moduleSession().services().frontend;
}

int showScriptBox(MessageBoxRequest request) {
    ScriptSession& session = moduleSession();
    if (session.stopRequested()) return 0;
    const std::uint32_t patience = session.limits().boxesBeforeStopButton;
    request.offerStop = patience != 0 && runDialogs().countBox() >= patience;
    scriptConsole().flush();
    const UiScopeGuard resources;
    Frontend& frontend = *session.services().frontend;
    const int answer = frontend.messageBox(request);
    if (!frontend.attended()) session.noteUnattended();
    if (answer != box_button::kStopScript) return answer;
    session.requestStop();
    return 0;
}

std::span<const FunctionRow> dialogFunctionRows() {
    static const FunctionRow rows[] = {
        askingRow<promptInt>("int Prompt( string &in, int &in )",
                             "Asks for an integer; the second argument is offered as the answer.",
                             "int holes = Prompt(\"Number of holes\", 12);",
                             "Returns the offered value when the dialog is closed without OK."),
        askingRow<promptFloat>(
            "float Prompt( string &in, float &in )",
            "Asks for a single-precision number; the second argument is offered as the answer.",
            "float grade = Prompt(\"Cut-off grade\", 0.5f);",
            "Returns the offered value when the dialog is closed without OK."),
        askingRow<promptDouble>("double Prompt( string &in, double &in )",
                                "Asks for a number; the second argument is offered as the "
                                "answer.",
                                "double depth = Prompt(\"Depth\", 120.0);",
                                "Returns the offered value when the dialog is closed without OK."),
        askingRow<promptString>(
            "string@ Prompt( string &in, string &in )",
            "Asks for a text; the second argument is offered as the answer. The next function that "
            "returns string@ overwrites the result: assign it to a string first.",
            "string name = Prompt(\"Name of the hole\", \"DH-1\");",
            "Returns the offered text when the dialog is closed without OK."),
        askingRow<question>("bool Question( string &in )",
                            "Asks a question to be answered with Yes or No.",
                            "if (Question(\"Go on?\")) Print(\"On we go.\\n\");",
                            "Returns false for No and when the box is closed."),
        askingRow<information>("void Information( string &in )",
                               "Shows a text in a box with the information icon.",
                               "Information(\"42 samples read.\");"),
        askingRow<warning>("void Warning( string &in )",
                           "Shows a text in a box with the warning icon.",
                           "Warning(\"Two samples overlap.\");"),
        askingRow<error>("void Error( string &in )", "Shows a text in a box with the error icon.",
                         "Error(\"The file has no header.\");"),
        askingRow<progressText>("void Progress( string &in )",
                                "Shows a text in the progress window, as its title too; an empty "
                                "text hides the window.",
                                "Progress(\"Hole \" + i);"),
        askingRow<progressBoth>("void Progress( string &in, string &in )",
                                "Shows a title and a text in the progress window, of which 99 "
                                "bytes each are kept; an empty text hides the window.",
                                "Progress(\"Compositing\", \"Hole \" + i);"),
    };
    return rows;
}

std::span<const FunctionRow> timingFunctionRows() {
    static const FunctionRow rows[] = {
        functionRow<setMaxRunTime>("void SetMaxRunTime( int &in )",
                                   "Sets how many milliseconds the script may run on without "
                                   "waiting for the user, from now on: 1 to "
                                   "2147483647, which is 24.8 days. 0 ends the script, and a "
                                   "negative number counts as 4294967296 more.",
                                   "SetMaxRunTime(60000);"),
        functionRow<getSystemTime>("uint GetSystemTime()",
                                   "Returns the milliseconds since the system's start; they begin "
                                   "again at 0 after 49.7 days.",
                                   "uint start = GetSystemTime();"),
    };
    return rows;
}

int registerDialogFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, dialogFunctionRows());
}

int registerTimingFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, timingFunctionRows());
}

}  // namespace korvant
