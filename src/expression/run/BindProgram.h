// SPDX-License-Identifier: MIT
// What a program needs before it runs on the working values for the first time.

#pragma once

#include "expression/tree/ExpressionProgram.h"
#include "expression/tree/WorkingValues.h"

namespace reka {

/// Binds `program` to `values`. `handlers` are those of the codes, or null for a run that
/// goes by the codes. False if the program can't run on them: it is that of a malformed tree, or a compound has no
/// working value. Allocates nothing.
bool BindProgram(CExpressionProgram& program, const WorkingValues& values, const void* const* handlers) noexcept;

}  // namespace reka
