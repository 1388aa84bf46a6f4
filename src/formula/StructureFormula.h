// SPDX-License-Identifier: MIT
// Counting the atoms of a reaction: the strict reader of formulas in their normal form.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace reka {

/// One element of the balance of a reaction. There is no table of elements: what has the shape of a symbol is one.
struct ElementAmount {
    std::u16string symbol;
    double amount = 0.0;  // atoms, products less reactants
};

/// A symbol as it stands in a formula, with its count.
struct FormulaPart {
    std::uint16_t element = 0;  // the symbol's number among all that have the shape of one
    double count = 0.0;
};

/// The parts of a formula in its normal form, in their order; none for an empty one. False for a text outside the form,
/// which has symbols with counts above 0 and nothing else: no blanks, brackets or signs. `parts` then holds what was
/// read before. May throw std::bad_alloc.
bool ReadFormulaParts(std::u16string_view formula, std::vector<FormulaPart>& parts);

/// The elements of one reaction in the order in which they first appear. Any of them is found at once, since a package
/// may have hundreds of elements in thousands of reactions.
class CElementBalance {
public:
    /// Adds the atoms of `parts`, times the stoichiometric `coefficient`. May throw std::bad_alloc.
    void Add(const std::vector<FormulaPart>& parts, double coefficient);

    auto begin() const { return elements.begin(); }
    auto end() const { return elements.end(); }
    std::size_t size() const { return elements.size(); }
    bool empty() const { return elements.empty(); }

private:
    static constexpr std::size_t symbolCount = std::size_t{26} * 27;  // a capital letter, with a small one or without

    std::vector<ElementAmount> elements;
    std::array<std::uint16_t, symbolCount> places = {};  // by symbol: its position in `elements` and 1, or 0
};

/// Adds the atoms of `formula`, times the stoichiometric `coefficient`, to `balance`. An empty formula adds nothing.
///
/// False for a text outside the form; `balance` then holds what was read before, and is to be thrown away. May throw
/// std::bad_alloc.
bool ReadStructureFormula(std::u16string_view formula, double coefficient, CElementBalance& balance);

}  // namespace reka
