// SPDX-License-Identifier: MIT
// The run of an expression's program.

#pragma once

#include "expression/tree/ExpressionProgram.h"
#include "expression/tree/WorkingValues.h"

namespace reka {

/// Computes the value of the program's tree from `values`. False, with `result` as it was,
/// where there is none: an operation is refused, a compound has no working value, or the program is that of a malformed
/// tree. Which failure it is, an evaluation of the nodes tells. Allocates nothing. The program is for one caller at a
/// time: it keeps where it has found its operands.
bool RunProgram(CExpressionProgram& program, double& result, const WorkingValues& values) noexcept;

}  // namespace reka
