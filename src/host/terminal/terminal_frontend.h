// Dialogs as questions on a terminal.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/services/box_buttons.h"
#include "host/services/console.h"
#include "host/services/frontend.h"

namespace korvant {

/// Asks until the answer is valid; the end of the input and a stop count as closing the dialog.
/// Without a terminal every dialog is answered as if it had been closed, its text goes to
/// `notice`, and so does, once, a word about that.
class TerminalFrontend final : public Frontend {
  public:
    struct Options {
        Console* terminal = nullptr;  ///< where to ask; null: nobody is there
        StopQuery shouldStop = nullptr;
        std::function<void(const std::string& line)> notice;
        /// Makes the progress display; may be empty. Called on the progress thread.
        std::function<std::unique_ptr<ProgressWindow>()> makeProgress;
        bool omitRunReports = false;  ///< the program tells itself how a run ended
    };
    explicit TerminalFrontend(Options options);

    int messageBox(const MessageBoxRequest& request) override;
    std::int32_t promptInt(const std::string& label, std::int32_t initial) override;
    float promptFloat(const std::string& label, float initial) override;
    double promptDouble(const std::string& label, double initial) override;
    std::string promptString(const std::string& label, const std::string& initial) override;
    bool attended() override { return attended_; }
    std::unique_ptr<ProgressWindow> makeProgressWindow() override;

  private:
    int askForButton(const MessageBoxRequest& request, const BoxButtons& buttons);
    bool ask(const std::string& question, std::string& answer, StopQuery shouldStop);
    bool readLine(std::string& line, StopQuery shouldStop);
    void sayNobodyIsThere(const std::string& text);
    template <class Value, class Parse>
    Value promptNumber(const std::string& label, Value initial, const char* wanted, Parse parse);

    Options options_;
    bool saidSo_ = false;
    bool attended_ = false;  ///< the last question was waited for or answered
};

}  // namespace korvant
