// The walk that looks at every node of a tree. A reader of stored trees adds the nodes as it meets them and needs no
// walk.

#include "expression/tree/TreeSurvey.h"

#include <boost/container/small_vector.hpp>

#include "expression/tree/NodeOperation.h"

namespace reka {

namespace {

bool IsSound(const ExpressionNode& node) {
    const std::int32_t operandCount = OperandCount(node.kind);
    if (node.argumentCount != operandCount) return false;
    if (operandCount > 0) return true;
    switch (node.kind) {
        case NodeKind::RealConstant:
        case NodeKind::Temperature:
        case NodeKind::Pressure:
            return true;
        case NodeKind::Molarity:
        case NodeKind::Activity:
        case NodeKind::Fugacity:
        case NodeKind::MoleFraction:
            return node.compoundIndex >= 0;
        default:
            return false;
    }
}

std::uint32_t DependencyOf(NodeKind kind) {
    switch (kind) {
        case NodeKind::Pressure:
            return dependency::pressure;
        case NodeKind::Temperature:
            return dependency::temperature;
        case NodeKind::Molarity:
            return dependency::molarity;
        case NodeKind::MoleFraction:
            return dependency::moleFraction;
        case NodeKind::Activity:
            return dependency::activity;
        case NodeKind::Fugacity:
            return dependency::fugacity;
        default:
            return 0;
    }
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
