// SPDX-License-Identifier: MIT
// A node becomes the value of the same operation with the same parts if there is one. Which step computes a value
// follows from the rules for its parts, from the leaves on. A part that no rule takes in is computed by a step before
// and is the running value then; where that holds for both parts one of them is kept in a slot, and so is what is worth
// to be computed once alone. A slot is an operand like a constant.

#include "expression/tree/ProgramValues.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "expression/math/SmallPowers.h"
#include "expression/tree/NodeKinds.h"
#include "expression/tree/ProgramRules.h"

namespace reka {

namespace {

constexpr std::uint32_t none = ProgramValue::none;

/// After so many places that are taken by others a value counts as a new one, so that no choice of names or numbers
/// makes a search long.
constexpr std::size_t probeLimit = 8;

/// What keeping a value and fetching it costs.
constexpr std::uint32_t costOfKeeping = 4;
/// How many factors behind a constant are looked through for it.
constexpr int longestNegative = 6;

constexpr std::uint32_t greatestCost = 1'000'000;

std::uint32_t CostOf(ProgramOperation operation) {
    switch (operation) {
        case ProgramOperation::Fetch:
            return 0;
        case ProgramOperation::Divide:
            return 4;
        case ProgramOperation::SquareRoot:
        case ProgramOperation::SquareRootPower:
            return 5;
        case ProgramOperation::Cube:
            return 8;
        case ProgramOperation::Exponential:
        case ProgramOperation::Logarithm:
        case ProgramOperation::DecimalLogarithm:
        case ProgramOperation::PowerOfTen:
        case ProgramOperation::SmallPower:
            return 15;
        case ProgramOperation::Power:
        case ProgramOperation::Function:
        case ProgramOperation::FunctionOfTwo:
            return 40;
        default:
            return 1;
    }
}

/// The same for values that are the same.
std::size_t HashOf(const ProgramValue& value) {
    std::uint64_t left = value.parts[0];
    std::uint64_t right = value.parts[1];
    if (IsCommutative(value.operation) && left > right) std::swap(left, right);
    std::uint64_t hash = (left << 32 | right) * 0x9E3779B97F4A7C15;
    hash ^= static_cast<std::uint64_t>(value.kind) << 8 | static_cast<std::uint64_t>(value.operation);
    hash *= 0xC2B2AE3D27D4EB4F;
    return static_cast<std::size_t>(hash >> 32);
}

bool IsSame(const ProgramValue& first, const ProgramValue& second) {
    if (first.operation != second.operation || first.kind != second.kind) return false;
    if (first.parts[0] == second.parts[0] && first.parts[1] == second.parts[1]) return true;
    return IsCommutative(first.operation) && first.parts[0] == second.parts[1] && first.parts[1] == second.parts[0];
}

}  // namespace

double ProgramValue::Constant() const {
    return std::bit_cast<double>(std::uint64_t{parts[1]} << 32 | parts[0]);
}

CProgramValues::CProgramValues(const ExpressionNode& root, std::size_t nodeCount) {
    values.reserve(nodeCount);
    places.resize(std::bit_ceil(2 * nodeCount), none);
    AddTree(root);
    CountUses();
    FindSteps();
}

// ---- The values

void CProgramValues::AddTree(const ExpressionNode& root) {
    struct Visit {
        const ExpressionNode* node;
        std::int32_t nextArgument;
        std::uint32_t parts[2];
    };
    boost::container::small_vector<Visit, 24> visits = {{&root, 0, {none, none}}};
    for (;;) {
        Visit& visit = visits.back();
        if (visit.nextArgument < visit.node->argumentCount) {
            const ExpressionNode& argument = *visit.node->arguments[visit.nextArgument];
            if (argument.argumentCount > 0) {
                visits.push_back({&argument, 0, {none, none}});
                continue;
            }
            visit.parts[visit.nextArgument++] = AddNode(argument, none, none);
            continue;
        }
        const std::uint32_t number = AddNode(*visit.node, visit.parts[0], visit.parts[1]);
        visits.pop_back();
        if (visits.empty()) {
            // The last value is that of the tree also where the same one stands before others.
            if (number + 1 != values.size()) values.resize(number + 1);
            return;
        }
        visits.back().parts[visits.back().nextArgument++] = number;
    }
}

std::uint32_t CProgramValues::AddNode(const ExpressionNode& node, std::uint32_t left, std::uint32_t right) {
    const ProgramOperation operation = RowOf(node.kind).operation;
    switch (operation) {
        case ProgramOperation::Fetch: {
            if (node.kind == NodeKind::RealConstant) return AddConstant(node.value);
            ProgramValue value;
            value.kind = node.kind;
            if (IsCompoundLeaf(node.kind)) value.parts[0] = static_cast<std::uint32_t>(node.compoundIndex);
            return Add(value);
        }
        case ProgramOperation::Subtract: {
            // What has a constant factor is as well added with the other sign.
            const std::uint32_t negative = AddNegative(right, longestNegative);
            if (negative != none) return AddOperation(ProgramOperation::Add, left, negative);
            return AddOperation(operation, left, right);
        }
        case ProgramOperation::Power:
            return AddPower(left, right);
        case ProgramOperation::Function:
        case ProgramOperation::FunctionOfTwo:
            return AddOperation(operation, left, right, node.kind);
        default:
            return AddOperation(operation, left, right);
    }
}

std::uint32_t CProgramValues::AddPower(std::uint32_t base, std::uint32_t exponent) {
    if (values[exponent].IsConstant()) {
        const double constant = values[exponent].Constant();
        if (constant == 2.0) return AddOperation(ProgramOperation::Square, base);
        if (constant == 3.0 && !values[base].IsFetched()) return AddOperation(ProgramOperation::Cube, base);
        if (constant == 0.5) return AddOperation(ProgramOperation::SquareRootPower, base);
        if (math::IsSmallExponent(constant)) return AddOperation(ProgramOperation::SmallPower, base, exponent);
    }
    if (values[base].IsConstant() && values[base].Constant() == 10.0) {
        return AddOperation(ProgramOperation::PowerOfTen, exponent);
    }
    return AddOperation(ProgramOperation::Power, base, exponent);
}

std::uint32_t CProgramValues::AddConstant(double constant) {
    const auto bits = std::bit_cast<std::uint64_t>(constant);
    ProgramValue value;
    value.parts[0] = static_cast<std::uint32_t>(bits);
    value.parts[1] = static_cast<std::uint32_t>(bits >> 32);
    return Add(value);
}

std::uint32_t CProgramValues::AddOperation(ProgramOperation operation, std::uint32_t left, std::uint32_t right,
                                           NodeKind kind) {
    ProgramValue value;
    value.kind = kind;
    value.operation = operation;
    value.parts[0] = left;
    value.parts[1] = right;
    return Add(value);
}

/// The negative of a value whose first factors are no more than `depth` levels down and begin with a constant; `none`
/// for another one. A product or a quotient has the sign of its factors whatever it is rounded to.
std::uint32_t CProgramValues::AddNegative(std::uint32_t number, int depth) {
    const ProgramValue value = values[number];
    if (value.IsConstant()) return AddConstant(-value.Constant());
    const bool hasFactors =
        value.operation == ProgramOperation::Multiply || value.operation == ProgramOperation::Divide;
    if (!hasFactors || depth == 0) return none;
    const std::uint32_t negative = AddNegative(value.parts[0], depth - 1);
    return negative == none ? none : AddOperation(value.operation, negative, value.parts[1], value.kind);
}

/// The number of the value; of an earlier one that is the same if there is one.
std::uint32_t CProgramValues::Add(const ProgramValue& value) {
    const std::size_t mask = places.size() - 1;
    std::size_t place = HashOf(value) & mask;
    const auto number = static_cast<std::uint32_t>(values.size());
    for (std::size_t probe = 0; probe < probeLimit; ++probe, place = (place + 1) & mask) {
        if (places[place] == none) {
            places[place] = number;
            break;
        }
        if (IsSame(values[places[place]], value)) return places[place];
    }
    values.push_back(value);
    return number;
}

// ---- Their steps

void CProgramValues::CountUses() {
    values.back().useCount = 1;
    for (std::size_t i = values.size(); i-- > 0;) {
        if (values[i].useCount == 0 || values[i].IsFetched()) continue;
        for (const std::uint32_t part : values[i].parts) {
            if (part != none) ++values[part].useCount;
        }
    }
}

void CProgramValues::FindSteps() {
    for (ProgramValue& value : values) {
        if (value.useCount == 0 || value.IsFetched()) continue;
        FindStep(value);
        std::uint32_t cost = CostOf(value.operation);
        for (const std::uint32_t part : value.parts) {
            if (part != none && values[part].slot == none) cost += values[part].cost;
        }
        value.cost = std::min(cost, greatestCost);
        if (&value != &values.back()) KeepWhatRepeats(value);
    }
}

void CProgramValues::FindStep(ProgramValue& value) {
    if (value.parts[1] == none) {
        if (!UseRule(value, values[value.parts[0]].PartCode(), ProgramCode::None)) {
            UseRule(value, ProgramCode::Running, ProgramCode::None);
        }
        return;
    }
    if (FindStepOfParts(value)) return;
    KeepOnePart(value);
    if (!FindStepOfParts(value)) UseRule(value, ProgramCode::Running, ProgramCode::Value);
}

/// A step that takes in what computes the parts, or one that finds one of them as the running value.
bool CProgramValues::FindStepOfParts(ProgramValue& value) {
    const ProgramCode left = values[value.parts[0]].PartCode();
    const ProgramCode right = values[value.parts[1]].PartCode();
    const bool mayChange = IsCommutative(value.operation);
    const auto useChanged = [&](ProgramCode first, ProgramCode second) {
        if (!mayChange || FindRule(value.operation, first, second) == ProgramCode::None) return false;
        std::swap(value.parts[0], value.parts[1]);
        return UseRule(value, first, second);
    };
    if (UseRule(value, left, right) || useChanged(right, left)) return true;
    if (!TakesRunning(right) && UseRule(value, ProgramCode::Running, right)) return true;
    if (!TakesRunning(left) && (useChanged(ProgramCode::Running, left) || UseRule(value, left, ProgramCode::Running))) {
        return true;
    }
    return false;
}

/// Gives the value the step of a rule, if there is the rule.
bool CProgramValues::UseRule(ProgramValue& value, ProgramCode left, ProgramCode right) {
    const ProgramCode code = FindRule(value.operation, left, right);
    if (code == ProgramCode::None) return false;
    value.code = code;
    const auto runningOf = [&](std::uint32_t part, ProgramCode partCode) {
        if (part == none) return none;
        return partCode == ProgramCode::Running ? part : TakesRunning(partCode) ? values[part].running : none;
    };
    value.running = runningOf(value.parts[0], left);
    if (value.running == none) value.running = runningOf(value.parts[1], right);
    return true;
}

/// The cheaper one of two parts that both want the running value; the second one where their places are fixed.
void CProgramValues::KeepOnePart(ProgramValue& value) {
    ProgramValue& left = values[value.parts[0]];
    ProgramValue& right = values[value.parts[1]];
    const bool isLeftKept = value.operation != ProgramOperation::FunctionOfTwo &&
                            value.operation != ProgramOperation::SmallPower && !left.IsFetched() &&
                            (right.IsFetched() || left.cost <= right.cost);
    ProgramValue& kept = isLeftKept ? left : right;
    if (kept.slot == none && !kept.IsFetched()) GiveSlot(kept);
}

void CProgramValues::KeepWhatRepeats(ProgramValue& value) {
    if (value.useCount > 1 && std::uint64_t{value.cost} * (value.useCount - 1) >= costOfKeeping) GiveSlot(value);
}

void CProgramValues::GiveSlot(ProgramValue& value) {
    value.slot = slotCount++;
}

}  // namespace reka
