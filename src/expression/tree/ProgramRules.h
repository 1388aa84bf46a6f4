// SPDX-License-Identifier: MIT
// Which rule makes one step of an operation and its parts. The rules of an operation with the same first part hang
// together, so that a search looks at few.

#pragma once

#include <array>

#include "expression/tree/ProgramCode.h"

namespace reka {

namespace rules {

constexpr auto partCount = static_cast<std::size_t>(ProgramCode::None) + 1;
constexpr auto operationCount = static_cast<std::size_t>(ProgramOperation::Count);
constexpr auto ruleCount = static_cast<std::size_t>(ProgramCode::RuleCount);

struct Chains {
    std::array<std::array<ProgramCode, partCount>, operationCount> first{};  // by operation and first part
    std::array<ProgramCode, ruleCount> next{};                               // by rule
};

constexpr Chains MakeChains() {
    Chains chains;
    for (auto& row : chains.first) row.fill(ProgramCode::None);
    for (std::size_t i = ruleCount; i-- > 0;) {
        ProgramCode& first = chains.first[static_cast<std::size_t>(programRules[i].operation)]
                                         [static_cast<std::size_t>(programRules[i].left)];
        chains.next[i] = first;
        first = static_cast<ProgramCode>(i);
    }
    return chains;
}

constexpr Chains chains = MakeChains();

}  // namespace rules

/// The rule of the operation with these parts; `None` where there isn't any.
constexpr ProgramCode FindRule(ProgramOperation operation, ProgramCode left, ProgramCode right) {
    ProgramCode code = rules::chains.first[static_cast<std::size_t>(operation)][static_cast<std::size_t>(left)];
    while (code != ProgramCode::None && RuleOf(code).right != right) {
        code = rules::chains.next[static_cast<std::size_t>(code)];
    }
    return code;
}

namespace rules {

constexpr std::array<bool, partCount> FindThoseWithRunning() {
    std::array<bool, partCount> takesRunning{};
    takesRunning[static_cast<std::size_t>(ProgramCode::Running)] = true;
    for (std::size_t i = 0; i < ruleCount; ++i) {
        takesRunning[i] = takesRunning[static_cast<std::size_t>(programRules[i].left)] ||
                          takesRunning[static_cast<std::size_t>(programRules[i].right)];
    }
    return takesRunning;
}

constexpr std::array<bool, partCount> takesRunning = FindThoseWithRunning();

}  // namespace rules

/// Whether a step of that code, or the part of a step that it is, works on the running value.
constexpr bool TakesRunning(ProgramCode code) {
    return rules::takesRunning[static_cast<std::size_t>(code)];
}

constexpr bool HasSecondPart(ProgramOperation operation) {
    switch (operation) {
        case ProgramOperation::Add:
        case ProgramOperation::Subtract:
        case ProgramOperation::Multiply:
        case ProgramOperation::Divide:
        case ProgramOperation::Power:
        case ProgramOperation::SmallPower:
        case ProgramOperation::FunctionOfTwo:
            return true;
        default:
            return false;
    }
}

/// Whether the parts may change places: the value is the same to the last bit.
constexpr bool IsCommutative(ProgramOperation operation) {
    return operation == ProgramOperation::Add || operation == ProgramOperation::Multiply;
}

/// Each rule stands behind those that it is made of, none takes two running values, and every operation has a rule for
/// parts that other steps have computed.
constexpr bool AreRulesComplete() {
    for (std::size_t i = 0; i < rules::ruleCount; ++i) {
        for (const ProgramCode part : {programRules[i].left, programRules[i].right}) {
            if (part < ProgramCode::RuleCount && static_cast<std::size_t>(part) >= i) return false;
        }
        if (TakesRunning(programRules[i].left) && TakesRunning(programRules[i].right)) return false;
    }
    for (std::size_t i = 1; i < rules::operationCount; ++i) {
        const auto operation = static_cast<ProgramOperation>(i);
        const ProgramCode right = HasSecondPart(operation) ? ProgramCode::Value : ProgramCode::None;
        if (FindRule(operation, ProgramCode::Running, right) == ProgramCode::None) return false;
    }
    return true;
}
static_assert(AreRulesComplete());

}  // namespace reka
