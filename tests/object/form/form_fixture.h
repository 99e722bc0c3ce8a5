// Forms that a test fills in as a user would.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "korvantide/script_object.h"
#include "object/form/edit_session.h"
#include "object/script/object_access.h"
#include "object/script/object_editor.h"

namespace korvant::test {

/// The editor of objects for as long as it lives: does what the test says, and confirms or not.
class ScriptedEditor : public ObjectEditor {
  public:
    explicit ScriptedEditor(std::function<bool(EditSession&)> play)
        : play_(std::move(play)), before_(setObjectEditor(this)) {}
    ~ScriptedEditor() override { setObjectEditor(before_); }
    ScriptedEditor(const ScriptedEditor&) = delete;
    ScriptedEditor& operator=(const ScriptedEditor&) = delete;
    bool run(EditSession& session) override { return play_(session); }

  private:
    std::function<bool(EditSession&)> play_;
    ObjectEditor* before_;
};

class FormTest : public ::testing::Test {
  protected:
    ~FormTest() override { ScriptObject::m_locale = 0; }

    /// A session over the object as it is now.
    EditSession& open() {
        session_ = std::make_unique<EditSession>(ObjectAccess::model(object));
        session_->takeChanges();
        return *session_;
    }
    EditSession& session() { return *session_; }
    std::int32_t row(const std::string& name) { return session_->findRow(name); }
    EditRowState state(const std::string& name) { return session_->state(row(name)); }
    std::string text(const std::string& name) { return state(name).text; }

    /// Types into a row; the message of a refusal, empty when it was accepted.
    std::string type(const std::string& name, const std::string& typed) {
        const EditCommit commit = session_->commitText(row(name), typed);
        EXPECT_TRUE(commit.accepted || !commit.message.empty()) << name;
        return commit.accepted ? "" : commit.message;
    }
    double number(const std::string& name) {
        double value = 0.0;
        EXPECT_TRUE(object.getProperty(name, &value)) << name;
        return value;
    }
    /// Edits the object with the edits that `play` makes, confirmed or not.
    bool edit(const std::function<bool(EditSession&)>& play) {
        const ScriptedEditor editor(play);
        return object.edit();
    }

    ScriptObject object;

  private:
    std::unique_ptr<EditSession> session_;
};

}  // namespace korvant::test
