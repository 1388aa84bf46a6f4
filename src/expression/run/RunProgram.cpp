// SPDX-License-Identifier: MIT
// The run of a program. What a step computes is put together from its rule when this is compiled, and what it refuses
// is what the rows of its kinds of nodes refuse. Each step leads straight to the next one where the compiler can jump
// to a label out of a table, so that the processor learns each jump by itself; elsewhere one switch leads to all of
// them.

#include "expression/run/RunProgram.h"

#include <cmath>
#include <cstdint>

#include "RuntimeMath.h"
#include "expression/math/MathFunctions.h"
#include "expression/math/SmallPowers.h"
#include "expression/run/BindProgram.h"
#include "expression/tree/NodeKinds.h"
#include "expression/tree/ProgramCode.h"

namespace reka {

namespace {

/// What `math::Exp` is, without the way there.
inline double ExpOf(double x) {
    if constexpr (hasGoodExponentials) return std::exp(x);
    return math::Exp(x);
}

/// What `RaiseTo` is, in the same way.
inline double PowerOf(double base, double exponent) {
    if (!hasGoodExponentials || base == 10.0 || math::IsSmallExponent(exponent)) return RaiseTo(base, exponent);
    return std::pow(base, exponent);
}

/// The kind whose guard an operation has; that of a constant for none.
constexpr NodeKind GuardedKind(ProgramOperation operation) {
    switch (operation) {
        case ProgramOperation::Divide:
            return NodeKind::Division;
        case ProgramOperation::Power:
        case ProgramOperation::SmallPower:
        case ProgramOperation::Square:
        case ProgramOperation::Cube:
        case ProgramOperation::SquareRootPower:
            return NodeKind::Power;
        case ProgramOperation::SquareRoot:
            return NodeKind::Sqrt;
        case ProgramOperation::Logarithm:
            return NodeKind::Log;
        case ProgramOperation::DecimalLogarithm:
            return NodeKind::Log10;
        default:
            return NodeKind::RealConstant;
    }
}

/// Whether the operation refuses the operands; those of functions are told by their kind.
template <ProgramOperation operation>
[[gnu::always_inline]] inline bool IsRefusedBy(double a, double b, NodeKind function) {
    constexpr bool isFunction = operation == ProgramOperation::Function || operation == ProgramOperation::FunctionOfTwo;
    constexpr NodeKind kind = GuardedKind(operation);
    if constexpr (isFunction) return FindRefusal(function, a, b) != nullptr;
    if constexpr (kind != NodeKind::RealConstant) return IsRefused<kind>(a, b);
    return false;
}

template <ProgramOperation operation>
[[gnu::always_inline]] inline double Apply(double a, double b, NodeKind function) {
    if constexpr (operation == ProgramOperation::Add) return a + b;
    if constexpr (operation == ProgramOperation::Subtract) return a - b;
    if constexpr (operation == ProgramOperation::Multiply) return a * b;
    if constexpr (operation == ProgramOperation::Divide) return a / b;
    if constexpr (operation == ProgramOperation::Negate) return -a;
    if constexpr (operation == ProgramOperation::Power) return PowerOf(a, b);
    if constexpr (operation == ProgramOperation::SmallPower) return math::SmallPower(a, b);
    if constexpr (operation == ProgramOperation::Square) return a * a;
    if constexpr (operation == ProgramOperation::Cube) return math::Cube(a);
    if constexpr (operation == ProgramOperation::SquareRootPower) return math::SquareRootPower(a);
    if constexpr (operation == ProgramOperation::PowerOfTen) return math::Exp10(a);
    if constexpr (operation == ProgramOperation::SquareRoot) return math::Sqrt(a);
    if constexpr (operation == ProgramOperation::Exponential) return ExpOf(a);
    if constexpr (operation == ProgramOperation::Logarithm) return math::Log(a);
    if constexpr (operation == ProgramOperation::DecimalLogarithm) return math::Log10(a);
    return ComputeOperation(function, a, b);
}

/// What a step, or the part of one, computes from the running value `a` and its operands. Sets `isRefused` where an
/// operation is.
template <ProgramCode code>
[[gnu::always_inline]] inline double Compute(double a, const BoundWord* operands, bool& isRefused) {
    if constexpr (code == ProgramCode::Running) {
        return a;
    } else if constexpr (code == ProgramCode::Value) {
        return *operands[0].operand;
    } else if constexpr (code == ProgramCode::None) {
        return 0.0;
    } else {
        constexpr const ProgramRule& rule = RuleOf(code);
        constexpr std::size_t first = TakesKind(code) ? 1 : 0;
        constexpr std::size_t second = first + CountOperands(rule.left);
        const double left = Compute<rule.left>(a, operands + first, isRefused);
        const double right = Compute<rule.right>(a, operands + second, isRefused);
        const NodeKind function = TakesKind(code) ? operands[0].kind : NodeKind::RealConstant;
        if (IsRefusedBy<rule.operation>(left, right, function)) [[unlikely]]
            isRefused = true;
        return Apply<rule.operation>(left, right, function);
    }
}

}  // namespace

// A step is `STEP(code) { ... NEXT(code); }`.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#define STEP(code) \
    code:
#define NEXT(code)                                 \
    step += 1 + OperandCountOf(ProgramCode::code); \
    goto * step->handler
#else
#define STEP(code) case ProgramCode::code:
#define NEXT(code)                                 \
    step += 1 + OperandCountOf(ProgramCode::code); \
    continue
#endif
#define RULE_STEP(code, operation, left, right)                 \
    STEP(code) {                                                \
        bool isRefused = false;                                 \
        a = Compute<ProgramCode::code>(a, step + 1, isRefused); \
        if (isRefused) [[unlikely]]                             \
            return false;                                       \
        NEXT(code);                                             \
    }

bool RunProgram(CExpressionProgram& program, double& result, const WorkingValues& values) noexcept {
#if defined(__GNUC__)
#define RULE_LABEL(code, operation, left, right) &&code,
    static const void* const labels[] = {REKA_PROGRAM_RULES(RULE_LABEL) && Keep, &&KeepAndFetch, &&End};
#undef RULE_LABEL
    static_assert(sizeof labels / sizeof labels[0] == static_cast<std::size_t>(ProgramCode::Count));
#else
    constexpr const void* const* labels = nullptr;
#endif
    if (program.boundStamp != values.WorkStamp() && !BindProgram(program, values, labels)) [[unlikely]]
        return false;
    const BoundWord* step = program.BoundWords();
    double a = 0.0;

#if defined(__GNUC__)
    goto * step->handler;
    {
        {
#else
    for (;;) {
        switch (step->code) {
#endif
            REKA_PROGRAM_RULES(RULE_STEP)
            STEP(Keep) {
                *step[1].slot = a;
                NEXT(Keep);
            }
            STEP(KeepAndFetch) {
                *step[1].slot = a;
                a = *step[2].operand;
                NEXT(KeepAndFetch);
            }
            STEP(End) {
                result = a;
                return true;
            }
        }
    }
}

#undef RULE_STEP
#undef NEXT
#undef STEP
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

}  // namespace reka
