#include "answer_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include "answer_check.h"
#include "base/text/html_text.h"
#include "base/text/number_text.h"
#include "base/text/plain_text.h"
#include "base/text/text_encoding.h"
#include "host/engine/active_context.h"
#include "host/services/box_buttons.h"
#include "script_file.h"
#include "source_report.h"

namespace korvant_app {

namespace {

using Json = AnswerBook::Json;

constexpr std::size_t kLongestFile = 64U << 20;

bool answers(const Json& json, const char* kind, const std::vector<std::string>& texts) {
    const auto found = json.find(kind);
    if (found == json.end() || !found->is_string()) return false;
    const std::string wanted = found->get<std::string>();
    for (const std::string& text : texts)
        if (wanted == "*" || wanted == korvant::decodeForDisplay(text)) return true;
    return false;
}

bool repeats(const Json& json) {
    const auto found = json.find("repeat");
    return found != json.end() && found->is_boolean() && found->get<bool>();
}

std::string textOf(const Json& json) {
    return korvant::encodeTyped(json.get<std::string>());
}

std::string plainOf(const std::string& html) {
    return korvant::plainFromHtml(korvant::boundedHtml(html));
}

/// "property "to" of element 2 (Bottom): The bottom must be below the top."
std::string findingText(const korvant::EditSession& session, const korvant::EditFinding& finding) {
    const korvant::EditRow& row = session.row(finding.place.property);
    std::string text = "property \"" + korvant::decodeForDisplay(row.name) + "\"";
    for (auto element = finding.elements.rbegin(); element != finding.elements.rend(); ++element)
        text += " of element " + std::to_string(*element + 1);
    text += " (" + korvant::decodeForDisplay(row.label) + "):";
    for (const std::string& message : finding.messages) text += " " + plainOf(message);
    return text;
}

/// The line that asks; 0 when no script runs.
int lineThatAsks() {
    asIScriptContext* const context = korvant::activeContext();
    return context == nullptr ? 0 : std::max(0, context->GetLineNumber(0));
}

}  // namespace

std::optional<AnswerBook> AnswerBook::read(const std::string& file) {
    std::error_code unknown;
    std::string text, fault;
    if (std::filesystem::is_directory(file, unknown))
        fault = file + " is a folder, not a file of answers";
    else if (readScriptText(file, kLongestFile, text, fault))
        if (fault = faultOfJson(text); !fault.empty()) fault = file + ":" + fault;
    if (!fault.empty()) {
        complain(fault);
        return {};
    }
    AnswerBook book;
    const Json json = Json::parse(text);
    for (const Json& one : json.at("answers")) book.answers_.push_back({one});
    return book;
}

const Json* AnswerBook::take(const char* kind, const std::vector<std::string>& texts) {
    for (Answer& answer : answers_) {
        if (answer.used || !answers(answer.json, kind, texts)) continue;
        answer.used = !repeats(answer.json);
        return &answer.json;
    }
    fail(std::string("no answer for the ") + kind + " \"" +
         korvant::decodeForDisplay(texts.front()) + "\"");
    return nullptr;
}

void AnswerBook::fail(const std::string& what) {
    if (!failed()) {
        failure_ = what;
        line_ = lineThatAsks();
    }
    korvant::moduleSession().requestStop();
}

int AnswerFrontend::messageBox(const korvant::MessageBoxRequest& request) {
    if (request.runReport) return other_.messageBox(request);
    const Json* answer = book_.take("box", {request.text, request.caption});
    if (answer == nullptr) return 0;
    const auto button = answer->find("button");
    const std::string wanted =
        button != answer->end() && button->is_string() ? button->get<std::string>() : "";
    const korvant::MessageBoxRequest english;
    for (const int id : korvant::boxButtons(request.style, request.offerStop).ids) {
        const std::string caption = korvant::buttonCaption(request, id);
        if (wanted == korvant::decodeForDisplay(caption)) return id;
        if (wanted == korvant::buttonCaption(english, id)) return id;
    }
    if (wanted.empty()) return 0;
    book_.fail("the box \"" + korvant::decodeForDisplay(request.text) + "\" has no button \"" +
               wanted + "\"");
    return 0;
}

double AnswerFrontend::promptDouble(const std::string& label, double initial) {
    const Json* answer = book_.take("prompt", {label});
    if (answer == nullptr || !answer->contains("value")) return initial;
    const Json& value = answer->at("value");
    if (value.is_number()) return value.get<double>();
    book_.fail("the prompt \"" + korvant::decodeForDisplay(label) + "\" needs a number");
    return initial;
}

float AnswerFrontend::promptFloat(const std::string& label, float initial) {
    return static_cast<float>(promptDouble(label, static_cast<double>(initial)));
}

std::int32_t AnswerFrontend::promptInt(const std::string& label, std::int32_t initial) {
    using Range = std::numeric_limits<std::int32_t>;
    const double value = promptDouble(label, initial);
    if (value >= Range::min() && value <= Range::max() && std::trunc(value) == value)
        return static_cast<std::int32_t>(value);
    book_.fail("the prompt \"" + korvant::decodeForDisplay(label) + "\" needs a whole number");
    return initial;
}

std::string AnswerFrontend::promptString(const std::string& label, const std::string& initial) {
    const Json* answer = book_.take("prompt", {label});
    if (answer == nullptr || !answer->contains("value")) return initial;
    if (answer->at("value").is_string()) return textOf(answer->at("value"));
    book_.fail("the prompt \"" + korvant::decodeForDisplay(label) + "\" needs a text");
    return initial;
}

bool AnswerEditor::setRow(korvant::EditSession& session, const std::string& name,
                          const Json& value) {
    const std::int32_t row = session.findRow(korvant::encodeTyped(name));
    if (row < 0) {
        book_.fail("the form \"" + korvant::decodeForDisplay(session.title()) +
                   "\" has no property \"" + name + "\"");
        return false;
    }
    korvant::EditCommit commit{false, "this is no value"};
    const bool option = session.row(row).letter == 'o';
    if (value.is_boolean() && session.row(row).letter != 'b')
        commit.message = "true and false are for booleans alone";
    else if (value.is_boolean())
        commit = session.setBoolean(row, value.get<bool>());
    else if (value.is_number_integer() && option)
        commit = session.setOption(row, korvant::parseInt(value.dump()).value_or(-1));
    else if (value.is_number())
        commit = session.commitText(row, value.dump());
    else if (value.is_string())
        commit = session.commitText(row, textOf(value));
    if (commit.accepted) return true;
    book_.fail("property \"" + name + "\": " + korvant::decodeForDisplay(commit.message));
    return false;
}

bool AnswerEditor::setRows(korvant::EditSession& session, const Json& rows) {
    if (!rows.is_object()) return true;
    for (const auto& [name, value] : rows.items())
        if (!setRow(session, name, value)) return false;
    return true;
}

/// Every page that is named is a group's; otherwise the failure names those that are.
bool AnswerEditor::knowsPages(korvant::EditSession& session, const Json& groups) {
    std::vector<std::string> known;
    for (int page = 0; page < session.pageCount(); ++page)
        if (session.page(page).isGroup)
            known.push_back(korvant::decodeForDisplay(session.page(page).caption));
    for (const auto& [name, list] : groups.items()) {
        if (std::find(known.begin(), known.end(), name) != known.end()) continue;
        std::string what = "the form \"" + korvant::decodeForDisplay(session.title()) +
                           "\" has no group \"" + name + "\"";
        for (const std::string& one : known)
            what += (&one == &known.front() ? "; it has \"" : ", \"") + one + "\"";
        book_.fail(what);
        return false;
    }
    return true;
}

/// The elements of each group in turn; those that the group does not have yet are added.
bool AnswerEditor::setElements(korvant::EditSession& session, const Json& groups) {
    if (!groups.is_object()) return true;
    if (!knowsPages(session, groups)) return false;
    for (int page = 0; page < session.pageCount(); ++page) {
        const auto found = groups.find(korvant::decodeForDisplay(session.page(page).caption));
        if (!session.page(page).isGroup || found == groups.end() || !found->is_array()) continue;
        std::int32_t index = 0;
        for (const Json& element : *found) {
            const auto size = static_cast<std::int32_t>(session.groupBar(page).elements.size());
            if (size > 0) session.chooseElement(page, std::min(index, size - 1));
            if (index >= size && !session.addElement(page)) {
                book_.fail("no element can be added to \"" + found.key() + "\"");
                return false;
            }
            if (!setRows(session, element)) return false;
            ++index;
        }
    }
    return true;
}

bool AnswerEditor::run(korvant::EditSession& session) {
    const Json* answer = book_.take("edit", {session.title()});
    if (answer == nullptr) return false;
    if (!setRows(session, answer->value("set", Json::object()))) return false;
    if (!setElements(session, answer->value("elements", Json::object()))) return false;
    const auto ok = answer->find("ok");
    if (ok != answer->end() && ok->is_boolean() && !ok->get<bool>()) return false;
    const korvant::EditCheck check = session.confirm();
    if (check.passed) return true;
    std::string what =
        "the form \"" + korvant::decodeForDisplay(session.title()) + "\" fails its check";
    for (const korvant::EditFinding& finding : check.findings)
        what += "\n  " + findingText(session, finding);
    book_.fail(what);
    return check.passed;
}

AnsweringScope::AnsweringScope(AnswerBook* book) {
    if (book == nullptr) return;
    before_ = korvant::moduleSession().services();
    frontend_ = std::make_unique<AnswerFrontend>(*book, *before_.frontend);
    editor_ = std::make_unique<AnswerEditor>(*book);
    korvant::SessionServices services = before_;
    services.frontend = frontend_.get();
    korvant::moduleSession().setServices(services);
    editorBefore_ = korvant::setObjectEditor(editor_.get());
}

AnsweringScope::~AnsweringScope() {
    if (!frontend_) return;
    korvant::setObjectEditor(editorBefore_);
    korvant::moduleSession().setServices(before_);
}

}  // namespace korvant_app
