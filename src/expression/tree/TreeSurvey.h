// What there is to know of a finished tree before it is put to use, found out in one walk.

#pragma once

#include <cstddef>

#include "expression/tree/ExpressionNode.h"

namespace reka {

struct TreeSurvey {
    /// Whether an evaluation looks at nothing but what is there: each operation has just its operands, and each leaf
    /// has a value.
    bool isSound = true;
    /// Whether the tree is all that is left of one block of a CNodeSource, so that it can be freed in one piece.
    bool isWholeBlock = false;
    std::size_t nodeCount = 0;
    std::size_t constantCount = 0;
};

TreeSurvey SurveyTree(const ExpressionNode& root);

}  // namespace reka
