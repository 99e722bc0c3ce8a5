// Questions that a property object asks the user.
#include "base/text/rich_text.h"
#include "host/engine/script_string.h"
#include "host/library/dialog_functions.h"
#include "host/run/script_session.h"
#include "object/script/box_codes.h"
#include "object/script/object_access.h"

using korvant::orRaise;
using korvant::realAt;

namespace {

/// The names under which answers are kept.
constexpr char kCompany[] = "ZVK-Korvant";
constexpr char kModule[] = "KorvantIDE";

/// Holds the answer of the last text prompt. Made at the first prompt and never destroyed,
/// because handles of scripts may outlive everything else.
korvant::ScriptString& promptAnswer() {
    static korvant::ScriptString* const answer = korvant::ScriptString::create();
    if (answer == nullptr) throw std::bad_alloc();
    return *answer;
}

/// Asks the front end; a script that is to end asks nothing more.
template <class Value, class Ask>
Value ask(const Value& initial, Ask question) {
    if (korvant::scriptIsToEnd()) return initial;
    korvant::PromptScope scope;
    return question(scope.frontend());
}

}  // namespace

std::int32_t ScriptObject::VAL(std::string& name) {
    return korvant::boxConstant(name);
}

std::int32_t ScriptObject::messageBox(std::string caption, std::string text, std::int32_t buttons,
                                      std::int32_t icon, std::string extra) {
    return orRaise(ID_CANCEL, [&] {
        const korvant::UiScopeGuard scope;
        const Hook after = m_after;
        if (m_before != nullptr) m_before();
        korvant::MessageBoxRequest request;
        request.style = korvant::boxStyle(buttons, icon);
        request.caption = translate(caption);
        request.text = translate(text);
        request.details = translate(extra);
        request.company = kCompany;
        request.module = kModule;
        std::map<unsigned long, const char*> captions;
        translate(&captions);
        request.captions.insert(captions.begin(), captions.end());
        const std::int32_t answer = korvant::boxAnswer(korvant::showScriptBox(std::move(request)));
        // Deliberate: only an answer without a button of its own ends the waiting. After any other
        // the time limit stays off; scripts that ask first and then compute for long rely on it.
        // Where nobody was there to answer it goes on.
        const bool attended = korvant::moduleSession().services().frontend->attended();
        if ((answer == 0 || !attended) && after != nullptr) after();
        return answer != 0 ? answer : ID_CANCEL;
    });
}

std::int32_t ScriptObject::_messageBoxStr(std::string& caption, std::string& text,
                                          std::string& buttonsName, std::string& iconName) {
    std::string extra;
    return _messageBoxStrEx(caption, text, buttonsName, iconName, extra);
}

std::int32_t ScriptObject::_messageBoxStrEx(std::string& caption, std::string& text,
                                            std::string& buttonsName, std::string& iconName,
                                            std::string& extra) {
    return orRaise(ID_CANCEL, [&] {
        return messageBox(caption, text, VAL(buttonsName), VAL(iconName), extra);
    });
}

std::int32_t ScriptObject::prompt(std::string label, std::int32_t value) {
    return _promptInteger(label, value);
}

std::int32_t ScriptObject::_promptInteger(std::string& label, std::int32_t& value) {
    return orRaise(value, [&] {
        return ask(value,
                   [&](korvant::Frontend& f) { return f.promptInt(translate(label), value); });
    });
}

double ScriptObject::prompt(std::string label, double value) {
    return _promptDouble(label, value);
}

double ScriptObject::_promptDouble(std::string& label, double& value) {
    const double initial = realAt(&value);
    return orRaise(initial, [&] {
        return ask(initial,
                   [&](korvant::Frontend& f) { return f.promptDouble(translate(label), initial); });
    });
}

std::string ScriptObject::prompt(std::string label, std::string value) {
    return orRaise(std::string(), [&] { return _promptString(label, value); });
}

const std::string& ScriptObject::_promptString(std::string& label, const std::string& value) {
    static const std::string kEmpty;
    return *orRaise(&kEmpty, [&]() -> const std::string* {
        std::string answer = ask(
            value, [&](korvant::Frontend& f) { return f.promptString(translate(label), value); });
        if (!promptAnswer().adopt(std::move(answer))) throw std::bad_alloc();
        return &promptAnswer().text;
    });
}

korvant::ScriptString* korvant::ObjectAccess::promptString(ScriptObject& object, std::string& label,
                                                           const std::string& value) {
    object._promptString(label, value);
    ScriptString& answer = promptAnswer();
    answer.addRef();
    return &answer;
}

void ScriptObject::showRtfDialog(std::string caption, std::string text) {
    orRaise([&] {
        const korvant::UiScopeGuard scope;
        korvant::MessageBoxRequest request;
        request.caption = translate(caption);
        request.text = korvant::htmlOfRichText(translate(text));
        request.style = korvant::box_style::kOk;
        std::map<unsigned long, const char*> captions;
        translate(&captions);
        request.captions.insert(captions.begin(), captions.end());
        const korvant::InteractionScope waiting;
        korvant::showScriptBox(std::move(request));
    });
}
