// SPDX-License-Identifier: MIT
// The reactions page of an open edit shell.

#pragma once

#include <string>

#include "EditorFixture.h"

namespace reka::test {

/// The page of a package with two reactions, "R1" kinetic and "R2" at equilibrium.
class ReactionsPage : public EditorFixture {
protected:
    ReactionsPage() {
        definition->compounds[1]->id = CBstr::Make(u"second id");
        definition->reactions[0]->heatEquation = u"-1000";
        ReactionDefinition& second = AddEquilibrium(*definition, u"R2", u"EXP(5)");
        second.stoichiometry = {1.0, 1.0};
        second.phase = CBstr::Make(u"Plasma");
        second.rateBasis = RateBasis::Heterogeneous;
        second.equilibriumBasis = EquilibriumBasis::Fugacity;
        second.rateEquation = u"left from before";
    }
    void OnReactions(const Work& work) { OnPage(EditPage::Reactions, work); }
    ReactionDefinition& Reaction(std::size_t index) { return *definition->reactions[index]; }
    std::u16string IdOf(std::size_t index) { return std::u16string(Reaction(index).id.View()); }
    static Names Listed(const CDrivenWindow& page) {
        Names ids;
        for (int i = 0; i < page.ListCount(IDC_REACTIONS_LIST); ++i)
            ids.push_back(page.ListText(IDC_REACTIONS_LIST, i));
        return ids;
    }
    static CDrivenWindow ShellOf(CUser& u, const CDrivenWindow& page) { return {u, GetParent(page.Get())}; }
};

}  // namespace reka::test
