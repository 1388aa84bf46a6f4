// Binding looks up every operand once, so that a run finds them at their addresses.

#include "expression/BindProgram.h"

#include <cstddef>

namespace reka {

namespace {

/// Whether the program can run on the working values of a definition.
bool IsRunnable(const CExpressionProgram& program, const ReactionPackDefinition& definition) {
    return !program.Steps().empty() && program.CompoundCount() <= definition.workArraySize &&
           (program.CompoundCount() == 0 || definition.molarity);
}

}  // namespace

bool BindProgram(CExpressionProgram& program, const ReactionPackDefinition& definition,
                 const void* const* handlers) noexcept {
    if (!IsRunnable(program, definition)) return false;
    // By `OperandPlace`.
    const double* const places[] = {program.Constants(),          &definition.temperature,   &definition.pressure,
                                    definition.molarity.get(),    definition.activity.get(), definition.fugacity.get(),
                                    definition.moleFraction.get()};
    static_assert(sizeof places / sizeof places[0] == operandPlaceCount);
    BoundStep* bound = program.binding.steps.get();
    for (const ProgramStep& step : program.Steps()) {
        if (handlers) {
            bound->handler = handlers[static_cast<std::size_t>(step.code)];
        } else {
            bound->code = step.code;
        }
        if (step.operandCount == 0) {
            bound->kind = step.kind;
        } else {
            for (std::size_t i = 0; i < step.operandCount; ++i) {
                bound->operands[i] = places[static_cast<std::size_t>(step.places[i])] + step.indices[i];
            }
        }
        ++bound;
    }
    program.binding.workStamp = definition.WorkStamp();
    return true;
}

}  // namespace reka
