// SPDX-License-Identifier: MIT
// The different values that a tree computes, each of them once: what repeats in a tree is one value with several uses.
// The values stand in an order in which they can be computed, and know which step computes them.

#pragma once

#include <boost/container/small_vector.hpp>
#include <cstddef>
#include <cstdint>
#include <span>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ProgramCode.h"

namespace reka {

/// One value. Parts are numbers of values that stand before it.
struct ProgramValue {
    static constexpr std::uint32_t none = ~std::uint32_t{0};

    NodeKind kind = NodeKind::RealConstant;  // of what is fetched, and of a function
    ProgramOperation operation = ProgramOperation::Fetch;
    ProgramCode code = ProgramCode::Value;  // the step that computes it
    std::uint32_t parts[2] = {none, none};  // of a constant the halves of its bits, of a compound leaf the compound
    std::uint32_t useCount = 0;             // by how many values it is used
    std::uint32_t cost = 0;                 // of computing it, about in cycles of the processor
    std::uint32_t running = none;           // the value that the step finds as the running one
    std::uint32_t slot = none;              // where it is kept for those that use it

    bool IsFetched() const { return operation == ProgramOperation::Fetch; }
    bool IsConstant() const { return IsFetched() && kind == NodeKind::RealConstant; }
    double Constant() const;  // of one that is constant
    /// What it is as a part of another value.
    ProgramCode PartCode() const { return slot == none ? code : ProgramCode::Value; }
};

/// The values of one sound tree. Takes time and memory in proportion to the nodes, whatever they are.
class CProgramValues {
public:
    /// May throw std::bad_alloc.
    CProgramValues(const ExpressionNode& root, std::size_t nodeCount);

    /// The last one is that of the tree. One that isn't used counts for nothing.
    std::span<const ProgramValue> Values() const { return {values.data(), values.size()}; }
    std::uint32_t SlotCount() const { return slotCount; }

private:
    // The values
    void AddTree(const ExpressionNode& root);
    std::uint32_t AddNode(const ExpressionNode& node, std::uint32_t left, std::uint32_t right);
    std::uint32_t AddPower(std::uint32_t base, std::uint32_t exponent);
    std::uint32_t AddConstant(double constant);
    std::uint32_t AddOperation(ProgramOperation operation, std::uint32_t left, std::uint32_t right = ProgramValue::none,
                               NodeKind kind = NodeKind::RealConstant);
    std::uint32_t AddNegative(std::uint32_t number, int depth);
    std::uint32_t Add(const ProgramValue& value);

    // Their steps
    void CountUses();
    void FindSteps();
    void FindStep(ProgramValue& value);
    bool FindStepOfParts(ProgramValue& value);
    bool UseRule(ProgramValue& value, ProgramCode left, ProgramCode right);
    void KeepOnePart(ProgramValue& value);
    void KeepWhatRepeats(ProgramValue& value);
    void GiveSlot(ProgramValue& value);

    // What most expressions need is at hand without the heap.
    boost::container::small_vector<ProgramValue, 48> values;
    boost::container::small_vector<std::uint32_t, 128> places;  // of values by what they are; a power of two in number
    std::uint32_t slotCount = 0;
};

}  // namespace reka
