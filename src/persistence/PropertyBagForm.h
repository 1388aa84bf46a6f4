// A definition as the named entries of a property bag: texts and numbers, no trees and no version. Loading parses the
// expressions again and forgives most faults of single entries.

#pragma once

#include "capeopen/BagVariant.h"
#include "records/Definition.h"

namespace reka {

/// Writes `definition` into `bag`. False as soon as an entry can't be written, or for a reaction whose equilibrium
/// basis is none of the known ones, which ends it behind the compounds; what was written stays in the bag.
bool WriteDefinitionToBag(const ReactionPackDefinition& definition, IPropertyBag& bag);

/// Fills the newly made `definition` from the bag of `reader`, and tells its error log what was wrong. False when
/// compounds or reactions can't be read at all; the caller then discards the definition.
///
/// A reaction with an unknown word is left out, an expression that doesn't parse stays as a text without a tree, and a
/// missing identifier of a compound ends the reading there, as a success with what was read so far.
bool ReadDefinitionFromBag(ReactionPackDefinition& definition, const BagReader& reader);

}  // namespace reka
