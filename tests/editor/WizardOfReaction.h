// SPDX-License-Identifier: MIT
// The rate wizard opened for a reaction, and its fields filled in.

#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "editor/RateWizard.h"
#include "support/Builders.h"

namespace reka::test {

/// A wizard for one reaction over the given compounds.
class CWizardOf {
public:
    CWizardOf(std::initializer_list<const char16_t*> compounds, std::vector<double> stoichiometry)
        : definition(MakePackage(compounds)), reaction(AddKinetic(*definition, u"r", u"")) {
        reaction.stoichiometry = std::move(stoichiometry);
        wizard.emplace(reaction, *definition);
    }
    CRateWizard* operator->() { return &*wizard; }
    CRateWizard& operator*() { return *wizard; }

    std::unique_ptr<ReactionPackDefinition> definition;
    ReactionDefinition& reaction;

private:
    std::optional<CRateWizard> wizard;
};

inline void SetForward(CRateWizard& wizard, const char16_t* constant) {
    wizard.fields.forward.isOn = true;
    wizard.fields.forward.constant = constant;
}

inline void SetBackward(CRateWizard& wizard, const char16_t* constant) {
    wizard.fields.backward.isOn = true;
    wizard.fields.backward.constant = constant;
}

inline void SetEnergy(RateDirectionFields& direction, const char16_t* energy) {
    direction.hasEnergy = true;
    direction.energy = energy;
}

}  // namespace reka::test
