// The end of a parse, the same for both expression languages: from what the grammar left to a checked tree.

#pragma once

#include <string>

#include "expression/ExpressionNode.h"
#include "expression/ExpressionParser.h"
#include "package/Definition.h"

namespace reka {

/// The one node that a parse without errors leaves in the pool. With a second one there the parse has failed: null, and
/// a line in the error buffer.
ExpressionTree TakeParsedNode(ExpressionParser& parser);

/// Takes the tree, checks it against `definition`, or as a scalar for null, and empties the pool. `errorText` is
/// overwritten: empty with a tree, otherwise all that is wrong. Throws std::bad_alloc if the parse ran out of memory.
ExpressionTree FinishParse(ExpressionParser& parser, const ReactionPackDefinition* definition,
                           std::u16string& errorText);

}  // namespace reka
