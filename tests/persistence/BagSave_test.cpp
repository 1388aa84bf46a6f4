// SPDX-License-Identifier: MIT
// What is written into a property bag.

#include <gtest/gtest.h>

#include <span>

#include "persistence/SampleBag.h"

namespace reka::test {
namespace {

class BagSave : public testing::Test {
protected:
    HRESULT Save(const ReactionPackDefinition& definition, BOOL clearDirty = 1) {
        package->AssignDefinition(&definition);
        return package->Save(&bag, clearDirty, 0);
    }
    CFakeBag bag;
    CPackageHolder package;
};

TEST_F(BagSave, WritesTheEntriesInTheirOrder) {
    EXPECT_EQ(Save(*MakeSample()), S_OK);
    EXPECT_EQ(bag.log.calls,
              Calls("Write", endOfReactionKeys, {"stoichiometry[K]", "stoichiometry[E]", "thermoVersion"}));
    EXPECT_EQ(bag.Entry("Name"), "'Test package'");
    EXPECT_EQ(bag.Entry("Description"), "'A sample'");
    EXPECT_EQ(bag.Entry("PCDFile"), "'C:\\data\\x.pcd'");
    EXPECT_EQ(bag.Entry("compoundId"), "['Ethanol', 'Argon']");
    EXPECT_EQ(bag.Entry("compoundName"), "['Ethanol', 'Argon']");
    EXPECT_EQ(bag.Entry("compoundCAS"), "['64-17-5', null]");
    EXPECT_EQ(bag.Entry("compoundFormula"), "['C2H6O', null]");
    EXPECT_EQ(bag.Entry("compoundMolecularWeight"), "[46.069, 0]");
    EXPECT_EQ(bag.Entry("compoundCharge"), "[0, -1]");
    EXPECT_EQ(bag.Entry("reactionID"), "['K', 'E']");
    EXPECT_EQ(bag.Entry("reactionPhase"), "['Liquid', null]");
    EXPECT_EQ(bag.Entry("reactionType"), "['Kinetic', 'Equilibrium']");
    EXPECT_EQ(bag.Entry("reactionRateBasis"), "['Heterogeneous', 'Homogeneous']");
    EXPECT_EQ(bag.Entry("reactionRateEquation"), "['2*T', null]");
    EXPECT_EQ(bag.Entry("reactionEquilibriumBasis"), "['Molarity', 'MoleFraction']");
    EXPECT_EQ(bag.Entry("reactionEquilibriumConstantEquation"), "[null, 'EXP(X(Argon))']");
    EXPECT_EQ(bag.Entry("reactionHeatEquation"), "['-1e3', null]");
    EXPECT_EQ(bag.Entry("stoichiometry[K]"), "[-1, 0.5]");
    EXPECT_EQ(bag.Entry("stoichiometry[E]"), "[0, 0]");
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.1'");
    EXPECT_FALSE(package->IsDirty() == S_OK);
}

TEST_F(BagSave, WritesEmptyListsAsEmptyValues) {
    ReactionPackDefinition definition(nullptr);
    definition.pcdFile.clear();
    EXPECT_EQ(Save(definition), S_OK);
    EXPECT_EQ(bag.Entry("Name") + bag.Entry("Description"), "''''");
    EXPECT_EQ(bag.Entry("PCDFile"), "null");
    for (const char* const key : std::span(fixedKeys).subspan(3)) EXPECT_EQ(bag.Entry(key), "empty") << key;
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.0'");
    AddKinetic(definition, u"r", u"1");
    EXPECT_EQ(Save(definition), S_OK);
    EXPECT_EQ(bag.Entry("stoichiometry[r]"), "empty");
}

TEST_F(BagSave, WritesACoefficientForEachCompound) {
    auto definition = MakeSample();
    definition->reactions[0]->stoichiometry = {-1.0};
    definition->reactions[1]->stoichiometry = {-1.0, 1.0, 5.0};
    EXPECT_EQ(Save(*definition), S_OK);
    EXPECT_EQ(Show(bag.entries["stoichiometry[K]"].Get()), "[-1, 0]");
    EXPECT_EQ(Show(bag.entries["stoichiometry[E]"].Get()), "[-1, 1]");
}

TEST_F(BagSave, EndsBehindTheCompoundsForAnUnknownBasis) {
    for (const std::int32_t basis : {6, -1}) {
        const auto definition = MakeSample();
        definition->reactions[1]->equilibriumBasis = static_cast<EquilibriumBasis>(basis);
        bag.log.Clear();
        EXPECT_EQ(Save(*definition), E_FAIL);
        EXPECT_EQ(bag.log.calls.back(), "Write compoundCharge");
        EXPECT_TRUE(package->IsDirty() == S_OK);
    }
}

TEST_F(BagSave, TakesOtherValuesOfTypeAndBasesForTheFirst) {
    const auto definition = MakeSample();
    definition->reactions[0]->type = static_cast<ReactionType>(7);
    definition->reactions[0]->rateBasis = static_cast<RateBasis>(7);
    definition->thermoVersion = static_cast<ThermoVersion>(7);
    EXPECT_EQ(Save(*definition), S_OK);
    EXPECT_EQ(bag.Entry("reactionType"), "['Equilibrium', 'Equilibrium']");
    EXPECT_EQ(bag.Entry("reactionRateBasis"), "['Homogeneous', 'Homogeneous']");
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.0'");
}

TEST_F(BagSave, EndsAtTheFirstEntryThatCannotBeWritten) {
    for (int n = 1; n <= 20; ++n) {
        bag.log.Clear();
        bag.log.failAt = n;
        EXPECT_EQ(Save(*MakeSample()), E_FAIL);
        EXPECT_EQ(static_cast<int>(bag.log.calls.size()), n);
        EXPECT_TRUE(package->IsDirty() == S_OK);
    }
    EXPECT_EQ(bag.references.Held(), 0);
}

TEST_F(BagSave, KeepsTheDirtyFlagUnlessToldToClearIt) {
    EXPECT_EQ(Save(*MakeSample(), 0), S_OK);
    EXPECT_TRUE(package->IsDirty() == S_OK);
}

TEST_F(BagSave, KeepsAChangeThatABagMakesDirty) {
    bag.log.onCall = [&](const std::string& call) {
        if (call == "Write thermoVersion") package->put_ComponentName(CBstr::Make(u"later").Get());
    };
    EXPECT_EQ(Save(*MakeSample()), S_OK);
    EXPECT_EQ(bag.Entry("Name"), "'Test package'");
    EXPECT_TRUE(package->IsDirty() == S_OK);
    bag.log.onCall = nullptr;
    EXPECT_EQ(package->Save(&bag, 1, 0), S_OK);
    EXPECT_EQ(bag.Entry("Name"), "'later'");
    EXPECT_FALSE(package->IsDirty() == S_OK);
}

TEST_F(BagSave, NamesNoReactionInTheStoichiometryOfOneWithoutIdentifier) {
    const auto definition = MakeSample();
    definition->reactions[1]->id.Reset();
    definition->reactions[1]->stoichiometry = {1.0, -2.0};
    EXPECT_EQ(Save(*definition), S_OK);
    EXPECT_EQ(bag.Entry("reactionID"), "['K', null]");
    EXPECT_EQ(bag.Entry("stoichiometry[K]"), "[-1, 0.5]");
    EXPECT_EQ(bag.Entry("stoichiometry[]"), "[1, -2]");
    EXPECT_EQ(bag.log.calls[18], "Write stoichiometry[]");
}

TEST_F(BagSave, NeedsADefinitionAndABag) {
    EXPECT_EQ(package->Save(&bag, 1, 1), E_UNEXPECTED);
    package->AssignDefinition(MakeSample().get());
    EXPECT_EQ(package->Save(nullptr, 1, 1), E_POINTER);
}

}  // namespace
}  // namespace reka::test
