// SPDX-License-Identifier: MIT
// Counting the atoms of a reaction: the strict reader of formulas in their normal form.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace reka {

/// One element of the balance of a reaction. There is no table of elements: what has the shape of a symbol is one.
struct ElementAmount {
    std::u16string symbol;
    double amount = 0.0;  // atoms, products less reactants
};

/// The elements of one reaction in the order in which they first appear, of which there are 702 at most.
using ElementBalance = std::vector<ElementAmount>;

/// Adds the atoms of `formula`, times the stoichiometric `coefficient`, to `balance`. An empty formula adds nothing.
///
/// False for a text outside the form, which has symbols with counts above 0 and nothing else: no blanks, brackets or
/// signs. `balance` then holds what was read before, and is to be thrown away. May throw std::bad_alloc.
bool ReadStructureFormula(std::u16string_view formula, double coefficient, ElementBalance& balance);

}  // namespace reka
