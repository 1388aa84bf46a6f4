// SPDX-License-Identifier: MIT
// The last step of a parse: makes a finished tree out of what the grammar delivers.

#pragma once

#include <string>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/NamedCompounds.h"

namespace reka {

/// Checks `node` and everything under it and changes the tree in place: the argument lists of functions are dissolved,
/// and every subtree that reads nothing becomes one real constant. Constants are folded without the guards that hold
/// for run-time values: SQRT(-1) is a NaN here. Only a constant divisor of 0 is refused.
///
/// What is wrong is appended to `errorText`, each fault a line with a line end, in the order of a walk from left to
/// right with arguments before their parent. `compounds` gives the molecular weights.
void CheckExpression(ExpressionNode& node, const INamedCompounds& compounds, std::u16string& errorText);

/// The same for the text of a numeric field, which has no material behind it: the kinds that read one are refused. What
/// passes is one real constant.
void CheckScalarExpression(ExpressionNode& node, std::u16string& errorText);

}  // namespace reka
