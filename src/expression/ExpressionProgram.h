// A tree laid out for evaluation: a short list of steps that work on one running value. What a step takes besides it, a
// constant or a working value, is fetched by the step itself, and groups of nodes that rates are full of, such as
// products and Arrhenius terms, are one step.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "expression/ExpressionNode.h"

namespace reka {

/// The terms that one step computes from its operands alone, called o0 to o5.
#define REKA_PROGRAM_TERMS(TERM)                           \
    TERM(Value)            /* o0 */                        \
    TERM(Product)          /* o0 * o1 */                   \
    TERM(TripleProduct)    /* o0 * o1 * o2 */              \
    TERM(Quotient)         /* o0 / o1 */                   \
    TERM(Root)             /* o0 ^ 0.5 */                  \
    TERM(RootProduct)      /* o0 * o1 ^ 0.5 */             \
    TERM(SquareProduct)    /* o0 * o1 ^ 2 */               \
    TERM(Arrhenius)        /* EXP(o0 / (o1 * o2)) */       \
    TERM(ScaledArrhenius)  /* o3 * Arrhenius */            \
    TERM(RateTerm)         /* o3 * Arrhenius * o4 */       \
    TERM(LongRateTerm)     /* o3 * Arrhenius * o4 * o5 */  \
    TERM(RootRateTerm)     /* o3 * Arrhenius * o4 ^ 0.5 */ \
    TERM(InverseRateTerm)  /* o4 / (o3 * Arrhenius) */     \
    TERM(LogarithmProduct) /* o0 * LOG10(o1) */

/// Sums that a step computes in the same way, out of the steps of their terms.
#define REKA_PROGRAM_SUMS(SUM)                         \
    SUM(OffsetRateTerm) /* o5 + o3 * Arrhenius * o4 */ \
    SUM(Sum)            /* o0 + o1 * o2 */             \
    SUM(LongSum)        /* o0 + o1 * o2 + o3 * o4 */

/// What else a step does: with the running value `a`, with operands, and with the value `p` that was put aside last.
#define REKA_PROGRAM_OPERATIONS(OPERATION)                               \
    OPERATION(AddTwoProducts)     /* a + o0 * o1 + o2 * o3 */            \
    OPERATION(AddThreeProducts)   /* a + o0 * o1 + o2 * o3 + o4 * o5 */  \
    OPERATION(AddUnequalProducts) /* a + o0 * o1 * o2 + o3 * o4 */       \
    OPERATION(SubtractFrom)       /* o0 - a */                           \
    OPERATION(Multiply)           /* a * o0 */                           \
    OPERATION(MultiplyTwice)      /* a * o0 * o1 */                      \
    OPERATION(Divide)             /* a / o0 */                           \
    OPERATION(DivideInto)         /* o0 / a */                           \
    OPERATION(Power)              /* a ^ o0 */                           \
    OPERATION(PowerOf)            /* o0 ^ a */                           \
    OPERATION(PowerOfTen)         /* 10 ^ a */                           \
    OPERATION(AddPopped)          /* p + a */                            \
    OPERATION(SubtractPopped)     /* p - a */                            \
    OPERATION(MultiplyPopped)     /* p * a */                            \
    OPERATION(DividePopped)       /* p / a */                            \
    OPERATION(DivideBySquare)     /* p / a ^ 2 */                        \
    OPERATION(DivideByCube)       /* p / a ^ 3 */                        \
    OPERATION(DivideBySumSquare)  /* a / (o0 + o1 * o2 + o3 * o4) ^ 2 */ \
    OPERATION(PowerPopped)        /* p ^ a */                            \
    OPERATION(FunctionPopped)     /* of p and a, of the kind `kind` */   \
    OPERATION(Negate)             /* -a */                               \
    OPERATION(Square)             /* a ^ 2 */                            \
    OPERATION(Cube)               /* a ^ 3 */                            \
    OPERATION(PowerOfHalf)        /* a ^ 0.5 */                          \
    OPERATION(SquareRoot)                                                \
    OPERATION(Exponential)                                               \
    OPERATION(Logarithm)                                                 \
    OPERATION(DecimalLogarithm)                                          \
    OPERATION(Function) /* of a, of the kind `kind` */                   \
    OPERATION(End)

/// A term becomes the running value, or it does so after that was put aside, or it is added to it or subtracted.
#define REKA_TERM_CODES(term) term, Push##term, Add##term, Subtract##term,
#define REKA_SUM_CODES(sum) sum, Push##sum,
#define REKA_OPERATION_CODE(operation) operation,
enum class ProgramCode : std::uint16_t {
    REKA_PROGRAM_TERMS(REKA_TERM_CODES) REKA_PROGRAM_SUMS(REKA_SUM_CODES) REKA_PROGRAM_OPERATIONS(REKA_OPERATION_CODE)
        Count
};
#undef REKA_OPERATION_CODE
#undef REKA_SUM_CODES
#undef REKA_TERM_CODES

/// Where a step finds an operand: in one of these arrays, of which the first is the program's own.
enum class OperandPlace : std::uint8_t { Constant, Temperature, Pressure, Molarity, Activity, Fugacity, MoleFraction };
constexpr std::size_t operandPlaceCount = 7;
constexpr std::size_t operandLimit = 6;

struct ProgramStep {
    ProgramCode code = ProgramCode::End;
    std::uint8_t operandCount = 0;
    OperandPlace places[operandLimit] = {};
    std::int32_t indices[operandLimit] = {};
    NodeKind kind = NodeKind::Failed;  // of a function that has no code of its own
};

/// A step as it runs: with the operands of the definition that the program is bound to.
struct BoundStep {
    union {
        const void* handler;  // where the run does what the code says; it knows one of the two
        ProgramCode code;
    };
    union {
        const double* operands[operandLimit];
        NodeKind kind;
    };
};

/// The steps of one tree. Made once, with everything that an evaluation needs besides the working values, so that an
/// evaluation allocates nothing. A malformed tree, as stored data may hold, has no steps: it is evaluated node by node.
class CExpressionProgram {
public:
    explicit CExpressionProgram(const ExpressionNode& root);

    /// Ended by a step `End`; empty for a malformed tree.
    const std::vector<ProgramStep>& Steps() const { return steps; }
    const double* Constants() const { return constants.data(); }
    /// How many compounds the working arrays must have.
    std::size_t CompoundCount() const { return compoundCount; }
    /// Room for all values that are put aside at one time, for the one evaluation that may run at a time.
    double* ValueStack() const { return valueStack.get(); }

    /// What the last run was bound to, for the next one to find its operands at once.
    struct Binding {
        std::uint64_t workStamp = 0;         // of the definition
        std::unique_ptr<BoundStep[]> steps;  // one for each of `Steps`
    } binding;

private:
    friend class CProgramWriter;

    std::vector<ProgramStep> steps;
    std::vector<double> constants;
    std::size_t compoundCount = 0;
    std::unique_ptr<double[]> valueStack;
};

}  // namespace reka
