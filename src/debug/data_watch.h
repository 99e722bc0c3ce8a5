// Expressions whose value is compared before every statement.
#pragma once

#include <map>
#include <string>

#include "debug/breakpoint_book.h"
#include "debug/script_evaluator.h"

namespace korvant {

/// Where the expression of a data breakpoint has its meaning: everywhere when it names no local
/// variable, otherwise in the call in which it was first evaluated, and once that has returned in
/// the next one of the same function.
class DataWatch {
  public:
    /// A run begins. `sameText`: of what the run before executed.
    void beginRun(bool sameText);
    /// True when the value of `breakpoint` is another one than at the last look. `values` has begun
    /// with `context`.
    /// `entry`: the context has been asked about for the second time where a call begins.
    bool changed(Breakpoint& breakpoint, asIScriptContext& context, bool entry, ValueTree& values,
                 ScriptEvaluator& evaluator, std::string& before);
    /// What names mean to one whose value has been compared just now.
    FrameScope scopeIn(const Breakpoint& breakpoint, const FrameScope& innermost,
                       ValueTree& values) const;

  private:
    struct Home {
        std::string expression;
        unsigned calls = 0;   ///< as the wish has it
        bool valued = false;  ///< it has had a value
        bool found = false;   ///< where it belongs to; what follows is set then
        bool everywhere = false;
        std::string nameSpace;
        std::string function;  ///< unless everywhere
        bool lasts = false;    ///< the call; what follows is set then
        int functionId = 0;
        unsigned depth = 0;  ///< from the outermost call
        unsigned older = 0;  ///< unless it lasts: as many calls began before it ended
    };
    static unsigned levelIn(const Home& home, asIScriptContext& context);
    static bool find(Home& home, asIScriptContext& context, ValueTree& values);
    static bool findCall(Home& home, asIScriptContext& context, bool entry, ValueTree& values);
    static bool isNewCall(const Home& home, asIScriptContext& context);
    static bool hasReturned(const Home& home, asIScriptContext& context);

    std::map<int, Home> homes_;
};

}  // namespace korvant
