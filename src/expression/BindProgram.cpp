// Binding looks up every operand once, so that a run finds them at their addresses.

#include "expression/BindProgram.h"

#include <cstddef>

namespace reka {

namespace {

/// Whether the program can run on the working values of a definition.
bool IsRunnable(const CExpressionProgram& program, const ReactionPackDefinition& definition) {
    return !program.Words().empty() && program.CompoundCount() <= definition.workArraySize &&
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
    BoundWord* bound = program.BoundWords();
    std::size_t operandsToCome = 0;
    bool isKindToCome = false;
    for (const ProgramWord word : program.Words()) {
        if (operandsToCome == 0) {
            if (handlers) {
                bound->handler = handlers[word.bits];
            } else {
                bound->code = word.Code();
            }
            operandsToCome = OperandCountOf(word.Code());
            isKindToCome = TakesKind(word.Code());
        } else {
            if (isKindToCome) {
                bound->kind = word.Kind();
            } else {
                bound->operand = places[word.Place()] + word.Index();
            }
            --operandsToCome;
        }
        ++bound;
    }
    program.boundStamp = definition.WorkStamp();
    return true;
}

}  // namespace reka
