// SPDX-License-Identifier: MIT
// A package with what a simulator sets and asks, for tests that let its methods fail.

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "persistence/WriteStoredDefinition.h"
#include "posix/SparingFakes.h"
#include "support/Builders.h"
#include "support/FakeEditor.h"

namespace reka::test {

inline std::unique_ptr<ReactionPackDefinition> MakeSample(ThermoVersion version) {
    auto definition = MakePackage({u"A1", u"B1"});
    definition->description = CBstr::Make(u"a description that is longer than a small string");
    definition->thermoVersion = version;
    definition->compounds[0]->casNumber = CBstr::Make(u"71-43-2");
    ReactionDefinition& kinetic = AddKinetic(*definition, u"r", u"C(A1)*T+A(B1)+F(A1)+X(A1)*P");
    kinetic.stoichiometry = {-1.0, 1.0};
    SetHeat(*definition, kinetic, u"2*T");
    AddEquilibrium(*definition, u"e", u"EXP(T/300)").stoichiometry = {1.0, -1.0};
    return definition;
}

enum class Begin { Fresh, Defined, Bound, Bound11 };

/// A package with what a simulator sets and asks, made afresh for each try.
struct PackageBench {
    explicit PackageBench(Begin begin)
        : package(begin == Begin::Fresh ? std::make_unique<CPackageHolder>()
                                        : std::make_unique<CPackageHolder>(*MakeSample(VersionOf(begin)))) {
        material.SetCasNumber(1, u"71-43-2");
        for (const char* const property : {"temperature", "pressure", "density"}) {
            material.answers[property] = Numbers({300.0});
        }
        for (const char* const property : {"fraction", "activity", "fugacity"}) {
            material.answers[property] = Numbers({0.25, 0.75});
        }
        editor.inPackage = [](ReactionPackDefinition& copy) {
            copy.thermoVersion = ThermoVersion::Version11;
            return true;
        };
        if (begin != Begin::Bound && begin != Begin::Bound11) return;
        IDispatch* pointer = results.Dispatch();
        EXPECT_EQ(Package().SetReactionObject(&pointer), S_OK);
        EXPECT_EQ(Package().SetMaterial(material.Dispatch()), S_OK);
    }
    ~PackageBench() {
        Package().Terminate();
        package.reset();
        EXPECT_EQ(material.references.Held() + results.references.Held() + bag.references.Held(), 0);
        EXPECT_EQ(stream.references.Held(), 0);
    }
    static ThermoVersion VersionOf(Begin begin) {
        return begin == Begin::Bound11 ? ThermoVersion::Version11 : ThermoVersion::Version10;
    }
    CReactionPack& Package() const { return **package; }

    /// The definition as it is stored, and whether it asks to be saved.
    std::string State() const {
        if (!Package().Definition()) return "no definition";
        std::vector<std::uint8_t> block;
        std::u16string errorText;
        EXPECT_TRUE(WriteStoredDefinition(*Package().Definition(), block, errorText));
        return std::string(block.begin(), block.end()) + (Package().IsDirty() == S_OK ? " dirty" : "");
    }
    std::string Outputs() const {
        return Show(lists[0].Get()) + Show(lists[1].Get()) + Show(lists[2].Get()) + Show(text.Get()) +
               std::to_string(number) + (object ? " object" : "");
    }

    CSparingMaterial material{u"B1", u"a"};
    CSparingResults results;
    CSparingBag bag;
    CSparingStream stream;
    CFakeEditor editor;
    std::unique_ptr<CPackageHolder> package;
    const CBstr kinetic = CBstr::Make(u"r");
    const CBstr equilibrium = CBstr::Make(u"e");
    const CBstr none = CBstr::Make(u"a name of no reaction");
    const CBstr phase = CBstr::Make(u"Liquid");
    const CVariant properties = Strings({u"ReactionRate", u"EnthalpyOfReaction"});
    const CVariant constants = Strings({u"ChemicalEquilibriumConstant"});
    const CVariant kinetics = Strings({u"r"});
    const CVariant equilibria = Strings({u"e"});
    const CVariant liquid = Text(u"Liquid");
    const CVariant noBasis = Text(u"");
    CVariant lists[3];
    CBstr text;
    LONG number = 0;
    ULARGE_INTEGER size = {};
    CComRef<IDispatch> object;
};

}  // namespace reka::test
