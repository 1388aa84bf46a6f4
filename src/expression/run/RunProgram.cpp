// SPDX-License-Identifier: MIT
// The run of a program. Each step leads straight to the next one where the compiler can jump to a label out of a table,
// so that the processor learns each jump by itself; elsewhere one switch leads to all of them. What a step refuses is
// what the rows of its kinds of nodes refuse.

#include "expression/run/RunProgram.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "RuntimeMath.h"
#include "expression/math/MathFunctions.h"
#include "expression/math/SmallPowers.h"
#include "expression/run/BindProgram.h"
#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

/// What `math::Exp` is, without the way there.
inline double ExpOf(double x) {
    if constexpr (hasGoodExponentials) return std::exp(x);
    return math::Exp(x);
}

// One operand decides.
inline bool IsQuotientRefused(double divisor) {
    return IsRefused<NodeKind::Division>(0.0, divisor);
}

inline bool IsPowerRefused(double base) {
    return IsRefused<NodeKind::Power>(base, 0.0);
}

/// The power 0.5, which has no sign for a zero.
inline double RootOf(double x) {
    return math::Sqrt(x + 0.0);
}

}  // namespace

// A step is `STEP(code) { ... NEXT(code); }`; without `NEXT` it goes on with the step that is written behind it.
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
#define OPERAND(i) *step[1 + i].operand
#define REFUSE_IF(condition) \
    if (condition) return false
// A step that leaves `value` in `a`.
#define CODE(code, preparation, refusal, value) \
    STEP(code) {                                \
        preparation;                            \
        REFUSE_IF(refusal);                     \
        a = value;                              \
        NEXT(code);                             \
    }
#define SUM(sum, preparation, refusal, value) \
    STEP(Push##sum) {                         \
        *top++ = a;                           \
    }                                         \
    CODE(sum, preparation, refusal, value)
#define TERM(term, preparation, refusal, value)      \
    SUM(term, preparation, refusal, value)           \
    CODE(Add##term, preparation, refusal, a + value) \
    CODE(Subtract##term, preparation, refusal, a - value)

bool RunProgram(CExpressionProgram& program, double& result, const WorkingValues& values) noexcept {
#if defined(__GNUC__)
#define TERM_LABELS(term, count) &&term, &&Push##term, &&Add##term, &&Subtract##term,
#define SUM_LABELS(sum, count) &&sum, &&Push##sum,
#define OPERATION_LABEL(operation, count) &&operation,
    static const void* const labels[] = {REKA_PROGRAM_TERMS(TERM_LABELS) REKA_PROGRAM_SUMS(SUM_LABELS)
                                             REKA_PROGRAM_OPERATIONS(OPERATION_LABEL)};
#undef OPERATION_LABEL
#undef SUM_LABELS
#undef TERM_LABELS
    static_assert(sizeof labels / sizeof labels[0] == static_cast<std::size_t>(ProgramCode::Count));
#else
    constexpr const void* const* labels = nullptr;
#endif
    if (program.boundStamp != values.WorkStamp() && !BindProgram(program, values, labels)) [[unlikely]]
        return false;
    double* top = program.ValueStack();
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
            TERM(Value, , false, OPERAND(0))
            TERM(Product, , false, OPERAND(0) * OPERAND(1))
            TERM(TripleProduct, , false, OPERAND(0) * OPERAND(1) * OPERAND(2))
            TERM(Quotient, , IsQuotientRefused(OPERAND(1)), OPERAND(0) / OPERAND(1))
            TERM(Root, , IsPowerRefused(OPERAND(0)), RootOf(OPERAND(0)))
            TERM(RootProduct, , IsPowerRefused(OPERAND(1)), OPERAND(0) * RootOf(OPERAND(1)))
            TERM(SquareProduct, , IsPowerRefused(OPERAND(1)), OPERAND(0) * (OPERAND(1) * OPERAND(1)))
            TERM(Arrhenius, const double divisor = OPERAND(1) * OPERAND(2), IsQuotientRefused(divisor),
                 ExpOf(OPERAND(0) / divisor))
            TERM(ScaledArrhenius, const double divisor = OPERAND(1) * OPERAND(2), IsQuotientRefused(divisor),
                 OPERAND(3) * ExpOf(OPERAND(0) / divisor))
            TERM(RateTerm, const double divisor = OPERAND(1) * OPERAND(2), IsQuotientRefused(divisor),
                 OPERAND(3) * ExpOf(OPERAND(0) / divisor) * OPERAND(4))
            TERM(LongRateTerm, const double divisor = OPERAND(1) * OPERAND(2), IsQuotientRefused(divisor),
                 OPERAND(3) * ExpOf(OPERAND(0) / divisor) * OPERAND(4) * OPERAND(5))
            TERM(RootRateTerm, const double divisor = OPERAND(1) * OPERAND(2),
                 IsQuotientRefused(divisor) || IsPowerRefused(OPERAND(4)),
                 OPERAND(3) * ExpOf(OPERAND(0) / divisor) * RootOf(OPERAND(4)))
            TERM(InverseRateTerm, const double divisor = OPERAND(1) * OPERAND(2);
                 const double rate = OPERAND(3) * ExpOf(OPERAND(0) / divisor),
                 IsQuotientRefused(divisor) || IsQuotientRefused(rate), OPERAND(4) / rate)
            SUM(OffsetRateTerm, const double divisor = OPERAND(1) * OPERAND(2), IsQuotientRefused(divisor),
                OPERAND(5) + OPERAND(3) * ExpOf(OPERAND(0) / divisor) * OPERAND(4))
            TERM(LogarithmProduct, , IsRefused<NodeKind::Log10>(OPERAND(1), 0.0), OPERAND(0) * math::Log10(OPERAND(1)))
            SUM(Sum, , false, OPERAND(0) + OPERAND(1) * OPERAND(2))
            SUM(LongSum, , false, OPERAND(0) + OPERAND(1) * OPERAND(2) + OPERAND(3) * OPERAND(4))
            CODE(AddTwoProducts, , false, a + OPERAND(0) * OPERAND(1) + OPERAND(2) * OPERAND(3))
            CODE(AddThreeProducts, , false,
                 a + OPERAND(0) * OPERAND(1) + OPERAND(2) * OPERAND(3) + OPERAND(4) * OPERAND(5))
            CODE(AddUnequalProducts, , false, a + OPERAND(0) * OPERAND(1) * OPERAND(2) + OPERAND(3) * OPERAND(4))
            CODE(SubtractFrom, , false, OPERAND(0) - a)
            CODE(Multiply, , false, a * OPERAND(0))
            CODE(MultiplyTwice, , false, a * OPERAND(0) * OPERAND(1))
            CODE(Divide, , IsQuotientRefused(OPERAND(0)), a / OPERAND(0))
            CODE(DivideInto, , IsQuotientRefused(a), OPERAND(0) / a)
            CODE(Power, , IsPowerRefused(a), RaiseTo(a, OPERAND(0)))
            CODE(PowerOf, , IsPowerRefused(OPERAND(0)), RaiseTo(OPERAND(0), a))
            CODE(PowerOfTen, , false, math::Exp10(a))
            CODE(AddPopped, , false, *--top + a)
            CODE(SubtractPopped, , false, *--top - a)
            CODE(MultiplyPopped, , false, *--top * a)
            CODE(DividePopped, , IsQuotientRefused(a), *--top / a)
            CODE(DivideBySquare, const double divisor = a * a, IsPowerRefused(a) || IsQuotientRefused(divisor),
                 *--top / divisor)
            CODE(DivideByCube, const double divisor = math::Cube(a), IsPowerRefused(a) || IsQuotientRefused(divisor),
                 *--top / divisor)
            CODE(DivideBySumSquare, const double sum = OPERAND(0) + OPERAND(1) * OPERAND(2) + OPERAND(3) * OPERAND(4),
                 IsPowerRefused(sum) || IsQuotientRefused(sum * sum), a / (sum * sum))
            CODE(PowerPopped, const double base = *--top, IsPowerRefused(base), RaiseTo(base, a))
            CODE(FunctionPopped, --top, false, ComputeOperation(step[1].kind, *top, a))
            CODE(Negate, , false, -a)
            CODE(Square, , IsPowerRefused(a), a * a)
            CODE(Cube, , IsPowerRefused(a), math::Cube(a))
            CODE(PowerOfHalf, , IsPowerRefused(a), RootOf(a))
            CODE(SquareRoot, , IsRefused<NodeKind::Sqrt>(a, 0.0), math::Sqrt(a))
            CODE(Exponential, , false, ExpOf(a))
            CODE(Logarithm, , IsRefused<NodeKind::Log>(a, 0.0), math::Log(a))
            CODE(DecimalLogarithm, , IsRefused<NodeKind::Log10>(a, 0.0), math::Log10(a))
            CODE(Function, , FindRefusal(step[1].kind, a, 0.0), ComputeOperation(step[1].kind, a, 0.0))
            STEP(End) {
                result = a;
                return true;
            }
        }
    }
}

#undef TERM
#undef SUM
#undef CODE
#undef REFUSE_IF
#undef OPERAND
#undef NEXT
#undef STEP
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

}  // namespace reka
