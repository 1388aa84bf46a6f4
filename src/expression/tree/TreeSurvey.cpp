// SPDX-License-Identifier: MIT
// The walk that looks at every node of a tree. A reader of stored trees adds the nodes as it meets them and needs no
// walk.

#include "expression/tree/TreeSurvey.h"

#include <boost/container/small_vector.hpp>

#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

bool IsSound(const ExpressionNode& node) {
    const NodeKindRow* const row = FindRow(node.kind);
    return row && row->HasValue() && node.argumentCount == row->operandCount &&
           (!IsCompoundLeaf(node.kind) || node.compoundIndex >= 0);
}

std::uint32_t DependencyOf(NodeKind kind) {
    const NodeKindRow* const row = FindRow(kind);
    return row ? row->dependency : 0;
}

}  // namespace

void TreeSurvey::AddNode(const ExpressionNode& node) {
    ++nodeCount;
    if (node.kind == NodeKind::RealConstant) ++constantCount;
    isSound = isSound && IsSound(node);
}

TreeSurvey SurveyTree(const ExpressionNode& root) {
    struct Visit {
        const ExpressionNode* node;
        bool isRead;  // not below a leaf
    };
    TreeSurvey survey;
    boost::container::small_vector<Visit, 64> visits = {{&root, true}};
    while (!visits.empty()) {
        const auto [node, isRead] = visits.back();
        visits.pop_back();
        survey.AddNode(*node);
        const std::uint32_t bit = DependencyOf(node->kind);
        if (isRead) survey.dependencies |= bit;
        for (std::int32_t i = 0; i < node->argumentCount; ++i) {
            if (node->arguments[i]) {
                visits.push_back({node->arguments[i], isRead && bit == 0});
            } else {
                survey.isSound = false;
            }
        }
    }
    return survey;
}

}  // namespace reka
