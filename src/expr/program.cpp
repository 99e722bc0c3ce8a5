#include "expr/program.h"

#include <utility>

#include "expr/name_table.h"

namespace korvant::expr {
namespace {

static_assert(kUnwanted == -NameTable::kScratchCells);

inline double handOn(const Step* step, double* cells, double result, ProgramRun& run) {
    return kStepHandlers[step->fused.opcode](step, cells, result, run);
}

template <Form form>
double leftOf(const Step& step, const double* cells, double result) {
    if constexpr (form == Form::ResultCell || form == Form::ResultConstant) return result;
    if constexpr (form == Form::ConstantResult || form == Form::ConstantCell)
        return step.payload.number;
    return cells[step.a];
}

template <Form form>
double rightOf(const Step& step, const double* cells, double result) {
    if constexpr (form == Form::CellResult || form == Form::ConstantResult) return result;
    if constexpr (form == Form::ResultConstant || form == Form::CellConstant)
        return step.payload.number;
    if constexpr (form == Form::CellCell) return cells[step.payload.at.first];
    return cells[step.a];
}

template <Binary code, Form form>
struct BinaryStep {
    static constexpr bool kFresh = isFresh(form);
    static double work(const Step& step, const double* cells, double result) {
        return apply(code, leftOf<form>(step, cells, result), rightOf<form>(step, cells, result));
    }
};

template <Unary code, bool ofCell>
struct UnaryStep {
    static constexpr bool kFresh = ofCell;
    static double work(const Step& step, const double* cells, double result) {
        return apply(code, ofCell ? cells[step.a] : result);
    }
};

/// Result `outer` pair, or pair `outer` result.
template <Binary outer, bool pairIsLeft, Binary inner, Form form>
struct PairStep {
    static constexpr bool kFresh = false;
    static double work(const Step& step, const double* cells, double result) {
        const double pair = BinaryStep<inner, form>::work(step, cells, 0);
        return pairIsLeft ? apply(outer, pair, result) : apply(outer, result, pair);
    }
};

struct LoadCellStep {
    static constexpr bool kFresh = true;
    static double work(const Step& step, const double* cells, double) { return cells[step.a]; }
};

struct LoadConstantStep {
    static constexpr bool kFresh = true;
    static double work(const Step& step, const double*, double) { return step.payload.number; }
};

struct StoreStep {
    static constexpr bool kFresh = false;
    static double work(const Step& step, double* cells, double result) {
        return cells[step.a] = result;
    }
};

/// A step that makes a new result and goes on with the next one, or is the last.
template <class Work, bool last>
double plain(const Step* step, double* cells, double result, ProgramRun& run) {
    if constexpr (Work::kFresh) cells[step->fused.operand] = result;
    result = Work::work(*step, cells, result);
    if constexpr (last) return result;
    return handOn(step + 1, cells, result, run);
}

/// The library's pow is apart, so that squares need not save what it might change.
template <Form form, bool last>
[[gnu::noinline]] double powerByLibrary(const Step* step, double* cells, double result,
                                        ProgramRun& run) {
    result = std::pow(leftOf<form>(*step, cells, result), rightOf<form>(*step, cells, result));
    if constexpr (last) return result;
    return handOn(step + 1, cells, result, run);
}

template <Form form, bool last>
double power(const Step* step, double* cells, double result, ProgramRun& run) {
    if constexpr (isFresh(form)) cells[step->fused.operand] = result;
    const double base = leftOf<form>(*step, cells, result);
    if (rightOf<form>(*step, cells, result) != 2 || !squaresExactly(base))
        return powerByLibrary<form, last>(step, cells, result, run);
    if constexpr (last) return base * base;
    return handOn(step + 1, cells, base * base, run);
}

// Whatever leaves some steps out returns to the loop instead of handing on, so that the steps
// between two returns lie side by side and no pause is missed.

template <Binary comparison, Form form>
bool holds(const Step& step, const double* cells) {
    return BinaryStep<comparison, form>::work(step, cells, 0) != 0;
}

/// Cases of one kind follow each other in long selections, so they are passed in a loop.
template <Binary comparison, Form form>
double unlessPair(const Step* step, double* cells, double result, ProgramRun& run) {
    if (holds<comparison, form>(*step, cells)) return handOn(step + 1, cells, result, run);
    const std::uint16_t own = step->fused.opcode;
    do {
        step += step->fused.operand;
    } while (step->fused.opcode == own && !holds<comparison, form>(*step, cells));
    run.resume = step->fused.opcode == own ? step + 1 : step;
    return result;
}

double unlessResult(const Step* step, double* cells, double result, ProgramRun& run) {
    if (result != 0) return handOn(step + 1, cells, result, run);
    run.resume = step + step->a;
    return result;
}

double jump(const Step* step, double*, double result, ProgramRun& run) {
    run.resume = step + step->a;
    return result;
}

double pause(const Step* step, double*, double result, ProgramRun& run) {
    run.resume = step + 1;
    return result;
}

constexpr Binary after(Binary first, int number) {
    return static_cast<Binary>(static_cast<int>(first) + number);
}

template <int number, bool last>
constexpr StepHandler pairHandler() {
    constexpr int own = (number - opcode::kOrPair) % opcode::kPairs;
    if constexpr (number < opcode::kArithmeticPair || number >= opcode::kUnlessPair) {
        constexpr Binary comparison = after(Binary::NotEqual, own / 2);
        constexpr Form form = static_cast<Form>(own % 2);
        constexpr Binary logic = number < opcode::kAndPair ? Binary::Or : Binary::And;
        if constexpr (number >= opcode::kUnlessPair) return unlessPair<comparison, form>;
        return plain<PairStep<logic, false, comparison, form>, last>;
    } else {
        constexpr int outer = (number - opcode::kArithmeticPair) / opcode::kPairs;
        constexpr Binary inner = after(Binary::Add, own / 3);
        constexpr Form form = static_cast<Form>(own % 3);
        return plain<PairStep<after(Binary::Add, outer % 4), (outer >= 4), inner, form>, last>;
    }
}

template <int number, bool last>
constexpr StepHandler handlerNumbered() {
    if constexpr (number < opcode::kUnary) {
        constexpr auto code = static_cast<Binary>(number / kFormCount);
        constexpr auto form = static_cast<Form>(number % kFormCount);
        if constexpr (code == Binary::Power) return power<form, last>;
        return plain<BinaryStep<code, form>, last>;
    } else if constexpr (number < opcode::kOrPair) {
        constexpr auto code = static_cast<Unary>((number - opcode::kUnary) % kUnaryCount);
        return plain<UnaryStep<code, (number >= opcode::kUnaryCell)>, last>;
    } else if constexpr (number < opcode::kUnlessResult) {
        return pairHandler<number, last>();
    } else {
        switch (number) {
            case opcode::kUnlessResult:
                return unlessResult;
            case opcode::kJump:
                return jump;
            case opcode::kLoadCell:
                return plain<LoadCellStep, last>;
            case opcode::kLoadConstant:
                return plain<LoadConstantStep, last>;
            case opcode::kStore:
                return plain<StoreStep, last>;
            default:
                return pause;
        }
    }
}

template <std::size_t... numbers>
constexpr std::array<StepHandler, kHandlerCount> makeHandlers(std::index_sequence<numbers...>) {
    return {handlerNumbered<static_cast<int>(numbers / 2), numbers % 2 == 1>()...};
}

}  // namespace

double resumeProgram(double result, ProgramRun& run) {
    while (run.resume) result = handOn(std::exchange(run.resume, nullptr), run.cells, result, run);
    return result;
}

const std::array<StepHandler, kHandlerCount> kStepHandlers =
    makeHandlers(std::make_index_sequence<kHandlerCount>());

}  // namespace korvant::expr
