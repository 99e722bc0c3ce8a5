// Expressions whose value is compared before every statement.
#pragma once

#include <map>
#include <string>

#include "debug/breakpoint_book.h"
#include "debug/script_evaluator.h"

namespace korvant {

/// Where the expression of a data breakpoint has its meaning: everywhere when it names no local
/// variable, otherwise in the call in which it was first evaluated.
class DataWatch {
  public:
    void clear() { homes_.clear(); }
    /// True when the value of `breakpoint` is another one than at the last look. `values` has begun
    /// with `context`.
    /// `entry`: the context has been asked about for the second time where a call begins.
    bool changed(Breakpoint& breakpoint, asIScriptContext& context, bool entry, ValueTree& values,
                 ScriptEvaluator& evaluator, std::string& before);

  private:
    struct Home {
        bool everywhere = false;
        int functionId = 0;
        unsigned depth = 0;  ///< from the outermost call
        std::string nameSpace;
        std::string expression;
    };
    bool isNewCall(const Home& home, asIScriptContext& context) const;
    bool levelOf(const Home& home, asIScriptContext& context, unsigned& level) const;
    bool findHome(Home& home, asIScriptContext& context, ValueTree& values) const;

    std::map<int, Home> homes_;
};

}  // namespace korvant
