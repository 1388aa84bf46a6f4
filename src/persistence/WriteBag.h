// SPDX-License-Identifier: MIT
// A definition as the named entries of a property bag: texts and numbers, no trees and no version. Loading parses the
// expressions again and forgives most faults of single entries.

#pragma once

#include "platform/Automation.h"
#include "records/Definition.h"

namespace reka {

/// Writes `definition` into `bag`. False as soon as an entry can't be written, or for a reaction whose equilibrium
/// basis is none of the known ones, which ends it behind the compounds; what was written stays in the bag.
bool WriteDefinitionToBag(const ReactionPackDefinition& definition, IPropertyBag& bag);

}  // namespace reka
