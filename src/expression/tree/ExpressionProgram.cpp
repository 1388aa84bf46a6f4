// SPDX-License-Identifier: MIT
// Writes the steps of a tree. The rate 2*EXP(-8000/(R*T))*C(i)-SQRT(P)/X(i), for one, becomes
//     Value P
//     SquareRootRunning
//     DivideValue X(i)
//     Keep s                          the running value is kept in a slot
//     RateTerm 2 -8000 8.314 T C(i)   the running value is 2 * EXP(-8000 / (8.314 * T)) * C(i)
//     SubtractValue s
//     End
// Which operand of a node is computed first makes no difference to a value, and of a failure the walk over the nodes
// tells. So all that is kept comes first, in the order in which it can be computed, and then the value of the tree.

#include "expression/tree/ExpressionProgram.h"

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstdint>

#include "expression/tree/ProgramValues.h"
#include "platform/HostArithmetic.h"

namespace reka {

/// Writes the words of a program.
class CProgramWriter {
public:
    explicit CProgramWriter(const CProgramValues& source)
        : values(source.Values()), constantNumbers(values.size(), 0), slotCount(source.SlotCount()) {}

    void Write() {
        for (std::uint32_t number = 0; number + 1 < values.size(); ++number) {
            if (values[number].slot == ProgramValue::none) continue;
            WriteSteps(number);
            Keep(number);
        }
        WriteSteps(static_cast<std::uint32_t>(values.size() - 1));
        words.push_back(ProgramWord::Of(ProgramCode::End));
    }

    std::size_t CompoundCount() const { return compoundCount; }

    /// Lays what was written out in `program`.
    void Pack(CExpressionProgram& program) const {
        program.wordCount = words.size();
        program.storage = std::make_unique_for_overwrite<std::byte[]>(
            words.size() * (sizeof(BoundWord) + sizeof(ProgramWord)) + (constants.size() + slotCount) * sizeof(double));
        program.own = reinterpret_cast<double*>(program.storage.get());
        program.boundWords = reinterpret_cast<BoundWord*>(program.own + slotCount + constants.size());
        program.words = reinterpret_cast<ProgramWord*>(program.boundWords + words.size());
        program.compoundCount = compoundCount;
        std::copy(constants.begin(), constants.end(), program.own + slotCount);
        std::copy(words.begin(), words.end(), program.words);
    }

private:
    void Keep(std::uint32_t number) {
        words.push_back(ProgramWord::Of(ProgramCode::Keep));
        words.push_back(SlotWord(values[number]));
        lastKept = number;
    }

    /// The steps of a value, which follow each other by their running values.
    void WriteSteps(std::uint32_t number) {
        chain.clear();
        for (std::uint32_t next = number; next != ProgramValue::none; next = values[next].running) {
            chain.push_back(next);
            if (next != number && values[next].slot != ProgramValue::none) break;
        }
        for (std::size_t i = chain.size(); i-- > 0;) WriteStep(chain[i], chain[i] != number);
    }

    /// The step of a value, or of what fetches it where it is kept.
    void WriteStep(std::uint32_t number, bool mayFetch) {
        const ProgramValue& value = values[number];
        const ProgramCode code = mayFetch ? value.PartCode() : value.code;
        // What is fetched begins the steps of a value, so that a step before can only be one that keeps.
        if (code == ProgramCode::Value && number == lastKept) return;  // it is the running one still
        if (code == ProgramCode::Value && lastKept != ProgramValue::none) {
            words[words.size() - 2] = ProgramWord::Of(ProgramCode::KeepAndFetch);
        } else {
            words.push_back(ProgramWord::Of(code));
        }
        if (TakesKind(code)) words.push_back(ProgramWord::Of(value.kind));
        WriteOperands(number, code);
    }

    /// The operands that a step of `code` fetches for the value. Goes as deep as the rule of the code.
    void WriteOperands(std::uint32_t number, ProgramCode code) {
        if (code == ProgramCode::Value) {
            words.push_back(OperandWord(number));
        } else if (code < ProgramCode::RuleCount) {
            WriteOperands(values[number].parts[0], RuleOf(code).left);
            WriteOperands(values[number].parts[1], RuleOf(code).right);
        }
    }

    ProgramWord OperandWord(std::uint32_t number) {
        const ProgramValue& value = values[number];
        if (!value.IsFetched()) return SlotWord(value);
        if (value.IsConstant()) return ConstantWord(number);
        if (!IsCompoundLeaf(value.kind)) return ProgramWord::Of(PlaceOf(value.kind), 0);
        compoundCount = std::max(compoundCount, std::size_t{value.parts[0]} + 1);
        return ProgramWord::Of(PlaceOf(value.kind), value.parts[0]);
    }

    static ProgramWord SlotWord(const ProgramValue& value) { return ProgramWord::Of(OperandPlace::Own, value.slot); }

    /// Constants lie behind the slots, in the order in which they are first fetched.
    ProgramWord ConstantWord(std::uint32_t number) {
        if (constantNumbers[number] == 0) {
            constants.push_back(values[number].Constant());
            constantNumbers[number] = static_cast<std::uint32_t>(constants.size());
        }
        return ProgramWord::Of(OperandPlace::Own, slotCount + constantNumbers[number] - 1);
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

    std::span<const ProgramValue> values;
    boost::container::small_vector<std::uint32_t, 48>
        constantNumbers;  // by value: 1 for the first constant, 0 for none
    std::uint32_t slotCount;
    // What most expressions need is at hand without the heap.
    boost::container::small_vector<ProgramWord, 96> words;
    boost::container::small_vector<double, 32> constants;
    boost::container::small_vector<std::uint32_t, 16> chain;
    std::size_t compoundCount = 0;
    std::uint32_t lastKept = ProgramValue::none;  // the last value that was kept
};

CExpressionProgram::CExpressionProgram(const ExpressionNode& root, const TreeSurvey& survey) {
    // A word has no room for the number of a constant or a slot beyond that; nor, below, for a compound's.
    if (!survey.isSound || survey.nodeCount > ProgramWord::greatestIndex / 16) return;
    const COwnArithmetic arithmetic;  // a tree is also read and copied where the host's settings are in force
    const CProgramValues values(root, survey.nodeCount);
    CProgramWriter writer(values);
    writer.Write();
    if (writer.CompoundCount() <= ProgramWord::greatestIndex) writer.Pack(*this);
}

}  // namespace reka
