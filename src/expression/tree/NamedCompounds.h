// SPDX-License-Identifier: MIT
// The compounds that an expression can speak of. A tree holds indices into such a list, and is good as long as the list
// stays as it is.

#pragma once

#include <cstddef>

#include "platform/Automation.h"

namespace reka {

class INamedCompounds {
public:
    virtual std::size_t CompoundCount() const = 0;
    /// The name of the compound `index`, which is below the count. Lent; an absent name counts as an empty one.
    virtual BSTR CompoundName(std::size_t index) const = 0;
    /// In g/mol.
    virtual double MolecularWeight(std::size_t index) const = 0;

protected:
    ~INamedCompounds() = default;
};

}  // namespace reka
