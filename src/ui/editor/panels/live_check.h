// What is wrong with the text while the user types: asks the service and hands on what is still
// true.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "language/diagnostics.h"

class wxEvtHandler;

namespace korvant {
class ScriptEditor;
}

namespace korvant::ui {

class LiveCheck {
  public:
    /// `window` and `editor` outlive this.
    LiveCheck(wxEvtHandler& window, ScriptEditor& editor) : window_(window), editor_(editor) {}

    /// Has the text checked as it is now; the answer comes later, into the editor's problems. The
    /// first time starts the child process, which ends with this.
    void begin();
    /// Whether what the editor knows is the answer for the text as it is.
    bool isCurrent() const;
    /// The editor's problems are new.
    std::function<void()> onAnswer;
    /// Why nothing can be checked, in one sentence, and once.
    std::function<void(const std::string& why)> onNote;

  private:
    void take(const CheckResult& result);

    wxEvtHandler& window_;
    ScriptEditor& editor_;
    std::unique_ptr<CheckService> service_;
    std::uint64_t answered_ = ~std::uint64_t{0};  ///< the version of the text
};

}  // namespace korvant::ui
