// SPDX-License-Identifier: MIT
// A document's formula is read as the component reads that of a compound file, so that both count the same atoms.

#include "packagetext/CountElements.h"

#include "formula/FormulaNormalForm.h"
#include "formula/StructureFormula.h"

namespace packagetext {

bool CountElements(std::u16string_view formula, std::map<std::u16string, double>& atoms) {
    atoms.clear();
    reka::CElementBalance balance;
    const std::u16string normalForm = reka::NormalizePcdFormula(formula);
    if (normalForm.empty() || !reka::ReadStructureFormula(normalForm, 1.0, balance)) return false;
    for (const reka::ElementAmount& element : balance) atoms[element.symbol] += element.amount;
    return true;
}

}  // namespace packagetext
