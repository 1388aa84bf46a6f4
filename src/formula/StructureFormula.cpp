// SPDX-License-Identifier: MIT
// Reads
//     formula   part, any number of them
//     part      symbol [count]
//     symbol    A to Z, then at most one of a to z
//     count     digits and points in any mix, above 0; a second point ends the number and the rest is dropped

#include "formula/StructureFormula.h"

#include "formula/FormulaText.h"
#include "text/NumberText.h"

namespace reka {

namespace {

std::uint16_t NumberOf(std::u16string_view symbol) {
    const int small = symbol.size() > 1 ? symbol[1] - u'a' + 1 : 0;
    return static_cast<std::uint16_t>((symbol[0] - u'A') * 27 + small);
}

std::u16string SymbolOf(std::uint16_t number) {
    std::u16string symbol(1, static_cast<char16_t>(u'A' + number / 27));
    if (number % 27 > 0) symbol += static_cast<char16_t>(u'a' + number % 27 - 1);
    return symbol;
}

}  // namespace

bool ReadFormulaParts(std::u16string_view formula, std::vector<FormulaPart>& parts) {
    for (std::size_t position = 0; position < formula.size();) {
        const std::u16string_view symbol = SymbolAt(formula, position);
        if (symbol.empty()) return false;
        position += symbol.size();
        const std::u16string_view digits = CountAt(formula, position);
        position += digits.size();
        double count = 1.0;
        if (!digits.empty() && (!ScanNumber(digits, count) || !(count > 0.0))) return false;
        parts.push_back({NumberOf(symbol), count});
    }
    return true;
}

void CElementBalance::Add(const std::vector<FormulaPart>& parts, double coefficient) {
    for (const FormulaPart& part : parts) {
        std::uint16_t& place = places[part.element];
        if (place == 0) {
            elements.push_back({SymbolOf(part.element), 0.0});
            place = static_cast<std::uint16_t>(elements.size());
        }
        elements[place - 1U].amount += part.count * coefficient;
    }
}

bool ReadStructureFormula(std::u16string_view formula, double coefficient, CElementBalance& balance) {
    std::vector<FormulaPart> parts;
    const bool isRead = ReadFormulaParts(formula, parts);
    balance.Add(parts, coefficient);
    return isRead;
}

}  // namespace reka
