// SPDX-License-Identifier: MIT
// The records: what a new one holds, what a copy takes along, and what stays behind.

#include "records/Definition.h"

#include <gtest/gtest.h>

#include <set>

#include "expression/run/EvaluateExpression.h"
#include "support/Builders.h"
#include "support/CountedFake.h"
#include "support/Garbage.h"

namespace reka::test {
namespace {

TEST(CompoundDefinition, StartsWithItsDefaults) {
    const CompoundDefinition compound;
    EXPECT_TRUE(compound.name.IsAbsent());
    EXPECT_TRUE(compound.id.IsAbsent());
    EXPECT_TRUE(compound.casNumber.IsAbsent());
    EXPECT_TRUE(compound.formula.IsAbsent());
    EXPECT_EQ(compound.molecularWeight, 0.0);
    EXPECT_EQ(compound.charge, 0.0);
    EXPECT_EQ(compound.databaseIndex, -1);
}

TEST(ReactionDefinition, StartsKineticAndHomogeneous) {
    const ReactionDefinition reaction(3);
    EXPECT_TRUE(reaction.id.IsAbsent());
    EXPECT_TRUE(reaction.phase.IsAbsent());
    EXPECT_EQ(static_cast<std::int32_t>(reaction.type), 1);
    EXPECT_EQ(static_cast<std::int32_t>(reaction.rateBasis), 0);
    EXPECT_EQ(static_cast<std::int32_t>(reaction.equilibriumBasis), 0);
    EXPECT_EQ(reaction.stoichiometry, std::vector<double>(3, 0.0));
    EXPECT_EQ(reaction.rateExpression, nullptr);
    EXPECT_EQ(reaction.equilibriumConstantExpression, nullptr);
    EXPECT_EQ(reaction.heatExpression, nullptr);
}

TEST(ReactionDefinition, HasNoCoefficientsForNoCompounds) {
    EXPECT_TRUE(ReactionDefinition(0).stoichiometry.empty());
}

TEST(ReactionDefinition, DiscardsItsTreesAndKeepsItsTexts) {
    const auto definition = MakePackage({u"Ar"});
    ReactionDefinition& reaction = AddKinetic(*definition, u"r", u"T");
    SetHeat(*definition, reaction, u"P");
    reaction.DiscardExpressions();
    EXPECT_EQ(reaction.rateExpression, nullptr);
    EXPECT_EQ(reaction.heatExpression, nullptr);
    EXPECT_EQ(reaction.rateEquation, u"T");
    EXPECT_EQ(reaction.heatEquation, u"P");
}

TEST(ReactionPackDefinition, StartsEmptyWithTheDefaultCompoundFile) {
    const ReactionPackDefinition definition(nullptr);
    EXPECT_TRUE(definition.name.IsAbsent());
    EXPECT_TRUE(definition.description.IsAbsent());
    EXPECT_TRUE(definition.reactions.empty());
    EXPECT_TRUE(definition.compounds.empty());
    EXPECT_EQ(definition.thermoVersion, ThermoVersion::Version10);
    EXPECT_FALSE(definition.simulationContext);
    EXPECT_EQ(definition.molarity, nullptr);
    EXPECT_EQ(definition.activity, nullptr);
    EXPECT_EQ(definition.fugacity, nullptr);
    EXPECT_EQ(definition.moleFraction, nullptr);
    const std::u16string folder = ComponentFolder();
    ASSERT_FALSE(folder.empty());
    EXPECT_TRUE(folder.back() == u'/' || folder.back() == u'\\');
    EXPECT_EQ(definition.pcdFile.substr(0, folder.size()), folder);
    const std::u16string rest = definition.pcdFile.substr(folder.size());
    EXPECT_TRUE(rest == u"data\\Korvex1.pcd" || rest == u"data/Korvex1.pcd");
}

TEST(ReactionPackDefinition, HoldsItsContextAndGivesItBack) {
    CFakeObject context;
    {
        const ReactionPackDefinition definition(&context);
        EXPECT_EQ(context.references.Held(), 1);
    }
    EXPECT_EQ(context.references.Held(), 0);
}

TEST(ReactionPackDefinition, ClearKeepsCompoundFileVersionAndWorkingValues) {
    const auto definition = MakePackage({u"Ar"});
    AddKinetic(*definition, u"r", u"T");
    definition->pcdFile = u"here";
    definition->thermoVersion = ThermoVersion::Version11;
    definition->temperature = 300.0;
    definition->Clear();
    EXPECT_TRUE(definition->name.IsAbsent());
    EXPECT_TRUE(definition->reactions.empty());
    EXPECT_TRUE(definition->compounds.empty());
    EXPECT_EQ(definition->pcdFile, u"here");
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_EQ(definition->temperature, 300.0);
    EXPECT_NE(definition->molarity, nullptr);
}

TEST(ReactionPackDefinition, CopiesEverythingButContextWorkingValuesAndDatabaseIndex) {
    CFakeObject context;
    ReactionPackDefinition source(&context);
    source.name = CBstr::Make(u"n");
    source.pcdFile = u"";
    source.thermoVersion = ThermoVersion::Version11;
    source.temperature = 300.0;
    source.compounds.push_back(std::make_unique<CompoundDefinition>());
    CompoundDefinition& compound = *source.compounds.back();
    compound.id = CBstr::Make(u"id");
    compound.name = CBstr::Make(u"water");
    compound.casNumber = CBstr::Make(u"");
    compound.formula = CBstr::Make(u"H2O");
    compound.molecularWeight = 18.015;
    compound.charge = -1.0;
    compound.databaseIndex = 7;
    source.AllocateWorkArrays();
    ReactionDefinition& reaction = AddKinetic(source, u"r", u"C(water)*T");
    reaction.equilibriumBasis = EquilibriumBasis::Activity;
    reaction.rateBasis = RateBasis::Heterogeneous;
    reaction.equilibriumConstantEquation = u"not parsed";
    reaction.stoichiometry = {-1.5};
    SetHeat(source, reaction, u"P");

    ReactionPackDefinition copy(nullptr);
    copy.CopyFrom(source);
    EXPECT_EQ(copy.name.View(), u"n");
    EXPECT_TRUE(copy.description.IsAbsent());
    EXPECT_EQ(copy.pcdFile, u"");  // empty replaces the default
    EXPECT_EQ(copy.thermoVersion, ThermoVersion::Version11);
    EXPECT_FALSE(copy.simulationContext);
    EXPECT_EQ(copy.temperature, 0.0);
    EXPECT_EQ(copy.molarity, nullptr);
    ASSERT_EQ(copy.compounds.size(), 1U);
    EXPECT_EQ(copy.compounds[0]->id.View(), u"id");
    EXPECT_EQ(copy.compounds[0]->name.View(), u"water");
    EXPECT_FALSE(copy.compounds[0]->casNumber.IsAbsent());
    EXPECT_EQ(copy.compounds[0]->formula.View(), u"H2O");
    EXPECT_EQ(copy.compounds[0]->molecularWeight, 18.015);
    EXPECT_EQ(copy.compounds[0]->charge, -1.0);
    EXPECT_EQ(copy.compounds[0]->databaseIndex, -1);
    ASSERT_EQ(copy.reactions.size(), 1U);
    const ReactionDefinition& copied = *copy.reactions[0];
    EXPECT_EQ(copied.id.View(), u"r");
    EXPECT_EQ(copied.phase.View(), u"Liquid");
    EXPECT_EQ(copied.equilibriumBasis, EquilibriumBasis::Activity);
    EXPECT_EQ(copied.rateBasis, RateBasis::Heterogeneous);
    EXPECT_EQ(copied.rateEquation, u"C(water)*T");
    EXPECT_EQ(copied.equilibriumConstantEquation, u"not parsed");
    EXPECT_EQ(copied.heatEquation, u"P");
    EXPECT_EQ(copied.stoichiometry, std::vector<double>{-1.5});
    EXPECT_EQ(copied.equilibriumConstantExpression, nullptr);
    ASSERT_NE(copied.rateExpression, nullptr);
    EXPECT_EQ(copied.rateExpression->dependencies, dependency::molarity | dependency::temperature);
    EXPECT_EQ(context.references.Held(), 1);
}

TEST(ReactionPackDefinition, CopiesTreesThatOutliveTheirSource) {
    ReactionPackDefinition copy(nullptr);
    {
        const auto source = MakePackage({u"Ar"});
        ReactionDefinition& reaction = AddKinetic(*source, u"r", u"2*T");
        reaction.rateExpression->dependencies = 63;  // a stored mask is copied as it stands
        copy.CopyFrom(*source);
    }
    copy.AllocateWorkArrays();
    copy.temperature = 150.0;
    EXPECT_EQ(copy.reactions[0]->rateExpression->dependencies, 63U);
    double value = 0.0;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateExpression(*copy.reactions[0]->rateExpression, value, copy, errorText));
    EXPECT_EQ(value, 300.0);
}

double ValueOf(const ReactionPackDefinition& definition) {
    double value = 0.0;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateExpression(*definition.reactions[0]->rateExpression, value, definition, errorText));
    return value;
}

// An evaluation leaves in the program where it found its operands.
TEST(ReactionPackDefinition, CopiesTreesThatWereEvaluatedOverTreesThatWere) {
    const auto target = MakePackage({u"Ar"});
    AddKinetic(*target, u"r", u"2*T+C(Ar)");
    target->temperature = 100.0;
    target->molarity[0] = 1.0;
    EXPECT_EQ(ValueOf(*target), 201.0);
    const auto source = MakePackage({u"Ar", u"Ne"});
    AddKinetic(*source, u"r", u"3*T+C(Ne)");
    source->temperature = 50.0;
    source->molarity[1] = 7.0;
    EXPECT_EQ(ValueOf(*source), 157.0);

    target->CopyFrom(*source);
    double value = 0.0;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateExpression(*target->reactions[0]->rateExpression, value, *source, errorText));
    EXPECT_EQ(value, 157.0);  // the copy finds its operands itself, also where those of the source are
    target->AllocateWorkArrays();
    target->molarity[1] = 9.0;
    EXPECT_EQ(ValueOf(*target), 309.0);  // 3 * 100 + 9, by the copy's text and the target's values
    source->temperature = 0.0;
    source->molarity[1] = 0.0;
    EXPECT_EQ(ValueOf(*target), 309.0);
    EXPECT_EQ(ValueOf(*source), 0.0);
}

// The same trees go on with other arrays once those are made anew.
TEST(ReactionPackDefinition, FindsItsWorkingArraysAgainWhereverTheyAre) {
    const auto definition = MakePackage({u"Ar"});
    AddKinetic(*definition, u"r", u"C(Ar)");
    definition->molarity[0] = 5.0;
    EXPECT_EQ(ValueOf(*definition), 5.0);
    const auto other = MakePackage({u"Ar"});
    other->molarity[0] = 6.0;
    double value = 0.0;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateExpression(*definition->reactions[0]->rateExpression, value, *other, errorText));
    EXPECT_EQ(value, 6.0);
    EXPECT_EQ(ValueOf(*definition), 5.0);
    definition->AllocateWorkArrays();
    EXPECT_EQ(ValueOf(*definition), 0.0);
}

TEST(ReactionPackDefinition, StaysAsItIsWhenCopiedOntoItself) {
    const auto definition = MakePackage({u"Ar"});
    AddKinetic(*definition, u"r", u"2*T");
    definition->temperature = 100.0;
    EXPECT_EQ(ValueOf(*definition), 200.0);
    definition->CopyFrom(*definition);
    ASSERT_EQ(definition->reactions.size(), 1U);
    EXPECT_EQ(definition->name.View(), u"Test package");
    EXPECT_EQ(definition->compounds.size(), 1U);
    EXPECT_EQ(ValueOf(*definition), 200.0);
}

TEST(ReactionPackDefinition, MakesItsWorkingArraysAfresh) {
    const auto definition = MakePackage({u"Ar", u"Ne"});
    definition->compounds.push_back(std::make_unique<CompoundDefinition>());
    definition->AllocateWorkArrays();
    EXPECT_NE(definition->molarity, nullptr);
    EXPECT_EQ(definition->workArraySize, 3U);
    definition->ReleaseWorkArrays();
    EXPECT_EQ(definition->molarity, nullptr);
    EXPECT_EQ(definition->activity, nullptr);
    EXPECT_EQ(definition->fugacity, nullptr);
    EXPECT_EQ(definition->moleFraction, nullptr);
    EXPECT_EQ(definition->workArraySize, 0U);
}

// Programs trust the places of working values as long as the stamp stays, and places come again.
TEST(ReactionPackDefinition, StampsItsWorkingValuesAnew) {
    std::set<std::uint64_t> stamps = {0};
    for (int i = 0; i < 3; ++i) {
        const auto definition = MakePackage({u"Ar", u"Ne"});
        EXPECT_TRUE(stamps.insert(definition->WorkStamp()).second);
        definition->AllocateWorkArrays();
        EXPECT_TRUE(stamps.insert(definition->WorkStamp()).second);
        definition->Clear();
        EXPECT_TRUE(stamps.insert(definition->WorkStamp()).second);
        definition->ReleaseWorkArrays();
        EXPECT_TRUE(stamps.insert(definition->WorkStamp()).second);
    }
}

TEST(ReactionPackDefinition, StartsItsWorkingArraysAtZero) {
    ReactionPackDefinition definition(nullptr);
    for (int i = 0; i < 8; ++i) definition.compounds.push_back(std::make_unique<CompoundDefinition>());
    LeaveGarbage(8 * sizeof(double));
    definition.AllocateWorkArrays();
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(definition.molarity[i], 0.0);
        EXPECT_EQ(definition.activity[i], 0.0);
        EXPECT_EQ(definition.fugacity[i], 0.0);
        EXPECT_EQ(definition.moleFraction[i], 0.0);
    }
}

TEST(ReactionPackDefinition, MakesArraysOfNoElementsForNoCompounds) {
    ReactionPackDefinition definition(nullptr);
    definition.AllocateWorkArrays();
    EXPECT_NE(definition.molarity, nullptr);
    EXPECT_NE(definition.moleFraction, nullptr);
    EXPECT_EQ(definition.workArraySize, 0U);
}

TEST(ExpressionRef, ReadsAMolarityByBitTwoAlone) {
    const auto definition = MakePackage({u"Ar"});
    EXPECT_EQ(Parse(*definition, u"C(Ar)")->dependencies, 2U);
}

}  // namespace
}  // namespace reka::test
