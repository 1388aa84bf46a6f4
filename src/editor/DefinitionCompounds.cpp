// See DefinitionCompounds.h. Trees of expressions refer to compounds by their index and are stale after a change; the
// check of the definition makes them afresh.

#include "editor/DefinitionCompounds.h"

#include <algorithm>
#include <utility>

namespace reka {

namespace {

/// Makes room for one more element, in steps that keep many additions cheap.
template <class Element>
void MakeRoom(std::vector<Element>& list) {
    if (list.size() == list.capacity()) list.reserve(std::max<std::size_t>(8, list.size() * 2));
}

}  // namespace

void AddCompoundToDefinition(ReactionPackDefinition& definition, std::unique_ptr<CompoundDefinition> compound) {
    // All that can fail comes first, so that no reaction is left behind the others.
    MakeRoom(definition.compounds);
    for (const auto& reaction : definition.reactions) MakeRoom(reaction->stoichiometry);
    definition.compounds.push_back(std::move(compound));
    for (const auto& reaction : definition.reactions) reaction->stoichiometry.push_back(0.0);
}

void RemoveCompoundFromDefinition(ReactionPackDefinition& definition, std::size_t index) noexcept {
    if (index >= definition.compounds.size()) return;
    const auto offset = static_cast<std::ptrdiff_t>(index);
    for (const auto& reaction : definition.reactions) {
        reaction->stoichiometry.erase(reaction->stoichiometry.begin() + offset);
    }
    definition.compounds.erase(definition.compounds.begin() + offset);
}

void SetDefaultPcdFile(ReactionPackDefinition& definition) {
    definition.pcdFile = std::move(ReactionPackDefinition(nullptr).pcdFile);
}

}  // namespace reka
