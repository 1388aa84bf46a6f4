// SPDX-License-Identifier: MIT
// The only operations by which the editor changes the compound list of a definition. They keep the stoichiometry of
// each reaction in step with it: one coefficient per compound.

#pragma once

#include <cstddef>
#include <memory>

#include "records/Definition.h"

namespace reka {

/// Makes room, so that the addition of so many compounds can't fail. May throw std::bad_alloc; the definition is as it
/// was in any case.
void MakeRoomForCompounds(ReactionPackDefinition& definition, std::size_t count);

/// Appends `compound`, which takes no part in the reactions that there are. May throw std::bad_alloc; nothing has
/// changed then, and `compound` is lost.
void AddCompoundToDefinition(ReactionPackDefinition& definition, std::unique_ptr<CompoundDefinition> compound);

/// Removes the compound at `index`, with its coefficients; those of the others stay with them. Expression texts that
/// name it stay as they are. An index that isn't one of a compound changes nothing.
void RemoveCompoundFromDefinition(ReactionPackDefinition& definition, std::size_t index) noexcept;

/// Makes the compound file the one that a new definition has.
void SetDefaultPcdFile(ReactionPackDefinition& definition);

}  // namespace reka
