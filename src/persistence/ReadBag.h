// SPDX-License-Identifier: MIT
// A definition out of the named entries of a property bag, whose keys BagKeys.h has.

#pragma once

#include "capeopen/BagVariant.h"
#include "records/Definition.h"

namespace reka {

/// Fills the newly made `definition` from the bag of `reader`, and tells its error log what was wrong. False when
/// compounds or reactions can't be read at all; the caller then discards the definition.
///
/// A reaction with an unknown word is left out, an expression that doesn't parse stays as a text without a tree, and a
/// missing identifier of a compound ends the reading there, as a success with what was read so far.
bool ReadDefinitionFromBag(ReactionPackDefinition& definition, const BagReader& reader);

}  // namespace reka
