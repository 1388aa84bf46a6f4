// SPDX-License-Identifier: MIT
// The kinds of nodes, a row for each: its word, its operands, what it computes and refuses, what it reads. Whoever
// works with kinds, from the lexer to the run of a program, goes by these rows.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "expression/math/MathFunctions.h"
#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ProgramOperation.h"

namespace reka {

/// Which operands an operation refuses, and what it says then. A NaN passes every guard, and so does a zero where only
/// negative operands are refused: LOG(0) is minus infinity and 0^0 is 1.
struct Guard {
    bool (*refuses)(double a, double b) = nullptr;  // null for an operation that takes all
    const char16_t* text = nullptr;
};

struct NodeKindRow {
    NodeKind kind;
    std::u16string_view word;  // in messages; of a function, also in expressions
    std::int32_t operandCount = 0;
    double (*compute)(double a, double b) = nullptr;       // without the guard; one with one operand reads `a` alone
    ProgramOperation operation = ProgramOperation::Fetch;  // in a program
    Guard guard = {};
    std::uint32_t dependency = 0;  // what a leaf reads

    /// Whether an evaluation finds a value in a node that has just its operands.
    constexpr bool HasValue() const { return operandCount > 0 || dependency != 0 || kind == NodeKind::RealConstant; }
};

/// The value of the operator ^. Small exponents and the base 10 have powers of their own.
double RaiseTo(double base, double exponent);

namespace operation {

constexpr bool IsDividedByZero(double, double b) {
    return b == 0;
}

constexpr bool IsNegative(double a, double) {
    return a < 0;
}

constexpr bool IsBeyondOne(double a, double) {
    return a < -1 || a > 1;
}

constexpr Guard RefuseIf(bool (*refuses)(double a, double b), const char16_t* text) {
    return {refuses, text};
}

template <double (*function)(double)>
double Of(double a, double) {
    return function(a);
}

constexpr double Add(double a, double b) {
    return a + b;
}

constexpr double Subtract(double a, double b) {
    return a - b;
}

constexpr double Multiply(double a, double b) {
    return a * b;
}

constexpr double Divide(double a, double b) {
    return a / b;
}

constexpr double Negate(double a, double) {
    return -a;
}

/// Halves go up, below zero too.
inline double Round(double a, double) {
    return math::Floor(a + 0.5);
}

/// The second one if the first is a NaN.
constexpr double Least(double a, double b) {
    return a < b ? a : b;
}

constexpr double Greatest(double a, double b) {
    return a > b ? a : b;
}

constexpr NodeKindRow Leaf(NodeKind kind, std::u16string_view word, std::uint32_t dependency = 0) {
    return {kind, word, 0, nullptr, ProgramOperation::Fetch, {}, dependency};
}

/// By kind. The natural logarithm speaks of "ln".
constexpr NodeKindRow rows[] = {
    Leaf(NodeKind::RealConstant, u"real constant"),
    {NodeKind::Addition, u"addition", 2, Add, ProgramOperation::Add},
    {NodeKind::Subtraction, u"subtraction", 2, Subtract, ProgramOperation::Subtract},
    {NodeKind::Multiplication, u"multiplication", 2, Multiply, ProgramOperation::Multiply},
    {NodeKind::Division, u"division", 2, Divide, ProgramOperation::Divide,
     RefuseIf(IsDividedByZero, u"division by zero")},
    {NodeKind::Negation, u"negation", 1, Negate, ProgramOperation::Negate},
    {NodeKind::Power, u"power", 2, RaiseTo, ProgramOperation::Power, RefuseIf(IsNegative, u"negative base in power")},
    Leaf(NodeKind::ExpressionList, u"expression list"),
    {NodeKind::Sqrt, u"SQRT", 1, Of<math::Sqrt>, ProgramOperation::SquareRoot,
     RefuseIf(IsNegative, u"sqrt of negative number")},
    {NodeKind::Sin, u"SIN", 1, Of<math::Sin>, ProgramOperation::Function},
    {NodeKind::Cos, u"COS", 1, Of<math::Cos>, ProgramOperation::Function},
    {NodeKind::Sinh, u"SINH", 1, Of<math::Sinh>, ProgramOperation::Function},
    {NodeKind::Cosh, u"COSH", 1, Of<math::Cosh>, ProgramOperation::Function},
    {NodeKind::Asin, u"ASIN", 1, Of<math::Asin>, ProgramOperation::Function,
     RefuseIf(IsBeyondOne, u"domain error in asin")},
    {NodeKind::Acos, u"ACOS", 1, Of<math::Acos>, ProgramOperation::Function,
     RefuseIf(IsBeyondOne, u"domain error in acos")},
    {NodeKind::Tan, u"TAN", 1, Of<math::Tan>, ProgramOperation::Function},
    {NodeKind::Atan, u"ATAN", 1, Of<math::Atan>, ProgramOperation::Function},
    {NodeKind::Abs, u"ABS", 1, Of<math::Fabs>, ProgramOperation::Function},
    {NodeKind::Floor, u"FLOOR", 1, Of<math::Floor>, ProgramOperation::Function},
    {NodeKind::Ceil, u"CEIL", 1, Of<math::Ceil>, ProgramOperation::Function},
    {NodeKind::Round, u"ROUND", 1, Round, ProgramOperation::Function},
    {NodeKind::Exp, u"EXP", 1, Of<math::Exp>, ProgramOperation::Exponential},
    {NodeKind::Log, u"LOG", 1, Of<math::Log>, ProgramOperation::Logarithm,
     RefuseIf(IsNegative, u"ln of negative number")},
    {NodeKind::Log10, u"LOG10", 1, Of<math::Log10>, ProgramOperation::DecimalLogarithm,
     RefuseIf(IsNegative, u"log of negative number")},
    {NodeKind::Tanh, u"TANH", 1, Of<math::Tanh>, ProgramOperation::Function},
    {NodeKind::Min, u"MIN", 2, Least, ProgramOperation::FunctionOfTwo},
    {NodeKind::Max, u"MAX", 2, Greatest, ProgramOperation::FunctionOfTwo},
    {NodeKind::Mod, u"MOD", 2, math::Fmod, ProgramOperation::FunctionOfTwo},
    Leaf(NodeKind::Pressure, u"pressure", dependency::pressure),
    Leaf(NodeKind::Temperature, u"temperature", dependency::temperature),
    Leaf(NodeKind::Molarity, u"molarity", dependency::molarity),
    Leaf(NodeKind::MoleFraction, u"mole fraction", dependency::moleFraction),
    Leaf(NodeKind::MolecularWeight, u"molecular weight"),
    Leaf(NodeKind::Activity, u"activity", dependency::activity),
    Leaf(NodeKind::Fugacity, u"fugacity", dependency::fugacity),
};

}  // namespace operation

/// The rows, by kind.
constexpr std::span nodeKinds = operation::rows;
static_assert(nodeKinds.size() == nodeKindCount);

/// The functions, in the order of their kinds.
constexpr std::span FunctionTable =
    nodeKinds.subspan<static_cast<std::size_t>(NodeKind::Sqrt),
                      static_cast<std::size_t>(NodeKind::Mod) - static_cast<std::size_t>(NodeKind::Sqrt) + 1>();

/// The row of one of the kinds 0 to 34.
constexpr const NodeKindRow& RowOf(NodeKind kind) {
    return nodeKinds[static_cast<std::size_t>(kind)];
}

/// The row of a kind; null for one that there isn't, as that of a failed node.
constexpr const NodeKindRow* FindRow(NodeKind kind) {
    const auto index = static_cast<std::uint32_t>(kind);
    return index < nodeKinds.size() ? &nodeKinds[index] : nullptr;
}

constexpr bool IsEachRowInItsPlace() {
    for (std::size_t i = 0; i < nodeKinds.size(); ++i) {
        if (static_cast<std::size_t>(nodeKinds[i].kind) != i) return false;
    }
    return true;
}
static_assert(IsEachRowInItsPlace());

/// The number of operands of an operator or function; 0 for every other kind.
constexpr std::int32_t OperandCount(NodeKind kind) {
    const NodeKindRow* const row = FindRow(kind);
    return row ? row->operandCount : 0;
}

/// Whether the operation `kind` refuses the operands.
template <NodeKind kind>
constexpr bool IsRefused(double a, double b) {
    constexpr auto refuses = RowOf(kind).guard.refuses;
    return refuses(a, b);
}

/// Why an operator or function is refused for the operands `a` and `b`; null if it isn't.
const char16_t* FindRefusal(NodeKind kind, double a, double b);

/// The value of an operator or function for the operands `a` and `b`, of which a kind with one operand reads the first
/// alone. Nothing is guarded: what the arithmetic makes of any operands is the value.
double ComputeOperation(NodeKind kind, double a, double b);

}  // namespace reka
