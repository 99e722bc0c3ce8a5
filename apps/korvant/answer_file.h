// Answers to what a script asks, from a file, for runs that nobody watches.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/run/script_session.h"
#include "host/services/frontend.h"
#include "object/form/edit_session.h"
#include "object/script/object_editor.h"

namespace korvant_app {

/// The answers of one run. A question takes the first answer of its kind that was not used and
/// whose text is the question's, or "*". The file is described in docs/property-objects.md.
class AnswerBook {
  public:
    using Json = nlohmann::ordered_json;

    /// Without a value the reason was given on standard error.
    static std::optional<AnswerBook> read(const std::string& file);

    /// The answer of `kind` ("prompt", "box", "edit") to a question with one of these texts, or
    /// null after it was reported that there is none.
    const Json* take(const char* kind, const std::vector<std::string>& texts);
    /// Keeps what is wrong with an answer, and ends the script. The first failure counts.
    void fail(const std::string& what);
    bool failed() const noexcept { return !failure_.empty(); }
    /// What was wrong, and the line of the script that asked (from 1; 0 unknown).
    const std::string& failure() const noexcept { return failure_; }
    int line() const noexcept { return line_; }

  private:
    struct Answer {
        Json json;
        bool used = false;
    };
    std::vector<Answer> answers_;
    std::string failure_;
    int line_ = 0;
};

/// Answers prompts and boxes from the book; everything else is the other front end's.
class AnswerFrontend : public korvant::Frontend {
  public:
    AnswerFrontend(AnswerBook& book, korvant::Frontend& other) : book_(book), other_(other) {}
    int messageBox(const korvant::MessageBoxRequest& request) override;
    std::int32_t promptInt(const std::string& label, std::int32_t initial) override;
    float promptFloat(const std::string& label, float initial) override;
    double promptDouble(const std::string& label, double initial) override;
    std::string promptString(const std::string& label, const std::string& initial) override;
    std::unique_ptr<korvant::ProgressWindow> makeProgressWindow() override {
        return other_.makeProgressWindow();
    }

  private:
    AnswerBook& book_;
    korvant::Frontend& other_;
};

/// Fills forms in from the book.
class AnswerEditor : public korvant::ObjectEditor {
  public:
    explicit AnswerEditor(AnswerBook& book) : book_(book) {}
    bool run(korvant::EditSession& session) override;

  private:
    bool setRows(korvant::EditSession& session, const AnswerBook::Json& rows);
    bool knowsPages(korvant::EditSession& session, const AnswerBook::Json& groups);
    bool setElements(korvant::EditSession& session, const AnswerBook::Json& groups);
    bool setRow(korvant::EditSession& session, const std::string& name,
                const AnswerBook::Json& value);

    AnswerBook& book_;
};

/// While it lives the module's questions are answered from the book; a null book changes nothing.
class AnsweringScope {
  public:
    explicit AnsweringScope(AnswerBook* book);
    ~AnsweringScope();
    AnsweringScope(const AnsweringScope&) = delete;
    AnsweringScope& operator=(const AnsweringScope&) = delete;

  private:
    korvant::SessionServices before_;
    std::unique_ptr<AnswerFrontend> frontend_;
    std::unique_ptr<AnswerEditor> editor_;
    korvant::ObjectEditor* editorBefore_ = nullptr;
};

}  // namespace korvant_app
