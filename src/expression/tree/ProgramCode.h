// SPDX-License-Identifier: MIT
// What the steps of a program do. Each step is a rule: an operation on two parts, each of which is an operand that the
// step fetches, the running value that the step before has left, or what another rule computes. The one table of rules
// says which parts of a tree become one step (ProgramRules.h), how many operands a step has, and what it computes
// (RunProgram.cpp).

#pragma once

#include <cstddef>
#include <cstdint>

#include "expression/tree/ProgramOperation.h"

namespace reka {

/// The rules: the step, its operation, and what its two parts are.
#define REKA_PROGRAM_RULES(RULE)                                                \
    RULE(Value, Fetch, None, None)                                              \
    /* Products, quotients, powers and sums of operands */                      \
    RULE(Product, Multiply, Value, Value)                                       \
    RULE(TripleProduct, Multiply, Product, Value)                               \
    RULE(Quotient, Divide, Value, Value)                                        \
    RULE(QuotientByProduct, Divide, Value, Product)                             \
    RULE(ProductQuotient, Divide, Product, Value)                               \
    RULE(SquareOfValue, Square, Value, None)                                    \
    RULE(SquareProduct, Multiply, Value, SquareOfValue)                         \
    RULE(RootOfValue, SquareRootPower, Value, None)                             \
    RULE(SmallPowerOfValue, SmallPower, Value, Value)                           \
    RULE(PowerProduct, Multiply, Value, SmallPowerOfValue)                      \
    RULE(SumOfValues, Add, Value, Value)                                        \
    RULE(OffsetQuotient, Add, Value, Quotient)                                  \
    RULE(Sum, Add, Value, Product)                                              \
    RULE(LongSum, Add, Sum, Product)                                            \
    /* Arrhenius terms, with R*T as two operands or as one */                   \
    RULE(Arrhenius, Exponential, QuotientByProduct, None)                       \
    RULE(ScaledArrhenius, Multiply, Value, Arrhenius)                           \
    RULE(RateTerm, Multiply, ScaledArrhenius, Value)                            \
    RULE(LongRateTerm, Multiply, RateTerm, Value)                               \
    RULE(ShortArrhenius, Exponential, Quotient, None)                           \
    RULE(ScaledShortArrhenius, Multiply, Value, ShortArrhenius)                 \
    RULE(ShortRateTerm, Multiply, ScaledShortArrhenius, Value)                  \
    RULE(OffsetExponential, Exponential, OffsetQuotient, None)                  \
    /* What is added to the running value or subtracted */                      \
    RULE(AddValue, Add, Running, Value)                                         \
    RULE(AddTwoValues, Add, AddValue, Value)                                    \
    RULE(AddProduct, Add, Running, Product)                                     \
    RULE(AddTwoProducts, Add, AddProduct, Product)                              \
    RULE(AddTripleProduct, Add, Running, TripleProduct)                         \
    RULE(AddQuotient, Add, Running, Quotient)                                   \
    RULE(AddSquareProduct, Add, Running, SquareProduct)                         \
    RULE(AddShortRateTerm, Add, Running, ShortRateTerm)                         \
    RULE(SubtractValue, Subtract, Running, Value)                               \
    RULE(SubtractFrom, Subtract, Value, Running)                                \
    RULE(SubtractFromProduct, Subtract, Product, Running)                       \
    /* Factors and divisors of the running value */                             \
    RULE(MultiplyValue, Multiply, Running, Value)                               \
    RULE(MultiplyTwice, Multiply, MultiplyValue, Value)                         \
    RULE(MultiplyQuotient, Multiply, Running, Quotient)                         \
    RULE(MultiplyScaledArrhenius, Multiply, Running, ScaledArrhenius)           \
    RULE(MultiplyScaledShortArrhenius, Multiply, Running, ScaledShortArrhenius) \
    RULE(DivideValue, Divide, Running, Value)                                   \
    RULE(DivideInto, Divide, Value, Running)                                    \
    RULE(DivideProductInto, Divide, Product, Running)                           \
    RULE(SquareRunning, Square, Running, None)                                  \
    RULE(DivideBySquare, Divide, Value, SquareRunning)                          \
    /* Each other operation */                                                  \
    RULE(NegateRunning, Negate, Running, None)                                  \
    RULE(PowerRunning, Power, Running, Value)                                   \
    RULE(PowerOfValue, Power, Value, Running)                                   \
    RULE(SmallPowerRunning, SmallPower, Running, Value)                         \
    RULE(CubeRunning, Cube, Running, None)                                      \
    RULE(RootRunning, SquareRootPower, Running, None)                           \
    RULE(PowerOfTenRunning, PowerOfTen, Running, None)                          \
    RULE(SquareRootRunning, SquareRoot, Running, None)                          \
    RULE(ExponentialRunning, Exponential, Running, None)                        \
    RULE(LogarithmRunning, Logarithm, Running, None)                            \
    RULE(DecimalLogarithmRunning, DecimalLogarithm, Running, None)              \
    RULE(FunctionRunning, Function, Running, None)                              \
    RULE(FunctionOfTwoRunning, FunctionOfTwo, Running, Value)

#define REKA_RULE_CODE(code, operation, left, right) code,
enum class ProgramCode : std::uint8_t {
    REKA_PROGRAM_RULES(REKA_RULE_CODE) RuleCount,
    Keep = RuleCount,  // puts the running value into a slot
    KeepAndFetch,      // and an operand becomes the running value
    End,               // the running value is the result
    Count,
    Running = Count,  // as a part of a rule: the running value
    None              // as a part of a rule: there isn't any
};
#undef REKA_RULE_CODE

struct ProgramRule {
    ProgramOperation operation;
    ProgramCode left;
    ProgramCode right;
};

/// By code.
#define REKA_RULE_ROW(code, operation, left, right) \
    {ProgramOperation::operation, ProgramCode::left, ProgramCode::right},
constexpr ProgramRule programRules[] = {REKA_PROGRAM_RULES(REKA_RULE_ROW)};
#undef REKA_RULE_ROW

constexpr const ProgramRule& RuleOf(ProgramCode code) {
    return programRules[static_cast<std::size_t>(code)];
}

/// Whether the first operand of a step is the kind of a function.
constexpr bool TakesKind(ProgramCode code) {
    return code < ProgramCode::RuleCount && (RuleOf(code).operation == ProgramOperation::Function ||
                                             RuleOf(code).operation == ProgramOperation::FunctionOfTwo);
}

/// How many operands a step fetches.
constexpr std::size_t CountOperands(ProgramCode code) {
    if (code == ProgramCode::Value || code == ProgramCode::Keep) return 1;
    if (code == ProgramCode::KeepAndFetch) return 2;
    if (code >= ProgramCode::RuleCount) return 0;
    return CountOperands(RuleOf(code).left) + CountOperands(RuleOf(code).right) + (TakesKind(code) ? 1 : 0);
}

#define REKA_RULE_COUNT(code, operation, left, right) static_cast<std::uint8_t>(CountOperands(ProgramCode::code)),
constexpr std::uint8_t operandCounts[] = {REKA_PROGRAM_RULES(REKA_RULE_COUNT) 1, 2, 0};
#undef REKA_RULE_COUNT

constexpr std::size_t OperandCountOf(ProgramCode code) {
    return operandCounts[static_cast<std::size_t>(code)];
}

}  // namespace reka
