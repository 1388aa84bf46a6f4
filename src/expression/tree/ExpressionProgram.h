// SPDX-License-Identifier: MIT
// A tree laid out for evaluation: a short list of steps that work on one running value. What a step takes besides it, a
// constant, a working value or a value that was kept, is fetched by the step itself, and groups of nodes that rates are
// full of, such as products and Arrhenius terms, are one step. What repeats in a tree is computed once and kept.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/TreeSurvey.h"

namespace reka {

enum class ProgramCode : std::uint8_t;  // ProgramCode.h

/// Where a step finds an operand: in one of these arrays, of which the first is the program's own. It holds the
/// constants, and behind them the slots of what is kept.
enum class OperandPlace : std::uint8_t { Own, Temperature, Pressure, Molarity, Activity, Fugacity, MoleFraction };
constexpr std::size_t operandPlaceCount = 7;

/// A word of a program: the code of a step, or one of the operands behind it. An operand is a place and an index there,
/// or the kind of a function.
struct ProgramWord {
    static constexpr int indexBits = 28;
    static constexpr std::uint32_t greatestIndex = (std::uint32_t{1} << indexBits) - 1;

    std::uint32_t bits;

    static constexpr ProgramWord Of(ProgramCode code) { return {static_cast<std::uint32_t>(code)}; }
    static constexpr ProgramWord Of(NodeKind kind) { return {static_cast<std::uint32_t>(kind)}; }
    static constexpr ProgramWord Of(OperandPlace place, std::uint32_t index) {
        return {static_cast<std::uint32_t>(place) << indexBits | index};
    }
    constexpr ProgramCode Code() const { return static_cast<ProgramCode>(bits); }
    constexpr NodeKind Kind() const { return static_cast<NodeKind>(bits); }
    constexpr std::size_t Place() const { return bits >> indexBits; }
    constexpr std::size_t Index() const { return bits & greatestIndex; }
};

/// The same word as it runs: with the operands of the values that the program is bound to.
union BoundWord {
    const void* handler;  // where the run does what the code says; it knows one of the two
    ProgramCode code;
    const double* operand;
    double* slot;
    NodeKind kind;
};

static_assert(alignof(BoundWord) <= alignof(double));

/// The steps of one tree. Made once, with everything that an evaluation needs besides the working values, so that an
/// evaluation allocates nothing. A malformed tree, as stored data may hold, has no steps: it is evaluated node by node.
class CExpressionProgram {
public:
    /// `survey` is that of `root`. May throw std::bad_alloc.
    CExpressionProgram(const ExpressionNode& root, const TreeSurvey& survey);

    /// The codes, each with its operands behind it, up to `End`; none for a malformed tree.
    std::span<const ProgramWord> Words() const { return {words, wordCount}; }
    /// The constants, and the slots for what the one evaluation that may run at a time keeps.
    double* Own() const { return own; }
    /// How many compounds the working arrays must have.
    std::size_t CompoundCount() const { return compoundCount; }

    /// Room for the words as the last run was bound to them, for the next one to find its operands at once; and the
    /// stamp of the values whose they were, 0 before there was one.
    BoundWord* BoundWords() const { return boundWords; }
    std::uint64_t boundStamp = 0;

private:
    friend class CProgramWriter;

    std::unique_ptr<std::byte[]> storage;  // of all that follows
    BoundWord* boundWords = nullptr;
    double* own = nullptr;
    ProgramWord* words = nullptr;
    std::size_t wordCount = 0;
    std::size_t compoundCount = 0;
};

}  // namespace reka
