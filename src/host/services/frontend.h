// What a script's dialogs need of whoever shows them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace korvant {

/// Style bits of a message box: the button set in the low four bits, the icon in the next four,
/// and the component's own buttons in the high ones.
namespace box_style {
constexpr std::uint32_t kOk = 0, kOkCancel = 1, kAbortRetryIgnore = 2, kYesNoCancel = 3, kYesNo = 4,
                        kRetryCancel = 5, kCancelTryContinue = 6, kContinueAbort = 7,
                        kSkipSkipAllCancel = 8, kIgnoreIgnoreAllCancel = 9;
constexpr std::uint32_t kIconError = 16, kIconQuestion = 32, kIconWarning = 48,
                        kIconInformation = 64;
constexpr std::uint32_t kTopMost = 0x40000, kYesToAll = 0x8000000, kNoToAll = 0x10000000;
}  // namespace box_style

/// Button identifiers: keys of the caption table and answers of a message box.
namespace box_button {
constexpr int kOk = 1, kCancel = 2, kAbort = 3, kRetry = 4, kIgnore = 5, kYes = 6, kNo = 7,
              kClose = 8, kHelp = 9, kTryAgain = 10, kContinue = 11, kSkip = 14, kSkipAll = 15,
              kIgnoreAll = 16, kYesToAll = 19, kNoToAll = 20, kReport = 21, kMore = 30, kLess = 31;
constexpr int kStopScript = 32;
constexpr unsigned long kDoNotShowAgain = 0x1000000;
}  // namespace box_button

/// The caption of the module's own boxes.
inline constexpr char kModuleCaption[] = "KorvantIDE";

/// All texts are bytes as scripts give them; HTML subset in `text` and `details` unless `plain`.
struct MessageBoxRequest {
    std::string caption;
    std::string text;
    std::string details;      ///< shown behind "More >>"; empty: no such button
    std::uint32_t style = 0;  ///< box_style bits
    std::map<unsigned long, std::string> captions;  ///< by box_button; empty: English
    bool offerDoNotShow = false;  ///< answer may be kept under the two names below
    std::string company;
    std::string module;
    unsigned countdownSeconds = 0;  ///< 0: none; else the default button is chosen at the end
    bool plain = false;             ///< the texts hold no markup and are shown as they stand
    bool offerStop = false;         ///< one more button, box_button::kStopScript
    bool runReport = false;  ///< says how a run ended; whoever reports that already may answer 0
};

/// The small window that shows a script's progress. Made, used and destroyed on the progress
/// thread only.
class ProgressWindow {
  public:
    virtual ~ProgressWindow() = default;
    virtual void show(bool visible) = 0;
    virtual void setTexts(const std::string& caption, const std::string& text) = 0;
    virtual void redraw() = 0;
    /// Takes what is pending of the window's events; true when Escape was pressed in it.
    virtual bool pollEscape() = 0;
};

/// Answers questions for scripts. Every call returns: an implementation that has nobody to ask
/// answers as if the dialog had been closed.
class Frontend {
  public:
    virtual ~Frontend() = default;
    /// The chosen button (box_button), or 0 when the box was closed in a way without a button.
    virtual int messageBox(const MessageBoxRequest& request) = 0;
    /// The prompts return the entered value, or `initial` when closed without OK.
    virtual std::int32_t promptInt(const std::string& label, std::int32_t initial) = 0;
    virtual float promptFloat(const std::string& label, float initial) = 0;
    virtual double promptDouble(const std::string& label, double initial) = 0;
    virtual std::string promptString(const std::string& label, const std::string& initial) = 0;
    /// Whether somebody was there to answer the last question.
    virtual bool attended() { return true; }
    /// A progress window, or null when there is nowhere to show one. Called on the progress
    /// thread, so it must not touch anything that belongs to the script's thread.
    virtual std::unique_ptr<ProgressWindow> makeProgressWindow() = 0;
};

}  // namespace korvant
