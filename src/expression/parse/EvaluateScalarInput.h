// SPDX-License-Identifier: MIT
// From the text of a numeric field to its number: a user may type 2*PI or 1.5e3/60 wherever a number is asked for.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// Computes `text`, which ends at its first zero character: numbers, PI, the gas constant R, the operators and the
/// functions of reaction expressions.
///
/// True: `result` holds the value, which may be an infinity or a NaN, as for LOG(0) and SQRT(-1); `errorText` is empty.
/// False: `errorText` holds all that is wrong, as lines that end in CR LF, and `result` is unchanged. A lock that can't
/// be had is told in a line without an end.
///
/// One call runs at a time, on Windows in all processes of the session, elsewhere in this one. May throw
/// std::bad_alloc; nothing is held then, and `result` is unchanged.
bool EvaluateScalarInput(std::u16string_view text, double& result, std::u16string& errorText);

}  // namespace reka
