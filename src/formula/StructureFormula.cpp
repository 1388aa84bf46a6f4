// SPDX-License-Identifier: MIT
// Reads
//     formula   part, any number of them
//     part      symbol [count]
//     symbol    A to Z, then at most one of a to z
//     count     digits and points in any mix, above 0; a second point ends the number and the rest is dropped

#include "formula/StructureFormula.h"

#include <algorithm>

#include "formula/FormulaText.h"
#include "text/NumberText.h"

namespace reka {

namespace {

void AddAtoms(ElementBalance& balance, std::u16string_view symbol, double amount) {
    auto element = std::find_if(balance.begin(), balance.end(),
                                [&](const ElementAmount& candidate) { return candidate.symbol == symbol; });
    if (element == balance.end()) element = balance.insert(element, {std::u16string(symbol), 0.0});
    element->amount += amount;
}

}  // namespace

bool ReadStructureFormula(std::u16string_view formula, double coefficient, ElementBalance& balance) {
    for (std::size_t position = 0; position < formula.size();) {
        const std::u16string_view symbol = SymbolAt(formula, position);
        if (symbol.empty()) return false;
        position += symbol.size();
        const std::u16string_view digits = CountAt(formula, position);
        position += digits.size();
        double count = 1.0;
        if (!digits.empty() && (!ScanNumber(digits, count) || !(count > 0.0))) return false;
        AddAtoms(balance, symbol, count * coefficient);
    }
    return true;
}

}  // namespace reka
