// What is wrong with the text while the user types: asks the service and hands on what is still
// true.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "editor/control/live_help.h"
#include "language/diagnostics.h"

class wxEvtHandler;

namespace korvant {
class ScriptEditor;
}

namespace korvant::ui {

class LiveCheck {
  public:
    /// Both 1-based, in bytes; 0: there is none.
    struct WordPlace {
        std::int32_t line = 0, column = 0;
    };

    /// `window` and `editor` outlive this.
    LiveCheck(wxEvtHandler& window, ScriptEditor& editor) : window_(window), editor_(editor) {}

    /// Has the text checked as it is now; the answer comes later, into the editor's problems. The
    /// first time starts the child process, which ends with this.
    void begin();
    /// After which it is to be begun again when the user types, in milliseconds.
    int pause() const { return checking_.milliseconds(); }
    /// Whether what the editor knows is the answer for the text as it is.
    bool isCurrent() const;
    /// Where a name grows for which others are offered: what is wrong with that is told when the
    /// offer is gone.
    std::function<WordPlace()> growing;
    /// Tells what was held back, unless a name still grows.
    void tellRest();
    /// The editor's problems are new.
    std::function<void()> onAnswer;
    /// Why nothing can be checked, in one sentence, and once.
    std::function<void(const std::string& why)> onNote;

  private:
    void take(const CheckResult& result);
    void tell();

    wxEvtHandler& window_;
    ScriptEditor& editor_;
    std::unique_ptr<CheckService> service_;
    std::vector<Diagnostic> found_;
    bool heldBack_ = false;
    static constexpr int kPauseInTyping = 500;  // milliseconds
    GrowingPause checking_{kPauseInTyping};
    std::uint64_t asked_ = 0;                     ///< the version of the text
    std::uint64_t answered_ = ~std::uint64_t{0};  ///< the version of the text
};

}  // namespace korvant::ui
