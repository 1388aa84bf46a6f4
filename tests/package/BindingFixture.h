// SPDX-License-Identifier: MIT
// A package that materials are bound to.

#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <memory>
#include <string>

#include "support/Builders.h"
#include "support/FakeMaterial.h"

namespace reka::test {

/// A package of ethanol, water and argon, of which the first two have CAS numbers. Identifiers "e", "w", "a".
class MaterialBinding : public testing::Test {
protected:
    MaterialBinding() : definition(MakePackage({u"Ethanol", u"Water", u"Argon"})) {
        const char16_t* const ids[] = {u"e", u"w", u"a"};
        for (std::size_t i = 0; i < 3; ++i) definition->compounds[i]->id = CBstr::Make(ids[i]);
        definition->compounds[0]->casNumber = CBstr::Make(u"64-17-5");
        definition->compounds[1]->casNumber = CBstr::Make(u"7732-18-5");
        Assign();
    }
    void Assign() { package->AssignDefinition(definition.get()); }

    /// A material that outlives the package, which may still be bound to it at the end.
    CFakeMaterial& NewMaterial(std::initializer_list<const char16_t*> identifiers) {
        return materials.emplace_back(identifiers);
    }

    std::string Ids() const {
        std::string ids;
        for (const auto& compound : package->Definition()->compounds) ids += Show(compound->id.Get());
        return ids;
    }

    void ExpectFailure(CFakeMaterial& material, const std::string& text) {
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), ECapeUnknownHR);
        EXPECT_EQ(ErrorOf(package.Unknown()), (ReportedError{text, text, "SetMaterial", "ICapeThermoContext"}));
        EXPECT_EQ(Ids(), "'e''w''a'");
    }

    std::deque<CFakeMaterial> materials;
    std::unique_ptr<ReactionPackDefinition> definition;
    CPackageHolder package;
};

}  // namespace reka::test
