#include "expr/program.h"

#include <array>
#include <utility>

namespace korvant::expr {
namespace {

/// Set by a step that does not hand on itself: where the run goes on.
struct Resume {
    const Step* step = nullptr;
};

using Handler = double (*)(const Step*, double* cells, double result, Resume&);
constexpr std::size_t kHandlerCount = opcode::kCount * 2;
extern const std::array<Handler, kHandlerCount> kHandlers;

inline double handOn(const Step* step, double* cells, double result, Resume& resume) {
    return kHandlers[step->fused.opcode](step, cells, result, resume);
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
    static double work(const Step& step, const double* cells, double result) {
        return apply(code, leftOf<form>(step, cells, result), rightOf<form>(step, cells, result));
    }
};

template <Unary code, bool ofCell>
struct UnaryStep {
    static double work(const Step& step, const double* cells, double result) {
        return apply(code, ofCell ? cells[step.a] : result);
    }
};

template <Binary comparison, PairForm form>
bool holds(const Step& step, const double* cells) {
    constexpr Form place = form == PairForm::CellCell ? Form::CellCell : Form::CellConstant;
    return BinaryStep<comparison, place>::work(step, cells, 0) != 0;
}

template <Binary logic, Binary comparison, PairForm form>
struct LogicStep {
    static double work(const Step& step, const double* cells, double result) {
        const bool right = holds<comparison, form>(step, cells);
        return logic == Binary::Or ? (result != 0) | right : (result != 0) & right;
    }
};

struct LoadCellStep {
    static double work(const Step& step, const double* cells, double) { return cells[step.a]; }
};

struct LoadConstantStep {
    static double work(const Step& step, const double*, double) { return step.payload.number; }
};

struct StoreStep {
    static double work(const Step& step, double* cells, double result) {
        return cells[step.a] = result;
    }
};

/// A step that makes a new result and goes on with the next one, or is the last.
template <class Work, bool last>
double plain(const Step* step, double* cells, double result, Resume& resume) {
    result = Work::work(*step, cells, result);
    if constexpr (last) return result;
    return handOn(step + 1, cells, result, resume);
}

// Whatever leaves some steps out returns to the loop instead of handing on, so that the steps
// between two returns lie side by side and no pause is missed.

/// Cases of one kind follow each other in long selections, so they are passed in a loop.
template <Binary comparison, PairForm form>
double unlessPair(const Step* step, double* cells, double result, Resume& resume) {
    if (holds<comparison, form>(*step, cells)) return handOn(step + 1, cells, result, resume);
    const std::uint16_t own = step->fused.opcode;
    do {
        step += step->fused.skip;
    } while (step->fused.opcode == own && !holds<comparison, form>(*step, cells));
    resume.step = step->fused.opcode == own ? step + 1 : step;
    return result;
}

double unlessResult(const Step* step, double* cells, double result, Resume& resume) {
    if (result != 0) return handOn(step + 1, cells, result, resume);
    resume.step = step + step->a;
    return result;
}

double jump(const Step* step, double*, double result, Resume& resume) {
    resume.step = step + step->a;
    return result;
}

double pause(const Step* step, double*, double result, Resume& resume) {
    resume.step = step + 1;
    return result;
}

constexpr Binary comparisonAt(std::size_t number) {
    return static_cast<Binary>(static_cast<std::size_t>(Binary::NotEqual) + number / 2);
}

template <std::size_t number, bool last>
constexpr Handler pairHandler() {
    constexpr std::size_t own = (number - opcode::kOrPair) % (opcode::kComparisons * 2);
    constexpr Binary comparison = comparisonAt(own);
    constexpr PairForm form = own % 2 == 0 ? PairForm::CellCell : PairForm::CellConstant;
    if constexpr (number >= opcode::kUnlessPair) return unlessPair<comparison, form>;
    constexpr Binary logic = number >= opcode::kAndPair ? Binary::And : Binary::Or;
    return plain<LogicStep<logic, comparison, form>, last>;
}

template <std::size_t number, bool last>
constexpr Handler handlerOf() {
    if constexpr (number < opcode::kUnary) {
        constexpr auto code = static_cast<Binary>(number / kFormCount);
        return plain<BinaryStep<code, static_cast<Form>(number % kFormCount)>, last>;
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
constexpr std::array<Handler, kHandlerCount> makeHandlers(std::index_sequence<numbers...>) {
    return {handlerOf<numbers / 2, numbers % 2 == 1>()...};
}
const std::array<Handler, kHandlerCount> kHandlers =
    makeHandlers(std::make_index_sequence<kHandlerCount>());

}  // namespace

double runProgram(const Step* program, double* cells) noexcept {
    Resume resume;
    double result = handOn(program, cells, 0, resume);
    while (resume.step)
        [[unlikely]] result = handOn(std::exchange(resume.step, nullptr), cells, result, resume);
    return result;
}

}  // namespace korvant::expr
