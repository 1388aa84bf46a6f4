// SPDX-License-Identifier: MIT
// Evaluation of a parsed expression along the nodes of its tree.

#include "expression/run/EvaluateExpression.h"

#include <boost/container/small_vector.hpp>
#include <limits>

#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

// The working value of a compound; false where there is none.
bool ReadWorkingValue(const CWorkArray& array, std::int32_t compoundIndex, const WorkingValues& values, double& value) {
    if (!array || compoundIndex < 0 || static_cast<std::size_t>(compoundIndex) >= values.workArraySize) {
        return false;
    }
    value = array[static_cast<std::size_t>(compoundIndex)];
    return true;
}

// The value of a node without operands; false for a kind that has none.
bool ReadLeaf(const ExpressionNode& node, const WorkingValues& values, double& value) {
    switch (node.kind) {
        case NodeKind::RealConstant:
            value = node.value;
            return true;
        case NodeKind::Pressure:
            value = values.pressure;
            return true;
        case NodeKind::Temperature:
            value = values.temperature;
            return true;
        case NodeKind::Molarity:
            return ReadWorkingValue(values.molarity, node.compoundIndex, values, value);
        case NodeKind::MoleFraction:
            return ReadWorkingValue(values.moleFraction, node.compoundIndex, values, value);
        case NodeKind::Activity:
            return ReadWorkingValue(values.activity, node.compoundIndex, values, value);
        case NodeKind::Fugacity:
            return ReadWorkingValue(values.fugacity, node.compoundIndex, values, value);
        default:
            return false;
    }
}

bool FailAsUnknown(std::u16string& errorText) {
    errorText += u"internal error: unknown expression type";
    return false;
}

// Computes one node from the values of its arguments.
bool ComputeNode(const ExpressionNode& node, const double* operands, const WorkingValues& values, double& value,
                 std::u16string& errorText) {
    const std::int32_t operandCount = OperandCount(node.kind);
    if (node.argumentCount < operandCount) return FailAsUnknown(errorText);
    if (operandCount == 0) return ReadLeaf(node, values, value) || FailAsUnknown(errorText);
    const double a = operands[0];
    const double b = operandCount == 2 ? operands[1] : 0.0;
    if (const char16_t* refusal = FindRefusal(node.kind, a, b)) {
        errorText = refusal;
        return false;
    }
    value = ComputeOperation(node.kind, a, b);
    return true;
}

}  // namespace

bool EvaluateExpression(const ExpressionNode& node, double& result, const WorkingValues& values,
                        std::u16string& errorText) {
    struct Visit {
        const ExpressionNode* node;
        std::int32_t nextArgument;
        double operands[2];  // no operation has more; the values of further arguments are computed and dropped
    };
    result = std::numeric_limits<double>::quiet_NaN();
    boost::container::small_vector<Visit, 64> visits = {{&node, 0, {}}};
    for (;;) {
        Visit& visit = visits.back();
        if (visit.nextArgument < visit.node->argumentCount) {
            const ExpressionNode* argument = visit.node->arguments[visit.nextArgument];
            if (!argument) return FailAsUnknown(errorText);
            visits.push_back({argument, 0, {}});
            continue;
        }
        double value;
        if (!ComputeNode(*visit.node, visit.operands, values, value, errorText)) return false;
        visits.pop_back();
        if (visits.empty()) {
            result = value;
            return true;
        }
        Visit& parent = visits.back();
        if (parent.nextArgument < 2) parent.operands[parent.nextArgument] = value;
        ++parent.nextArgument;
    }
}

}  // namespace reka
