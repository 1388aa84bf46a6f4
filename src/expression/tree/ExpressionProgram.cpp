// SPDX-License-Identifier: MIT
// Writes the steps of a tree. The rate 2*EXP(-8000/(R*T))*C(i)-SQRT(P)/X(i), for one, becomes
//     RateTerm -8000 8.314 T 2 C(i)   the running value is 2 * EXP(-8000 / (8.314 * T)) * C(i)
//     PushValue P                     it is put aside; the running value is the pressure
//     SquareRoot
//     Divide X(i)
//     SubtractPopped                  what was put aside less the running value
//     End
// Which operand of a node is computed first makes no difference to a value, and of a failure the walk over the nodes
// tells; so a leaf or a term waits until its node is computed, on either side of an operator.

#include "expression/tree/ExpressionProgram.h"

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstdint>
#include <utility>

#include "expression/tree/NodeKinds.h"
#include "expression/tree/ProgramTerms.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

/// What becomes of a term, by the distance of its code from the term's first one.
enum class TermUse { Begin = 0, Push = 1, Add = 2, Subtract = 3 };

ProgramCode CodeFor(ProgramCode term, TermUse use) {
    return static_cast<ProgramCode>(static_cast<int>(term) + static_cast<int>(use));
}

/// A step while steps are still put together.
struct ProgramStep {
    ProgramCode code = ProgramCode::End;
    std::uint8_t operandCount = 0;
    OperandPlace places[operandLimit] = {};
    std::uint32_t indices[operandLimit] = {};
    NodeKind kind = NodeKind::Failed;  // of a function that has no code of its own
};

}  // namespace

/// One walk over a sound tree. What is still to be done lies on a stack: a node to be computed, or a step to be written
/// once what it works on is computed.
class CProgramWriter {
public:
    void Write(const ExpressionNode& root) {
        Compute(root, false);
        while (!tasks.empty()) {
            const Task task = tasks.back();
            tasks.pop_back();
            if (task.node) {
                WriteNode(*task.node, task.isPushing);
            } else {
                AddStep(task.step);
            }
        }
        steps.push_back({});
    }

    std::size_t CompoundCount() const { return compoundCount; }

    /// Lays what was written out in `program`.
    void Pack(CExpressionProgram& program) const {
        std::size_t constantCount = 0;
        for (const ProgramStep& step : steps) {
            program.wordCount += 1 + OperandCountOf(step.code);
            for (std::size_t i = 0; i < step.operandCount; ++i) {
                if (step.places[i] == OperandPlace::Constant) ++constantCount;
            }
        }
        program.storage =
            std::make_unique_for_overwrite<std::byte[]>(program.wordCount * (sizeof(BoundWord) + sizeof(ProgramWord)) +
                                                        (constantCount + greatestDepth) * sizeof(double));
        program.constants = reinterpret_cast<double*>(program.storage.get());
        program.valueStack = program.constants + constantCount;
        program.boundWords = reinterpret_cast<BoundWord*>(program.valueStack + greatestDepth);
        program.words = reinterpret_cast<ProgramWord*>(program.boundWords + program.wordCount);
        program.compoundCount = compoundCount;
        ProgramWord* word = program.words;
        std::uint32_t packedCount = 0;
        for (const ProgramStep& step : steps) {
            *word++ = ProgramWord::Of(step.code);
            if (TakesKind(step.code)) *word++ = ProgramWord::Of(step.kind);
            for (std::size_t i = 0; i < step.operandCount; ++i) {
                std::uint32_t index = step.indices[i];
                if (step.places[i] == OperandPlace::Constant) {
                    program.constants[packedCount] = constants[index];
                    index = packedCount++;
                }
                *word++ = ProgramWord::Of(step.places[i], index);
            }
        }
    }

private:
    struct Task {
        const ExpressionNode* node;
        bool isPushing;  // the running value is to be put aside first
        ProgramStep step;
    };

    void Compute(const ExpressionNode& node, bool isPushing) { tasks.push_back({&node, isPushing, {}}); }
    void Append(const ProgramStep& step) { tasks.push_back({nullptr, false, step}); }

    // ---- The nodes

    void WriteNode(const ExpressionNode& node, bool isPushing) {
        if (const Term term = FindTerm(node)) {
            AddStep(StepOf(term, isPushing ? TermUse::Push : TermUse::Begin));
            if (isPushing) greatestDepth = std::max(greatestDepth, ++depth);
        } else if (node.argumentCount == 1) {
            Append(StepOf(RowOf(node.kind).step, node.kind));
            Compute(Left(node), isPushing);
        } else if (!WriteSum(node, isPushing) && !WritePower(node, isPushing) && !WriteWithLeaf(node, isPushing)) {
            Append(StepOf(RowOf(node.kind).step, node.kind));
            Compute(Right(node), true);
            Compute(Left(node), isPushing);
        }
    }

    /// A sum with a term, or a difference whose second operand is one.
    bool WriteSum(const ExpressionNode& node, bool isPushing) {
        const bool isSum = node.kind == NodeKind::Addition;
        if (!isSum && node.kind != NodeKind::Subtraction) return false;
        if (const Term term = FindTerm(Right(node))) {
            Append(isSum ? StepOf(term, TermUse::Add) : SubtractionOf(term));
            Compute(Left(node), isPushing);
            return true;
        }
        const Term term = isSum ? FindTerm(Left(node)) : Term();
        if (!term) return false;
        Append(StepOf(term, TermUse::Add));
        Compute(Right(node), isPushing);
        return true;
    }

    /// A term whose factor is a constant is as well added with the other sign, which sums have steps of their own for.
    ProgramStep SubtractionOf(const Term& term) {
        const bool isProduct = term.code == ProgramCode::Value || term.code == ProgramCode::Product ||
                               term.code == ProgramCode::TripleProduct;
        if (!isProduct || term.leaves[0]->kind != NodeKind::RealConstant) return StepOf(term, TermUse::Subtract);
        ProgramStep step = StepOf(term, TermUse::Add);
        step.indices[0] = IndexOf(-term.leaves[0]->value);
        return step;
    }

    /// A power that has a step of its own: with one of the exponents 2, 3 and 0.5, or of 10.
    bool WritePower(const ExpressionNode& node, bool isPushing) {
        if (node.kind != NodeKind::Power) return false;
        const ExpressionNode& base = Left(node);
        const ExpressionNode& exponent = Right(node);
        for (const auto& [value, code] : {std::pair{2.0, ProgramCode::Square}, std::pair{3.0, ProgramCode::Cube},
                                          std::pair{0.5, ProgramCode::PowerOfHalf}}) {
            if (!IsConstant(exponent, value)) continue;
            Append(StepOf(code, node.kind));
            Compute(base, isPushing);
            return true;
        }
        if (!IsConstant(base, 10.0)) return false;
        Append(StepOf(ProgramCode::PowerOfTen, node.kind));
        Compute(exponent, isPushing);
        return true;
    }

    /// An operator with a leaf on one side.
    bool WriteWithLeaf(const ExpressionNode& node, bool isPushing) {
        struct {
            NodeKind kind;
            ProgramCode withRight;
            ProgramCode withLeft;
        } constexpr operators[] = {
            {NodeKind::Subtraction, ProgramCode::Count, ProgramCode::SubtractFrom},
            {NodeKind::Multiplication, ProgramCode::Multiply, ProgramCode::Multiply},
            {NodeKind::Division, ProgramCode::Divide, ProgramCode::DivideInto},
            {NodeKind::Power, ProgramCode::Power, ProgramCode::PowerOf},
        };
        for (const auto& [kind, withRight, withLeft] : operators) {
            if (node.kind != kind) continue;
            const bool isRight = IsLeaf(Right(node)) && withRight != ProgramCode::Count;
            if (!isRight && !IsLeaf(Left(node))) return false;
            ProgramStep step = StepOf(isRight ? withRight : withLeft, kind);
            AddOperand(step, isRight ? Right(node) : Left(node));
            Append(step);
            Compute(isRight ? Left(node) : Right(node), isPushing);
            return true;
        }
        return false;
    }

    // ---- The steps

    static ProgramStep StepOf(ProgramCode code, NodeKind kind) {
        ProgramStep step;
        step.code = code;
        step.kind = kind;
        return step;
    }

    ProgramStep StepOf(const Term& term, TermUse use) {
        ProgramStep step;
        step.code = CodeFor(term.code, use);
        for (std::size_t i = 0; i < term.leafCount; ++i) AddOperand(step, *term.leaves[i]);
        return step;
    }

    void AddOperand(ProgramStep& step, const ExpressionNode& leaf) {
        if (leaf.kind == NodeKind::RealConstant) {
            AddConstant(step, leaf.value);
            return;
        }
        step.places[step.operandCount] = PlaceOf(leaf.kind);
        if (IsCompoundLeaf(leaf.kind)) {
            step.indices[step.operandCount] = static_cast<std::uint32_t>(leaf.compoundIndex);
            compoundCount = std::max(compoundCount, static_cast<std::size_t>(leaf.compoundIndex) + 1);
        }
        ++step.operandCount;
    }

    void AddConstant(ProgramStep& step, double constant) { step.indices[step.operandCount++] = IndexOf(constant); }

    std::uint32_t IndexOf(double constant) {
        constants.push_back(constant);
        return static_cast<std::uint32_t>(constants.size() - 1);
    }

    static OperandPlace PlaceOf(NodeKind leaf) {
        switch (leaf) {
            case NodeKind::Temperature:
                return OperandPlace::Temperature;
            case NodeKind::Pressure:
                return OperandPlace::Pressure;
            case NodeKind::Molarity:
                return OperandPlace::Molarity;
            case NodeKind::Activity:
                return OperandPlace::Activity;
            case NodeKind::Fugacity:
                return OperandPlace::Fugacity;
            default:
                return OperandPlace::MoleFraction;
        }
    }

    /// Writes a step, or makes one step of it and the step before.
    void AddStep(const ProgramStep& step) {
        if (step.code >= ProgramCode::AddPopped && step.code <= ProgramCode::FunctionPopped) --depth;
        if (steps.empty() || !Merge(steps.back(), step)) steps.push_back(step);
    }

    bool Merge(ProgramStep& before, const ProgramStep& step) {
        switch (step.code) {
            case ProgramCode::Multiply:
                return MergeCodes(before, step, ProgramCode::Multiply, ProgramCode::MultiplyTwice);
            case ProgramCode::AddProduct:
                return MergeCodes(before, step, ProgramCode::Value, ProgramCode::Sum) ||
                       MergeCodes(before, step, ProgramCode::PushValue, ProgramCode::PushSum) ||
                       MergeCodes(before, step, ProgramCode::Sum, ProgramCode::LongSum) ||
                       MergeCodes(before, step, ProgramCode::PushSum, ProgramCode::PushLongSum) ||
                       MergeProduct(before, step);
            case ProgramCode::AddValue:
                return MergeProduct(before, step);
            case ProgramCode::AddRateTerm:
                return MergeOffset(before, step, ProgramCode::Value, ProgramCode::OffsetRateTerm) ||
                       MergeOffset(before, step, ProgramCode::PushValue, ProgramCode::PushOffsetRateTerm);
            case ProgramCode::DividePopped:
                return MergeSumSquare(before) ||
                       MergeCodes(before, step, ProgramCode::Square, ProgramCode::DivideBySquare) ||
                       MergeCodes(before, step, ProgramCode::Cube, ProgramCode::DivideByCube);
            default:
                return false;
        }
    }

    static bool MergeCodes(ProgramStep& before, const ProgramStep& step, ProgramCode wanted, ProgramCode merged) {
        if (before.code != wanted) return false;
        AppendOperands(before, step);
        before.code = merged;
        return true;
    }

    /// Of a sum, its square and the division by that.
    bool MergeSumSquare(const ProgramStep& before) {
        if (before.code != ProgramCode::Square || steps[steps.size() - 2].code != ProgramCode::PushLongSum)
            return false;
        steps.pop_back();
        steps.back().code = ProgramCode::DivideBySumSquare;
        return true;
    }

    /// Of a value and what is added to it, with the operand of the value as the last one.
    static bool MergeOffset(ProgramStep& before, const ProgramStep& step, ProgramCode wanted, ProgramCode merged) {
        if (before.code != wanted) return false;
        ProgramStep both = step;
        AppendOperands(both, before);
        both.code = merged;
        before = both;
        return true;
    }

    bool MergeProduct(ProgramStep& before, const ProgramStep& step) {
        ProgramCode merged = ProgramCode::AddTwoProducts;
        if (before.code == ProgramCode::AddTripleProduct) {
            merged = ProgramCode::AddUnequalProducts;
        } else if (before.code == ProgramCode::AddTwoProducts) {
            merged = ProgramCode::AddThreeProducts;
        } else if (before.code == ProgramCode::AddValue) {
            AddConstant(before, 1.0);
        } else if (before.code != ProgramCode::AddProduct) {
            return false;
        }
        AppendOperands(before, step);
        if (step.code == ProgramCode::AddValue) AddConstant(before, 1.0);
        before.code = merged;
        return true;
    }

    static void AppendOperands(ProgramStep& before, const ProgramStep& step) {
        for (std::size_t i = 0; i < step.operandCount; ++i) {
            before.places[before.operandCount] = step.places[i];
            before.indices[before.operandCount++] = step.indices[i];
        }
    }

    // What most expressions need is at hand without the heap.
    boost::container::small_vector<ProgramStep, 16> steps;
    boost::container::small_vector<double, 32> constants;
    std::size_t compoundCount = 0;
    boost::container::small_vector<Task, 16> tasks;
    std::size_t depth = 0;
    std::size_t greatestDepth = 0;
};

CExpressionProgram::CExpressionProgram(const ExpressionNode& root, const TreeSurvey& survey) {
    // A word has no room for the number of a constant beyond that; nor, below, for a compound's.
    if (!survey.isSound || survey.nodeCount > ProgramWord::greatestIndex / 4) return;
    const COwnArithmetic arithmetic;  // a tree is also read and copied where the host's settings are in force
    CProgramWriter writer;
    writer.Write(root);
    if (writer.CompoundCount() <= ProgramWord::greatestIndex) writer.Pack(*this);
}

}  // namespace reka
