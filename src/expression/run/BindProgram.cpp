// SPDX-License-Identifier: MIT
// Binding looks up every operand once, so that a run finds them at their addresses.

#include "expression/run/BindProgram.h"

#include <cstddef>

#include "expression/tree/ProgramCode.h"

namespace reka {

namespace {

/// Whether the program can run on `values`.
bool IsRunnable(const CExpressionProgram& program, const WorkingValues& values) {
    return !program.Words().empty() && program.CompoundCount() <= values.workArraySize &&
           (program.CompoundCount() == 0 || values.molarity);
}

}  // namespace

bool BindProgram(CExpressionProgram& program, const WorkingValues& values, const void* const* handlers) noexcept {
    if (!IsRunnable(program, values)) return false;
    // By `OperandPlace`.
    const double* const places[] = {
        program.Own(),         &values.temperature,   &values.pressure,         values.molarity.Get(),
        values.activity.Get(), values.fugacity.Get(), values.moleFraction.Get()};
    static_assert(sizeof places / sizeof places[0] == operandPlaceCount);
    BoundWord* bound = program.BoundWords();
    std::size_t operandsToCome = 0;
    bool isKindToCome = false;
    bool isSlotToCome = false;
    for (const ProgramWord word : program.Words()) {
        if (operandsToCome == 0) {
            if (handlers) {
                bound->handler = handlers[word.bits];
            } else {
                bound->code = word.Code();
            }
            operandsToCome = OperandCountOf(word.Code());
            isKindToCome = TakesKind(word.Code());
            isSlotToCome = word.Code() == ProgramCode::Keep || word.Code() == ProgramCode::KeepAndFetch;
        } else {
            if (isKindToCome) {
                bound->kind = word.Kind();
                isKindToCome = false;
            } else if (isSlotToCome) {
                bound->slot = program.Own() + word.Index();
                isSlotToCome = false;
            } else {
                bound->operand = places[word.Place()] + word.Index();
            }
            --operandsToCome;
        }
        ++bound;
    }
    program.boundStamp = values.WorkStamp();
    return true;
}

}  // namespace reka
