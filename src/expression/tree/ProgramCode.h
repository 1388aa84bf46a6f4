// SPDX-License-Identifier: MIT
// What the steps of a program do, and with how many operands.

#pragma once

#include <cstddef>
#include <cstdint>

namespace reka {

/// The terms that one step computes from its operands alone, called o0 to o5; and how many it has.
#define REKA_PROGRAM_TERMS(TERM)                              \
    TERM(Value, 1)            /* o0 */                        \
    TERM(Product, 2)          /* o0 * o1 */                   \
    TERM(TripleProduct, 3)    /* o0 * o1 * o2 */              \
    TERM(Quotient, 2)         /* o0 / o1 */                   \
    TERM(Root, 1)             /* o0 ^ 0.5 */                  \
    TERM(RootProduct, 2)      /* o0 * o1 ^ 0.5 */             \
    TERM(SquareProduct, 2)    /* o0 * o1 ^ 2 */               \
    TERM(Arrhenius, 3)        /* EXP(o0 / (o1 * o2)) */       \
    TERM(ScaledArrhenius, 4)  /* o3 * Arrhenius */            \
    TERM(RateTerm, 5)         /* o3 * Arrhenius * o4 */       \
    TERM(LongRateTerm, 6)     /* o3 * Arrhenius * o4 * o5 */  \
    TERM(RootRateTerm, 5)     /* o3 * Arrhenius * o4 ^ 0.5 */ \
    TERM(InverseRateTerm, 5)  /* o4 / (o3 * Arrhenius) */     \
    TERM(LogarithmProduct, 2) /* o0 * LOG10(o1) */

/// Sums that a step computes in the same way, out of the steps of their terms.
#define REKA_PROGRAM_SUMS(SUM)                            \
    SUM(OffsetRateTerm, 6) /* o5 + o3 * Arrhenius * o4 */ \
    SUM(Sum, 3)            /* o0 + o1 * o2 */             \
    SUM(LongSum, 5)        /* o0 + o1 * o2 + o3 * o4 */

/// What else a step does: with the running value `a`, with operands, and with the value `p` that was put aside last.
#define REKA_PROGRAM_OPERATIONS(OPERATION)                                     \
    OPERATION(AddTwoProducts, 4)     /* a + o0 * o1 + o2 * o3 */               \
    OPERATION(AddThreeProducts, 6)   /* a + o0 * o1 + o2 * o3 + o4 * o5 */     \
    OPERATION(AddUnequalProducts, 5) /* a + o0 * o1 * o2 + o3 * o4 */          \
    OPERATION(SubtractFrom, 1)       /* o0 - a */                              \
    OPERATION(Multiply, 1)           /* a * o0 */                              \
    OPERATION(MultiplyTwice, 2)      /* a * o0 * o1 */                         \
    OPERATION(Divide, 1)             /* a / o0 */                              \
    OPERATION(DivideInto, 1)         /* o0 / a */                              \
    OPERATION(Power, 1)              /* a ^ o0 */                              \
    OPERATION(PowerOf, 1)            /* o0 ^ a */                              \
    OPERATION(PowerOfTen, 0)         /* 10 ^ a */                              \
    OPERATION(AddPopped, 0)          /* p + a */                               \
    OPERATION(SubtractPopped, 0)     /* p - a */                               \
    OPERATION(MultiplyPopped, 0)     /* p * a */                               \
    OPERATION(DividePopped, 0)       /* p / a */                               \
    OPERATION(DivideBySquare, 0)     /* p / a ^ 2 */                           \
    OPERATION(DivideByCube, 0)       /* p / a ^ 3 */                           \
    OPERATION(DivideBySumSquare, 5)  /* a / (o0 + o1 * o2 + o3 * o4) ^ 2 */    \
    OPERATION(PowerPopped, 0)        /* p ^ a */                               \
    OPERATION(FunctionPopped, 1)     /* of p and a; the operand is its kind */ \
    OPERATION(Negate, 0)             /* -a */                                  \
    OPERATION(Square, 0)             /* a ^ 2 */                               \
    OPERATION(Cube, 0)               /* a ^ 3 */                               \
    OPERATION(PowerOfHalf, 0)        /* a ^ 0.5 */                             \
    OPERATION(SquareRoot, 0)                                                   \
    OPERATION(Exponential, 0)                                                  \
    OPERATION(Logarithm, 0)                                                    \
    OPERATION(DecimalLogarithm, 0)                                             \
    OPERATION(Function, 1) /* of a; the operand is its kind */                 \
    OPERATION(End, 0)

/// A term becomes the running value, or it does so after that was put aside, or it is added to it or subtracted.
#define REKA_TERM_CODES(term, count) term, Push##term, Add##term, Subtract##term,
#define REKA_SUM_CODES(sum, count) sum, Push##sum,
#define REKA_OPERATION_CODE(operation, count) operation,
enum class ProgramCode : std::uint16_t {
    REKA_PROGRAM_TERMS(REKA_TERM_CODES) REKA_PROGRAM_SUMS(REKA_SUM_CODES) REKA_PROGRAM_OPERATIONS(REKA_OPERATION_CODE)
        Count
};
#undef REKA_OPERATION_CODE
#undef REKA_SUM_CODES
#undef REKA_TERM_CODES

constexpr std::size_t operandLimit = 6;

#define REKA_TERM_COUNTS(term, count) count, count, count, count,
#define REKA_SUM_COUNTS(sum, count) count, count,
#define REKA_OPERATION_COUNT(operation, count) count,
constexpr std::uint8_t operandCounts[] = {REKA_PROGRAM_TERMS(REKA_TERM_COUNTS) REKA_PROGRAM_SUMS(REKA_SUM_COUNTS)
                                              REKA_PROGRAM_OPERATIONS(REKA_OPERATION_COUNT)};
#undef REKA_OPERATION_COUNT
#undef REKA_SUM_COUNTS
#undef REKA_TERM_COUNTS

constexpr std::size_t OperandCountOf(ProgramCode code) {
    return operandCounts[static_cast<std::size_t>(code)];
}

/// Whether the one operand of a step is the kind of a function that has no code of its own.
constexpr bool TakesKind(ProgramCode code) {
    return code == ProgramCode::Function || code == ProgramCode::FunctionPopped;
}

}  // namespace reka
