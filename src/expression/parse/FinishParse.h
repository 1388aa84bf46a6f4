// The end of a parse, the same for both expression languages: from what the grammar left to a checked tree.

#pragma once

#include <string>

#include "expression/parse/ExpressionParser.h"
#include "expression/tree/ExpressionNode.h"
#include "expression/tree/NamedCompounds.h"

namespace reka {

/// The one node that a parse without errors leaves in the pool. With a second one there the parse has failed: null, and
/// a line in the error buffer.
ExpressionTree TakeParsedNode(ExpressionParser& parser);

/// Takes the tree, checks it against `compounds`, or as a scalar for null, and empties the pool. `errorText` is
/// overwritten: empty with a tree, otherwise all that is wrong. Throws std::bad_alloc if the parse ran out of memory.
ExpressionTree FinishParse(ExpressionParser& parser, const INamedCompounds* compounds, std::u16string& errorText);

}  // namespace reka
