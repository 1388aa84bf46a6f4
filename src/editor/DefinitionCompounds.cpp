// SPDX-License-Identifier: MIT
// Trees of expressions refer to compounds by their index and are stale after a change; the check of the definition
// makes them afresh.

#include "editor/DefinitionCompounds.h"

#include <algorithm>
#include <utility>

namespace reka {

namespace {

/// Makes room for so many more elements, in steps that keep many additions cheap.
template <class Element>
void MakeRoom(std::vector<Element>& list, std::size_t count) {
    if (list.capacity() - list.size() >= count) return;
    list.reserve(std::max({std::size_t{8}, list.size() * 2, list.size() + count}));
}

}  // namespace

void MakeRoomForCompounds(ReactionPackDefinition& definition, std::size_t count) {
    MakeRoom(definition.compounds, count);
    for (const auto& reaction : definition.reactions) MakeRoom(reaction->stoichiometry, count);
}

void AddCompoundToDefinition(ReactionPackDefinition& definition, std::unique_ptr<CompoundDefinition> compound) {
    // All that can fail comes first, so that no reaction is left behind the others.
    MakeRoomForCompounds(definition, 1);
    definition.compounds.push_back(std::move(compound));
    for (const auto& reaction : definition.reactions) reaction->stoichiometry.push_back(0.0);
}

void RemoveCompoundFromDefinition(ReactionPackDefinition& definition, std::size_t index) noexcept {
    if (index >= definition.compounds.size()) return;
    const auto offset = static_cast<std::ptrdiff_t>(index);
    for (const auto& reaction : definition.reactions) {
        if (index < reaction->stoichiometry.size()) {
            reaction->stoichiometry.erase(reaction->stoichiometry.begin() + offset);
        }
    }
    definition.compounds.erase(definition.compounds.begin() + offset);
}

void SetDefaultPcdFile(ReactionPackDefinition& definition) {
    definition.pcdFile = std::move(ReactionPackDefinition(nullptr).pcdFile);
}

}  // namespace reka
