// Completion, call tips and values under the mouse.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "editor/control/text_control.h"
#include "editor/stops/debugger.h"
#include "language/completion.h"

namespace korvant {

class Assistant {
  public:
    /// `families` gives the help in call tips; it must outlive the assistant.
    Assistant(const TextControl& editor, const Debugger& debugger,
              std::span<const FunctionFamily> families)
        : editor_(editor), debugger_(debugger), families_(families) {}

    void setEngine(asIScriptEngine* engine);
    void textChanged() { current_ = false; }

    /// A list of names that fit, whatever has been written.
    void complete();
    /// A character was typed: a list after three letters or a ".", a tip after "(" or ",".
    void characterAdded(int character);
    /// The caret or the text has changed: a tip follows the caret and goes when it leaves the call.
    void caretMoved();
    /// The mouse rests over a position; negative: over no text.
    void restedAt(int position);
    void movedOn();
    /// One of the arrows of a tip: 1 up, 2 down.
    void tipClicked(int arrow);

  private:
    /// The text around the caret that is looked at, and where it begins.
    struct Window {
        std::string text;
        int begin = 0;
    };
    Window windowAround(int caret) const;
    std::string_view beforeCaret(const Window& window, int caret) const;
    bool beginsInComment(const Window& window) const;
    SymbolTable table(int caret);
    void showNames(const WordBefore& before);
    void updateCallTip();
    void showOverload();

    const TextControl& editor_;
    const Debugger& debugger_;
    std::span<const FunctionFamily> families_;
    asIScriptEngine* engine_ = nullptr;
    std::vector<Symbol> general_;  ///< of the engine and the language
    std::vector<Symbol> inScript_;
    bool current_ = false;  ///< inScript_ is of the present text
    std::vector<Symbol> overloads_;
    std::size_t overload_ = 0;
    int tipBracket_ = -1;
    int argument_ = 0;
    int tipCaret_ = -1;  ///< where the caret was when the tip was made
    bool hovering_ = false;
};

}  // namespace korvant
