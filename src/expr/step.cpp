#include "expr/step.h"

namespace korvant::expr {

std::size_t runAsRead(const Step* steps, std::size_t count, const double* cells,
                      double* values) noexcept {
    for (std::size_t i = 0; i < count; ++i) {
        const Step& step = steps[i];
        const Step::Payload& payload = step.payload;
        switch (step.read.kind) {
            case StepKind::Number:
                values[i] = payload.number;
                break;
            case StepKind::Name:
                values[i] = cells[step.a];
                break;
            case StepKind::Unary:
                values[i] = apply(step.unary(), values[step.a]);
                break;
            case StepKind::Keep:
                values[i] = values[payload.at.first];
                break;
            case StepKind::Select:
                values[i] = values[values[step.a] != 0 ? payload.at.first : payload.at.second];
                break;
            case StepKind::Binary:
                if (step.binary() == Binary::Remainder && dividesByZero(values[payload.at.first]))
                    return i;
                values[i] = apply(step.binary(), values[step.a], values[payload.at.first]);
                break;
        }
    }
    return kNoStep;
}

}  // namespace korvant::expr
