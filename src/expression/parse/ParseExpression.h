// SPDX-License-Identifier: MIT
// From a text to its tree: of a rate, an equilibrium constant or a heat of reaction, and of a numeric field.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "expression/parse/CompoundLookup.h"
#include "expression/tree/ExpressionNode.h"
#include "expression/tree/NamedCompounds.h"

namespace reka {

/// Parses `text`, which ends at its first zero character, against `compounds`, which a definition is. The tree refers
/// to compounds by index, so it is good as long as their list stays as it is.
///
/// A tree: `errorText` is empty. Null: `errorText` holds all that is wrong, as lines that end in CR LF; what it held
/// before is gone in either case, so `text` is no part of it, but its room is used again. An empty text is an error
/// like any other; a caller that allows one looks beforehand. `position`, which may be null, receives the number of
/// characters that were read, in both cases.
///
/// One parse runs at a time in the process; a thread that is in one already does not wait.
ExpressionTree ParseExpression(const INamedCompounds& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position);

/// The same against the compounds of a lookup, for whoever parses several texts while its compounds and their names
/// stay as they are: what one parse has found out about the names serves the next. A lookup belongs to one thread.
ExpressionTree ParseExpression(CCompoundLookup& compounds, std::u16string_view text, std::u16string& errorText,
                               std::int32_t* position);

/// Parses the text of a numeric field, which ends at its first zero character, to a tree of one constant. The outcome
/// is told in the same way. Takes no lock.
ExpressionTree ParseScalar(std::u16string_view text, std::u16string& errorText);

}  // namespace reka
