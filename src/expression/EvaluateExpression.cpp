// Evaluation of a parsed expression, along the nodes of a tree or along the steps laid out from it. Both go through the
// arguments of a node from first to last and then compute the node, and both compute it here, by `ComputeStep`.

#include "expression/EvaluateExpression.h"

#include <limits>

#include "expression/ExpressionProgram.h"
#include "expression/NodeOperation.h"
#include "expression/WalkStack.h"

namespace reka {

namespace {

// Why an operation is refused for these operands, or null. A NaN passes every guard, and so does a zero where only
// negative operands are refused: LOG(0) is minus infinity and 0^0 is 1. The natural logarithm speaks of "ln".
const char16_t* FindRefusal(NodeKind kind, double a, double b) {
    switch (kind) {
        case NodeKind::Division:
            return b == 0 ? u"division by zero" : nullptr;
        case NodeKind::Power:
            return a < 0 ? u"negative base in power" : nullptr;
        case NodeKind::Sqrt:
            return a < 0 ? u"sqrt of negative number" : nullptr;
        case NodeKind::Asin:
            return a < -1 || a > 1 ? u"domain error in asin" : nullptr;
        case NodeKind::Acos:
            return a < -1 || a > 1 ? u"domain error in acos" : nullptr;
        case NodeKind::Log:
            return a < 0 ? u"ln of negative number" : nullptr;
        case NodeKind::Log10:
            return a < 0 ? u"log of negative number" : nullptr;
        default:
            return nullptr;
    }
}

// The working value of a compound; false where there is none.
bool ReadWorkingValue(const std::unique_ptr<double[]>& values, std::int32_t compoundIndex,
                      const ReactionPackDefinition& definition, double& value) {
    if (!values || compoundIndex < 0 || static_cast<std::size_t>(compoundIndex) >= definition.workArraySize) {
        return false;
    }
    value = values[static_cast<std::size_t>(compoundIndex)];
    return true;
}

// The value of a node without operands; false for a kind that has none.
bool ReadLeaf(const ExpressionStep& step, const ReactionPackDefinition& definition, double& value) {
    switch (step.kind) {
        case NodeKind::RealConstant:
            value = step.value;
            return true;
        case NodeKind::Pressure:
            value = definition.pressure;
            return true;
        case NodeKind::Temperature:
            value = definition.temperature;
            return true;
        case NodeKind::Molarity:
            return ReadWorkingValue(definition.molarity, step.compoundIndex, definition, value);
        case NodeKind::MoleFraction:
            return ReadWorkingValue(definition.moleFraction, step.compoundIndex, definition, value);
        case NodeKind::Activity:
            return ReadWorkingValue(definition.activity, step.compoundIndex, definition, value);
        case NodeKind::Fugacity:
            return ReadWorkingValue(definition.fugacity, step.compoundIndex, definition, value);
        default:
            return false;
    }
}

bool FailAsUnknown(std::u16string& errorText) {
    errorText += u"internal error: unknown expression type";
    return false;
}

// Computes one node from the values of its arguments.
bool ComputeStep(const ExpressionStep& step, const double* operands, const ReactionPackDefinition& definition,
                 double& value, std::u16string& errorText) {
    const std::int32_t operandCount = OperandCount(step.kind);
    if (operandCount == 0) return ReadLeaf(step, definition, value) || FailAsUnknown(errorText);
    const double a = operands[0];
    const double b = operandCount == 2 ? operands[1] : 0.0;
    if (const char16_t* refusal = FindRefusal(step.kind, a, b)) {
        errorText = refusal;
        return false;
    }
    value = ComputeOperation(step.kind, a, b);
    return true;
}

}  // namespace

bool EvaluateExpression(const ExpressionNode& node, double& result, const ReactionPackDefinition& definition,
                        std::u16string& errorText) {
    struct Visit {
        const ExpressionNode* node;
        std::int32_t nextArgument;
        double operands[2];  // no operation has more; the values of further arguments are computed and dropped
    };
    result = std::numeric_limits<double>::quiet_NaN();
    CWalkStack<Visit> visits;
    visits.Push({&node, 0, {}});
    for (;;) {
        Visit& visit = visits.Top();
        if (visit.nextArgument < visit.node->argumentCount) {
            const ExpressionNode* argument = visit.node->arguments[visit.nextArgument];
            if (!argument) return FailAsUnknown(errorText);
            visits.Push({argument, 0, {}});
            continue;
        }
        double value;
        if (!ComputeStep(StepOf(*visit.node), visit.operands, definition, value, errorText)) return false;
        visits.Pop();
        if (visits.IsEmpty()) {
            result = value;
            return true;
        }
        Visit& parent = visits.Top();
        if (parent.nextArgument < 2) parent.operands[parent.nextArgument] = value;
        ++parent.nextArgument;
    }
}

bool EvaluateExpression(const ExpressionRef& expression, double& result, const ReactionPackDefinition& definition,
                        std::u16string& errorText) {
    result = std::numeric_limits<double>::quiet_NaN();
    double localValues[localValueCount];
    double* deepStack = expression.program->ValueStack();
    double* values = deepStack ? deepStack : localValues;
    std::size_t depth = 0;
    for (const ExpressionStep& step : expression.program->Steps()) {
        depth -= static_cast<std::size_t>(step.argumentCount);
        double value;
        if (!ComputeStep(step, values + depth, definition, value, errorText)) return false;
        values[depth++] = value;
    }
    result = values[0];
    return true;
}

}  // namespace reka
