// SPDX-License-Identifier: MIT
// Evaluation of a parsed expression. A tree holds no names and the working values are its whole environment, so this
// needs neither the parser nor the simulator.

#pragma once

#include <string>

#include "expression/run/RunProgram.h"
#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ExpressionRef.h"
#include "expression/tree/WorkingValues.h"

namespace reka {

/// Computes `node` from `values`: temperature in K, pressure and fugacity in Pa, molarity as
/// the material's density gives it. The unit of `result` is what the author of the text meant; nothing is converted.
///
/// True: `result` holds the value; an infinity or a NaN that no guard catches is a value like any other.
/// False: `errorText`, which the caller passes empty, holds one line without a line end, and `result` is a quiet NaN.
/// Of several failing arguments the first one reports. A tree out of stored data may be malformed: a node with too few
/// arguments, or a compound beyond the working arrays, fails like a kind that has no value.
bool EvaluateExpression(const ExpressionNode& node, double& result, const WorkingValues& values,
                        std::u16string& errorText);

/// The same for the tree of `expression`, with the same results and texts. This is what runs once per reaction and
/// property: it takes no lock, and allocates only to report a failure or for a malformed tree. One
/// expression serves one caller at a time.
inline bool EvaluateExpression(const ExpressionRef& expression, double& result, const WorkingValues& values,
                               std::u16string& errorText) {
    if (RunProgram(expression.program, result, values)) return true;
    return EvaluateExpression(*expression.root, result, values, errorText);  // which finds the reason
}

}  // namespace reka
