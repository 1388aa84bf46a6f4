// SPDX-License-Identifier: MIT
// The words of the readable form that stand for stored numbers.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "expression/tree/NodeKinds.h"
#include "text/LetterCase.h"

namespace rekatool {

/// The kind of a node, by its stored number, as one word: "RealConstant" for "real constant", "Sqrt" for "SQRT".
inline std::string NodeWord(std::uint32_t kind) {
    std::string word;
    bool isStart = true;
    for (const char16_t letter : reka::nodeKinds[kind].word) {
        const char16_t upper = reka::UpperCase(letter);
        const bool isLetter = upper >= u'A' && upper <= u'Z';
        if (letter != u' ') word += static_cast<char>(isStart || !isLetter ? upper : upper + (u'a' - u'A'));
        isStart = letter == u' ';
    }
    return word;
}

/// The members of a reaction that hold its three trees, where they aren't what the texts give.
constexpr const char* rateTreeMember = "rateTree";
constexpr const char* constantTreeMember = "equilibriumConstantTree";
constexpr const char* heatTreeMember = "heatTree";

}  // namespace rekatool
