// korvant object SCRIPT: runs a script and prints every form that it shows.
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "answer_file.h"
#include "commands.h"
#include "exit_code.h"
#include "form_report.h"
#include "host/terminal/terminal_frontend.h"
#include "korvantide/korvantide.h"
#include "korvantide/script_object.h"
#include "limit_options.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

struct ObjectRun {
    std::string file;
    std::string answers;
    std::int32_t locale = 0;
    bool json = false;
    korvant::Limits limits;
};

/// Keeps what each form shows when it is closed, and leaves the answer to the other editor.
class RecordingEditor : public korvant::ObjectEditor {
  public:
    RecordingEditor() : other_(korvant::setObjectEditor(this)) {}
    ~RecordingEditor() override { korvant::setObjectEditor(other_); }
    RecordingEditor(const RecordingEditor&) = delete;
    RecordingEditor& operator=(const RecordingEditor&) = delete;

    bool run(korvant::EditSession& session) override {
        const bool confirmed = other_ != nullptr && other_->run(session);
        forms_.push_back(formAsJson(session));
        return confirmed;
    }
    bool attended() override { return other_ != nullptr && other_->attended(); }
    const nlohmann::ordered_json& forms() const { return forms_; }

  private:
    korvant::ObjectEditor* other_;
    nlohmann::ordered_json forms_ = nlohmann::ordered_json::array();
};

/// The session forgets a front end before it goes.
struct ServicesScope {
    explicit ServicesScope(korvant::Frontend& frontend) {
        korvant::moduleSession().setServices({nullptr, &frontend, nullptr, nullptr});
    }
    ~ServicesScope() { korvant::moduleSession().setServices({}); }
    ServicesScope(const ServicesScope&) = delete;
    ServicesScope& operator=(const ServicesScope&) = delete;
};

void print(const nlohmann::ordered_json& forms, bool json) {
    std::string text;
    if (json) text = forms.dump(2) + "\n";
    for (std::size_t i = 0; !json && i < forms.size(); ++i)
        text += (i == 0 ? "" : "\n") + formAsText(forms[i]);
    writeOutput(text);
}

/// What the script prints goes nowhere, so that the forms stand alone on standard output.
int showObjects(const ObjectRun& run) {
    const std::optional<Source> source = readScript(run.file, run.limits.scriptBytes);
    if (!source) return kCannotRead;
    std::optional<AnswerBook> book;
    if (!run.answers.empty() && !(book = AnswerBook::read(run.answers))) return kCannotRead;
    korvant::ScriptSession& session = korvant::moduleSession();
    korvant::TerminalFrontend::Options options;
    options.notice = complain;
    options.omitRunReports = true;
    korvant::TerminalFrontend frontend(options);
    const ServicesScope services(frontend);
    session.setLimits(run.limits);
    const AnsweringScope answering(book ? &*book : nullptr);
    const RecordingEditor recorder;
    const ConfiguredEngine engine;
    if (!engine.usable()) return kRunFailed;
    ScriptObject::m_locale = run.locale;
    RunApplication(engine.engine(), engine.context(), source->text, nullptr);
    reportBuild(*source, session.buildMessages());
    if (book && book->failed())
        reportAnswer(*source, book->failure(), book->line());
    else
        reportRun(*source, session.lastFailure());
    print(recorder.forms(), run.json);
    const int code = exitCodeOf(session.lastFailure());
    return code == kFinished && book && book->failed() ? kRunFailed : code;
}

}  // namespace

void addObjectCommand(CLI::App& app, int& exitCode) {
    const auto run = std::make_shared<ObjectRun>();
    CLI::App* const command =
        app.add_subcommand("object", "Runs a script and prints the forms that it shows");
    command->add_option("SCRIPT", run->file, "script to run")->required();
    command->add_flag("--json", run->json, "as JSON");
    command->add_option("--locale", run->locale, "language: 0 English, 1 French, 2 Spanish");
    command->add_option("--answer", run->answers, "file that answers what the script asks");
    addBuildLimitOptions(*command, run->limits);
    addRunLimitOptions(*command, run->limits);
    command->callback([run, &exitCode] { exitCode = showObjects(*run); });
}

}  // namespace korvant_app
