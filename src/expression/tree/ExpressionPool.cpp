// SPDX-License-Identifier: MIT
// The nodes of a parse without a parent. A grammar takes what it has made last first, so a search begins at the end.

#include "expression/tree/ExpressionPool.h"

#include <algorithm>

namespace reka {

void ExpressionPool::PoolRemove(const ExpressionNode& node) {
    const auto place = std::find(nodes.rbegin(), nodes.rend(), &node);
    if (place != nodes.rend()) nodes.erase(std::next(place).base());
}

}  // namespace reka
