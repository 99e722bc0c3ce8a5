// The expressions that every evaluator is measured with.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace korvant_bench {

/// One named value of the cases.
struct ExprName {
    const char* name;
    double value;
};

/// What the hand-written functions read; in the order of kExprNames.
using ExprValues = double[13];

struct ExprCase {
    const char* name;
    const char* text;      ///< in our language
    const char* muParser;  ///< the same for muParser; "cond ? x : y" for selections
    const char* lua;
    const char* matheval;  ///< null where that library has no such operation
    double (*byHand)(const double* v);
};

extern const std::array<ExprName, 13> kExprNames;
const std::vector<ExprCase>& exprCases();

/// Ends the program with a message when `value` is not what the case gives by hand, so that
/// nothing is measured that computes something else.
void checkValue(const ExprCase& each, const char* who, double value);

}  // namespace korvant_bench
